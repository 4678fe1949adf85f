// Which presses count and when a vote closes by itself; with the runs, the keyboard and the link in case
// files.
#include "base/text.h"
#include "controller/room_options.h"
#include "store/statistics.h"
#include "store/vote_store.h"
#include "support/members.h"
#include "vote/count_up_vote.h"
#include "vote/link/comms.h"
#include "vote/link/keypad_arrays.h"
#include "vote/vote_case.h"

namespace qrn::test {

void VoteCase::countCommands() {
  // ballot FROM OPTIONS [abstain]: an open vote of the room, nobody has voted
  on("ballot", [](const Words& words) {
    ResizeVoteArrays();
    ResetVotes();
    glo.voteType = 9;
    glo.startFrom = words.number(0);
    glo.options = words.number(1);
    glo.abstainEnabled = words.word(2) == "abstain";
    glo.voteOpen = true;
    glo.voteComplete = 0;
    ShowVotesCast(glo.options);
  });
  // count VOTE ...: the votes of the keypads, as they stand, are counted
  on("count", [this](const Words& words) {
    for (std::size_t i = 0; i < words.size(); ++i) glo.liveVotes.at(i) = words[i];
    ShowVotesCast(glo.options);
    tell(glo.votesCast, " of ", memberText("liveVotes"));
  });
  // presses KEYPAD=VOTE ...: counted one by one, until the vote closes
  on("presses", [this](const Words& words) {
    for (const std::string& word : words) {
      const std::size_t equal = word.find('=');
      oComms_VoteRx(std::stoi(word), word.substr(equal + 1));
      if (glo.voteComplete == 1) {
        tell("closed by " + word);
        break;
      }
    }
    tell(glo.votesCast, " of ", memberText("liveVotes"));
  });
  on("seats", [](const Words& words) {
    glo.keypadsNotVotedHi = words.number(0);
    ResizeVoteArrays();
    glo.activeKeypads.clear();
    for (int k = 1; k <= words.number(0); ++k) glo.activeKeypads.push_back(std::to_string(k));
  });
  on("resize", [this](const Words& words) {
    glo.keypadsNotVotedHi = words.number(0);
    ResizeVoteArrays(words.word(1) == "keep");
    tell(glo.liveVotes.size(), " elements");
  });
  on("simulate", [this](const Words& words) { tell(SimulatePress(words.number(0)) ? "taken" : "refused"); });
  on("random", [this](const Words& words) {
    ResetVotes();
    glo.voteComplete = glo.votesCast = 0;
    GenerateRandomVotes(words.number(0));
    std::map<std::string, int> seen;
    for (std::size_t i = 0; i + 1 < glo.liveVotes.size(); ++i) ++seen[glo.liveVotes[i]];
    std::string all =
        std::to_string(glo.votesCast) + " votes, closed " + std::to_string(glo.voteComplete) + ":";
    for (const auto& [vote, times] : seen) all += " " + vote;
    tell(all);
  });
  on("hold", [this](const Words& words) {
    {
      const PressHold hold;
      glo.liveVotes.assign(5, "1");
      oComms_VoteRx(words.number(0), words.word(1));
    }
    tell(glo.votesCast, " of ", memberText("liveVotes"));
  });
}

void VoteCase::roomCommands() {
  // room OPTION ...: the controller's own from now on
  on("room", [this](const Words& words) {
    controller::RoomOptions options;
    options.highest = 40;
    world.forms.unload("comms");
    room_ = std::make_unique<RoomLink>(roomOptions(words, std::move(options)));
    host::host().controller = room_.get();
    theComms();
    world.link.sent.clear();
    room_->FromQrnCtrl(room_->room.programArrived("a"));
  });
  on("phone", [this](const Words& words) {
    room_->room.phoneText(static_cast<controller::PhoneId>(words.number(0)), words.rest(1));
  });
  on("stand", [this](const Words&) {
    tell("base " + glo.baseType + ", keypads " + joined(glo.activeKeypads, ",") + ", deck " +
         world.presentation.tags().Item("ActiveKeypads"));
  });
  // rooms TAG BLOCK: the list of the deck and what the controller says make the keypads and the list
  on("meets", [this](const Words& words) {
    world.presentation.tagStore.values["ACTIVEKEYPADS"] = words[0];
    ReadActiveKeypads();
    glo.roomRehearsed = false;
    theComms().DecodeDataFromController("BASETYPE=" + words[1] + "\r\n" + words.rest(2));
    tell(joined(glo.activeKeypads, ",") + " deck " + world.presentation.tags().Item("ActiveKeypads") +
         (world.presentation.tagStore.failAtWrite > 0 ? ", not written" : ""));
    tellSent();
  });
  on("readports", [this](const Words&) { theComms().ReadPortInfo(), tellSent(); });
  on("keypads", [this](const Words& words) {
    if (words.word(0) == "read")
      ReadActiveKeypads();
    else
      theComms().WriteActiveKeypads(words.word(0) == "scan");
    tellSent();
  });
  on("folder", [this](const Words& words) { tell(world.files.folders.count(words[0]) ? "is there" : ""); });
  on("file", [this](const Words& words) { world.files.files[words[0]] = ""; });
  on("nofile",
     [this](const Words& words) { tell(world.files.files.erase(words[0]) != 0 ? "was there" : ""); });
}

void VoteCase::keypadCommands() {
  on("sifterform", [this](const Words&) {
    struct Sifter : host::Form, TakesPresses {
      explicit Sifter(std::function<void(const std::string&)> told)
          : Form("sifterVoteForm"), told_(std::move(told)) {}
      void VoteRx(std::int32_t keypad, const std::string& press) override {
        told_("sifter " + std::to_string(keypad) + " " + press);
      }
      std::function<void(const std::string&)> told_;
    };
    world.forms.define("sifterVoteForm", [this] {
      return std::make_unique<Sifter>([this](const std::string& text) { tell(text); });
    });
    world.forms.as<Sifter>("sifterVoteForm");
  });
  missing_.showRequested = [this] { tell("is shown"); };
  missing_.changed = [this] { tell("is drawn"); };
  on("missing", [this](const Words& words) {
    words.word(0) == "forced" ? missing_.forceRefresh() : missing_.ShowKeypadsNotVoted();
    tell(missing_.Caption, " (", missing_.waitedFor, "), ", missing_.labels.size(), " named");
  });
  // list TYPE CAPTIONS [LIMITS]: random answers to a list of four captions, of keypads 1 to 3
  on("list", [this](const Words& words) {
    glo.voteType = words.number(0);
    glo.voteText = words[1];
    glo.voteTextOptionCount = 4;
    glo.limits = words.size() > 2 ? words.number(2) : 2;
    glo.allocation = 12;
    ResetVotes();
    glo.votesCast = glo.voteComplete = 0;
    GenerateRandomVotes(glo.voteType);
    runLine("show liveVotes");
  });
  // boxes ITEM ASSESSMENT: the form's own, or no form, name what SetStats works on
  on("boxes", [this](const Words& words) {
    if (words[0] != "none") {
      runtime().txt_RiskNum = words[0];
      runtime().txt_AssNum = words[1];
    }
    const StatsTarget target = SetStats(0, 0, "xyVoteRuntime");
    tell("item ", target.risk, ", assessment ", target.assessment);
    tell(newErrors());
  });
  on("resizeform", [this](const Words& words) {
    runtime().ScaleWidth = words.number(0);
    runtime().ScaleHeight = words.number(1);
    runtime().Form_Resize();
    tell(static_cast<int>(runtime().surface().width), " wide");
  });
  on("sounds", [this](const Words&) {
    for (const std::string& file : std::exchange(world.sound.played, {})) tell(file);
  });
  // plain NAME: a form without a window of its own is up
  on("plain", [this](const Words& words) {
    world.forms.define(words[0], [name = words[0]] { return std::make_unique<host::Form>(name); });
    world.forms.show(words[0]);
  });
  on("statistics", [this](const Words&) {
    SetStats(0, 0);
    tell(escaped(statisticsText(0, 1)));
  });
}

namespace {

const bool kCount = registerCases<VoteCase>("VoteCount", QUORIN_CASES "/count.case");
const bool kRuns = registerCases<VoteCase>("VoteRun", QUORIN_CASES "/run.case");
const bool kComms = registerCases<VoteCase>("Comms", QUORIN_CASES "/comms.case");

class CountUp : public VoteCase {
 protected:
  void TestBody() override {}
};

TEST_F(CountUp, theRunningTallyIsThePlainCount) {
  glo.voteType = 9;
  glo.options = 5;
  glo.voteOpen = true;
  glo.keypadsNotVotedHi = 40;
  ResizeVoteArrays();
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

TEST_F(CountUp, aHundredThousandPressesInOneBlock) {
  std::size_t presses = 0;
  theComms().VoteRx = [&](std::int32_t, const std::string&) { ++presses; };
  std::string block = "BASETYPE=HW\r\n";
  for (int i = 1; i <= 100000; ++i) block += "[1]," + std::to_string(i % 500 + 1) + ";5\r\n";
  theComms().DecodeDataFromController(block);
  EXPECT_EQ(presses, 100000U);
}

}  // namespace
}  // namespace qrn::test
