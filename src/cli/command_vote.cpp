// vote: the whole exercise with rehearsal keypads, through the real controller.
#include <iostream>
#include <memory>
#include <string>
#include <utility>

#include "base/errors.h"
#include "cli/commands.h"
#include "cli/workshop.h"
#include "core/glo.h"
#include "core/options.h"
#include "host/controller.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"
#include "host/wait.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "store/vote_store.h"
#include "vote/link/comms.h"
#include "vote/vote_plan.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::cli {

namespace {

// Stands in for the facilitator: moves on from a result, closes a vote that some keypads never answer, and
// gives up when there are no votes, no controller, or no place to store them.
class RehearsalFacilitator {
 public:
  RehearsalFacilitator() : timer_(20, [this] { look(); }) { timer_.setEnabled(true); }

 private:
  static constexpr int kPatienceTicks = 1500;  // of 20 ms

  void look() {
    auto* runtime = dynamic_cast<xyVoteRuntime*>(host::host().forms->find(formName::runtime));
    if (runtime == nullptr)
      return;
    if (leftoverVotes() > 0) {
      glo.quitRequested = true;
      glo.voteAbandoned = runtime->state == VoteState::open ? 1 : glo.voteAbandoned;
    }
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
    if (glo.votesCast > 0 && theComms().linked()) {
      glo.voteComplete = 1;
    } else {
      glo.quitRequested = true;
      glo.voteAbandoned = 1;
    }
  }

  host::Timer timer_;
  int lastCount_ = -1;
  int quietTicks_ = 0;
};

// The link of this run and what hangs on it; all is let go again however the run ends.
class Wiring {
 public:
  Wiring(std::unique_ptr<host::ControllerLink> link, std::function<bool()> nobodyReads)
      : link_(std::move(link)), nobodyReads_(std::move(nobodyReads)) {
    host::host().controller = link_.get();
    registerComms();
    registerVoteForms();
    voteSaved = [this](const std::string& line) { tellSavedVote(line); };
  }
  ~Wiring() {
    voteSaved = nullptr;
    for (const char* form : {formName::quitOptions, formName::runtime, formName::comms})
      host::host().forms->unload(form);
    host::host().forms->releaseUnloaded();
    host::host().controller = nullptr;
  }
  Wiring(const Wiring&) = delete;
  Wiring& operator=(const Wiring&) = delete;
  int saved() const { return saved_; }
  bool toldAll() const { return toldAll_; }

 private:
  // The room does not wait for whoever reads the list: without a reader the vote goes on.
  void tellSavedVote(const std::string& line) {
    ++saved_;
    if (toldAll_ && !(std::cout << "saved " << line << std::endl)) {
      toldAll_ = false;
      if (!nobodyReads_())
        std::cerr << "quorin-matrix: The list of saved votes can no longer be written; the vote goes on\n";
    }
  }

  std::unique_ptr<host::ControllerLink> link_;
  std::function<bool()> nobodyReads_;
  int saved_ = 0;
  bool toldAll_ = true;
};

void joinController() {
  comms& link = theComms();
  if (!link.linked())
    throw HostError(Fault::world, 0,
                    "The controller could not be started. " + host::host().controller->lastError());
  link.ReadPortInfo();
  if (!host::waitUntil([] { return !glo.baseType.empty() && glo.numKeypads > 0; }, 10))
    throw HostError(Fault::world, 0, "The controller does not answer");
}

// `gone`: why nothing can be stored in the deck any more, "" when it can.
void checkOutcome(const std::string& deck, const std::string& gone, int saved) {
  const int left = leftoverVotes();
  if (left > 0)
    throw HostError(Fault::world, 61,
                    std::to_string(left) + (left == 1 ? " vote" : " votes") + " could not be stored in " +
                        deck + "; " +
                        (gone.empty() ? std::to_string(saved) + " of this run are saved there" : gone));
  if (glo.quitRequested || glo.voteAbandoned != 0)
    throw HostError(Fault::world, 0,
                    "The vote stopped before its end: votes or the controller stayed away. " +
                        std::to_string(saved) + " of this run are saved in " + deck +
                        "; the same command goes on with the next one");
}

std::string votesOfThisRun(int saved) {
  return std::to_string(saved) + (saved == 1 ? " vote" : " votes") + " of this run";
}

void saveDeck(host::Presentation& presentation, const std::string& deck, int saved) {
  if (!iniOptions().disablePptSaveAfterVoteClose)
    presentation.Save();
  else if (!presentation.Saved())
    std::cerr << "quorin-matrix: " << deck << " was not saved, since qrn.ini disables that after a vote; the "
              << votesOfThisRun(saved) << " are kept in the journal beside it\n";
}

}  // namespace

void runVote(const VoteArguments& arguments, const CliHooks& hooks) {
  Workshop workshop(arguments, Access::write, hooks);
  if (const std::string why = workshop.presentation().WhyNoVotes(); !why.empty())
    throw HostError(Fault::world, 70, "The vote was not started. " + why);
  workshop.loadExercise(arguments.slide);
  if (arguments.by.size() != 0)
    glo.runByOption = arguments.by == "assessment" ? 1 : 0;
  if (const std::string why = whyNothingToVote(); !why.empty())
    throw HostError(Fault::badData, 0, why);
  readlog();
  glo.cmdFile = cmdWord::slideHoldsExercise;
  glo.cmdMode = "S";
  const Wiring wiring(hooks.makeLink(arguments.rehearsal), hooks.nobodyReadsOutput);
  joinController();
  const RehearsalFacilitator facilitator;
  host::host().forms->as<xyVoteRuntime>(formName::runtime).startProcess();
  theComms().EndVote();
  checkOutcome(arguments.deck, workshop.presentation().WhyNoVotes(), wiring.saved());
  saveXY();
  saveDeck(workshop.presentation(), arguments.deck, wiring.saved());
  if (!wiring.toldAll() && !hooks.nobodyReadsOutput())
    throw HostError(Fault::world, 61,
                    "The list of saved votes could not be written; all " + std::to_string(wiring.saved()) +
                        " votes of this run are saved in " + arguments.deck);
}

}  // namespace qrn::cli
