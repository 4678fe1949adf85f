#include "desktop/keys.h"

#include <gtest/gtest.h>

#include "desktop/held_keys.h"
#include "desktop/window_world.h"
#include "host/forms.h"

namespace {

using qrn::desktop::classicKey;
namespace key = qrn::host::key;

struct Case {
  const char* name;
  int qtKey;
  Qt::KeyboardModifiers modifiers;
  const char* text;
  unsigned scanCode;
  int keyCode, shift, keyAscii;
};

const Case kCases[] = {
    {"letter", Qt::Key_R, Qt::NoModifier, "r", 0, 'R', 0, 'r'},
    {"capital letter", Qt::Key_B, Qt::ShiftModifier, "B", 0, 'B', 1, 'B'},
    {"Alt and a letter type nothing", Qt::Key_D, Qt::AltModifier, "d", 0, 'D', 4, 0},
    {"Shift and Alt", Qt::Key_D, Qt::ShiftModifier | Qt::AltModifier, "D", 0, 'D', 5, 0},
    {"Ctrl and a letter", Qt::Key_N, Qt::ControlModifier, "\x0e", 0, 'N', 2, 14},
    {"digit of the main row", Qt::Key_7, Qt::NoModifier, "7", 16, '7', 0, '7'},
    {"shifted digit, by its place", Qt::Key_section, Qt::ShiftModifier, "\xc2\xa7", 12, '3', 1, 0xa7},
    {"shifted digit, by its sign", Qt::Key_At, Qt::ShiftModifier, "@", 0, '2', 1, '@'},
    {"shifted nought", Qt::Key_ParenRight, Qt::ShiftModifier, ")", 0, '0', 1, ')'},
    {"numeric digit", Qt::Key_4, Qt::KeypadModifier, "4", 83, key::numpad0 + 4, 0, '4'},
    {"numeric plus", Qt::Key_Plus, Qt::KeypadModifier, "+", 86, key::add, 0, '+'},
    {"numeric minus", Qt::Key_Minus, Qt::KeypadModifier, "-", 82, key::subtract, 0, '-'},
    {"numeric star", Qt::Key_Asterisk, Qt::KeypadModifier, "*", 63, key::multiply, 0, '*'},
    {"equals", Qt::Key_Equal, Qt::NoModifier, "=", 21, key::equal, 0, '='},
    {"minus", Qt::Key_Minus, Qt::NoModifier, "-", 20, key::minus, 0, '-'},
    {"Enter", Qt::Key_Return, Qt::NoModifier, "\r", 36, key::enter, 0, 13},
    {"numeric Enter", Qt::Key_Enter, Qt::KeypadModifier, "\r", 104, key::enter, 0, 13},
    {"Esc", Qt::Key_Escape, Qt::NoModifier, "\x1b", 9, key::escape, 0, 27},
    {"Space", Qt::Key_Space, Qt::NoModifier, " ", 65, key::space, 0, 32},
    {"PageDown", Qt::Key_PageDown, Qt::NoModifier, "", 117, key::pageDown, 0, 0},
    {"Clear, the 5 without NumLock", Qt::Key_Clear, Qt::KeypadModifier, "", 84, key::clear, 0, 0},
    {"Alt and Up", Qt::Key_Up, Qt::AltModifier, "", 111, key::up, 4, 0},
    {"Delete types nothing", Qt::Key_Delete, Qt::NoModifier, "\x7f", 119, key::del, 0, 0},
    {"F4", Qt::Key_F4, Qt::NoModifier, "", 70, key::f4, 0, 0},
    {"Shift and F10", Qt::Key_F10, Qt::ShiftModifier, "", 76, key::f10, 1, 0},
    {"a key that forms do not know", Qt::Key_VolumeUp, Qt::NoModifier, "", 123, 0, 0, 0},
};

TEST(Keys, AreToldInTheClassicCodes) {
  for (const Case& one : kCases) {
    const QKeyEvent event(QEvent::KeyPress, one.qtKey, one.modifiers, one.scanCode, 0, 0,
                          QString::fromUtf8(one.text));
    const auto stroke = classicKey(event);
    EXPECT_EQ(stroke.keyCode, one.keyCode) << one.name;
    EXPECT_EQ(stroke.shift, one.shift) << one.name;
    EXPECT_EQ(stroke.keyAscii, one.keyAscii) << one.name;
  }
}

TEST(Keys, AHeldKeyIsOneKey) {
  const QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
  EXPECT_EQ(classicKey(event).keyCode, 0);
  EXPECT_EQ(classicKey(event).keyAscii, 0);
}

// A repeat comes as a release and a press of one instant, whether the window system says so or not.
TEST(Keys, APressAtTheInstantOfItsReleaseIsARepeat) {
  qrn::test::needApplication();
  const qrn::desktop::HeldKeys heldKeys;
  struct Recorder : QWidget {
    void keyPressEvent(QKeyEvent* event) override { repeats.push_back(event->isAutoRepeat()); }
    std::vector<bool> repeats;
  } window;
  struct Event {
    QEvent::Type type;
    int key;
    unsigned at;
  };
  for (const auto& [type, which, at] :
       {Event{QEvent::KeyPress, Qt::Key_Return, 100}, Event{QEvent::KeyRelease, Qt::Key_Return, 600},
        Event{QEvent::KeyPress, Qt::Key_Return, 601}, Event{QEvent::KeyRelease, Qt::Key_Return, 640},
        Event{QEvent::KeyPress, Qt::Key_Space, 640}, Event{QEvent::KeyRelease, Qt::Key_Return, 700},
        Event{QEvent::KeyPress, Qt::Key_Return, 720}, Event{QEvent::KeyRelease, Qt::Key_Return, 0},
        Event{QEvent::KeyPress, Qt::Key_Return, 0}}) {
    QKeyEvent event(type, which, Qt::NoModifier);
    event.setTimestamp(at);
    QCoreApplication::sendEvent(&window, &event);
  }
  EXPECT_EQ(window.repeats, (std::vector<bool>{false, true, false, false, false}));
}

}  // namespace
