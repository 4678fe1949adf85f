#include "core/glo.h"
#include "core/model.h"
#include "desktop/form_windows.h"
#include "desktop/window_case.h"
#include "support/run_case.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::test {
namespace {

// Three items on two assessments.
class QuitCase : public WindowCase {
 protected:
  QuitCase() {
    glo = Glo{};
    beginExercise();
    registerVoteForms();
    desktop::attachFormWindows(world.forms, stack);
    // answer ...: what is done while the question stands, and what comes of it
    on("answer", [this](const Words& words) {
      world.forms.unload("xyVoteQuitOptions");
      world.at(0.05, later(words, 0));
      world.forms.showModal("xyVoteQuitOptions");
      static const std::map<int, std::string> names{{xyVoteQuitOptions::goTo, "go to"},
                                                    {xyVoteQuitOptions::quitAllVotes, "quit all votes"},
                                                    {xyVoteQuitOptions::restartThisVote, "restart this vote"},
                                                    {xyVoteQuitOptions::continueVoting, "continue voting"}};
      const auto& form = world.forms.as<xyVoteQuitOptions>("xyVoteQuitOptions");
      tell(names.at(form.chosen), form.UserResult == VoteOutcome::jump   ? ", jumps"
                                  : form.UserResult == VoteOutcome::none ? ""
                                                                         : ", ends the vote");
    });
    on("jump", [this](const Words&) { tell(glo.jumpItem, " ", glo.jumpAssessment); });
    on("votescast", [](const Words& words) { glo.votesCast = words.number(0); });
    on("vote", [this](const Words&) { world.forms.show("xyVoteRuntime"); });
    on("front", [this](const Words&) {
      tell(stack.front() == stack.formWindow("xyVoteRuntime") ? "the vote" : "another");
      for (const char* name : {"xyVoteRuntime", "xyVoteQuitOptions"}) world.forms.unload(name);
      world.forms.releaseUnloaded();
    });
  }
  ~QuitCase() override { glo = Glo{}; }
};

const bool kRegistered = registerCases<QuitCase>("QuitCase", QUORIN_CASES "/quit_options.case");

}  // namespace
}  // namespace qrn::test
