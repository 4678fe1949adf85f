#include "desktop/slide_pictures.h"

#include "base/errors.h"
#include "desktop/window_world.h"

namespace {

using namespace qrn;

const QColor kGreen(0, 120, 0), kBlue(0, 0, 120);

void paint(const std::string& file, const QColor& colour, int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(colour);
  image.save(QString::fromStdString(file), "PNG");
}

class PaintedSlide : public test::MemorySlide {
 public:
  using MemorySlide::MemorySlide;
  void Export(const std::string& file, std::string_view, int width, int height) override {
    if (broken)
      throw HostError(Fault::world, 0, "no office program");
    paint(file, kGreen, width, height);
    sizes.push_back(width);
  }
  bool broken = false;
  std::vector<int> sizes;
};

// Blue thumbnails, as many as were let through.
struct RunScript {
  std::deque<int> ready;
  bool canExport = true, ended = false, fails = false;
  int alive = 0;
};

class ScriptedRun : public host::PictureRun {
 public:
  ScriptedRun(RunScript& script, std::string folder) : script_(script), folder_(std::move(folder)) {
    ++script_.alive;
  }
  ~ScriptedRun() override { --script_.alive; }
  std::optional<host::SlidePicture> next() override {
    if (script_.fails)
      throw HostError(Fault::world, 0, "the painter is gone");
    if (script_.ready.empty())
      return std::nullopt;
    const int slide = script_.ready.front();
    script_.ready.pop_front();
    const std::string file = folder_ + "/" + std::to_string(slide) + ".jpg";
    paint(file, kBlue, 320, 180);
    return host::SlidePicture{slide, file};
  }
  bool canExport() const override { return script_.canExport; }
  bool hasEnded() const override { return script_.ended && script_.ready.empty(); }

 private:
  RunScript& script_;
  std::string folder_;
};

class PaintedDeck : public test::MemoryPresentation {
 public:
  explicit PaintedDeck(int count) : MemoryPresentation(count) {
    for (auto& one : slides) one = std::make_unique<PaintedSlide>(one->slideID(), one->slideIndex());
  }
  std::unique_ptr<host::PictureRun> ExportAll(int, int) override {
    return script ? std::make_unique<ScriptedRun>(*script, folder.path().toStdString()) : nullptr;
  }
  PaintedSlide& painted(int index) { return dynamic_cast<PaintedSlide&>(slide(index)); }
  std::optional<RunScript> script;
  QTemporaryDir folder;
};

class SlidePictures : public ::testing::Test {
 protected:
  SlidePictures() {
    pictures.setDeck(&deck);
    pictures.arrived = [this](int slide) { arrived.push_back(slide); };
    pictures.said = [this](const std::string& line) { said.push_back(line); };
  }
  static QColor middle(const QImage& image) {
    return image.pixelColor(image.width() / 2, image.height() / 2);
  }
  void stepToEnd() {
    while (pictures.step()) {
    }
  }

  test::WindowWorld world;
  PaintedDeck deck{4};
  desktop::SlidePictures pictures;
  std::vector<int> arrived;
  std::vector<std::string> said;
};

TEST_F(SlidePictures, AnswerAtOnceWithADrawingAndLaterWithThePicture) {
  const QImage drawing = pictures.thumbnail(2);
  EXPECT_EQ(drawing.width(), desktop::SlidePictures::kThumbnailWidth);
  EXPECT_EQ(middle(drawing), QColor(Qt::white));
  EXPECT_EQ(deck.painted(2).sizes.size(), 0U) << "asking makes nothing";
  ASSERT_TRUE(pictures.step());
  EXPECT_EQ(arrived, std::vector<int>{2});
  EXPECT_EQ(middle(pictures.thumbnail(2)), kGreen);
  EXPECT_FALSE(pictures.step()) << "nothing more was asked for";
  EXPECT_EQ(middle(pictures.picture(2)), kGreen) << "the thumbnail made large";
  EXPECT_EQ(pictures.picture(2).size(), pictures.pictureSize());
  ASSERT_TRUE(pictures.step());
  const int large = pictures.pictureSize().width();
  EXPECT_EQ(deck.painted(2).sizes, (std::vector<int>{desktop::SlidePictures::kThumbnailWidth, large}));
  EXPECT_EQ(pictures.picture(2).width(), large);
  EXPECT_FALSE(pictures.step());
}

TEST_F(SlidePictures, WhatIsLookedAtComesFirstAndEachIsMadeOnce) {
  pictures.wantAll();
  pictures.thumbnail(3);
  pictures.picture(2);
  pictures.want(4);
  stepToEnd();
  EXPECT_EQ(arrived, (std::vector<int>{4, 2, 3, 4, 1, 2}));
  pictures.wantAll();
  pictures.picture(2);
  EXPECT_EQ(pictures.wanted(), 0);
}

TEST_F(SlidePictures, ThumbnailsOnTheirWayComeWhilePicturesAreMade) {
  deck.script.emplace();
  deck.script->canExport = false;
  pictures.wantAll();
  pictures.picture(4);
  ASSERT_TRUE(pictures.step());
  EXPECT_TRUE(pictures.waits());
  deck.script->ready = {1, 2};
  ASSERT_TRUE(pictures.step());
  EXPECT_FALSE(pictures.waits());
  EXPECT_EQ(arrived, (std::vector<int>{1, 2})) << "nothing can be exported yet";
  EXPECT_EQ(middle(pictures.picture(2)), kBlue) << "the thumbnail made large";
  EXPECT_EQ(pictures.thumbnailsWanted(), 2);
  deck.script->canExport = true;
  ASSERT_TRUE(pictures.step());
  EXPECT_EQ(middle(pictures.picture(2)), kGreen) << "the last one asked for";
  deck.script->ready = {4};
  deck.script->ended = true;
  stepToEnd();
  EXPECT_EQ(arrived, (std::vector<int>{1, 2, 2, 4, 4, 3})) << "a slide that was left out is exported";
  EXPECT_EQ(deck.script->alive, 0);
}

TEST_F(SlidePictures, ThumbnailsThatCannotBeHadTogetherAreExportedOneByOne) {
  deck.script.emplace();
  deck.script->fails = true;
  pictures.wantAll();
  stepToEnd();
  EXPECT_EQ(arrived, (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(SlidePictures, AnotherDeckBringsItsOwnAndEndsWhatIsOnItsWay) {
  deck.script.emplace();
  pictures.wantAll();
  pictures.picture(1);
  pictures.step();
  EXPECT_EQ(deck.script->alive, 1);
  PaintedDeck other(2);
  pictures.setDeck(&other);
  EXPECT_EQ(deck.script->alive, 0);
  EXPECT_EQ(middle(pictures.picture(1)), QColor(Qt::white));
}

TEST_F(SlidePictures, AFailureIsSaidOnceAndKeepsTheDrawing) {
  for (const int index : {1, 2}) deck.painted(index).broken = true;
  pictures.wantAll();
  stepToEnd();
  EXPECT_EQ(arrived, (std::vector<int>{3, 4}));
  EXPECT_EQ(said.size(), 1U);
  EXPECT_EQ(middle(pictures.picture(1)), QColor(Qt::white));
  EXPECT_EQ(middle(pictures.thumbnail(1)), QColor(Qt::white));
  EXPECT_EQ(pictures.wanted(), 0) << "it is not tried for ever";
}

}  // namespace
