// The desk told as conversations: decks, shows, runs of exercises.
#include "base/errors.h"
#include "desktop/desktop.h"
#include "desktop/window_case.h"

namespace qrn::test {
namespace {

class DesktopCase : public WindowCase {
 protected:
  DesktopCase() : WindowCase(3) {
    on("open", [this](const Words& words) {
      tell(desk.openDeck(words[0]) ? "" : "not opened");
      tell(deck() == nullptr ? "no deck" : "deck " + opened);
    });
    on("unsaved", [this](const Words&) { deck()->saved = false; });
    on("saves", [this](const Words&) { tell(std::to_string(deck()->saves)); });
    on("quit", [this](const Words&) { desk.quit(); });
    on("place", [this](const Words&) { tellPlace(); });
    on("show", [this](const Words& words) { desk.startShow(words.number(0)), tellPlace(); });
    on("goto", [this](const Words& words) {
      desk.program().SlideShowView()->GotoSlide(words.number(0)), tellPlace();
    });
    // send KEYS: to the show, as a run does at its end
    on("send", [this](const Words& words) { desk.program().SendKeysToShow(words[0]), tellPlace(); });
    on("turns", [this](const Words&) {
      for (int i = 0; i < 6; ++i) desk.turn();
      tellPlace();
    });
    on("runs", [this](const Words& words) { does = words[0]; });
    on("press", [this](const Words& words) {
      if (words.size() > 1)
        topLevel("deckWindow")->show();
      press(words.word(1) == "deck" ? *topLevel("deckWindow") : *desk.dialogParent(), words[0]);
    });
    on("deckwindow", [](const Words&) { topLevel("deckWindow")->show(); });
    on("focus", [this](const Words&) {
      tell(QApplication::focusWidget() ? QApplication::focusWidget()->objectName().toStdString() : "nothing");
    });
    on("roomchanged", [this](const Words&) {
      desk.roomChanged({});
      for (int i = 0; i < 4; ++i) desk.turn();
      tell("asked ", roomsAsked, " times");
    });
    on("keypads", [this](const Words& words) {
      if (words.word(0) == "close")
        topLevel("keypads")->close();
      tell(topLevel("keypads")->isVisible() ? "shown" : "hidden");
    });
  }
  MemoryPresentation* deck() {
    return dynamic_cast<MemoryPresentation*>(desk.program().ActivePresentation());
  }
  void tellPlace() {
    host::View *window = desk.program().ActiveWindowView(), *show = desk.program().SlideShowView();
    tell((window ? "window at " + std::to_string(window->SlideIndex()) : "no window"),
         (show ? ", show at " + std::to_string(show->SlideIndex()) : ""));
  }
  desktop::DesktopHooks hooks() {
    desktop::DesktopHooks made;
    made.openDeck = [this](const std::string& file) {
      if (file == "locked.pptx")
        throw HostError(Fault::world, 70, "locked.pptx is open in another program");
      opened = file;
      return deckOfFive(file);
    };
    made.runExercise = [this](int slide) {
      tell("runs ", slide);
      if (does == "fails")
        throw HostError(Fault::world, 0, "the disk is full");
      if (does == "sends") {  // keys wait for the end of the run
        tellPlace();
        desk.program().SendKeysToShow("~");
        tellPlace();
      }
    };
    made.room = [this] {
      host::RoomState room;
      room.page = "http://127.0.0.1:7878/join";
      room.phones = ++roomsAsked;
      return room;
    };
    return made;
  }

  std::string opened, does;
  int roomsAsked = 0;
  desktop::Desktop desk{hooks()};
};

const bool kRegistered = registerCases<DesktopCase>("DesktopCase", QUORIN_CASES "/desktop.case");

}  // namespace
}  // namespace qrn::test
