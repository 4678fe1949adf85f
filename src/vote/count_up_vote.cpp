#include "vote/count_up_vote.h"

#include <cmath>
#include <utility>

#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/wait.h"
#include "host/windows.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "store/statistics.h"
#include "store/vote_store.h"
#include "vote/link/comms.h"
#include "vote/link/keypad_arrays.h"
#include "vote/link/vote_outcome.h"
#include "vote/link_watch.h"

namespace qrn {

namespace {

constexpr const char* kModule = "count_up_vote";
// Presses that the controller had taken before it heard "EndVote" come in within this time.
constexpr double kSettleSeconds = 0.1;
constexpr int kFailuresBorne = 5;

VoteForm* running = nullptr;

// One pass of a vote.
class RunningVote {
 public:
  explicit RunningVote(VoteForm& form) : before_(std::exchange(running, &form)) {}
  ~RunningVote() {
    running = before_;
    glo.voteOpen = false;
  }
  RunningVote(const RunningVote&) = delete;
  RunningVote& operator=(const RunningVote&) = delete;

 private:
  VoteForm* before_;
};

// Asks for the keyboard when no controller is chosen. False ends the program.
bool controllerChosen() {
  if (!glo.baseType.empty())
    return true;
  const host::Answer answer = host::host().dialogs->MsgBox(
      "No voting controllers selected\r\n\r\nWould you like to use the keyboard?", host::kTitle,
      host::Buttons::yesNo, host::Icon::question, host::Answer::yes);
  if (answer == host::Answer::yes) {
    glo.baseType = kKeyboardBase;
    ResizeVoteArrays();
    return true;
  }
  glo.quitRequested = true;
  writeOutcome(VoteOutcome::leaveAll);
  host::endRun();
  return false;
}

bool keyboardVotes() {
  return glo.baseType.empty() || upperCase(glo.baseType) == kKeyboardBase;
}

// Waits for the end of the vote. A form that is closed meanwhile abandons it.
void waitForClose(VoteForm& form) {
  const host::FormRegistry& forms = *host::host().forms;
  const bool registered = forms.isLoaded(form.name);
  LinkWatch watch(form);
  const auto closed = [&] {
    if (glo.closing || (registered && !forms.isLoaded(form.name)))
      glo.voteAbandoned = 1;
    watch.check();
    return glo.voteComplete != 0 || glo.voteAbandoned != 0;
  };
  // A failure in something that happens meanwhile must not cost the votes taken so far.
  for (int failures = 0; failures < kFailuresBorne; ++failures)
    if (trapErrors(kModule, "waitForClose", [&] { host::waitUntil(closed); }))
      return;
  (glo.votesCast > 0 ? glo.voteComplete : glo.voteAbandoned) = 1;
}

void votePass(VoteForm& form) {
  const RunningVote mark(form);
  comms& link = theComms();
  glo.voteComplete = glo.voteAbandoned = 0;
  ResizeVoteArrays();  // records read meanwhile have made them as wide as themselves
  ResetVotes();
  ShowVotesCast(glo.options);
  form.ResetForNewVote();
  glo.restartVote = false;
  if (keyboardVotes())
    form.SetVotesCastCount("K'Board");
  form.ShowVotesCastControl(true);
  link.StartVote(true, true);
  glo.voteOpen = true;
  form.state = VoteState::open;
  host::host().forms->refresh(form.name);
  waitForClose(form);
  link.EndVote();
  host::waitUntil([] { return false; }, kSettleSeconds);
  link.takeWaiting();
  form.ShowVotesCastControl(false);
}

void freeCursor() {
  if (host::host().windows)
    host::host().windows->freeCursor();
}

// Saves what every keypad voted and takes the statistics from it, and from the postal votes of that item.
void saveResult() {
  glo.currentRisk = glo.currentItem;
  glo.voteAssessmentNumber = glo.currentAssessment;
  const std::string key = voteKey(glo.currentItem, glo.currentAssessment);
  if (glo.revotePass) {
    readVoteRecords();
    if (glo.voteRecords.lastLine(key).data() != nullptr)
      modifyVoteResult(key);
  }
  if (SaveCVotes())  // keypads with a display are told only now that their vote is stored
    theComms().SendCommandToController("VotesStored", false, true);
  glo.postalVotes.clear();
  LoadPostalVotes(key);
  SetStats(glo.currentItem, glo.currentAssessment - 1);
}

// The program ends in mid-vote: what has been received is kept, and the item is to be voted again.
void keepCutOffVote(VoteForm& form) {
  saveResult();
  if (glo.item(glo.currentItem).voted[static_cast<std::size_t>(glo.currentAssessment - 1)])
    form.voteHeld();
  else if (leftoverVotes() == 0)
    writeLogBefore(glo.currentItem, glo.currentAssessment);
}

// The result as the facilitator has set it: bars, statistics, both or none. True when something is up.
bool showResult(VoteForm& form) {
  const bool showBars = glo.runByShowBarGraph != 0;
  const RiskRecord& risk = glo.item(glo.currentItem);
  const auto assessment = static_cast<std::size_t>(glo.currentAssessment - 1);
  const bool scored = !glo.displayOnly && risk.hasScore(assessment);
  form.UpdateBars();
  form.average = scored ? std::optional(static_cast<double>(risk.average[assessment])) : std::nullopt;
  form.ShowBars(showBars);
  form.GrowBars();
  const bool showStats = scored && glo.CheckAverageScoreIndicator == 1;
  form.ShowAverageScore(scored ? statisticsText(glo.currentItem, glo.currentAssessment) : "", showStats);
  return showBars || showStats;
}

bool runVote(VoteForm& form) {
  comms& link = theComms();
  link.VoteRx = oComms_VoteRx;
  link.SendCommandToController(glo.abstainEnabled ? "Abstain=True" : "Abstain=False", true, true);
  form.ShowAverageScore("    Vote '0' to abstain", glo.abstainEnabled && !glo.displayOnly);
  do votePass(form);
  while (glo.restartVote && !glo.closing);
  link.SendCommandToController("Abstain=FALSE", true, true);
  if (glo.closing && glo.votesCast > 0 && !glo.displayOnly)
    keepCutOffVote(form);
  if (glo.voteAbandoned == 1) {
    freeCursor();
    if (host::host().windows)
      host::host().windows->showCursor(false);
    writeOutcomeIfNone(VoteOutcome::held);
    return false;
  }
  freeCursor();
  if (!glo.displayOnly) {
    saveResult();
    markVoted(glo.currentItem, glo.currentAssessment);
    form.voteHeld();
  }
  const bool up = showResult(form);
  form.state = up ? VoteState::resultUp : VoteState::done;
  if (!up || !form.writesOutcome())
    writeOutcomeIfNone(VoteOutcome::held);
  return true;
}

}  // namespace

bool DoCountUpGraphVote(VoteForm& form) {
  if (!controllerChosen())
    return false;
  bool ended = false;
  if (!trapErrors(kModule, "DoCountUpGraphVote", [&] { ended = runVote(form); }))
    writeOutcomeIfNone(VoteOutcome::held);
  return ended;
}

std::string statisticsText(int item, int assessment) {
  const RiskRecord& risk = glo.item(item);
  const std::size_t a = static_cast<std::size_t>(assessment - 1);
  const double diversity = std::nearbyint(static_cast<double>(risk.diversity[a]) * 10000) / 100;
  std::string text =
      "Average: " + formatPlaces(static_cast<double>(risk.average[a]), 2) +
      "\nStandard Deviation: " + formatPlaces(static_cast<double>(risk.standardDeviation[a]), 2) +
      "\nDiversity: " + plainNumber(diversity) + "%\nParticipants: " + std::to_string(risk.counted[a]);
  if (glo.abstainEnabled)
    text += "\nAbstains: " + std::to_string(glo.abstainCount);
  return text;
}

VoteForm* runningVoteForm() {
  return running;
}

}  // namespace qrn
