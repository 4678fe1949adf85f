#include "desktop/deck_window.h"

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
  QString textOf(const char* part) {
    for (const QLabel* label : window.findChildren<QLabel*>())
      if (label->isVisible() && label->text().contains(part))
        return label->text();
    return {};
  }

  test::WindowWorld world{5};
  desktop::SlidePictures pictures;
  std::string calls;
  desktop::DeckWindow window{
      pictures,
      [](host::Slide& slide) { return desktop::factsFromTags(slide); },
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
