#include "core/run/entry.h"

#include <exception>

#include "analysis/filter/filters.h"
#include "analysis/orders.h"
#include "base/errors.h"
#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/glo.h"
#include "core/model.h"
#include "core/options.h"
#include "core/run/end_program.h"
#include "core/windows/blank_form.h"
#include "core/windows/presentation_windows.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "host/presentation.h"
#include "host/system.h"
#include "host/wait.h"
#include "host/windows.h"
#include "store/exercise_text.h"
#include "store/progress_log.h"
#include "store/vote_store.h"
#include "vote/link/comms.h"
#include "vote/link/vote_outcome.h"

namespace qrn {

namespace {

constexpr double kInstanceSeconds = 5;
constexpr int kPathNotFound = 76, kPermissionDenied = 70;

host::FormRegistry& forms() {
  return *host::host().forms;
}

void tell(const std::string& text, const std::string& title) {
  host::host().dialogs->MsgBox(text, title, host::Buttons::ok, host::Icon::exclamation);
}

// The error handler of Main. It returns to go on with the next statement, unless it has ended the program.
void handleError(const std::exception& error) {
  const auto* hostError = dynamic_cast<const HostError*>(&error);
  const int number = hostError ? hostError->number() : 0;
  if (number == kPermissionDenied)
    return;
  reportError(error, "Vote", "Main");
  if (number == kPathNotFound) {
    tell("There is no PowerPoint presentation loaded", "Matrix");
    endProgram();
  } else if (number == host::kNoPresentation) {
    tell("No PowerPoint presentation detected", "Matrix");
    endProgram(true);
  }
}

// One statement of Main; skipped when the run has ended.
template <class Body>
void run(Body&& body) {
  if (glo.closing)
    return;
  try {
    body();
  } catch (const std::exception& error) {
    handleError(error);
  }
}

void startDiagnostics() {
  resetDiagnostics();
  run([] { ReadGlobalSettingsFromINIFile(); });
  glo.voteRecords.forget();
  glo.postalRecords.forget();
}

void attach() {
  if (!Check4App("POWERPNT.EXE")) {
    glo.closing = true;
    return;
  }
  glo.oPowerPoint = host::host().presentationProgram;
  glo.oPresentation = glo.oPowerPoint->ActivePresentation();
  if (!glo.oPresentation)
    throw HostError(Fault::world, host::kNoPresentation, "There is no active presentation");
  // A slide that stands in the deck to be opened is to be opened once, so that its tag goes for good.
  std::vector<std::string> names{tagName::activity, tagName::voteTerminated};
  if (glo.oPresentation->tags().Item(tagName::currentSlide).empty())
    names.emplace_back(tagName::currentSlide);
  glo.oPresentation->SetRunTags(names);
}

void makeFolderIfMissing(const std::string& folder) {
  if (!folderExists(folder))
    host::host().files->makeFolder(folder);
}

void setFolders() {
  const std::string temp = host::host().environment->Environ("temp");
  run([&] {
    glo.tempPath = glo.oPresentation->path();
    if (glo.tempPath.empty()) {
      glo.tempPath = joinPath(temp, "matrix");
      makeFolderIfMissing(glo.tempPath);
    }
  });
  run([&] {
    const std::string folder = joinPath(temp, "quorin");
    glo.matrixPath = folder + kPathSeparator;
    makeFolderIfMissing(folder);
  });
  run([] {
    glo.appPath = glo.oPowerPoint->AddInPath() + kPathSeparator;
    glo.helpFile = glo.appPath + "quorin v4 help.chm";
  });
}

// Whatever a run shows beside a show stands where the slide does, so that nothing jumps from one to the next.
void placeFormsOverTheShow() {
  forms().place = [](const std::string& form) {
    if (host::host().presentationProgram->SlideShowWindowsCount() > 0)
      AlignWindowToPPTSlideShow(form);
  };
}

void uncoverForms() {
  RecordPPTHandles();
  if (glo.PowerPointSlideShow_hWnd > 0 && host::host().windows &&
      !iniOptions().disableForceSlideShowNoTopmost)
    host::host().windows->setTopmost(glo.PowerPointSlideShow_hWnd, false);
}

// A previous run may still be storing its last vote: it writes the tag when it has done so. False when that
// run stays.
bool previousInstanceEnds() {
  const auto ended = [] { return outcome() != VoteOutcome::none; };
  if (glo.cmdFile == runMode::wizard || !glo.oPowerPoint->PreviousInstance() || ended())
    return true;
  if (host::waitUntil(ended, kInstanceSeconds))
    return true;
  glo.appTitle = "Matrix2";
  if (glo.oPowerPoint->AppActivate("Matrix"))
    return false;
  glo.oPowerPoint->CloseApplication("Matrix");
  glo.appTitle = "Matrix";
  return true;
}

// Takes the tag away, so that the next run waits for this one.
void waitForPreviousInstance() {
  if (previousInstanceEnds())
    deleteOutcome();
  else
    glo.closing = true;
}

// A slide number as mode names the slide, unless the tag already does.
void nameSlideOfMode() {
  if (glo.cmdMode != runMode::display || !isNumeric(glo.cmdSlide))
    return;
  const double slide = qrnVal(glo.cmdSlide);
  host::Tags& tags = glo.oPresentation->tags();
  if (slide >= 1 && slide <= glo.oPresentation->SlideCount() && qrnVal(tags.Item(tagName::currentSlide)) < 1)
    tags.Add(tagName::currentSlide, std::to_string(static_cast<int>(slide)));
}

void pickSlide() {
  run([] { glo.oPresentation->tags().Add(tagName::activity, "Matrix Active"); });
  run(nameSlideOfMode);
  run([] {
    glo.currentSlide = readCurrentSlide();
    if (glo.currentSlide < 1 || glo.currentSlide > glo.oPresentation->SlideCount())
      throw HostError(Fault::world, kPathNotFound, "There is no slide " + std::to_string(glo.currentSlide));
    glo.oVoteSlide = &glo.oPresentation->Slides(glo.currentSlide);
    glo.currentSlideID = glo.oVoteSlide->slideID();
  });
}

void takeExerciseFile() {
  if (upperCase(glo.cmdFile).find(".MTX") != std::string::npos && !convertExerciseFile())
    glo.closing = true;
}

void checkShow() {
  RecordPPTHandles();
  if (glo.cmdMode != runMode::display || !glo.PowerPointSlideShow_RECT.empty())
    return;
  tell("PowerPoint slideshow is not running, can not start quorin matrix in show mode", host::kTitle);
  endProgram();
}

void setDefaults() {
  glo.maxKeypads = 650;
  run([] { setDefaultBarColours(); });
  run([] { initXYVote(); });
  run([] { setRemainingAssessments(); });
}

void openWizard() {
  glo.backgroundFile = glo.appPath + "tmpbg.bmp";
  run([] {
    forms().load("Wizard");
    forms().show("Wizard");
    AlignWindowToPPT("Wizard");
  });
  if (!forms().isLoaded("Wizard"))
    endProgram();
}

void loadIfDefined(const std::string& name) {
  if (forms().isDefined(name))
    forms().load(name);
}

void loadExercise() {
  if (glo.oVoteSlide->tags().Item(tagName::exercise).empty()) {
    LoadDefaultTemplate();
    // Nothing can be shown of a slide without an exercise: this tells so and ends the run.
    if (glo.cmdMode == runMode::display && glo.itemCount() == 0)
      LoadXY("");
    return;
  }
  glo.exerciseLoaded = LoadXY("");
  if (!glo.exerciseLoaded)
    LoadDefaultTemplate();
  else if (readlog())
    glo.resumePending = glo.resumePending && votesDue();
}

// The roster of names is empty until the controller sends it.
void LoadNames() {
  glo.keypadNames.assign(1, KeypadName{});
}

// With a controller there the room's base data are asked for; without one the first vote offers the keyboard.
void askForBase() {
  auto* link = dynamic_cast<comms*>(forms().find(formName::comms));
  if (link && link->linked())
    link->ReadPortInfo();
}

void loadForms() {
  const auto info = [](const char* line) { host::host().dialogs->Info(line); };
  run([&] { info("Matrix Loading"); });
  run([] { loadIfDefined(formName::comms); });
  run(loadExercise);
  run([] { GetDemographicVoteInfo(); });
  run([] { keepDemographicChoices(); });
  run([] { exerciseHistory().stored(); });
  run(LoadNames);
  run([] { readVoteRecords(); });
  run([] { ReadActiveKeypads(); });
  run(askForBase);
  run([] { loadIfDefined(formName::blank); });
  run([&] { info("Matrix Loading"); });
  glo.cmd_AutoStart = glo.cmdMode == runMode::seriesVote || glo.cmdMode == runMode::display;
  run([] { loadIfDefined(formName::xyVote); });
  run([&] { info(""); });
}

// The run belongs to the show and ends with it.
void watchShow() {
  auto* blank = dynamic_cast<blankForm*>(forms().find(formName::blank));
  if (!blank || !glo.cmd_AutoStart || glo.PowerPointSlideShow_hWnd == 0)
    return;
  blank->showEnded = [] { endProgram(true); };
  blank->tmrCheck4ppt.setEnabled(true);
}

bool displaysResults() {
  return glo.cmdMode == runMode::display && glo.cmdSlide != cmdWord::votesNotCleared;
}

void bringForward() {
  if (displaysResults() && !forms().isLoaded(formName::runtime)) {
    glo.cmdSlide.clear();
    forms().bringToFront(formName::blank);
  }
  if (forms().isLoaded(formName::runtime)) {
    forms().show(formName::runtime);
    return;
  }
  if (forms().isDefined(formName::xyVote)) {
    if (!glo.resumePending)  // the list of a process under way stays as it is
      run([] { reorderListAlpha(true); });
    forms().show(formName::xyVote);
    forms().refresh(formName::xyVote);
    forms().bringToFront(formName::xyVote);
  } else if (glo.cmd_AutoStart && !glo.returnToEditor) {
    endProgram();  // a run within a show has nothing more to do
  }
}

void openFirstForm() {
  bool voted = false;
  run(watchShow);
  run([&] { voted = glo.cmd_AutoStart && AutoStart(); });
  if (glo.closing)
    return;
  if (!voted && displaysResults() && !glo.resumePending &&
      !Check4Form(formName::averageGraph, formName::matrixGraph)) {
    run(showGraphs);
    run([] { endProgram(); });
    return;
  }
  run(bringForward);
}

}  // namespace

// What ends the run for the rooms below.
class ThisRun : public host::Run {
 public:
  void endProgram() override { qrn::endProgram(); }
} g_run;

EntryHooks& entryHooks() {
  static EntryHooks hooks;
  return hooks;
}

void Main(const std::string& commandLine) {
  glo = Glo{};
  host::host().run = &g_run;
  startDiagnostics();
  run(attach);
  run(placeFormsOverTheShow);
  run(setFolders);
  run([&] { splitCommandLine(commandLine); });
  run(uncoverForms);
  run(applyModes);
  run(waitForPreviousInstance);
  run(pickSlide);
  run(takeExerciseFile);
  run(checkShow);
  run(setDefaults);
  if (glo.cmdFile == runMode::wizard) {
    run(openWizard);
    return;
  }
  run(loadForms);
  run(openFirstForm);
}

void LoadDefaultTemplate() {
  const std::string folder = joinPath(glo.appPath, "matrix\\templates\\processes");
  std::string file(trimBlanks(replaceAll(readTextFile(joinPath(folder, "default.txt")), "\"", "")));
  file.erase(file.find_last_not_of("\r\n") + 1);
  if (file.empty() || !fileExists(file))
    return;
  LoadXY(file);
  glo.exerciseName = folder + kNullName;
  glo.risks.assign(1, RiskRecord{});
  for (CategoryRecord& category : glo.categories) category.CategoryItems.assign(1, -1);
  glo.currentRisk = 0;
}

}  // namespace qrn
