#include "desktop/deck_window.h"

#include <QMenuBar>

#include "desktop/window_case.h"

namespace qrn::test {
namespace {

class ReadOnlyDeck : public MemoryPresentation {
 public:
  using MemoryPresentation::MemoryPresentation;
  bool ReadOnly() const override { return true; }
};

// A deck of five slides with an exercise on the second.
class DeckWindowCase : public WindowCase {
 protected:
  DeckWindowCase() : WindowCase(5) {
    MemorySlide& exercise = world.presentation.slide(2);
    exercise.title = "Which proposals?";
    exercise.tagStore.Add("qrnMatrix", "exercise");
    exercise.tagStore.Add("QRNVOTES", "1,1;2;,1C1\r\n1,1;1;,2C1\r\n");
    shown_.show();
    shown_.activateWindow();
    open(&world.presentation);
    keyCommands();
    textCommands();
    deckCommands();
  }
  void open(host::Presentation* deck) {
    pictures.setDeck(deck);
    shown_.setDeck(deck);
    QCoreApplication::processEvents();
  }
  void keyCommands() {
    on("goto", [this](const Words& words) { shown_.GotoSlide(words.number(0)); });
    on("at", [this](const Words&) { tell(std::to_string(shown_.SlideIndex())); });
    on("busy", [this](const Words& words) { shown_.setBusy(words[0] == "yes"); });
    on("close", [this](const Words&) { tell(shown_.close() && !shown_.isVisible() ? "closed" : ""); });
  }
  // What labels say that hold these words, and what is offered.
  void textCommands() {
    on("text", [this](const Words& words) {
      for (const QLabel* label : shown_.findChildren<QLabel*>())
        if (label->isVisible() && label->text().toStdString().find(words.rest(0)) != std::string::npos)
          return tell(label->text().toStdString());
      tell("nothing");
    });
    on("says", [this](const Words& words) { shown_.say(QString::fromStdString(words.rest(0))); });
    on("progress", [this](const Words& words) { shown_.sayProgress(QString::fromStdString(words.rest(0))); });
    on("notice", [this](const Words&) { tell(shown_.notice().text().toStdString()); });
    on("primary", [this](const Words&) {
      for (const QPushButton* button : buttons())
        if (button->isDefault())
          tell(button->text().toStdString());
    });
    // offered TEXT: buttons and menu rows that hold it and can be chosen
    on("offered", [this](const Words& words) {
      int found = 0;
      const QString part = QString::fromStdString(words.rest(0));
      for (const QAction* action : shown_.findChildren<QAction*>())
        found += action->text().contains(part) && action->isEnabled() ? 1 : 0;
      for (const QPushButton* button : buttons())
        found += button->text().contains(part) && button->isEnabled() ? 1 : 0;
      tell(found);
    });
    on("mnemonics", [this](const Words&) {
      std::map<QString, std::string> taken;
      for (const QAction* menu : shown_.menuBar()->actions())
        taken[QKeySequence::mnemonic(menu->text()).toString()] += menu->text().toStdString() + " ";
      for (const QPushButton* button : buttons())
        taken[QKeySequence::mnemonic(button->text()).toString()] += button->text().toStdString() + ", ";
      for (const auto& [key, captions] : taken)
        if (!key.isEmpty())
          tell(key.toStdString() + ": " + captions);
    });
  }
  void deckCommands() {
    on("votes", [this](const Words& words) {
      world.presentation.slide(2).tagStore.Append("QRNVOTES", words.rest(0));
      shown_.slidesChanged();
    });
    on("facts", [this](const Words&) {
      facts = desktop::ExerciseFacts{"Risks", 20, 4, 6, 6, 80};
      shown_.slidesChanged();
    });
    on("nodeck", [this](const Words&) { open(nullptr); });
    on("readonly", [this](const Words&) { open(&readOnly); });
    on("large", [this](const Words&) {
      open(&large);
      shown_.grab();
      tell(pictures.wanted() < 40 ? "a few pictures are wanted" : "all pictures are wanted");
    });
  }
  QWidget& window() override { return shown_; }
  std::vector<QPushButton*> buttons() {
    std::vector<QPushButton*> found;
    for (QPushButton* button : shown_.findChildren<QPushButton*>())
      if (button->isVisible())
        found.push_back(button);
    return found;
  }

  ReadOnlyDeck readOnly{2};
  MemoryPresentation large{400};
  desktop::SlidePictures pictures;
  std::optional<desktop::ExerciseFacts> facts;
  desktop::DeckWindow shown_{
      pictures,
      [this](host::Slide& slide) { return facts ? facts : desktop::factsFromTags(slide); },
      {[this] { tell("open"); }, [this] { tell("save"); }, [this] { tell("keypads"); },
       [this] { tell("leave"); }, [this](int slide) { tell("show ", slide); },
       [this](int slide) { tell("run ", slide); }}};
};

const bool kRegistered = registerCases<DeckWindowCase>("DeckWindowCase", QUORIN_CASES "/deck_window.case");

}  // namespace
}  // namespace qrn::test
