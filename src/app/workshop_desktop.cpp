#include "app/workshop_desktop.h"

#include <QTimer>

#include "app/neighbours.h"
#include "core/blank_form.h"
#include "core/end_program.h"
#include "core/entry.h"
#include "core/glo.h"
#include "desktop/desktop.h"
#include "host/errors.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/wait.h"
#include "matrixgraph/xy_vote_graph.h"
#include "vote/comms.h"
#include "vote/xy_vote_runtime.h"

namespace qrn::app {

namespace {

void registerForms() {
  registerComms();
  registerBlankForm();
  registerVoteForms();
  registerGraphForms();
}

void fillEntryHooks() {
  entryHooks().startVote = [] {
    host::FormRegistry& forms = *host::host().forms;
    forms.show("xyVoteRuntime");
    forms.as<xyVoteRuntime>("xyVoteRuntime").startProcess();
  };
}

}  // namespace

WorkshopDesktop::WorkshopDesktop(Neighbours& neighbours) : neighbours_(neighbours) {
  desktop::DesktopHooks hooks;
  hooks.runExercise = [this](int slide) { runExercise(slide); };
  hooks.joinAddress = [this] {
    std::string why;
    const std::string address = neighbours_.joinAddress(why);
    if (address.empty())
      throw HostError(Fault::world, 0, why);
    return address;
  };
  hooks.openDeck = [this](const std::string& file) { return neighbours_.openDeck(file, false); };
  hooks.installFolder = neighbours_.installFolder();
  desktop_ = std::make_unique<desktop::Desktop>(std::move(hooks));
  host::host().presentationProgram = &desktop_->program();
  host::host().windows = &desktop_->windows();
  neighbours_.setDialogParent([this] { return desktop_->dialogParent(); });
  registerForms();
  desktop_->attachWindows(*host::host().forms);
  fillEntryHooks();
}

WorkshopDesktop::~WorkshopDesktop() {
  neighbours_.setDialogParent({});
  host::host().presentationProgram = nullptr;
  host::host().windows = nullptr;
}

int WorkshopDesktop::run(const std::string& deck) {
  return desktop_->exec(deck);
}

int WorkshopDesktop::runFields(const std::string& deck, const std::string& fields) {
  QTimer::singleShot(0, [this, deck, fields] {
    if (desktop_->openDeck(deck))
      runCommandLine(fields);
  });
  return desktop_->exec();
}

// One run, one exercise. Without a show the exercise is opened by starting the show on its slide, which
// brings the run about.
void WorkshopDesktop::runExercise(int slide) {
  if (desktop_->program().SlideShowWindowsCount() == 0)
    desktop_->startShow(slide);
  else
    runCommandLine("QRNMATRIX," + std::to_string(slide));
}

void WorkshopDesktop::runCommandLine(const std::string& fields) {
  if (running_)
    return;
  running_ = true;
  std::string why;
  neighbours_.joinAddress(why);  // without a controller the vote itself offers the keyboard
  glo = Glo{};
  Main(fields);
  if (!glo.closing)
    endProgram();
  releaseObjects();
  running_ = false;
}

}  // namespace qrn::app
