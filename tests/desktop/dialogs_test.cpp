// Questions to the person. Those that ask take what happens while the question stands: a command or a block.
#include "adapters/qt/dialogs.h"

#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>

#include "desktop/window_case.h"
#include "host/wait.h"

namespace qrn::test {
namespace {

class DialogsCase : public WindowCase {
 protected:
  DialogsCase() {
    dialogs_.setStatusLine([this](const std::string& line) { tell("status '" + line + "'"); });
    questionCommands();
    lookCommands();
  }
  QWidget& window() override {
    QWidget* popup = QApplication::activePopupWidget();
    return popup ? *popup : *QApplication::activeModalWidget();
  }
  static std::string shownAnswer(const std::optional<std::string>& answer) {
    return answer.value_or("nothing");
  }
  void questionCommands() {
    on("text", [this](const Words& words) { text_ = words.rest(0); });
    // ask BUTTONS ENTER ...; the answer of Enter, or - for none of its own
    on("ask", [this](const Words& words) {
      static const std::vector<std::string> kinds{"ok", "okCancel", "yesNo", "yesNoCancel"},
          answers{"ok", "cancel", "yes", "no"};
      static constexpr host::Answer kAnswers[]{host::Answer::ok, host::Answer::cancel, host::Answer::yes,
                                               host::Answer::no};
      static constexpr host::Buttons kButtons[]{host::Buttons::ok, host::Buttons::okCancel,
                                                host::Buttons::yesNo, host::Buttons::yesNoCancel};
      const auto placeIn = [](const std::vector<std::string>& names, const std::string& name) {
        return static_cast<std::size_t>(std::find(names.begin(), names.end(), name) - names.begin());
      };
      std::optional<host::Answer> enter;
      if (words[1] != "-")
        enter = kAnswers[placeIn(answers, words[1])];
      world.at(0.05, later(words, 2));
      const host::Answer got = dialogs_.MsgBox(text_, "quorin matrix", kButtons[placeIn(kinds, words[0])],
                                               host::Icon::question, enter);
      tell(answers[static_cast<std::size_t>(std::find(kAnswers, kAnswers + 4, got) - kAnswers)]);
    });
    on("input", [this](const Words& words) {
      world.at(0.05, later(words, 1));
      tell(shownAnswer(dialogs_.InputBox("Name", "", words[0])));
    });
    on("openfile", [this](const Words& words) {
      world.at(0.05, later(words, 0));
      tell(shownAnswer(dialogs_.FileDialog({false, "/", "", "Presentations (*.pptx)|*.pptx", "Open"})));
    });
    // The first file is refused.
    on("savefile", [this](const Words& words) {
      bool refused = false;
      dialogs_.setWhyNotOverwritten([&](const std::string& file) {
        tell(refused ? "takes " : "refuses ", file);
        return std::exchange(refused, true) ? "" : "It is a deck.";
      });
      world.at(0.05, later(words, 0));
      tell(shownAnswer(dialogs_.FileDialog({true, "/nowhere", "deck.pptx", "All (*)|*", "Save"})));
    });
    on("menu", [this](const Words& words) {
      world.at(0.05, later(words, 0));
      tell(shownAnswer(
          dialogs_.Menu({{.name = "all", .caption = "All plots & pairs", .key = "Ctrl+A"},
                         {.name = "two", .caption = "Pair 2", .enabled = false},
                         {.name = "lines", .caption = "Lines", .checkable = true, .checked = true},
                         {.name = "up", .caption = "Ascending", .group = "Order"},
                         {.name = "down", .caption = "Descending", .group = "Order"}},
                        false)));
    });
    on("info", [this](const Words& words) {
      const auto before = world.clock.micros;
      dialogs_.Info(words.rest(0));
      tell(world.clock.micros == before ? "" : "waits for the line to be read");
    });
  }
  void lookCommands() {
    // held KEY TEXT: as the keyboard repeats it
    on("held", [this](const Words& words) {
      QTest::simulateEvent(window().focusWidget(), true, QKeySequence(words[0].c_str())[0].key(),
                           Qt::NoModifier, words[1].c_str(), true);
      tell(window().isVisible() ? "stands" : "gone");
    });
    // What the text has too little room for, and where it is scrolled to.
    on("room", [this](const Words&) {
      const QWidget& focus = *window().focusWidget();
      const auto& text = *window().findChild<QScrollArea*>();
      const QScrollBar& bar = *text.verticalScrollBar();
      tell(window().findChild<QLabel*>() == nullptr ? "no text" : "",
           text.viewport()->height() < text.widget()->heightForWidth(text.viewport()->width()) ? "scrolls, "
                                                                                               : "",
           window().screen()->geometry().contains(window().frameGeometry()) ? "" : "leaves the screen, ",
           text.geometry().bottom() <= focus.geometry().top() && focus.height() >= focus.sizeHint().height()
               ? ""
               : "the button is covered, ",
           bar.value() == bar.minimum()   ? "begin"
           : bar.value() == bar.maximum() ? "end"
                                          : "midst");
    });
    on("words", [this](const Words&) {
      const QWidget& text = *window().findChild<QScrollArea*>()->widget();
      tell(textOf(text), text.property("textFormat").toInt() == Qt::PlainText ? "" : " (as rich text)");
    });
    on("rows", [this](const Words&) {
      for (const QAction* row : dynamic_cast<QMenu&>(window()).actions())
        tell(escaped(row->text().toStdString()) + (row->isChecked() ? ", on" : ""));
      const QImage image = window().grab().toImage();
      tell(image.pixel(0, 0) == image.pixel(image.width() / 2, 0) ? "" : "a bare corner");
    });
    on("row", [this](const Words& words) {
      auto& menu = dynamic_cast<QMenu&>(window());
      QTest::mouseClick(&menu, Qt::LeftButton, {},
                        menu.actionGeometry(menu.actions()[words.number(0)]).center());
    });
    on("ticks", [this](const Words&) {
      tell(ticks_ >= 3 ? "ticks" : "");
      timer_.setEnabled(true);
    });
    on("windows", [this](const Words&) {
      for (const QWidget* widget : QApplication::topLevelWidgets())
        if (widget->isVisible())
          tell(widget->height() < 10 ? "a thin line" : "a window");
    });
  }

  std::string text_ = "Really?";
  qt::QtDialogs dialogs_;
  int ticks_ = 0;
  host::Timer timer_{10, [this] { ++ticks_; }};
};

const bool kRegistered = registerCases<DialogsCase>("DialogsCase", QUORIN_CASES "/dialogs.case");

}  // namespace
}  // namespace qrn::test
