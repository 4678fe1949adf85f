#include "desktop/deck_window.h"

#include <QMenuBar>
#include <QSet>

#include "desktop/style.h"
#include "desktop/window_world.h"

namespace {

using namespace qrn;

class ReadOnlyDeck : public test::MemoryPresentation {
 public:
  using MemoryPresentation::MemoryPresentation;
  bool ReadOnly() const override { return true; }
};

class DeckWindow : public ::testing::Test {
 protected:
  DeckWindow() {
    test::MemorySlide& exercise = world.presentation.slide(2);
    exercise.title = "Which proposals?";
    exercise.tagStore.Add("qrnMatrix", "exercise");
    exercise.tagStore.Add("QRNVOTES", "1,1;2;,1C1\r\n1,1;1;,2C1\r\n");
    window.show();
    window.activateWindow();
    open(world.presentation);
  }
  void open(host::Presentation& deck) {
    pictures.setDeck(&deck);
    window.setDeck(&deck);
    QCoreApplication::processEvents();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key, modifiers);
  }
  std::string done() { return std::exchange(calls, {}); }
  std::vector<QPushButton*> buttons(bool (*which)(const QPushButton&)) {
    std::vector<QPushButton*> found;
    for (QPushButton* button : window.findChildren<QPushButton*>())
      if (button->isVisible() && which(*button))
        found.push_back(button);
    return found;
  }
  // The one button that stands out.
  QString primary() {
    const auto found = buttons([](const QPushButton& button) { return button.isDefault(); });
    return found.size() == 1 ? found[0]->text() : QString::number(found.size());
  }
  QString textOf(const char* part) {
    for (const QLabel* label : window.findChildren<QLabel*>())
      if (label->isVisible() && label->text().contains(part))
        return label->text();
    return {};
  }

  test::WindowWorld world{5};
  desktop::SlidePictures pictures;
  std::string calls;
  std::optional<desktop::ExerciseFacts> facts;
  desktop::DeckWindow window{
      pictures,
      [this](host::Slide& slide) { return facts ? facts : desktop::factsFromTags(slide); },
      {[this] { calls += "open "; }, [this] { calls += "save "; }, [this] { calls += "keypads "; },
       [this] { calls += "leave "; }, [this](int slide) { calls += "show " + std::to_string(slide) + " "; },
       [this](int slide) { calls += "run " + std::to_string(slide) + " "; }}};
};

TEST_F(DeckWindow, EverythingIsDoneFromTheKeyboard) {
  press(Qt::Key_F5);
  EXPECT_EQ(done(), "show 0 ");
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_F5, Qt::ShiftModifier);
  EXPECT_EQ(done(), "show 3 ");
  press(Qt::Key_K, Qt::ControlModifier);
  press(Qt::Key_S, Qt::ControlModifier);
  press(Qt::Key_O, Qt::ControlModifier);
  press(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(done(), "keypads save open leave ");
}

TEST_F(DeckWindow, EnterOpensAnExerciseAndSaysWhenThereIsNone) {
  press(Qt::Key_Return);
  EXPECT_EQ(done(), "");
  EXPECT_EQ(textOf("no exercise."), "Slide 1 holds no exercise. F5 starts the slide show.");
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_EQ(done(), "run 2 ");
}

TEST_F(DeckWindow, TellsWhatTheSlideAtHandHolds) {
  window.GotoSlide(2);
  EXPECT_EQ(textOf("Which"), "Which proposals?");
  EXPECT_EQ(textOf("Slide 2"), "Slide 2 of 5 · exercise with 2 votes");
  world.presentation.slide(2).tagStore.Append("QRNVOTES", "1,1;1;,3C1\r\n");
  window.slideChanged(2);
  EXPECT_TRUE(textOf("Slide 2").endsWith("3 votes"));
  facts = desktop::ExerciseFacts{"Risks", 20, 4, 6, 6, 80};
  window.slideChanged(2);
  EXPECT_TRUE(textOf("Slide 2").endsWith("20 items · 4 assessments · 6 of 80 voted"));
}

TEST_F(DeckWindow, OffersTheRunOfAnExerciseOnlyWhereThereIsOneAndOneButtonStandsOut) {
  const auto offered = [this] {
    for (const QAction* action : window.findChildren<QAction*>())
      if (action->text().contains("exercise") && action->isEnabled())
        return true;
    return !buttons([](const QPushButton& button) {
              return button.text().contains("exercise") && button.isEnabled();
            }).empty();
  };
  EXPECT_FALSE(offered());
  EXPECT_EQ(primary(), "Start sho&w");
  window.GotoSlide(2);
  EXPECT_TRUE(offered());
  EXPECT_EQ(primary(), "&Run exercise");
  window.setDeck(nullptr);
  EXPECT_FALSE(offered());
  EXPECT_TRUE(primary().startsWith("&Open a deck"));
}

TEST_F(DeckWindow, ProgressLeavesWhatWasSaidSince) {
  window.sayProgress("Writing Log File");
  EXPECT_EQ(textOf("Writing"), "Writing Log File");
  window.say("Saved");
  window.sayProgress("");
  EXPECT_EQ(textOf("Saved"), "Saved");
  window.sayProgress("Matrix Loading");
  window.sayProgress("");
  EXPECT_EQ(textOf("Matrix"), "");
}

TEST_F(DeckWindow, NoTwoThingsShareAMnemonic) {
  for (host::Presentation* deck :
       {static_cast<host::Presentation*>(&world.presentation), static_cast<host::Presentation*>(nullptr)}) {
    window.setDeck(deck);
    QStringList captions;
    for (const QAction* menu : window.menuBar()->actions()) captions << menu->text();
    for (const QPushButton* button : buttons([](const QPushButton&) { return true; }))
      captions << button->text();
    EXPECT_GE(captions.size(), 5);
    QSet<QKeySequence> taken;
    for (const QString& caption : captions) {
      const QKeySequence mnemonic = QKeySequence::mnemonic(caption);
      EXPECT_TRUE(mnemonic.isEmpty() || !taken.contains(mnemonic)) << caption.toStdString();
      taken.insert(mnemonic);
    }
  }
}

TEST_F(DeckWindow, TheListHasTheFocusAgainAfterARun) {
  window.setBusy(true);
  EXPECT_EQ(window.focusWidget(), nullptr);
  window.setBusy(false);
  ASSERT_NE(window.focusWidget(), nullptr);
  EXPECT_EQ(window.focusWidget()->objectName(), "slides");
}

TEST_F(DeckWindow, NothingIsCutOnSmallScreens) {
  desktop::applyStyle(*qApp);
  facts = desktop::ExerciseFacts{"Risks", 20, 4, 6, 6, 80};
  window.slideChanged(2);
  window.GotoSlide(2);
  for (const QSize size : {QSize(512, 384), QSize(960, 540), QSize(1024, 768)}) {
    window.resize(size);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), size);
    EXPECT_EQ(test::cutParts(window), "");
  }
}

TEST_F(DeckWindow, NothingStartsWhileAnExerciseRuns) {
  window.GotoSlide(2);
  window.setBusy(true);
  press(Qt::Key_F5);
  press(Qt::Key_Return);
  press(Qt::Key_S, Qt::ControlModifier);
  window.close();
  EXPECT_EQ(done(), "");
  EXPECT_TRUE(window.isVisible());
  window.setBusy(false);
  window.close();
  EXPECT_EQ(done(), "leave ");
}

TEST_F(DeckWindow, WithoutADeckOnlyOpeningAndKeypadsAreLeft) {
  window.setDeck(nullptr);
  QCoreApplication::processEvents();
  EXPECT_EQ(textOf("No deck"), "No deck is open");
  press(Qt::Key_F5);
  press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(done(), "");
  press(Qt::Key_Return);
  press(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(done(), "open open ") << "Enter takes the button";
}

TEST_F(DeckWindow, SaysThatADeckIsReadOnly) {
  EXPECT_EQ(window.notice().text(), "");
  ReadOnlyDeck deck(2);
  open(deck);
  EXPECT_TRUE(window.notice().text().contains("reading only"));
  open(world.presentation);
}

TEST_F(DeckWindow, ReadsOnlyTheRowsInSightOfALargeDeck) {
  test::MemoryPresentation deck(400);
  open(deck);
  window.grab();
  EXPECT_LT(pictures.wanted(), 40);
  press(Qt::Key_End);
  EXPECT_EQ(window.SlideIndex(), 400);
  open(world.presentation);
}

}  // namespace
