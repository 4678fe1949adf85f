// The facilitator's desktop: the deck window, the slide show, and a window for each form. `app` makes one,
// gives it what lies behind it as functions, and starts it.
//
//   QApplication application(argc, argv);
//   Desktop desktop(hooks);
//   host().presentationProgram = &desktop.program();
//   host().windows = &desktop.windows();
//   desktop.attachWindows(*host().forms);
//   return desktop.exec(deckFile);
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/controller.h"
#include "host/presentation.h"

class QWidget;

namespace qrn::host {
class FormRegistry;
class Windows;
}  // namespace qrn::host

namespace qrn::desktop {

// What the deck window says of a slide that holds an exercise.
struct ExerciseFacts {
  std::string name;
  int items = 0, assessments = 0, votes = 0;  // votes: records stored on the slide
  int voted = 0, due = 0;                     // of a process that is not finished; due is 0 without one
};

struct DesktopHooks {
  // Runs the exercise of the slide (from 1) to its end. Called from the top of the message loop, or from the
  // slide show when it reaches the slide; program().SlideShowWindowsCount() tells the two apart.
  std::function<void(int slide)> runExercise;
  // Where phones join and how many have; starts the controller when needed. Throws HostError when there is
  // none.
  std::function<host::RoomState()> room;
  std::function<void(const std::string& host)> chooseAddress;  // of the candidates, for phones to join at
  // Throws HostError with a text for the person: the file is gone, broken, locked by another program.
  std::function<std::unique_ptr<host::Presentation>(const std::string& file)> openDeck;
  // Asked for slides that hold an exercise; nothing when it cannot tell now. Left out, the slide's tags are
  // asked and only votes are counted.
  std::function<std::optional<ExerciseFacts>(host::Slide&)> exerciseFacts;
  // A notice to stand on the deck window while this deck is open; left out or nothing, there is none.
  std::function<std::optional<std::string>(host::Presentation&)> deckNotice;
  std::string installFolder;  // without separator at the end
};

class Desktop {
 public:
  explicit Desktop(DesktopHooks hooks);  // a QApplication must exist; gives it the desktop's style
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  // Windows for the forms by name; a form without one here stays without a window.
  void attachWindows(host::FormRegistry& forms);
  host::PresentationProgram& program();
  host::Windows& windows();

  // Opens the deck in place of the one at hand. False, with the reason on the deck window, when it cannot.
  bool openDeck(const std::string& file);
  void sayTrouble(const std::string& text);  // over the deck window, until the next notice
  // Brings the keypads page up to date; a room without a page has lost its controller, and is asked for anew.
  void roomChanged(const host::RoomState& room);
  void sayProgress(const std::string& line);  // on the deck window's line; "": the step is over
  // A run that no show has brought about: the window takes no keys in it, and shows then what has come of it.
  void run(const std::function<void()>& work);
  void startShow(int slide);  // 0: the first slide that is not hidden
  // Shows the deck window, opens `deckFile` unless it is "", and returns when the person has left.
  int exec(const std::string& deckFile = "");
  void turn();  // one turn of that loop, for tests: delivers events, starts the run that is wanted
  void quit();

  // The window that questions stand over: the front one of ours, null when none is visible.
  QWidget* dialogParent() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace qrn::desktop
