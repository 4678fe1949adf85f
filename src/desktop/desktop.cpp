#include "desktop/desktop.h"

#include <QApplication>
#include <QScreen>
#include <algorithm>

#include "desktop/desktop_parts.h"
#include "desktop/form_windows.h"
#include "desktop/style.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/wait.h"
#include "render/fonts.h"

namespace qrn::desktop {

namespace {

constexpr int kPicturesWaitMs = 150;  // no picture is made this soon after a key or a click
constexpr int kPicturesLookMs = 25;   // whether the next thumbnail has come

}  // namespace

Desktop::Parts::Parts(DesktopHooks given)
    : hooks(std::move(given)),
      window(pictures, hooks.exerciseFacts ? hooks.exerciseFacts : ExerciseFactsOf([](host::Slide& s) {
               return factsFromTags(s);
             }),
             {[this] { askForDeck(); }, [this] { save(); }, [this] { showKeypads(); }, [this] { leave(); },
              [this](int slide) { startShow(slide); }, [this](int slide) { wantedRun = slide; }}),
      program({[this] { return deck.get(); },
               [this]() -> host::View* { return showRuns() ? show.get() : nullptr; },
               [this]() -> host::View* { return leaving ? nullptr : &window; }},
              hooks.installFolder),
      windows(stack, {[this]() -> QWidget* { return leaving ? nullptr : &window; },
                      [this]() -> QWidget* { return showRuns() ? show.get() : nullptr; },
                      [this](bool enabled) { window.setBusy(!enabled || running); }}) {
  pictures.arrived = [this](int slide) {
    window.pictureArrived(slide);
    if (show)
      show->pictureArrived(slide);
  };
  pictures.said = [this](const std::string& line) {
    window.say(render::toQt(line));
    window.repaint();
  };
  QCoreApplication::instance()->installEventFilter(&watch);
}

// One turn of the loop. What replaces the deck or frees forms happens here and nowhere else, since a slide
// picture in the making goes on delivering events with the deck's code beneath them.
void Desktop::Parts::turn() {
  host::DoEvents();
  serve();
  if (std::exchange(wantedRoom, false) && !running)
    askForRoom();
  if (wantedDeck)
    openDeck(*std::exchange(wantedDeck, std::nullopt));
  if (forms)
    forms->releaseUnloaded();
  if (wantedRun == 0 && pictures.wanted() > 0 && watch.quietIn(kPicturesWaitMs) == 0)
    makePicture();
}

// How long the loop may rest when no event comes; nothing: for ever.
std::optional<std::int64_t> Desktop::Parts::idleMicroseconds() const {
  if (wantedRun != 0 || wantedDeck || wantedRoom || program.keysWait())
    return 0;
  std::optional<std::int64_t> idle = host::untilNextTick();
  if (pictures.wanted() > 0) {
    const std::int64_t quiet =
        1000 * std::max<std::int64_t>(watch.quietIn(kPicturesWaitMs), pictures.waits() ? kPicturesLookMs : 0);
    idle = std::min(idle.value_or(quiet), quiet);
  }
  return idle;
}

// Starts the run that is wanted, so that no event handler has a whole workshop on its back.
void Desktop::Parts::serve() {
  if (running)
    return;
  if (wantedRun != 0)
    run(std::exchange(wantedRun, 0));
  if (const std::string keys = program.takeKeys(); !keys.empty())
    sendKeys(keys);
}

void Desktop::Parts::makePicture() {
  making = true;
  tmrServe.setEnabled(true);
  pictures.step();
  tmrServe.setEnabled(false);
  sayPictures();
  making = false;
}

void Desktop::Parts::run(int slide) {
  run("The exercise of slide " + std::to_string(slide) + " ended early. ", [&] {
    if (hooks.runExercise)
      hooks.runExercise(slide);
  });
}

// `failed` begins what is told when the work ends in an error.
void Desktop::Parts::run(const std::string& failed, const std::function<void()>& work) {
  running = true;
  window.setBusy(true);
  if (show)
    show->setEnabled(false);  // the keys belong to the exercise
  try {
    work();
  } catch (const std::exception& error) {
    report(failed, error);
  }
  if (show)
    show->setEnabled(true);
  window.setBusy(false);
  running = false;
  window.slidesChanged();
  if (QWidget* front = stack.front())
    stack.raise(front);
}

void Desktop::Parts::sendKeys(const std::string& keys) {
  for (const char key : keys)
    if (key == '~' && showRuns())
      show->next();
}

void Desktop::Parts::startShow(int slide) {
  if (!deck || leaving)
    return;
  show = std::make_unique<SlideShowWindow>(
      *deck, pictures,
      SlideShowWindow::Calls{[this](int reached) { wantedRun = reached; }, [this] { showEnded(); }});
  show->setGeometry(screenOfShow().geometry());
  show->start(slide);
  stack.raise(show.get());
}

// The projector: a screen beside that of the deck window, or the one there is.
const QScreen& Desktop::Parts::screenOfShow() const {
  for (const QScreen* screen : QGuiApplication::screens())
    if (screen != window.screen())
      return *screen;
  return *window.screen();
}

void Desktop::Parts::showEnded() {
  wantedRun = 0;
  stack.drop(show.get());
  if (show->SlideIndex() > 0)
    window.GotoSlide(show->SlideIndex());
  stack.raise(&window);
}

void Desktop::Parts::report(const std::string& what, const std::exception& error) {
  window.say("");
  window.notice().say(NoticeBar::Kind::error, render::toQt(what + error.what()));
  if (showRuns() && host::host().dialogs)
    host::host().dialogs->MsgBox(what + error.what(), host::kTitle, host::Buttons::ok,
                                 host::Icon::exclamation);
}

void Desktop::Parts::sayPictures() {
  const int left = pictures.thumbnailsWanted();
  if (left > 0 && left != saidLeft)
    window.say(QString("Making slide pictures, %1 to go").arg(left));
  else if (left == 0 && saidLeft > 0)
    window.say("");
  saidLeft = left;
}

Desktop::Desktop(DesktopHooks hooks) {
  applyStyle(*qApp);
  parts_ = std::make_unique<Parts>(std::move(hooks));
}

// The windows of the forms must go before the stack that they stand in.
Desktop::~Desktop() {
  if (!parts_->forms)
    return;
  for (const std::string& name : parts_->forms->loadedNames()) parts_->forms->unload(name);
  parts_->forms->releaseUnloaded();
}

host::PresentationProgram& Desktop::program() {
  return parts_->program;
}

bool Desktop::openDeck(const std::string& file) {
  return parts_->openDeck(file);
}

void Desktop::sayTrouble(const std::string& text) {
  parts_->window.notice().say(NoticeBar::Kind::error, render::toQt(text));
}

void Desktop::sayProgress(const std::string& line) {
  parts_->window.sayProgress(render::toQt(line).simplified());
}

void Desktop::roomChanged(const host::RoomState& room) {
  if (parts_->keypads && room.page.empty())
    parts_->wantedRoom = parts_->keypads->isVisible();
  else if (parts_->keypads)
    parts_->keypads->showRoom(room);
}

void Desktop::run(const std::function<void()>& work) {
  parts_->run("The run ended early. ", work);
}

void Desktop::startShow(int slide) {
  parts_->startShow(slide);
}

int Desktop::exec(const std::string& deckFile) {
  const QSize room = parts_->window.screen()->availableSize();
  constexpr int kSmallScreen = 1300;  // there every pixel is needed
  parts_->window.resize(room * 0.85);
  room.width() < kSmallScreen ? parts_->window.showMaximized() : parts_->window.show();
  parts_->stack.raise(&parts_->window);
  if (!deckFile.empty())
    openDeck(deckFile);
  while (!parts_->leaving) {
    parts_->turn();
    host::host().loop->rest(parts_->idleMicroseconds());
  }
  parts_->window.hide();
  return 0;
}

void Desktop::turn() {
  parts_->turn();
}

void Desktop::quit() {
  parts_->leave();
}

QWidget* Desktop::dialogParent() const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal && modal->isVisible() ? modal : parts_->stack.front();
}

host::Windows& Desktop::windows() {
  return parts_->windows;
}

void Desktop::attachWindows(host::FormRegistry& forms) {
  parts_->forms = &forms;
  attachFormWindows(forms, parts_->stack);
}

}  // namespace qrn::desktop
