// One vote: which presses count, when it closes by itself, what the keyboard and the random fill do.
#include "vote/count_up_vote.h"

#include "store/statistics.h"
#include "vote/vote_fixture.h"

namespace qrn {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
namespace key = host::key;

class CountUp : public VoteFixture {
 protected:
  CountUp() {
    ResizeVoteArrays();
    ResetVotes();
    glo.voteType = 9;
    glo.startFrom = 1;
    glo.options = 5;
    glo.voteOpen = true;
  }
  std::string vote(int keypad) { return glo.liveVotes[static_cast<std::size_t>(keypad - 1)]; }
  void room(int keypads) {
    glo.keypadsNotVotedHi = keypads;
    ResizeVoteArrays();
    glo.activeKeypads.clear();
    for (int k = 1; k <= keypads; ++k) glo.activeKeypads.push_back(std::to_string(k));
  }
};

struct CountCase {
  const char* what;
  std::vector<std::string> votes;
  int startFrom;
  bool abstain;
  int count;
  std::string first;  // entry of keypad 1 afterwards
};

TEST_F(CountUp, countsByTheRules) {
  const CountCase cases[] = {
      {"on the scale", {"1", "5", "3"}, 1, false, 3, "1"},
      {"off the scale before a valid one", {"6", "7", "3"}, 1, false, 1, "6"},
      {"the valid mark is not cleared", {"3", "7", "-2"}, 1, false, 3, "3"},
      {"not voted never counts", {"3", "-100", "-100"}, 1, false, 1, "3"},
      {"no number never counts", {"3", "abc", ""}, 1, false, 1, "3"},
      {"0 is an abstention", {"0", "-100", "-100"}, 1, true, 1, "-2"},
      {"0 without abstaining", {"0", "-100", "2"}, 1, false, 1, "0"},
      {"0 on a scale from 0", {"0", "4", "-100"}, 0, true, 2, "0"},
      {"unset start is repaired", {"0", "1", "-100"}, -1, false, 1, "0"},
  };
  for (const CountCase& c : cases) {
    SCOPED_TRACE(c.what);
    ResetVotes();
    glo.startFrom = c.startFrom;
    glo.options = c.startFrom == 0 ? 4 : 5;
    glo.abstainEnabled = c.abstain;
    for (std::size_t i = 0; i < c.votes.size(); ++i) glo.liveVotes[i] = c.votes[i];
    ShowVotesCast(glo.options);
    EXPECT_EQ(glo.votesCast, c.count);
    EXPECT_EQ(vote(1), c.first);
  }
}

TEST_F(CountUp, otherKindsCountEveryText) {
  glo.voteType = 3;
  glo.liveVotes[0] = "1|0|1";
  glo.liveVotes[2] = "x";
  ShowVotesCast(glo.options);
  EXPECT_EQ(glo.votesCast, 2);
}

TEST_F(CountUp, balanceCountsTheAllowedVotes) {
  glo.assessments[0].voteType = 3;
  glo.allowedVotes = "1,3,4,";
  glo.liveVotes[0] = "2";
  glo.liveVotes[1] = "4";
  ShowVotesCast(glo.options);
  EXPECT_EQ(glo.votesCast, 1);
}

struct PressCase {
  const char* what;
  int keypad;
  std::string press;
  int startFrom;
  bool abstain;
  std::string entry;  // of that keypad; "" where there is none
  int count;
};

TEST_F(CountUp, takesPresses) {
  const PressCase cases[] = {
      {"X is 0 on a scale from 0", 1, "X", 0, false, "0", 1},
      {"X abstains", 1, "X", 0, true, "-2", 1},
      {"X on a scale from 1 stays, uncounted alone", 1, "X", 1, false, "-2", 0},
      {"beyond the arrays", 6, "3", 1, false, "", 0},
      {"keypad 0", 0, "3", 1, false, "", 0},
      {"the spare element counts nowhere", 5, "3", 1, false, "3", 0},
  };
  for (const PressCase& c : cases) {
    SCOPED_TRACE(c.what);
    ResetVotes();
    glo.startFrom = c.startFrom;
    glo.abstainEnabled = c.abstain;
    ShowVotesCast(glo.options);
    oComms_VoteRx(c.keypad, c.press);
    EXPECT_EQ(glo.votesCast, c.count);
    if (c.entry.empty())
      EXPECT_THAT(glo.liveVotes, ::testing::Each("-100"));
    else
      EXPECT_EQ(vote(c.keypad), c.entry);
  }
}

TEST_F(CountUp, theLastPressOfAKeypadCounts) {
  oComms_VoteRx(2, "3");
  oComms_VoteRx(2, "5");
  EXPECT_EQ(glo.votesCast, 1);
  EXPECT_EQ(vote(2), "5");
}

TEST_F(CountUp, pressesOutsideAVoteChangeNothing) {
  glo.voteOpen = false;
  oComms_VoteRx(2, "3");
  EXPECT_EQ(vote(2), "-100");
}

TEST_F(CountUp, theRunningTallyIsThePlainCount) {
  room(40);
  const std::vector<std::string> texts{"1", "5", "0", "6", "X", "abc", "-100", "-1", "3", ""};
  world.random.Randomize(7);
  const auto pick = [&](std::size_t n) {
    return static_cast<std::size_t>(world.random.Rnd() * static_cast<double>(n));
  };
  for (int round = 0; round < 20; ++round) {
    ResetVotes();
    glo.abstainEnabled = round % 2 == 1;
    glo.startFrom = round % 3 == 0 ? 0 : 1;
    ShowVotesCast(glo.options);
    for (int i = 0; i < 60; ++i) {
      oComms_VoteRx(static_cast<int>(pick(42)), texts[pick(texts.size())]);
      const int running = glo.votesCast;
      ShowVotesCast(glo.options);
      ASSERT_EQ(running, glo.votesCast) << "round " << round << " press " << i;
      oComms_VoteRx(static_cast<int>(pick(42)), texts[pick(texts.size())]);
    }
  }
}

struct CloseCase {
  const char* what;
  int keypads, percent, close;
  int closesAt;  // count, 0 never within the room less one
};

TEST_F(CountUp, closesByItself) {
  const CloseCase cases[] = {{"80 percent of 10", 10, 80, 1, 8},
                             {"threshold 7.5", 10, 75, 1, 8},
                             {"all of the room", 10, 0, 1, 10},
                             {"not asked for", 10, 80, 0, 0}};
  for (const CloseCase& c : cases) {
    SCOPED_TRACE(c.what);
    room(c.keypads);
    ResetVotes();
    glo.voteComplete = 0;
    glo.keypadsNotVotedClose = c.close;
    glo.keypadsNotVotedClosePercent = c.percent;
    ShowVotesCast(glo.options);
    EXPECT_EQ(glo.voteComplete, 0);
    int closedAt = 0;
    for (int k = 1; k <= c.keypads && closedAt == 0; ++k) {
      oComms_VoteRx(k, "3");
      closedAt = glo.voteComplete == 1 ? k : 0;
    }
    EXPECT_EQ(closedAt, c.closesAt);
  }
}

TEST_F(CountUp, arraysGrowKeepingVotesAndNeverCutAVoterOff) {
  oComms_VoteRx(4, "2");
  glo.keypadsNotVotedHi = 9;
  ResizeVoteArrays();
  EXPECT_EQ(glo.liveVotes.size(), 10U);
  EXPECT_EQ(vote(4), "2");
  glo.keypadsNotVotedHi = 2;
  ResizeVoteArrays();
  EXPECT_EQ(glo.liveVotes.size(), 5U);
  glo.voteOpen = false;
  glo.keypadsNotVotedHi = 0;
  ResizeVoteArrays();
  EXPECT_EQ(glo.liveVotes.size(), 651U);
}

TEST_F(CountUp, theKeyboardPressesForTheNextKeypad) {
  glo.activeKeypads = {"2", "4", "9"};
  EXPECT_FALSE(SimulatePress(6));
  EXPECT_FALSE(SimulatePress(-2));
  EXPECT_TRUE(SimulatePress(5));
  glo.abstainEnabled = true;
  EXPECT_TRUE(SimulatePress(-2));
  EXPECT_FALSE(SimulatePress(1));  // keypad 9 is not there
  EXPECT_THAT(glo.liveVotes, ElementsAre("-100", "5", "-100", "-2", "-100"));
}

TEST_F(CountUp, theRandomFillVotesOnTheScaleAndEnds) {
  room(50);
  for (const std::int32_t type : {9, 14}) {
    ResetVotes();
    glo.voteType = type;
    glo.voteComplete = 0;
    GenerateRandomVotes(1);
    EXPECT_EQ(glo.votesCast, 50);
    EXPECT_EQ(glo.voteComplete, 1);
    for (int k = 1; k <= 50; ++k)
      EXPECT_THAT(std::stoi(vote(k)), ::testing::AllOf(::testing::Ge(1), ::testing::Le(5)));
  }
  glo.allowedVotes = "1,2,7,";
  glo.votesCast = 0;
  GenerateRandomVotes(4);
  for (int k = 1; k <= 50; ++k) EXPECT_THAT(vote(k), ::testing::AnyOf("1", "2", "7"));
}

TEST_F(CountUp, holdsPressesBackWhileTheVotesAreElsewhere) {
  oComms_VoteRx(1, "3");
  {
    const PressHold hold;
    glo.liveVotes.assign(5, "1");
    oComms_VoteRx(2, "4");
  }
  EXPECT_THAT(glo.liveVotes, ElementsAre("3", "4", "-100", "-100", "-100"));
  EXPECT_EQ(glo.votesCast, 2);
}

TEST_F(CountUp, otherFormsTakePressesFirst) {
  struct Sifter : host::Form, TakesPresses {
    Sifter() : Form("sifterVoteForm") {}
    void VoteRx(std::int32_t keypad, const std::string& press) override {
      last = std::to_string(keypad) + press;
    }
    std::string last;
  };
  world.forms.define("sifterVoteForm", [] { return std::make_unique<Sifter>(); });
  auto& sifter = world.forms.as<Sifter>("sifterVoteForm");
  oComms_VoteRx(2, "X");
  EXPECT_EQ(sifter.last, "2X");
  EXPECT_EQ(vote(2), "-100");
}

TEST_F(CountUp, namesTheKeypadsThatAreMissing) {
  glo.activeKeypads = {"1", "2", "3", "12", ""};
  glo.keypadsNotVotedHi = 12;
  ResizeVoteArrays();
  glo.keypadPortInfo = {"1,0,0", "2,0,0", "3,0,0", "2,10,1"};
  glo.keypadsNotVotedHowManyToShow = 2;
  glo.useOffsets = true;
  uctlKpadsNotVoted control;
  int shown = 0;
  control.showRequested = [&] { ++shown; };
  glo.liveVotes[0] = "3";
  glo.liveVotes[1] = "-2";
  control.ShowKeypadsNotVoted();
  EXPECT_EQ(control.Caption, "3 2(2)");
  EXPECT_EQ(control.waitedFor, 2);
  EXPECT_EQ(shown, 0);
  glo.keypadsNotVotedPopupOn = 2;
  glo.keypadsNotVotedHowManyToShow = 1;
  control.ShowKeypadsNotVoted();
  EXPECT_EQ(control.Caption, "3 and 1 more");
  EXPECT_EQ(shown, 1);
  glo.keypadsNotVotedHowManyToShow = 0;
  control.ShowKeypadsNotVoted();
  EXPECT_EQ(control.Caption, "2 keypads");
  glo.keypadsNotVotedClose = 1;
  glo.liveVotes[2] = glo.liveVotes[11] = "1";
  control.ShowKeypadsNotVoted();
  EXPECT_EQ(glo.voteComplete, 1);
}

// The participants are those whose votes the average is made of.
TEST_F(CountUp, tellsTheStatistics) {
  glo.liveVotes = {"1", "1", "5", "-2", "", "-100"};
  glo.postalVotes = {3, 3, -100, 0};
  glo.opt_abstain = glo.abstainEnabled = true;
  const char* const told[] = {
      "Average: 2.33\nStandard Deviation: 1.89\nDiversity: 94.28%\nParticipants: 3\nAbstains: 1",
      "Average: 3.00\nStandard Deviation: 0.00\nDiversity: 0%\nParticipants: 2\nAbstains: 0",
      "Average: 2.60\nStandard Deviation: 1.50\nDiversity: 74.83%\nParticipants: 5\nAbstains: 1"};
  for (const int mode : {0, 1, 2}) {
    glo.CheckUseLivePostal = mode;
    SetStats(0, 0);
    EXPECT_EQ(statisticsText(0, 1), told[mode]);
  }
}

class KeyboardVote : public VoteFixture {};

TEST_F(KeyboardVote, isOfferedWithoutAController) {
  glo.baseType.clear();
  glo.activeKeypads.clear();
  world.expectEnter("No voting controllers selected");
  std::string caption;
  scripts = {[&] {
    world.at(0.1, [&] { caption = runtime().uctl_votesCast.label.Caption; });
    keyAt(0.2, '3');
    keyAt(0.4, key::numpad0 + 4);
    keyAt(0.6, '9');
    keyAt(1, key::space);
    world.at(2, [] {
      glo.quitRequested = true, host::host().forms->as<xyVoteRuntime>("xyVoteRuntime").Form_KeyDown('N', 0);
    });
  }};
  runtime().startProcess();
  EXPECT_EQ(caption, "K'Board");
  EXPECT_EQ(saved()[0], "3;4;-;-; 10C1");
}

TEST_F(KeyboardVote, isTurnedOnByADigitAndStartsTheVoteAnew) {
  world.expectEnter("Would you like to activate it for this Matrix session?");
  world.expectMsgBox("Would you like to activate it for this Matrix session?", host::Answer::yes);
  scripts = {[&] {
    world.at(0.2, [&] { press(3, "5"); });
    keyAt(0.4, '2');
    world.at(0.45, [&] { EXPECT_EQ(glo.votesCast, 1) << "Enter keeps the votes"; });
    keyAt(0.6, '2');
    keyAt(1, 'G');
    keyAt(2, key::space);
  }};
  scripts.push_back([&] { world.at(0.5, [] { glo.quitRequested = true, glo.voteAbandoned = 1; }); });
  runtime().startProcess();
  EXPECT_TRUE(world.files.fileExists("/install/baseKB.txt"));
  EXPECT_THAT(world.link.sent, ::testing::Contains("KBOARD"));
  EXPECT_THAT(saved()[0], ::testing::MatchesRegex("[1-5];[1-5];[1-5];[1-5]; 10C1"));
  DeleteKBOARDFile();
  EXPECT_FALSE(world.files.fileExists("/install/baseKB.txt"));
}

TEST_F(KeyboardVote, refusedEndsTheRun) {
  glo.baseType.clear();
  world.expectMsgBox("No voting controllers selected", host::Answer::no);
  runtime().startProcess();
  EXPECT_TRUE(glo.quitRequested);
  EXPECT_EQ(opens, 0U);
}

}  // namespace
}  // namespace qrn
