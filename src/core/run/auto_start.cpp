// What happens by itself when a show reaches a matrix slide: the vote while the exercise is not finished, the
// graphs once it is.
#include <algorithm>
#include <string>

#include "analysis/orders.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/glo.h"
#include "core/run/end_program.h"
#include "core/run/entry.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/wait.h"
#include "store/progress_log.h"
#include "store/vote_store.h"

namespace qrn {

namespace {

// Both questions lead to deletion: Enter declines.
bool asked(const std::string& question) {
  return host::host().dialogs->MsgBox(question, host::kTitle, host::Buttons::yesNo, host::Icon::question,
                                      host::Answer::no) == host::Answer::yes;
}

// A deletion that the disk refuses leaves everything as it was.
bool deleteRecords() {
  while (true) {
    try {
      glo.oVoteSlide->tags().Delete(tagName::votes);
      return true;
    } catch (const std::exception& error) {
      reportError(error, "auto_start", "deleteRecords");
      if (!asked("The data could not be cleared:\r\n" + std::string(error.what()) +
                 "\r\n\r\nWould you like to try again?"))
        return false;
    }
  }
}

void deleteVotes() {
  if (!asked("This will delete all live data for this process. Do you want to proceed?") || !deleteRecords())
    return;
  glo.voteRecords.assign("");
  forgetLeftoverVotes();
  Edit edit("Delete votes");
  for (RiskRecord& risk : glo.risks) {
    risk.newItem = risk.voting = true;
    std::fill_n(risk.active.begin(), kAssessments + 1, true);
  }
  resetLogState();
  if (glo.workshopNumber > 0) {
    host::host().dialogs->MsgBox(
        "The Next Workshop facility has been used\r\nBe sure to check your assessment settings before "
        "running a "
        "meeting",
        host::kTitle, host::Buttons::ok, host::Icon::exclamation);
    glo.workshopNumber = 0;
  }
  glo.currentItem = glo.currentRisk = 0;
  reorderListAlpha(false);
  edit.commit();
}

void clearAndRestart() {
  deleteVotes();
  if (glo.voteRecords.recordCount() > 0)
    glo.cmdSlide = cmdWord::votesNotCleared;
  else
    resetLogState();
}

// Told before the room has voted, not after.
bool votesCanBeStored() {
  const std::string why = glo.oPresentation->WhyNoVotes();
  if (why.empty())
    return true;
  host::host().dialogs->MsgBox("The vote was not started. " + why, host::kTitle, host::Buttons::ok,
                               host::Icon::exclamation);
  return false;
}

// The form that asks about items that came after the process was stopped; "" when there is none.
std::string newItemsForm() {
  const host::FormRegistry& forms = *host::host().forms;
  for (int i = 0; i < glo.itemCount(); ++i)
    if (glo.item(i).newItem)
      return forms.isDefined(formName::newItemsStart) ? formName::newItemsStart
             : forms.isDefined(formName::newItems)    ? formName::newItems
                                                      : "";
  return "";
}

bool showMovedOn() {
  host::View* show = host::host().presentationProgram->SlideShowView();
  return show && show->SlideIndex() != glo.currentSlide;
}

void showUntilClosed(const std::string& name) {
  host::FormRegistry& forms = *host::host().forms;
  if (!forms.isDefined(name) || glo.closing || showMovedOn())
    return;
  forms.show(name);
  host::waitUntil([&] { return !forms.isVisible(name) || glo.closing || showMovedOn(); });
}

}  // namespace

bool AutoStart() {
  if (glo.itemCount() == 0)
    return false;
  const bool noVotes = glo.voteRecords.recordCount() == 0;
  if ((noVotes || glo.resumePending || glo.cmdMode != runMode::display) && !votesCanBeStored()) {
    glo.resumePending = false;  // what there is can be shown
    return false;
  }
  if (noVotes) {
    resetLogState();
  } else if (glo.resumePending) {
    checkResume();
    if (glo.closing || glo.returnToEditor || glo.cmdSlide == cmdWord::votesNotCleared)
      return false;
  } else if (glo.cmdMode == runMode::display) {
    return false;
  }
  if (!entryHooks().startVote)
    return false;
  entryHooks().startVote();
  return true;
}

void checkResume() {
  const std::string form = newItemsForm();
  if (!form.empty()) {
    host::host().forms->showModal(form);
    return;
  }
  switch (host::host().dialogs->MsgBox(
      "Data already exists for this meeting. Would you like to continue from where it was previously "
      "stopped?\r\n\r\nCancel will return to editor mode",
      host::kTitle, host::Buttons::yesNoCancel, host::Icon::question, host::Answer::yes)) {
    case host::Answer::no:
      if (asked("Would you like to clear the data and restart?"))
        clearAndRestart();
      else
        glo.cmdSlide = cmdWord::votesNotCleared;
      break;
    case host::Answer::cancel:
      glo.cmdMode = runMode::setup;
      glo.returnToEditor = true;
      break;
    default:
      break;
  }
}

void showGraphs() {
  trapErrors("Vote", "Main", [] { showUntilClosed("xyVoteAverageGraph"); });
  if (glo.scoredCount() > 1)
    trapErrors("Vote", "Main", [] { showUntilClosed("xyVoteGraph"); });
}

}  // namespace qrn
