#include "core/run/end_program.h"

#include <algorithm>
#include <string>
#include <vector>

#include "analysis/filter/filters.h"
#include "base/errors.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/glo.h"
#include "core/options.h"
#include "core/run/delete_file.h"
#include "core/windows/blank_form.h"
#include "core/windows/presentation_windows.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/system.h"
#include "host/windows.h"
#include "store/exercise_text.h"
#include "store/vote_store.h"
#include "vote/link/comms.h"
#include "vote/link/vote_outcome.h"

namespace qrn {

namespace {

constexpr const char* kModule = "Vote";

void guarded(const std::function<void()>& body) {
  trapErrors(kModule, "endProgram", body);
}

// Lets every loop that waits for a vote or walks the plan come to its end.
void stopVoteLoops() {
  glo.voteAbandoned = 1;
  glo.restartVote = false;
  glo.quitRequested = true;
}

void tellAutoClose() {
  host::host().dialogs->MsgBox(
      "Matrix is closing because the PowerPoint slide show is no longer running.\r\n\r\n"
      "All data collected prior to this has been saved.",
      "quorinMatrix Auto Close", host::Buttons::ok, host::Icon::information);
}

bool somethingToStore() {
  keepDemographicChoices();
  return exerciseHistory().modified();
}

void storeExercise() {
  if (glo.oVoteSlide && (glo.exerciseLoaded || host::host().forms->isLoaded(formName::xyVote)) &&
      somethingToStore())
    guarded([] { saveXY(); });
}

void storePresentation() {
  if (!glo.oPresentation || glo.oPresentation->ReadOnly() || iniOptions().disablePptSaveAfterVoteClose)
    return;
  trapErrors(
      kModule, "endProgram", [] { glo.oPresentation->Save(); }, true);
}

// A show that has moved on already needs no key, nor does one whose user has turned to the exercise instead.
bool showMayGoOn() {
  if (glo.returnToEditor || glo.cmdSlide == cmdWord::votesNotCleared)
    return false;
  host::View* show = host::host().presentationProgram->SlideShowView();
  return show && show->SlideIndex() == glo.currentSlide;
}

void setShowTopmost(bool topmost, bool forbidden) {
  if (host::host().windows && !forbidden)
    host::host().windows->setTopmost(glo.PowerPointSlideShow_hWnd, topmost);
}

void bringToFront(std::int64_t window) {
  if (host::host().windows && window > 0)
    host::host().windows->bringToFront(window);
}

void handBackShow(bool keepExercise) {
  setShowTopmost(true, iniOptions().disableForceSlideShowTopmost);
  if (!keepExercise)
    storeExercise();
  bringToFront(glo.PowerPointSlideShow_hWnd);
  setShowTopmost(false, iniOptions().disableForceSlideShowNoTopmost);
  if (glo.onFinish == 1 && !fileExists(glo.appPath + "seriesVoteRunning.txt") && showMayGoOn())
    host::host().presentationProgram->SendKeysToShow("~");
}

}  // namespace

void endProgram(bool autoClose, bool keepOpen1, bool keepOpen2) {
  if (glo.closing)
    return;
  glo.closing = true;
  stopVoteLoops();
  host::FormRegistry& forms = *host::host().forms;
  if (auto* link = dynamic_cast<comms*>(forms.find(formName::comms))) {
    link->SendCommandToController("EndVote", false, true);
    if (glo.keyboardTurnedOn)
      link->SendCommandToController("KBOARD-OFF", false, true);
  }
  if (glo.keyboardTurnedOn)  // the keyboard stood in for this run, not for good
    guarded([] { deleteUntilGone(glo.appPath + markerFile::keyboard); });
  guarded([] { deleteUntilGone(glo.appPath + markerFile::matrixActive); });
  guarded([] { deleteUntilGone(glo.lockFile); });
  if (glo.oPresentation)
    writeOutcome(VoteOutcome::held);
  guarded([] { saveLeftoverVotes(); });
  if (auto* blank = dynamic_cast<blankForm*>(forms.find(formName::blank)))
    blank->tmrCheck4ppt.setEnabled(false);
  if (autoClose && forms.isDefined(formName::blank))
    guarded([&] { forms.show(formName::blank); });
  UnloadNonEssentialForms();
  EnablePPT(true);
  if (autoClose)
    guarded(tellAutoClose);
  RecordPPTHandles();
  if (glo.PowerPointSlideShow_hWnd > 0)
    guarded([&] { handBackShow(keepOpen1 || keepOpen2); });
  else
    guarded([] { bringToFront(glo.PowerPoint_hWnd); });
  storePresentation();
}

void UnloadNonEssentialForms() {
  static const std::vector<std::string> essential{formName::xyVote, formName::blank, formName::info,
                                                  formName::comms};
  host::FormRegistry& forms = *host::host().forms;
  std::vector<std::string> names = forms.loadedNames();
  std::reverse(names.begin(), names.end());
  for (const std::string& name : names)
    if (std::find(essential.begin(), essential.end(), name) == essential.end())
      trapErrors(kModule, "UnloadNonEssentialForms", [&] { forms.unload(name); });
}

void releaseObjects() {
  host::FormRegistry& forms = *host::host().forms;
  std::vector<std::string> names = forms.loadedNames();
  std::reverse(names.begin(), names.end());
  for (const std::string& name : names) trapErrors(kModule, "releaseObjects", [&] { forms.unload(name); });
  forms.releaseUnloaded();
  glo.oVoteSlide = nullptr;
  glo.oPresentation = nullptr;
  glo.oPowerPoint = nullptr;
}

}  // namespace qrn
