// vote: the whole exercise with rehearsal keypads, through the real controller.
#include <iostream>

#include "cli/commands.h"
#include "cli/workshop.h"
#include "core/glo.h"
#include "host/controller.h"
#include "host/errors.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/wait.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "store/vote_store.h"
#include "vote/comms.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::cli {

namespace {

// Stands in for the facilitator: moves on from a result, and closes a vote that some keypads never answer.
class RehearsalFacilitator {
 public:
  RehearsalFacilitator() : timer_(20, [this] { look(); }) { timer_.setEnabled(true); }
  bool gaveUp() const { return gaveUp_; }

 private:
  static constexpr int kPatienceTicks = 1500;  // of 20 ms

  void look() {
    auto* runtime = dynamic_cast<xyVoteRuntime*>(host::host().forms->find("xyVoteRuntime"));
    if (runtime == nullptr)
      return;
    if (runtime->state == VoteState::resultUp) {
      runtime->Form_KeyDown(host::key::space, 0);
      return;
    }
    if (runtime->state != VoteState::open || glo.votesCast != lastCount_) {
      lastCount_ = glo.votesCast;
      quietTicks_ = 0;
      return;
    }
    if (++quietTicks_ < kPatienceTicks)
      return;
    quietTicks_ = 0;
    if (glo.votesCast > 0) {
      glo.voteComplete = 1;
    } else {
      gaveUp_ = true;
      glo.quitRequested = true;
      glo.voteAbandoned = 1;
    }
  }

  host::Timer timer_;
  int lastCount_ = -1;
  int quietTicks_ = 0;
  bool gaveUp_ = false;
};

void tellSavedVote(const std::string& line) {
  std::cout << "saved " << line << std::endl;
  if (!std::cout)
    throw HostError(Fault::world, 61, "The list of saved votes could not be written");
}

void joinController() {
  comms& link = theComms();
  if (!link.linked())
    throw HostError(Fault::world, 0, "The controller could not be started");
  link.ReadPortInfo();
  if (!host::waitUntil([] { return !glo.baseType.empty() && glo.numKeypads > 0; }, 10))
    throw HostError(Fault::world, 0, "The controller does not answer");
}

}  // namespace

void runVote(const VoteArguments& arguments, const CliHooks& hooks) {
  Workshop workshop(arguments.deck, Access::write, hooks);
  workshop.loadExercise(arguments.slide);
  if (arguments.by.size() != 0)
    glo.runByOption = arguments.by == "assessment" ? 1 : 0;
  readlog();
  glo.cmdFile = "QRNMATRIX";
  glo.cmdMode = "S";
  const auto link = hooks.makeLink(arguments.rehearsal);
  host::host().controller = link.get();
  registerComms();
  registerVoteForms();
  joinController();
  voteSaved = tellSavedVote;
  const RehearsalFacilitator facilitator;
  host::host().forms->as<xyVoteRuntime>("xyVoteRuntime").startProcess();
  voteSaved = nullptr;
  theComms().EndVote();
  host::host().forms->unload("comms");
  host::host().forms->releaseUnloaded();
  host::host().controller = nullptr;
  if (facilitator.gaveUp())
    throw HostError(Fault::world, 0, "No votes arrived; the votes saved so far are in the deck");
  if (leftoverVotes() > 0)
    throw HostError(Fault::world, 61,
                    std::to_string(leftoverVotes()) + " votes could not be stored in " + arguments.deck);
  saveXY();
  workshop.presentation().Save();
}

}  // namespace qrn::cli
