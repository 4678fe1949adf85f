// What the keys of the voting form do.
#include "base/text.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/wait.h"
#include "store/exercise_text.h"
#include "vote/count_up_vote.h"
#include "vote/link/comms.h"
#include "vote/link/keypad_arrays.h"
#include "vote/link/vote_outcome.h"
#include "vote/run_graphs.h"
#include "vote/xy_vote_runtime.h"

namespace qrn {

namespace {

namespace key = host::key;

constexpr double kAfterClose = 0.2;  // seconds

host::FormRegistry& forms() {
  return *host::host().forms;
}

int digitOf(int keyCode) {
  return keyCode - (keyCode >= key::numpad0 ? key::numpad0 : '0');
}

bool keyboardVotes() {
  return upperCase(glo.baseType) == kKeyboardBase;
}

}  // namespace

bool xyVoteRuntime::resultShown() const {
  return bars.Visible || lbl_averageScore.Visible;
}

void xyVoteRuntime::toggleResult() {
  const bool on = !resultShown();
  ShowBars(on && glo.runByShowBarGraph != 0);
  ShowAverageScore(lbl_averageScore.Caption, on && glo.CheckAverageScoreIndicator == 1);
}

void xyVoteRuntime::endResult(VoteOutcome how) {
  state = VoteState::done;
  writeOutcome(how);
}

bool xyVoteRuntime::takesKeys() const {
  return state == VoteState::resultUp || glo.voteOpen;
}

// A vote that has just been closed shows nobody missing.
void xyVoteRuntime::afterKey() {
  if (glo.voteComplete != 1)
    return;
  showKeypadPanel(false);
  host::waitUntil([] { return false; }, kAfterClose);
}

void xyVoteRuntime::endVoteKey() {
  if (glo.votesCast < 1) {
    const host::Answer answer = host::host().dialogs->MsgBox(
        "No votes have been collected\r\n\r\nClose vote and continue?", "Confirm close vote",
        host::Buttons::yesNo, host::Icon::question, host::Answer::no);
    if (answer != host::Answer::yes || !glo.voteOpen)
      return;
  }
  glo.voteComplete = 1;
  playEndOfVoteSound();
}

void xyVoteRuntime::playEndOfVoteSound() const {
  if (glo.endOfVoteSoundOn != 0)
    uctl_votesCast.PlaySound(glo.endOfVoteSoundFile);
}

// Only keypads that have voted stay active.
void xyVoteRuntime::keepVotingKeypads() {
  theComms().WriteActiveKeypads(false);
  glo.voteComplete = 1;
}

void xyVoteRuntime::forgetActiveKeypads() {
  glo.activeKeypadList.clear();
  glo.scanMarked = true;
  theComms().WriteActiveKeypads(true);
}

void xyVoteRuntime::keyboardKey(int keyCode) {
  if (!keyboardVotes() && !keyboardTurnedOn())
    return;
  if (keyCode == 'G') {
    GenerateRandomVotes(1);
    playEndOfVoteSound();
    return;
  }
  int value = keyCode == 'Z' ? -2 : digitOf(keyCode);
  if (value == 0 && glo.startFrom == 1 && glo.options >= 10)
    value = 10;
  SimulatePress(value);
}

// Asks whether the keyboard shall stand in for keypads. The votes of the pass begin anew then.
bool xyVoteRuntime::keyboardTurnedOn() {
  const host::Answer answer = host::host().dialogs->MsgBox(
      "Keyboard voting is not enabled.   \r\nWould you like to activate it for this Matrix session?\r\n"
      "If you wish to make this permanent, \r\nthen please set the Base Type to Keyboard in Keypad Setup",
      host::kTitle, host::Buttons::yesNo, host::Icon::question, host::Answer::no);
  if (answer != host::Answer::yes || !glo.voteOpen)
    return false;
  ResetVotes();
  glo.baseType = kKeyboardBase;
  glo.keyboardFlag = 1;
  glo.keyboardTurnedOn = true;
  theComms().SendCommandToController(kKeyboardBase, true, true);
  ShowVotesCast(glo.options);
  SetVotesCastCount("K'board");
  WriteKBOARDFile();
  return true;
}

void xyVoteRuntime::toggleKeypadPanel() {
  const bool on = !uctl_kpadsNotVoted.Visible;
  uctl_kpadsNotVoted.BeginChecking(on);
  showKeypadPanel(on);
  if (on)
    uctl_kpadsNotVoted.forceRefresh();
}

void xyVoteRuntime::showKeypadPanel(bool on) {
  uctl_kpadsNotVoted.Visible = on && glo.voteOpen && glo.voteComplete != 1;
  // Nobody to wait for is nothing to show.
  ShowKeypads({uctl_kpadsNotVoted.title, uctl_kpadsNotVoted.labels, uctl_kpadsNotVoted.waitedFor},
              uctl_kpadsNotVoted.Visible && !uctl_kpadsNotVoted.Caption.empty());
  forms().refresh(name);
}

void xyVoteRuntime::askHowToLeave() {
  const char* dialog = formName::quitOptions;
  if (forms().isLoaded(dialog))
    return;
  forms().showModal(dialog);
  const auto* answer = dynamic_cast<xyVoteQuitOptions*>(forms().find(dialog));
  if (answer == nullptr || glo.closing)
    return;
  const xyVoteQuitOptions::Option chosen = answer->chosen;
  const VoteOutcome result = answer->UserResult;
  forms().unload(dialog);
  if (chosen == xyVoteQuitOptions::goToGraph)
    showGraphMeanwhile();
  if (result == VoteOutcome::jump)
    jump_ = chosen == xyVoteQuitOptions::goTo ? Jump::target : Jump::back;
  if (result != VoteOutcome::none)
    leave(result);
}

// An open vote is abandoned. One that has closed meanwhile is kept, like a result: only the walk goes
// elsewhere.
void xyVoteRuntime::leave(VoteOutcome how) {
  const bool open = state == VoteState::open;
  if (how == VoteOutcome::again && !open) {
    endResult(how);
    return;
  }
  if (open && (glo.voteComplete != 1 || how == VoteOutcome::again))
    glo.voteAbandoned = 1;
  glo.restartVote = how == VoteOutcome::again;
  if (how == VoteOutcome::leaveAll) {
    saveXY();
    glo.returnToEditor = true;
    glo.quitRequested = true;
  }
  open ? writeOutcome(how) : endResult(how);
}

// A graph over the open vote. What arrives meanwhile is counted afterwards.
void xyVoteRuntime::showGraphMeanwhile() {
  const PressHold hold;
  uctl_kpadsNotVoted.BeginChecking(false);
  if (forms().isDefined(formName::matrixGraph))
    showMatrixGraph();
  else
    showAverageGraph(glo.currentAssessment);
  uctl_kpadsNotVoted.BeginChecking(true);
}

}  // namespace qrn
