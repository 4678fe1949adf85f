#include "desktop/slide_show_window.h"

#include "desktop/window_world.h"
#include "host/errors.h"

namespace {

using namespace qrn;

// Six slides: 2 holds an exercise, 3 and 6 are hidden, 4 holds an exercise.
class SlideShow : public ::testing::Test {
 protected:
  SlideShow() {
    for (const int slide : {2, 4}) world.presentation.slide(slide).tagStore.Add("qrnMatrix", "exercise");
    for (const int slide : {3, 6}) world.presentation.slide(slide).hidden = true;
    pictures.setDeck(&world.presentation);
  }
  void press(int key) { QTest::keyClick(&show, static_cast<Qt::Key>(key)); }

  test::WindowWorld world{6};
  desktop::SlidePictures pictures;
  std::vector<int> reached;
  int ended = 0;
  desktop::SlideShowWindow show{
      world.presentation, pictures, {[this](int slide) { reached.push_back(slide); }, [this] { ++ended; }}};
};

TEST_F(SlideShow, EveryForwardKeyAndClickGoesOnAndEveryBackwardKeyGoesBack) {
  show.start(4);
  for (const int key : {Qt::Key_Right, Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_PageDown,
                        Qt::Key_N, Qt::Key_Down}) {
    show.GotoSlide(4);
    press(key);
    EXPECT_EQ(show.SlideIndex(), 5) << key;
  }
  for (const int key : {Qt::Key_Left, Qt::Key_PageUp, Qt::Key_Up, Qt::Key_P, Qt::Key_Backspace}) {
    show.GotoSlide(5);
    press(key);
    EXPECT_EQ(show.SlideIndex(), 4) << key;
  }
  show.GotoSlide(1);
  QTest::mouseClick(&show, Qt::LeftButton);
  EXPECT_EQ(show.SlideIndex(), 2);
}

TEST_F(SlideShow, HiddenSlidesAreSkippedUnlessAskedForByNumber) {
  show.start(2);
  press(Qt::Key_Right);
  EXPECT_EQ(show.SlideIndex(), 4);
  press(Qt::Key_Left);
  EXPECT_EQ(show.SlideIndex(), 2);
  press(Qt::Key_End);
  EXPECT_EQ(show.SlideIndex(), 5);
  press(Qt::Key_Home);
  EXPECT_EQ(show.SlideIndex(), 1);
  press(Qt::Key_3);
  press(Qt::Key_Return);
  EXPECT_EQ(show.SlideIndex(), 3);
}

TEST_F(SlideShow, AsksForTheRunOfAnExerciseItMovesOnto) {
  show.start(1);
  EXPECT_EQ(reached, std::vector<int>{});
  press(Qt::Key_Right);
  EXPECT_EQ(reached, std::vector<int>{2});
  press(Qt::Key_Right);
  EXPECT_EQ(reached, (std::vector<int>{2, 4}));
  press(Qt::Key_Left);
  EXPECT_EQ(reached, (std::vector<int>{2, 4})) << "moving back shows the slide alone";
  show.GotoSlide(4);
  EXPECT_EQ(reached, (std::vector<int>{2, 4})) << "the logic's own moves ask for nothing";
  press(Qt::Key_2);
  press(Qt::Key_Enter);
  EXPECT_EQ(reached, (std::vector<int>{2, 4, 2}));
  show.start(4);
  EXPECT_EQ(reached, (std::vector<int>{2, 4, 2, 4})) << "starting on the slide reaches it";
}

TEST_F(SlideShow, NumbersThatAreNoSlideAndDigitsFollowedByAnotherKeyDoNotJump) {
  show.start(1);
  press(Qt::Key_9);
  press(Qt::Key_9);
  press(Qt::Key_Return);
  EXPECT_EQ(show.SlideIndex(), 1);
  press(Qt::Key_5);
  press(Qt::Key_Right);
  EXPECT_EQ(show.SlideIndex(), 2);
  press(Qt::Key_Return);
  EXPECT_EQ(show.SlideIndex(), 4) << "the digit was forgotten";
}

TEST_F(SlideShow, BlanksTheScreenAndComesBackOnTheSameSlide) {
  show.start(1);
  for (const int key : {Qt::Key_B, Qt::Key_W}) {
    press(key);
    EXPECT_TRUE(show.blank());
    press(Qt::Key_Right);
    EXPECT_FALSE(show.blank());
    EXPECT_EQ(show.SlideIndex(), 1);
  }
}

TEST_F(SlideShow, EndsBehindTheLastSlideAndOnEsc) {
  show.start(5);
  press(Qt::Key_Right);
  EXPECT_TRUE(show.atEnd());
  EXPECT_EQ(ended, 0);
  press(Qt::Key_Left);
  EXPECT_FALSE(show.atEnd());
  EXPECT_EQ(show.SlideIndex(), 5);
  press(Qt::Key_Right);
  press(Qt::Key_Space);
  EXPECT_EQ(ended, 1);
  EXPECT_FALSE(show.isVisible());
  show.start(1);
  press(Qt::Key_Escape);
  EXPECT_EQ(ended, 2);
  show.start(1);
  show.close();
  EXPECT_EQ(ended, 3) << "the window manager's close is an end as well";
}

TEST_F(SlideShow, StartsWithTheFirstSlideThatIsShown) {
  world.presentation.slide(1).hidden = true;
  show.start(0);
  EXPECT_EQ(show.SlideIndex(), 2);
  EXPECT_THROW(show.GotoSlide(7), HostError);
  EXPECT_EQ(show.SlideIndex(), 2);
}

TEST_F(SlideShow, StandsLetterboxedOnBlack) {
  show.start(1);
  show.showNormal();
  show.resize(400, 400);  // slides are 16 to 9: 225 pixels high
  const QImage image = show.grab().toImage();
  EXPECT_EQ(image.pixelColor(200, 40), QColor(Qt::black));
  EXPECT_EQ(image.pixelColor(200, 200), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(200, 360), QColor(Qt::black));
}

}  // namespace
