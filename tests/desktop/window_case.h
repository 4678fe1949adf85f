// Windows told as conversations: keys by their names, what buttons, fields and lists say.
#pragma once

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QKeySequence>
#include <QPushButton>

#include "base/text.h"
#include "desktop/style.h"
#include "desktop/window_stack.h"
#include "desktop/window_world.h"
#include "support/cases.h"

namespace qrn::test {

class WindowCase : public CaseTest {
 protected:
  explicit WindowCase(int slides = 3) : world(slides) {
    // asks ANSWER TEXT: the next question
    on("asks", [this](const Words& words) { world.expectAnswer(words.rest(1), words[0]); });
    on("exercise", [this](const Words& words) {
      for (const std::string& slide : words)
        world.presentation.slide(std::stoi(slide)).tagStore.Add("qrnMatrix", "exercise");
    });
    on("hidden", [this](const Words& words) {
      for (const std::string& slide : words) world.presentation.slide(std::stoi(slide)).hidden = true;
    });
    on("at", [this](const Words& words) { world.at(std::stod(words[0]), later(words, 1)); });
    on("wait", [](const Words& words) { host::waitUntil([] { return false; }, std::stod(words[0])); });
    inputCommands();
    on("see", [this](const Words& words) {
      for (const std::string& name : words) tell(name + ": " + seen(part(name)));
    });
    // cut [WIDTH HEIGHT]: what has no room in the window, of that size
    on("cut", [this](const Words& words) {
      QSize size = window().size();
      if (!words.empty()) {
        desktop::applyStyle(*qApp);
        window().resize(size = QSize(words.number(0), words.number(1)));
      }
      QCoreApplication::processEvents();
      tell((window().size() == size ? "" : "does not shrink so far; ") + cutParts(window()));
    });
  }
  // What keys go to; parts of it go by their name, their class or the words on a button.
  virtual QWidget& window() { return *stack.front(); }
  QWidget& part(const std::string& name) {
    for (QWidget* one : window().findChildren<QWidget*>())
      if (one->objectName().toStdString() == name || one->metaObject()->className() == name ||
          replaceAll(textOf(*one), "&", "").starts_with(name))
        return *one;
    throw std::runtime_error("there is no " + name);
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
  static std::string textOf(const QWidget& part) {
    if (const auto* list = qobject_cast<const QAbstractItemView*>(&part))
      return list->currentIndex().siblingAtColumn(0).data().toString().toStdString();
    const QVariant text = part.property("text");
    return (text.isValid() ? text : part.property("currentText")).toString().toStdString();
  }

  desktop::WindowStack stack;  // outlives the windows of forms
  WindowWorld world;

 private:
  void inputCommands() {
    on("keys", [this](const Words& words) {
      for (const std::string& key : words) press(keyboard(), key);
    });
    on("type",
       [this](const Words& words) { QTest::keyClicks(&keyboard(), QString::fromStdString(words.rest(0))); });
    on("close", [this](const Words&) { window().close(); });
    on("focus", [this](const Words& words) {
      const QWidget* focus = window().focusWidget();
      if (!words.empty())
        part(words[0]).setFocus();
      else
        tell(focus == nullptr                ? "nothing"
             : focus->objectName().isEmpty() ? textOf(*focus)
                                             : focus->objectName().toStdString());
    });
    // click NAME [ROW] [double|menu]
    on("click", [this](const Words& words) {
      QWidget* to = &part(words[0]);
      QPoint at = to->rect().center();
      if (auto* list = qobject_cast<QAbstractItemView*>(to)) {
        at = list->visualRect(list->model()->index(words.number(1), 0)).center();
        to = list->viewport();
      }
      QContextMenuEvent menu(QContextMenuEvent::Mouse, at, to->mapToGlobal(at));
      if (words.word(2) == "menu")
        QApplication::sendEvent(to, &menu);
      else if (words.word(2) == "double")
        QTest::mouseDClick(to, Qt::LeftButton, {}, at);
      else
        QTest::mouseClick(to, Qt::LeftButton, {}, at);
    });
  }
  QWidget& keyboard() {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* focus = window().focusWidget();
    return popup != nullptr ? *popup : focus != nullptr ? *focus : window();
  }
  static std::string seen(const QWidget& part) {
    return textOf(part) + (part.property("checked").toBool() ? ", on" : "") +
           (part.property("default").toBool() ? ", default" : "") + (part.isEnabled() ? "" : ", greyed") +
           (part.isVisible() ? "" : ", hidden");
  }
};

}  // namespace qrn::test
