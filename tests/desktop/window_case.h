// Windows told as conversations: keys by their names, what buttons and labels say.
#pragma once

#include <QKeySequence>
#include <QPushButton>

#include "desktop/window_world.h"
#include "support/cases.h"

namespace qrn::test {

class WindowCase : public CaseTest {
 protected:
  explicit WindowCase(int slides) : world(slides) {
    // asks ANSWER TEXT: the next question
    on("asks", [this](const Words& words) {
      world.expectMsgBox(words.rest(1), words[0] == "yes"      ? host::Answer::yes
                                        : words[0] == "cancel" ? host::Answer::cancel
                                                               : host::Answer::ok);
    });
    on("exercise", [this](const Words& words) {
      for (const std::string& slide : words)
        world.presentation.slide(std::stoi(slide)).tagStore.Add("qrnMatrix", "exercise");
    });
    on("hidden", [this](const Words& words) {
      for (const std::string& slide : words) world.presentation.slide(std::stoi(slide)).hidden = true;
    });
  }
  // "Ctrl+K", "Right", "5"
  static void press(QWidget& widget, const std::string& name) {
    const QKeyCombination key = QKeySequence(QString::fromStdString(name))[0];
    QTest::keyClick(&widget, key.key(), key.keyboardModifiers());
  }
  static QWidget* topLevel(const std::string& name) {
    for (QWidget* one : QApplication::topLevelWidgets())
      if (one->objectName().toStdString() == name)
        return one;
    throw std::runtime_error("there is no window " + name);
  }

  WindowWorld world;
};

}  // namespace qrn::test
