// Keys as the window system tells them, in the codes that forms know.
#include "desktop/keys.h"

#include <QMetaEnum>

#include "desktop/held_keys.h"
#include "desktop/window_case.h"

namespace qrn::test {
namespace {

// Tells which of its keys are repeats.
struct Recorder : QWidget {
  void keyPressEvent(QKeyEvent* event) override { told += event->isAutoRepeat() ? "a repeat\n" : "a key\n"; }
  std::string told;
};

class KeysCase : public WindowCase {
 protected:
  KeysCase() {
    // key NAME [MODIFIER ...] SCAN TEXT: code/shift and character
    on("key", [this](const Words& words) {
      Qt::KeyboardModifiers modifiers;
      for (std::size_t i = 1; i + 2 < words.size(); ++i) modifiers |= modifierOf(words[i]);
      const QKeyEvent event(QEvent::KeyPress, keyOf(words[0]), modifiers,
                            static_cast<unsigned>(words.number(words.size() - 2)), 0, 0,
                            QString::fromStdString(words.back()), held);
      const desktop::KeyStroke stroke = desktop::classicKey(event);
      tell(stroke.keyCode, "/", stroke.shift, " ", stroke.keyAscii);
    });
    on("held", [this](const Words&) { held = true; });
    // press KEY AT; release KEY AT: at that millisecond of the window system
    for (const auto& [name, type] : {std::pair{"press", QEvent::KeyPress}, {"release", QEvent::KeyRelease}})
      on(name, [this, type = type](const Words& words) {
        QKeyEvent event(type, keyOf(words[0]), Qt::NoModifier);
        event.setTimestamp(static_cast<quint64>(words.number(1)));
        QCoreApplication::sendEvent(&recorder, &event);
        tell(std::exchange(recorder.told, ""));
      });
  }
  static int keyOf(const std::string& name) {
    return QMetaEnum::fromType<Qt::Key>().keyToValue(("Key_" + name).c_str());
  }
  static Qt::KeyboardModifier modifierOf(const std::string& name) {
    return name == "Shift"  ? Qt::ShiftModifier
           : name == "Alt"  ? Qt::AltModifier
           : name == "Ctrl" ? Qt::ControlModifier
                            : Qt::KeypadModifier;
  }

  bool held = false;
  const desktop::HeldKeys heldKeys;
  Recorder recorder;
};

const bool kRegistered = registerCases<KeysCase>("KeysCase", QUORIN_CASES "/keys.case");

}  // namespace
}  // namespace qrn::test
