// What the desktop is made of, for the files that it is written in.
#pragma once

#include <QElapsedTimer>
#include <QEvent>
#include <QScreen>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "desktop/deck_window.h"
#include "desktop/desktop.h"
#include "desktop/desktop_windows.h"
#include "desktop/held_keys.h"
#include "desktop/keypads_window.h"
#include "desktop/presentation_program.h"
#include "desktop/slide_show_window.h"
#include "desktop/window_stack.h"
#include "host/wait.h"

namespace qrn::desktop {

// Notes when the person last did something.
class InputWatch : public QObject {
 public:
  InputWatch() { sinceInput_.start(); }
  // How long until nobody has typed or clicked for so many milliseconds.
  std::int64_t quietIn(int milliseconds) const {
    return std::max<std::int64_t>(0, milliseconds - sinceInput_.elapsed());
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
      case QEvent::MouseButtonPress:
      case QEvent::Wheel:
        sinceInput_.restart();
        break;
      default:
        break;
    }
    return false;
  }

 private:
  QElapsedTimer sinceInput_;
};

struct Desktop::Parts {
  static constexpr int kServeMs = 15;  // while a slide picture is being made, wanted runs start at this pace

  explicit Parts(DesktopHooks given);

  void turn();
  std::optional<std::int64_t> idleMicroseconds() const;
  void serve();
  void makePicture();
  void run(int slide);
  void run(const std::string& failed, const std::function<void()>& work);
  void sendKeys(const std::string& keys);
  void startShow(int slide);
  void showEnded();
  const QScreen& screenOfShow() const;
  void askForDeck();
  bool openDeck(const std::string& file);
  void takeDeck(std::unique_ptr<host::Presentation> opened);
  bool save();
  void leave();
  bool mayCloseDeck();
  void showKeypads();
  void askForRoom();
  void report(const std::string& what, const std::exception& error);
  void sayPictures();
  bool showRuns() const { return show && show->isVisible(); }

  DesktopHooks hooks;
  InputWatch watch;
  HeldKeys heldKeys;
  WindowStack stack;
  SlidePictures pictures;
  std::unique_ptr<host::Presentation> deck;
  DeckWindow window;
  std::unique_ptr<SlideShowWindow> show;
  KeypadsWindow* keypads = nullptr;
  QtPresentationProgram program;
  DesktopWindows windows;
  host::FormRegistry* forms = nullptr;
  int wantedRun = 0;  // slide, 0 for none
  bool wantedRoom = false;
  std::optional<std::string> wantedDeck;
  bool running = false, leaving = false;
  int saidLeft = 0;     // thumbnails to go
  bool making = false;  // a slide picture is being made; its deck must stay
  host::Timer tmrServe{kServeMs, [this] { serve(); }};
};

}  // namespace qrn::desktop
