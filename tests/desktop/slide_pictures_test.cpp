#include "desktop/slide_pictures.h"

#include "desktop/window_world.h"
#include "host/errors.h"

namespace {

using namespace qrn;

class PaintedSlide : public test::MemorySlide {
 public:
  using MemorySlide::MemorySlide;
  void Export(const std::string& file, std::string_view, int width, int height) override {
    if (broken)
      throw HostError(Fault::world, 0, "no office program");
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(0, 120, 0));
    image.save(QString::fromStdString(file));
    exported.push_back(file);
  }
  bool broken = false;
};

class SlidePictures : public ::testing::Test {
 protected:
  SlidePictures() {
    for (auto& slide : world.presentation.slides)
      slide = std::make_unique<PaintedSlide>(slide->slideID(), slide->slideIndex());
    pictures.setDeck(&world.presentation);
    pictures.arrived = [this](int slide) { arrived.push_back(slide); };
    pictures.said = [this](const std::string& line) { said.push_back(line); };
  }
  PaintedSlide& slide(int index) { return dynamic_cast<PaintedSlide&>(world.presentation.slide(index)); }
  static QColor middle(const QImage& image) {
    return image.pixelColor(image.width() / 2, image.height() / 2);
  }

  test::WindowWorld world{4};
  desktop::SlidePictures pictures;
  std::vector<int> arrived;
  std::vector<std::string> said;
};

TEST_F(SlidePictures, AnswerAtOnceWithADrawingAndLaterWithThePicture) {
  const QImage drawing = pictures.thumbnail(2);
  EXPECT_EQ(drawing.width(), desktop::SlidePictures::kThumbnailWidth);
  EXPECT_EQ(middle(drawing), QColor(Qt::white));
  EXPECT_EQ(slide(2).exported.size(), 0U) << "asking makes nothing";
  ASSERT_TRUE(pictures.step());
  EXPECT_EQ(arrived, std::vector<int>{2});
  EXPECT_EQ(middle(pictures.thumbnail(2)), QColor(0, 120, 0));
  EXPECT_EQ(middle(pictures.picture(2)), QColor(0, 120, 0));
  EXPECT_EQ(pictures.picture(2).size(), pictures.pictureSize());
  EXPECT_FALSE(pictures.step()) << "nothing more was asked for";
}

TEST_F(SlidePictures, WhatIsLookedAtComesFirstAndEachIsMadeOnce) {
  pictures.wantAll();
  pictures.picture(3);
  while (pictures.step()) {
  }
  EXPECT_EQ(arrived, (std::vector<int>{3, 1, 2, 4}));
}

TEST_F(SlidePictures, AFailureIsSaidOnceAndKeepsTheDrawing) {
  for (const int index : {1, 2}) slide(index).broken = true;
  pictures.wantAll();
  while (pictures.step()) {
  }
  EXPECT_EQ(arrived, (std::vector<int>{3, 4}));
  EXPECT_EQ(said.size(), 1U);
  EXPECT_EQ(middle(pictures.picture(1)), QColor(Qt::white));
  EXPECT_EQ(pictures.wanted(), 0) << "it is not tried for ever";
}

TEST_F(SlidePictures, AnotherDeckBringsItsOwn) {
  pictures.picture(1);
  pictures.step();
  test::MemoryPresentation other(2);
  pictures.setDeck(&other);
  EXPECT_EQ(middle(pictures.picture(1)), QColor(Qt::white));
}

TEST(SlidePicturesPrepare, HappensOnceBeforeTheFirstPicture) {
  test::WindowWorld world;
  int prepared = 0;
  desktop::SlidePictures pictures([&](host::Presentation&, const desktop::ProgressLine& progress) {
    ++prepared;
    progress("Drawing the slides");
  });
  std::vector<std::string> said;
  pictures.said = [&](const std::string& line) { said.push_back(line); };
  pictures.setDeck(&world.presentation);
  EXPECT_EQ(prepared, 0);
  pictures.wantAll();
  while (pictures.step()) {
  }
  EXPECT_EQ(prepared, 1);
  EXPECT_EQ(said.front(), "Drawing the slides");
}

}  // namespace
