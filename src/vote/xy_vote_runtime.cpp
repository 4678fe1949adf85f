#include "vote/xy_vote_runtime.h"

#include <algorithm>

#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/wait.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "store/statistics.h"
#include "store/vote_store.h"
#include "vote/count_up_vote.h"
#include "vote/link/comms.h"
#include "vote/link/vote_outcome.h"
#include "vote/run_graphs.h"
#include "vote/vote_plan.h"

namespace qrn {

namespace {

constexpr const char* kModule = "xyVoteRuntime";

host::FormRegistry& forms() {
  return *host::host().forms;
}

bool modeEndsProgram() {
  return glo.cmdMode == runMode::seriesVote || glo.cmdMode == runMode::display;
}

}  // namespace

xyVoteRuntime::xyVoteRuntime() : VoteForm(formName::runtime) {
  uctl_kpadsNotVoted.showRequested = [this] { showKeypadPanel(true); };
  uctl_kpadsNotVoted.changed = [this] { showKeypadPanel(uctl_kpadsNotVoted.Visible); };
}

void xyVoteRuntime::startProcess() {
  glo.quitRequested = false;
  glo.runFinished = false;  // also where a failure ends the walk before its end
  if (glo.CheckAutoSave != 0)
    saveXY();  // a failure has been told; the votes are kept by themselves
  hideButtons();
  trapErrors(kModule, "startProcess", [&] {
    if (const std::string why = glo.singleVoteRun ? "" : whyNothingToVote(); !why.empty()) {
      glo.runFinished = true;
      host::host().dialogs->MsgBox(why, host::kTitle, host::Buttons::ok, host::Icon::exclamation);
    } else if (glo.runByOption == 1)
      byAssessment();
    else
      byItem();
  });
  if (glo.closing)
    return;
  if (modeEndsProgram() && (glo.runFinished || glo.quitRequested)) {
    host::endRun();
    return;
  }
  if (forms().isDefined(formName::xyVote))
    forms().show(formName::xyVote);
  forms().unload(name);
}

void xyVoteRuntime::byItem() {
  loadVotePlan();
  walk(stepsByItem(), 0);
  FinishOfVoteLoop();
}

void xyVoteRuntime::byAssessment() {
  loadVotePlan();
  walk(stepsByAssessment(), 0);
  if (!runEnds())
    Check4ResultsTable();
  FinishOfVoteLoop();
}

bool xyVoteRuntime::runEnds() const {
  return glo.quitRequested || glo.closing || glo.voteAbandoned != 0 || !forms().isLoaded(name);
}

void xyVoteRuntime::walk(std::vector<VoteStep> steps, std::size_t start) {
  listOrder_ = listKeys();
  glo.voteAbandoned = 0;
  if (glo.singleVoteRun) {
    const int item = std::clamp(glo.jumpItem, 0, std::max(0, glo.itemCount() - 1));
    steps = {
        {listOrder_.empty() ? 0 : listOrder_[static_cast<std::size_t>(item)], glo.jumpAssessment, 1, true}};
  } else if (glo.resumePending) {
    start = resumeStep(steps);
  } else {
    beginProcess(steps);
  }
  glo.resumePending = false;
  if (!glo.singleVoteRun && start < steps.size()) {
    glo.voteStep = 0;
    writeLogBefore(std::max(0, itemOfKey(steps[start].sortKey)), steps[start].assessment);
  }
  for (std::size_t at = start; at < steps.size();) {
    jump_ = Jump::none;
    const bool done = takeStep(steps[at]);
    if (jump_ != Jump::none && !glo.quitRequested && !glo.closing) {
      glo.voteAbandoned = 0;
      at = jumpTarget(steps, at);
      steps[at].taken = true;
      continue;
    }
    if (runEnds())
      return;
    if (done && !glo.singleVoteRun)
      afterStep(steps, at);
    if (runEnds())
      return;
    ++at;
  }
}

bool xyVoteRuntime::takeStep(const VoteStep& step) {
  if (step.sortKey == kSifterStep) {
    host::host().dialogs->MsgBox("Sorry, sifter not yet enabled", host::kTitle);
    return false;
  }
  const int item = itemOfKey(step.sortKey);
  if (!step.taken || item < 0 || !isAsked(item, step.assessment))
    return false;
  glo.currentItem = item;
  glo.currentAssessment = step.assessment;
  glo.voteStep = step.step;
  voteHeld_ = false;
  trapErrors(kModule, "takeStep", [&] {
    DisplayVote(item, step.assessment, glo.assessmentVotePlan[static_cast<std::size_t>(step.assessment - 1)],
                *this);
    BlankThisForm();
    RunVote();
  });
  return voteHeld_;
}

// What the running order shows when an assessment, or an item, has been voted to its end.
void xyVoteRuntime::afterStep(const std::vector<VoteStep>& steps, std::size_t at) {
  const bool itemRun = glo.runByOption == 1;
  const VoteStep& now = steps[at];
  for (std::size_t next = at + 1; next < steps.size(); ++next) {
    if (!steps[next].taken || !canBeVoted(steps[next]))
      continue;
    if (itemRun ? steps[next].sortKey == now.sortKey : steps[next].assessment == now.assessment)
      return;  // more to come
    break;
  }
  trapErrors(kModule, "afterStep", [&] {
    const AssessmentInfoRecord& info = glo.running(now.assessment);
    if (itemRun)
      showEndOfItemGraphs();
    else
      showEndOfAssessmentGraphs(now.assessment);
    if (!itemRun && info.showEndMessage && !info.endMessage.empty())
      host::host().dialogs->MsgBox(info.endMessage, host::kTitle);
  });
  restoreListOrder(listOrder_);
}

std::size_t xyVoteRuntime::jumpTarget(const std::vector<VoteStep>& steps, std::size_t at) const {
  if (jump_ == Jump::target) {
    const auto target = std::find_if(steps.begin(), steps.end(), [](const VoteStep& step) {
      return step.assessment == glo.jumpAssessment && itemOfKey(step.sortKey) == glo.jumpItem;
    });
    return target == steps.end() || !canBeVoted(*target) ? at
                                                         : static_cast<std::size_t>(target - steps.begin());
  }
  for (std::size_t i = at; i-- > 0;)
    if (canBeVoted(steps[i]))
      return i;
  return at;
}

void xyVoteRuntime::RunVote() {
  glo.revotePass = glo.revotePending;
  glo.revotePending = false;
  forms().show(name);
  do {
    glo.restartVote = false;
    doVote();
  } while (glo.restartVote && !runEnds());
  glo.revotePass = false;
}

void xyVoteRuntime::doVote() {
  if (lbl_Criteria.size() < 2) {
    host::host().dialogs->MsgBox("Must have at least 2 options", host::kTitle, host::Buttons::ok,
                                 host::Icon::exclamation);
    return;
  }
  deleteOutcome();
  glo.defaultVoteType = glo.MainVoteSettings.voteMode == voteKind::singleItemSelect
                            ? voteKind::singleItemSelect
                            : voteKind::singleDigit;
  glo.voteType = glo.defaultVoteType;
  glo.abstainEnabled = glo.opt_abstain;
  for (;;) {
    const bool ended = DoCountUpGraphVote(*this);
    uctl_kpadsNotVoted.BeginChecking(false);
    showKeypadPanel(false);
    voteHeld_ = voteHeld_ || ended;
    host::waitUntil([&] { return glo.closing || !forms().isLoaded(name) || outcome() != VoteOutcome::none; });
    if (outcome() != VoteOutcome::again || runEnds())
      break;
    deleteOutcome();
  }
  if (outcome() == VoteOutcome::leaveThis)
    glo.voteAbandoned = 1;  // and the walk with it
  ShowAverageScore("", false);
  state = VoteState::done;
}

// False when votes could not be stored: then the process is not finished.
bool xyVoteRuntime::tellFinished() {
  if (!saveLeftoverVotes())
    return false;
  writeLog(true);
  return true;
}

void xyVoteRuntime::FinishOfVoteLoop() {
  const bool normal = !runEnds() && !glo.singleVoteRun;
  glo.runFinished = true;
  if (!normal)
    return;  // the record written after the last vote stands: the process can go on from there
  const bool told = tellFinished();  // before the graphs: they may be left by the end of the program
  trapErrors(kModule, "FinishOfVoteLoop", [] { showEndOfProcessGraphs(); });
  restoreListOrder(listOrder_);
  if (!told && !glo.closing)
    tellFinished();
}

// The table of results is a form of its own; it comes up once the last selected assessment has been voted.
void xyVoteRuntime::Check4ResultsTable() {
  if (!glo.ShowResultsTable[0] || !forms().isDefined(formName::resultsTable))
    return;
  int last = kAssessments;
  while (last > 0 && !glo.running(last).active) --last;
  if (last > 0 && glo.currentAssessment >= last)
    forms().showModal(formName::resultsTable);
}

// Nothing of the last result is left on the form.
void xyVoteRuntime::BlankThisForm() {
  ShowBars(false);
  ShowAverageScore("", false);
  showKeypadPanel(false);
  state = VoteState::prepared;
}

void xyVoteRuntime::ResetForNewVote() {
  deleteOutcome();
  ShowBars(false);
  showKeypadPanel(false);
  uctl_kpadsNotVoted.Caption.clear();
  uctl_kpadsNotVoted.BeginChecking(
      true);  // what the room wants may be told behind the start of the first vote
  state = VoteState::prepared;
}

// Written while the result is still up: what is saved is not voted again, whatever happens now. A record that
// the disk did not take must not count.
void xyVoteRuntime::voteHeld() {
  if (leftoverVotes() == 0)
    writeLog();
}

void xyVoteRuntime::cmd_cancel_Click() {
  if (!modeEndsProgram()) {
    const host::Answer answer =
        host::host().dialogs->MsgBox("Are you sure you want to quit matrix?", host::kTitle,
                                     host::Buttons::yesNo, host::Icon::question, host::Answer::no);
    if (answer != host::Answer::yes)
      return;
    saveXY();
  }
  writeOutcome(VoteOutcome::held);
  glo.quitRequested = true;
  if (!modeEndsProgram())
    host::endRun();
}

// The window's own close button never takes a vote away: it asks as Esc does, before the run as the cancel
// button does, and between two votes it does nothing.
bool xyVoteRuntime::Form_QueryUnload(bool byUser) {
  if (!byUser)
    return true;
  if (takesKeys())
    askHowToLeave();
  else if (buttonsVisible)
    cmd_cancel_Click();
  return false;
}

void xyVoteRuntime::Form_Unload() {
  uctl_kpadsNotVoted.BeginChecking(false);
}

void xyVoteRuntime::Form_Resize() {
  LayOutAgain();
}

}  // namespace qrn
