// What the facilitator does while a vote is open and while its result is up, told in case files.
#include "support/action_cases.h"
#include "support/run_case.h"
#include "vote/count_up_vote.h"
#include "vote/link/comms.h"
#include "vote/link/keypad_arrays.h"
#include "vote/xy_vote_runtime.h"

namespace qrn {
namespace {

using test::Words;

class VoteKeys : public test::ActionCases {
 protected:
  VoteKeys() {
    test::beginRun(world);
    glo.baseType = "HW";
    glo.keypadsNotVotedHi = 4;
    registerComms();
    registerVoteForms();
    // open [VOTE ...]: a vote that these have come for; result: the same, closed
    for (const char* what : {"open", "result"})
      on(what, [this, what](const Words& words) {
        state_ = std::string(what) == "result" ? VoteState::resultUp : VoteState::open;
        votes_ = words;
        renew();
      });
    on("base", [](const Words& words) { glo.baseType = words.word(0); });
    on("abstains", [](const Words&) { glo.abstainEnabled = true; });
    on("statistics",
       [](const Words& words) { glo.CheckAverageScoreIndicator = words.word(0) == "on" ? 1 : 0; });
    on("between", [this](const Words&) {
      state_ = VoteState::done;
      renew();
    });
    on("later", [this](const Words& words) { world.clock.micros += 1000 * words.number(0); });
    // twice KEY MILLISECONDS
    on("twice", [this](const Words& words) {
      tellChange([&] {
        host::strikeKeys(runtime(), words.word(0));
        world.clock.micros += 1000 * words.number(1);
        host::strikeKeys(runtime(), words.word(0));
      });
    });
    on("click", [this](const Words& words) {
      const host::Element& count = *runtime().surface().find("uctl_votesCast", 0);
      const int button = words.word(0) == "right" ? host::mouse::right : host::mouse::left;
      tellChange([&] { runtime().Form_MouseDown(button, count.left + 5, count.top + 5); });
    });
  }

  xyVoteRuntime& runtime() { return world.forms.as<xyVoteRuntime>("xyVoteRuntime"); }
  host::Form* form() override { return world.forms.find("xyVoteRuntime"); }
  test::TestHost& testHost() override { return world; }
  void renew() override {
    world.forms.unload("xyVoteRuntime");
    xyVoteRuntime& form = runtime();
    world.forms.show("xyVoteRuntime");
    glo.voteComplete = glo.voteAbandoned = 0;
    glo.restartVote = glo.returnToEditor = glo.quitRequested = glo.keyboardTurnedOn = false;
    glo.activeKeypads = {"1", "2", "3"};
    glo.CheckAverageScoreIndicator = 1;
    world.presentation.tags().Delete("qrnVoteTerminated");
    DisplayVote(0, 1, 0, form);
    const bool result = state_ == VoteState::resultUp;
    glo.voteOpen = state_ == VoteState::open;
    ResizeVoteArrays();
    ResetVotes();
    for (std::size_t i = 0; i < votes_.size(); ++i) glo.liveVotes[i] = votes_[i];
    ShowVotesCast(glo.options);
    form.state = state_;
    form.ShowBars(result);
    form.ShowAverageScore("Average: 3", result);
    world.link.sent.clear();
  }
  State state() override {
    const xyVoteRuntime& now = runtime();
    std::string votes, sent;
    for (const std::string& vote : glo.liveVotes) votes += (vote == "-100" ? "-" : vote) + " ";
    for (const std::string& command : world.link.sent) sent += command + " ";
    return {{"vote", glo.voteComplete == 1 ? "closed" : "open"},
            {"again", glo.restartVote && glo.voteAbandoned == 1 ? "yes" : ""},
            {"pointer", now.cursorShown ? "shown" : ""},
            {"panel", now.uctl_kpadsNotVoted.Visible ? "shown" : ""},
            {"result", std::string(now.bars.Visible ? "bars " : "") +
                           (now.lbl_averageScore.Visible ? "statistics" : "")},
            {"outcome", world.presentation.tags().Item("qrnVoteTerminated")},
            {"votes", votes},
            {"base", glo.baseType},
            {"keypads", std::to_string(glo.activeKeypads.size())},
            {"sent", sent}};
  }

  test::TestHost world;
  Words votes_{""};
  VoteState state_ = VoteState::open;
};

const bool kRegistered = test::registerCases<VoteKeys>("VoteKeys", QUORIN_CASES "/vote_keys.case");

}  // namespace
}  // namespace qrn
