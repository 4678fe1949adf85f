// A whole exercise, walked both ways, with everything a facilitator can do on the way.
#include <algorithm>

#include "host/controller.h"
#include "store/progress_log.h"
#include "vote/vote_fixture.h"
#include "vote/vote_plan.h"

namespace qrn {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
namespace key = host::key;

class Runner : public VoteFixture {
 protected:
  void run() { runtime().startProcess(); }
  void resume() {
    ASSERT_TRUE(readlog());
    ASSERT_TRUE(glo.resumePending);
    const VoteProgress progress = voteProgress();
    EXPECT_EQ(progress.voted, static_cast<int>(saved().size()));
    EXPECT_EQ(progress.due, 3 * static_cast<int>(assessmentOrder().size()));
    scripts.clear();
    run();
  }
};

TEST_F(Runner, byItemVotesEachAssessmentThroughAllItems) {
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("10C1", "11C1", "12C1", "10C2", "11C2", "12C2"));
  EXPECT_EQ(saved()[0], "3;4;5;-; 10C1");
  EXPECT_FLOAT_EQ(glo.risks[0].average[0], 4);
  EXPECT_TRUE(glo.risks[2].voted[1]);
  EXPECT_TRUE(glo.runFinished);
  readlog();
  EXPECT_FALSE(glo.resumePending);
}

TEST_F(Runner, byAssessmentVotesEachItemThroughAllAssessments) {
  glo.runByOption = 1;
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("10C1", "10C2", "11C1", "11C2", "12C1", "12C2"));
}

TEST_F(Runner, followsTheVotingOrderInBothWalks) {
  glo.assessmentInfo[0].votingOrder = 1;
  glo.assessmentInfo[1].votingOrder = 0;
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("10C2", "11C2", "12C2", "10C1", "11C1", "12C1"));
}

TEST_F(Runner, passesOverItemsNotSelectedWithoutARecord) {
  glo.risks[1].voting = false;
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("10C1", "12C1", "10C2", "12C2"));
}

TEST_F(Runner, byAssessmentLeavesOutItemsVotedOnAll) {
  glo.runByOption = 1;
  glo.risks[0].voted[0] = glo.risks[0].voted[1] = true;
  glo.risks[1].voted[0] = true;
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("11C1", "11C2", "12C1", "12C2"));
}

TEST_F(Runner, refusesAnAssessmentWithOneOptionEachTime) {
  glo.scaleLabels[0] = {"only", ""};
  for (int i = 0; i < 3; ++i) world.expectMsgBox("quorin matrix: Must have at least 2 options");
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("10C2", "11C2", "12C2"));
  EXPECT_FALSE(glo.risks[0].voted[0]);
}

TEST_F(Runner, restartsAVoteWithoutSavingIt) {
  scripts = {[this] {
    world.at(0.2, [this] { press(1, "1"); });
    keyAt(1, 'R');
  }};
  run();
  EXPECT_EQ(opens, 7U);
  EXPECT_EQ(saved()[0], "3;4;5;-; 10C1");
  EXPECT_EQ(saved().size(), 6U);
}

// The outcome is read without quotes and in any case.
TEST_F(Runner, votesAgainAfterTheResultWhenToldSo) {
  for (const char* word : {"R", "\"REVOTE\""}) {
    const std::size_t before = saved().size();
    opens = 0;
    scripts = {[this, word] {
      voteAndGoOn("111");
      world.at(1.6, [this, word] {
        if (std::string(word) == "R")
          key('R');
        else
          world.presentation.tags().Add("qrnVoteTerminated", word);
      });
    }};
    run();
    EXPECT_EQ(saved().size(), before + 7) << word;
    EXPECT_EQ(saved()[before + 1], "3;4;5;-; 10C1") << word;
  }
}

TEST_F(Runner, quitAllStopsAndTheRunGoesOnAtTheNextVote) {
  for (const int by : {0, 1}) {
    SCOPED_TRACE(by);
    glo.runByOption = by;
    for (RiskRecord& risk : glo.risks) risk.voted.fill(false);
    world.presentation.Slides(1).tags().Delete("QRNVOTES");
    glo.voteRecords.forget();
    opens = 0;
    scripts = {nullptr, nullptr, nullptr, [this] {
                 world.at(0.2, [this] { press(1, "2"); });
                 keyAt(0.8, key::escape);
                 chooseAt(1.2, xyVoteQuitOptions::quitAllVotes);
               }};
    run();
    EXPECT_EQ(saved().size(), 3U);
    EXPECT_EQ(outcome(), "Quit ALL");
    EXPECT_FALSE(host::host().forms->isLoaded("xyVoteRuntime"));
    resume();
    ASSERT_EQ(saved().size(), 6U);
    EXPECT_EQ(savedKeys()[3], by == 0 ? "10C2" : "11C2");
    readlog();
    EXPECT_FALSE(glo.resumePending);
  }
}

// Whatever happens while a result is up, and whatever order the facilitator has chosen since: nobody votes
// again on what is saved, and nothing is left out.
TEST_F(Runner, neitherRepeatsNorLeavesOutAVoteWhenTheRunWasKilled) {
  for (const auto& [by, then] : {std::pair{0, 0}, {0, 1}, {1, 0}, {1, 1}}) {
    SCOPED_TRACE(std::to_string(by) + " then " + std::to_string(then));
    glo.runByOption = by;
    for (RiskRecord& risk : glo.risks) risk.voted.fill(false);
    host::Tags& tags = world.presentation.Slides(1).tags();
    tags.Delete("QRNVOTES");
    glo.voteRecords.forget();
    opens = 0;
    std::string log;
    scripts.assign(5, nullptr);
    scripts[3] = [&] {
      voteAndGoOn();
      world.at(1.5, [&] { log = tags.Item("qrnMatrixLog"); });  // the result is up
    };
    scripts[4] = [this] { world.at(0.1, [] { glo.quitRequested = true, glo.voteAbandoned = 1; }); };
    run();
    tags.Add("qrnMatrixLog", log);
    for (RiskRecord& risk : glo.risks) risk.voted.fill(false);
    glo.runByOption = then;
    resume();
    std::vector<std::string> keys = savedKeys();
    std::sort(keys.begin(), keys.end());
    EXPECT_THAT(keys, ElementsAre("10C1", "10C2", "11C1", "11C2", "12C1", "12C2"));
  }
}

TEST_F(Runner, resumesInTheVotingOrder) {
  glo.assessmentInfo[0].votingOrder = 1;
  glo.assessmentInfo[1].votingOrder = 0;
  glo.assessmentInfo[2].active = true;
  glo.scaleLabels[2] = glo.scaleLabels[0];
  for (const int by : {0, 1}) {
    SCOPED_TRACE(by);
    glo.runByOption = by;
    for (RiskRecord& risk : glo.risks) risk.voted.fill(false);
    world.presentation.Slides(1).tags().Delete("QRNVOTES");
    glo.voteRecords.forget();
    opens = 0;
    scripts = {nullptr, nullptr, nullptr,
               [this] { world.at(0.5, [] { glo.quitRequested = true, glo.voteAbandoned = 1; }); }};
    run();
    resume();
    EXPECT_THAT(savedKeys(),
                by == 0
                    ? ElementsAre("10C2", "11C2", "12C2", "10C1", "11C1", "12C1", "10C3", "11C3", "12C3")
                    : ElementsAre("10C2", "10C1", "10C3", "11C2", "11C1", "11C3", "12C2", "12C1", "12C3"));
  }
}

TEST_F(Runner, goesToAnotherVoteAndBackOne) {
  scripts = {[this] {
               keyAt(0.5, key::escape);
               chooseAt(0.8, xyVoteQuitOptions::goTo, 2);
             },
             [this] {
               keyAt(0.5, key::escape);
               chooseAt(0.8, xyVoteQuitOptions::goBackOne);
             }};
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("11C1", "12C1", "10C2", "11C2", "12C2"));
}

TEST_F(Runner, asksBeforeClosingAVoteWithoutVotes) {
  scripts = {[this] {
    keyAt(0.5, key::space);
    keyAt(1.0, key::pageDown);
    keyAt(2.0, key::space);
  }};
  world.expectEnter("Confirm close vote: No votes have been collected");
  world.expectMsgBox("Close vote and continue?", host::Answer::yes);
  run();
  EXPECT_EQ(saved()[0], "-;-;-;-; 10C1");
  EXPECT_EQ(saved().size(), 6U);
}

// Where the system does not tell a repeat from a new stroke.
TEST_F(Runner, aHeldKeyStoresNothing) {
  scripts = {[this] {
    for (int i = 0; i < 50; ++i) keyAt(0.3 + 0.03 * i, key::enter);
    world.at(2, [this] {
      EXPECT_EQ(records(), "");
      glo.quitRequested = true, glo.voteAbandoned = 1;
    });
  }};
  world.expectEnter("Close vote and continue?");
  run();
}

TEST_F(Runner, escOnAResultAsksHowToGoOn) {
  struct Case {
    xyVoteQuitOptions::Option option;
    std::vector<std::string> keys;  // of the first records
    bool toTheEnd;
  };
  using Options = xyVoteQuitOptions;
  for (const Case& c :
       {Case{Options::continueVoting, {"10C1", "11C1"}, true},
        Case{Options::restartThisVote, {"10C1", "10C1", "11C1"}, true},
        Case{Options::goTo, {"10C1", "12C1", "10C2"}, true}, Case{Options::quitThisVote, {"10C1"}, false},
        Case{Options::quitAllVotes, {"10C1"}, false}}) {
    SCOPED_TRACE(c.option);
    world.presentation.slide(1).tagStore.Delete("QRNVOTES");
    glo.voteRecords.forget();
    opens = 0;
    scripts = {[&] {
      world.at(0.2, [&] { press(1, "3"); });
      keyAt(1, key::space);
      keyAt(1.5, key::escape);
      if (c.option == Options::continueVoting)
        keyAt(2, key::space);
      chooseAt(1.7, c.option, 2);
    }};
    run();
    const std::vector<std::string> keys = savedKeys();
    ASSERT_GE(keys.size(), c.keys.size());
    EXPECT_EQ(
        std::vector<std::string>(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(c.keys.size())),
        c.keys);
    EXPECT_EQ(keys.size() > c.keys.size(), c.toTheEnd);
    EXPECT_EQ(glo.returnToEditor, c.option == Options::quitAllVotes);
    glo.returnToEditor = false;
  }
}

TEST_F(Runner, aGraphOverAResultLeavesItsVotesAlone) {
  struct Loads : host::Form {
    Loads() : Form("xyVoteGraph") {}
    void Form_Load() override { glo.liveVotes.assign(5, "1"); }
  };
  world.forms.define("xyVoteGraph", [] { return std::make_unique<Loads>(); });
  glo.singleVoteRun = true;
  glo.jumpAssessment = 1;
  scripts = {[this] {
    world.at(0.2, [this] { press(1, "3"); });
    keyAt(1, key::space);
    keyAt(1.5, key::escape);
    chooseAt(1.7, xyVoteQuitOptions::goToGraph);
    world.at(2, [] { host::host().forms->hide("xyVoteGraph"); });
    world.at(2.2, [] { EXPECT_EQ(glo.liveVotes[0] + glo.liveVotes[1], "3-100"); });
    keyAt(2.4, key::space);
  }};
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("10C1"));
}

TEST_F(Runner, keepsAVoteThatClosedWhileItWasToBeLeft) {
  glo.keypadsNotVotedClose = 1;
  for (const auto option : {xyVoteQuitOptions::quitThisVote, xyVoteQuitOptions::quitAllVotes}) {
    world.presentation.slide(1).tagStore.Delete("QRNVOTES");
    glo.voteRecords.forget();
    opens = 0;
    scripts = {[&] {
      keyAt(0.2, key::escape);
      world.at(0.4, [&] { press(1, "3"), press(2, "4"), press(3, "5"); });
      chooseAt(0.8, option);
    }};
    run();
    EXPECT_THAT(saved(), ElementsAre("3;4;5;-; 10C1"));
  }
}

TEST_F(Runner, anOutcomeIsWhatItWasWrittenAsOrWhatATextMeans) {
  for (const auto how :
       {VoteOutcome::held, VoteOutcome::again, VoteOutcome::leaveThis, VoteOutcome::leaveAll,
        VoteOutcome::jump, VoteOutcome::seriesExit, VoteOutcome::seriesLast, VoteOutcome::seriesJump}) {
    writeOutcome(how);
    EXPECT_EQ(qrn::outcome(), how);
  }
  for (const auto& [text, how] : {std::pair{"vote finished", VoteOutcome::held},
                                  {"\"REVOTE\"", VoteOutcome::again},
                                  {"quit all", VoteOutcome::leaveAll},
                                  {"exit", VoteOutcome::seriesExit},
                                  {"jump last", VoteOutcome::seriesLast},
                                  {"of another program", VoteOutcome::held}}) {
    deleteOutcome();
    EXPECT_EQ(qrn::outcome(), VoteOutcome::none);
    world.presentation.tags().Add("qrnVoteTerminated", text);
    EXPECT_EQ(qrn::outcome(), how) << text;
  }
}

TEST_F(Runner, tellsWhatTheKeysActOn) {
  std::vector<VoteState> seen;
  const auto look = [&] { seen.push_back(runtime().state); };
  scripts = {[&] {
    world.at(0.5, look);
    voteAndGoOn();
    world.at(1.6, look);
  }};
  run();
  EXPECT_THAT(seen, ElementsAre(VoteState::open, VoteState::resultUp));
}

TEST_F(Runner, goesOnByItselfWhenNoResultIsWanted) {
  glo.runByShowBarGraph = 0;
  glo.CheckAverageScoreIndicator = 0;
  run();
  EXPECT_EQ(saved().size(), 6U);
}

TEST_F(Runner, countsThePostalVotesOfTheItemAtHand) {
  glo.CheckUseLivePostal = 2;
  glo.oVoteSlide->tags().Add("QRNPOSTALVOTES", "10C1;P1;1;1;\r\n");
  glo.postalVotes = {5, 5, 5, 0};  // left from looking at another item
  std::vector<float> averages;
  std::vector<bool> told;
  world.expectMsgBox("No votes have been collected", host::Answer::yes);
  for (const char* const votes : {"345", "345", ""})  // nobody votes on the third: no statistics
    scripts.push_back([this, votes, &averages, &told] {
      voteAndGoOn(votes);
      world.at(1.5, [&] {
        averages.push_back(glo.risks[averages.size()].average[0]);
        told.push_back(runtime().lbl_averageScore.Visible);
      });
    });
  run();
  EXPECT_THAT(averages, ElementsAre(2.8F, 4, 0));
  EXPECT_THAT(told, ElementsAre(true, true, false));
}

TEST_F(Runner, keepsTheVotesWhenTheLinkIsLost) {
  std::vector<std::string> told;
  scripts = {[&] {
               world.at(0.2, [&] { press(1, "3"); });
               world.at(0.5, [&] { world.link.linkUp = world.link.canShare = world.link.canStart = false; });
               world.at(1.0, [&] { told.push_back(runtime().lbl_status.Caption); });
               world.at(3.0, [&] { world.link.canStart = true; });
             },
             [&] {
               world.at(0.1, [&] { told.push_back(runtime().lbl_status.Caption); });
               world.at(0.2, [&] { press(2, "4"); });
               keyAt(1, key::space);
               keyAt(2, key::space);
             }};
  run();
  ASSERT_EQ(told.size(), 2U);
  EXPECT_THAT(told[0], HasSubstr("is lost. The votes received so far are kept."));
  EXPECT_THAT(told[1], HasSubstr("is back"));
  EXPECT_EQ(saved()[0], "3;4;-;-; 10C1");
}

TEST_F(Runner, opensTheVoteOnceALateControllerIsReady) {
  world.link.ready = false;
  world.at(5, [] { EXPECT_FALSE(host::host().forms->unload("xyVoteRuntime", true)) << "and asks nothing"; });
  world.at(15, [this] { world.link.ready = true; });
  run();
  EXPECT_EQ(saved().size(), 6U);
  EXPECT_EQ(opens, 6U);
}

TEST_F(Runner, savesVotesReceivedJustBeforeTheLinkWasLost) {
  scripts = {[this] {
    world.at(0.30, [this] { press(1, "3"), press(2, "2"); });
    world.at(0.31, [this] { world.link.linkUp = world.link.canShare = world.link.canStart = false; });
    world.at(0.32, [] { glo.voteComplete = 1; });
    world.at(1.0, [this] { world.link.canShare = true; });
    keyAt(2, key::space);
  }};
  run();
  EXPECT_EQ(saved()[0], "3;2;-;-; 10C1");
}

TEST_F(Runner, takesPressesThatCrossedWithTheClose) {
  world.link.onSend = [this](const std::string& command) {
    if (command == "StartVote")
      opened();
    if (command == "EndVote" && opens == 1 && glo.voteOpen)
      world.at(0.05, [this] { press(4, "1"); });
  };
  run();
  EXPECT_EQ(saved()[0], "3;4;5;1; 10C1");
}

TEST_F(Runner, triesAgainWhenTheDiskFails) {
  scripts = {[this] {
    voteAndGoOn();
    world.at(0.9, [this] { world.presentation.slide(1).tagStore.failAtWrite = 1; });
  }};
  world.expectEnter("The votes could not be saved to the slide:");
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("10C1", "11C1", "12C1", "10C2", "11C2", "12C2"));
}

TEST_F(Runner, endsWhenTheFormIsClosedWhileWaiting) {
  scripts = {nullptr, [this] {
               world.at(0.2, [this] { press(1, "3"); });
               world.at(0.5, [] { host::host().forms->unload("xyVoteRuntime"); });
             }};
  run();
  EXPECT_EQ(savedKeys().size(), 1U);
  EXPECT_FALSE(glo.voteOpen);
}

TEST_F(Runner, keepsTheVotesOfAVoteCutOffByTheEndOfTheProgram) {
  scripts = {nullptr, [this] {
               world.at(0.2, [this] { press(2, "1"); });
               world.at(0.5, [] { glo.closing = true; });
             }};
  run();
  ASSERT_EQ(saved().size(), 2U);
  EXPECT_EQ(saved()[1], "-;1;-;-; 11C1");
  EXPECT_FALSE(glo.risks[1].voted[0]);
}

TEST_F(Runner, goesOnWhenTheOutcomeCannotBeWritten) {
  scripts = {[this] {
    voteAndGoOn();
    world.at(1.9, [this] { world.presentation.tagStore.failAtWrite = 1; });
  }};
  run();
  EXPECT_EQ(saved().size(), 6U);
}

TEST_F(Runner, tellsTheEndOfAnAssessmentWhenAskedTo) {
  glo.assessmentInfo[0].showEndMessage = true;
  world.expectMsgBox("quorin matrix: End of 1st assessment");
  run();
  EXPECT_EQ(saved().size(), 6U);
}

TEST_F(Runner, theCloseButtonAsksAndTakesNoVoteAway) {
  const auto closeAt = [this](double seconds) {
    world.at(seconds, [] { EXPECT_FALSE(host::host().forms->unload("xyVoteRuntime", true)); });
  };
  for (const char* mode : {"DISPLAY", ""}) {
    SCOPED_TRACE(mode);
    glo.cmdMode = mode;
    world.presentation.slide(1).tagStore.Delete("QRNVOTES");
    glo.voteRecords.forget();
    opens = 0;
    scripts = {[&] {
      voteAndGoOn();
      closeAt(0.5);
      chooseAt(0.8, xyVoteQuitOptions::continueVoting);  // what Enter and Esc take there
      closeAt(1.15);                                     // the vote closes
      closeAt(1.5);
      chooseAt(1.7, xyVoteQuitOptions::continueVoting);
    }};
    run();
    EXPECT_EQ(saved().size(), 6U);
    EXPECT_EQ(saved()[0], "3;4;5;-; 10C1");
  }
  world.expectEnter("Are you sure you want to quit matrix?");
  runtime();
  closeAt(0.1);
  host::waitUntil([] { return false; }, 0.2);
  EXPECT_TRUE(host::host().forms->isLoaded("xyVoteRuntime"));
}

TEST_F(Runner, runsOneVoteAloneWhenAskedTo) {
  glo.singleVoteRun = true;
  glo.jumpItem = 1;
  glo.jumpAssessment = 2;
  run();
  EXPECT_THAT(savedKeys(), ElementsAre("11C2"));
}

TEST_F(Runner, holdsItsWalkWhenAGraphReordersTheList) {
  struct Reorders : host::Form {
    Reorders() : Form("xyVoteGraph") {}
    void Form_Load() override { std::reverse(glo.risks.begin(), glo.risks.end() - 1); }
  };
  world.forms.define("xyVoteGraph", [] { return std::make_unique<Reorders>(); });
  glo.runByOption = 1;
  glo.runByShowScatter = 1;
  glo.runByShowAveragesEnd = 0;
  int shown = 0;
  host::Timer closer(100, [&] {
    if (host::host().forms->isVisible("xyVoteGraph")) {
      ++shown;
      host::host().forms->hide("xyVoteGraph");
    }
  });
  closer.setEnabled(true);
  run();
  EXPECT_EQ(shown, 3);
  EXPECT_EQ(glo.risks[0].sortKey, 10);
  EXPECT_THAT(savedKeys(), ElementsAre("10C1", "10C2", "11C1", "11C2", "12C1", "12C2"));
}

}  // namespace
}  // namespace qrn
