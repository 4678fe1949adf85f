// Pictures of slides, by LibreOffice when it is installed and by the fallback painter when not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "adapters/deck/pictures.h"
#include "adapters/deck/process.h"
#include "host/host.h"
#include "host/system.h"
#include "host/wait.h"

namespace qrn::test {
namespace {

using deck::Deck;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Painter : public deck::SlidePainter {
 public:
  void paint(const deck::SlideDrawing& drawing, const std::string& file, std::string_view format, int width,
             int height) override {
    painted.push_back(drawing);
    writeFile(file, std::string(format) + std::to_string(width) + "x" + std::to_string(height));
  }
  std::vector<deck::SlideDrawing> painted;
};

// A PATH without programs for the lifetime.
class NoPrograms {
 public:
  NoPrograms() : before_(std::getenv("PATH")) { ::setenv("PATH", "/nowhere", 1); }
  ~NoPrograms() { ::setenv("PATH", before_.c_str(), 1); }

 private:
  std::string before_;
};

deck::OpenOptions optionsWith(Painter* painter, const TempFolder& folder) {
  deck::OpenOptions options;
  options.fallbackPainter = painter;
  options.cacheFolder = folder.file("cache");
  return options;
}

TEST(DeckPictures, WithoutOfficeProgramThePainterGetsTitleAndVisibleTexts) {
  const NoPrograms none;
  const TempFolder folder;
  Painter painter;
  const auto deck = Deck::open(folder.deck(), optionsWith(&painter, folder));
  EXPECT_FALSE(deck->picturesByLibreOffice());
  deck->Slides(2).Export(folder.file("out.jpg"), "JPG", 320, 180);
  deck->Slides(2).Shapes()[0]->SetVisible(false);
  deck->Slides(2).Export(folder.file("out.png"), "png", 320, 180);
  EXPECT_EQ(readFile(folder.file("out.jpg")), "JPG320x180");
  EXPECT_EQ(readFile(folder.file("out.png")), "PNG320x180");
  ASSERT_EQ(painter.painted.size(), 2U);
  EXPECT_EQ(painter.painted[0].title, "Question 2");
  EXPECT_EQ(painter.painted[1].title, "");
  EXPECT_THAT(painter.painted[0].lines, ElementsAre(" one & two", "three", "four"));
  EXPECT_EQ(painter.painted[0].background, 0xFFFFFF);
  EXPECT_EQ(painter.painted[0].textColour, 0x030201);
  EXPECT_THROW(deck->Slides(2).Export(folder.file("out.gif"), "GIF", 320, 180), HostError);
}

TEST(DeckPictures, WithoutAnyPainterTheErrorSaysWhatIsMissing) {
  const NoPrograms none;
  const TempFolder folder;
  const auto deck = Deck::open(folder.deck(), optionsWith(nullptr, folder));
  try {
    deck->Slides(1).Export(folder.file("out.png"), "PNG", 320, 180);
    ADD_FAILURE() << "exported";
  } catch (const HostError& error) {
    EXPECT_THAT(error.what(), HasSubstr("LibreOffice is not there"));
  }
}

TEST(DeckPictures, AProgramThatDoesNotEndIsEnded) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(deck::runProgram({"/bin/sh", "-c", "sleep 30"}, 0.2));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
  EXPECT_EQ(deck::runProgram({"/bin/sh", "-c", "exit 3"}, 10), 3);
  EXPECT_FALSE(deck::runProgram({"/nowhere/program"}, 10));
}

class RealTime : public host::Loop, public host::Clock {
 public:
  RealTime() : before_(host::host()) {
    host::host().loop = this;
    host::host().clock = this;
  }
  ~RealTime() override { host::host() = before_; }
  void yield() override { ++yields; }
  void sleep(int milliseconds) override { ::usleep(static_cast<useconds_t>(milliseconds) * 1000); }
  host::DateTime now() const override { return {}; }
  std::int64_t microseconds() const override {
    return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::microseconds(1);
  }
  int yields = 0;

 private:
  host::Host before_;
};

TEST(DeckPictures, TheMessageLoopGoesOnWhileAProgramRuns) {
  RealTime world;
  EXPECT_EQ(deck::runProgram({"/bin/sh", "-c", "sleep 0.1; exit 4"}, 10), 4);
  EXPECT_GT(world.yields, 10);
  EXPECT_FALSE(deck::runProgram({"/bin/sh", "-c", "sleep 30"}, 0.1));
}

TEST(DeckPictures, ACacheThatCannotBeWrittenLeavesItToThePainter) {
  const TempFolder folder;
  Painter painter;
  deck::OpenOptions options = optionsWith(&painter, folder);
  writeFile(folder.file("cache"), "a file, no folder");
  const auto deck = Deck::open(folder.deck(), options);
  deck->Slides(1).Export(folder.file("out.png"), "PNG", 320, 180);
  EXPECT_EQ(painter.painted.size(), 1U);
  EXPECT_FALSE(deck->picturesByLibreOffice());
}

// What a slide looks like has a name; only what is drawn changes it.
TEST(DeckPictures, VotesDoNotChangeTheVersion) {
  const TempFolder folder;
  const std::string file = folder.deck();
  const auto versions = [&] {
    const deck::Parts parts(std::make_shared<deck::Package>(file));
    const deck::PictureSource source{parts, "ppt/presentation.xml",
                                     deck::slidesOf(parts, "ppt/presentation.xml")};
    std::vector<std::string> all;
    for (std::size_t i = 0; i < source.slides.size(); ++i) all.push_back(deck::slideVersion(source, i));
    return all;
  };
  const std::vector<std::string> before = versions();
  const auto deck = Deck::open(file);
  deck->Slides(1).tags().Add("QRNVOTES", "1");
  deck->tags().Add("A", "1");
  deck->Save();
  EXPECT_EQ(versions(), before);
  deck->Slides(2).Shapes()[0]->SetText("Other");
  deck->Save();
  EXPECT_EQ(versions()[0], before[0]);
  EXPECT_NE(versions()[1], before[1]);
}

// The size of a picture file tells an empty slide from one with text.
TEST(DeckPictures, LibreOfficeDrawsTheWrittenDeck) {
  if (deck::findProgram("soffice").empty() || deck::findProgram("pdftoppm").empty())
    GTEST_SKIP() << "LibreOffice is not installed";
  const TempFolder folder;
  PartList parts = deckParts({3, false, false, false, false});
  part(parts, "ppt/slides/slide2.xml") =
      replaced(part(parts, "ppt/slides/slide2.xml"), "<p:sld ", "<p:sld show=\"0\" ");
  writeZip(folder.file("talk.pptx"), parts);
  const auto deck = Deck::open(folder.file("talk.pptx"), optionsWith(nullptr, folder));
  for (int i = 1; i <= 3; ++i) deck->Slides(i).tags().Add("QRNVOTES", "1;2;\r\n");
  deck->Save();
  std::vector<std::string> told;
  deck->prepare([&](const std::string& line) { told.push_back(line); });
  EXPECT_EQ(told.size(), 1U);
  ASSERT_TRUE(deck->picturesByLibreOffice());
  for (int i = 1; i <= 3; ++i)
    deck->Slides(i).Export(folder.file("s" + std::to_string(i) + ".png"), "PNG", 640, 360);
  deck->Slides(2).Export(folder.file("s2.jpg"), "JPG", 640, 360);
  EXPECT_EQ(readFile(folder.file("s2.jpg")).substr(0, 3), "\xFF\xD8\xFF");
  const std::string full = readFile(folder.file("s2.png"));
  ASSERT_GT(full.size(), 24U);
  EXPECT_EQ(full.substr(16, 8), std::string("\0\0\2\x80\0\0\1\x68", 8)) << "640 x 360";
  EXPECT_NE(full, readFile(folder.file("s1.png"))) << "a hidden slide has its own picture";
  EXPECT_NE(full, readFile(folder.file("s3.png")));

  for (host::Shape* shape : deck->Slides(2).Shapes()) shape->SetVisible(false);
  deck->Slides(2).Export(folder.file("bare.png"), "PNG", 640, 360);
  EXPECT_LT(readFile(folder.file("bare.png")).size(), full.size() / 2) << "hidden shapes are not drawn";
  for (host::Shape* shape : deck->Slides(2).Shapes()) shape->SetVisible(true);
  deck->tags().Add("A", "1");
  deck->Save();
  deck->Slides(2).Export(folder.file("again.png"), "PNG", 640, 360);
  EXPECT_EQ(readFile(folder.file("again.png")), full)
      << "votes and a hidden shape shown again change nothing";
}

TEST(DeckPictures, ThatWereMadeOnceAreTakenFromTheCache) {
  const NoPrograms none;
  const TempFolder folder;
  const std::string file = folder.deck();
  const deck::Parts parts(std::make_shared<deck::Package>(file));
  const deck::PictureSource source{parts, "ppt/presentation.xml",
                                   deck::slidesOf(parts, "ppt/presentation.xml")};
  std::filesystem::create_directories(folder.file("cache/pictures"));
  writeFile(folder.file("cache/pictures/") + deck::slideVersion(source, 0) + "-640x360.png", "a picture");
  const auto deck = Deck::open(file, optionsWith(nullptr, folder));
  deck->Slides(1).Export(folder.file("out.png"), "PNG", 640, 360);
  EXPECT_EQ(readFile(folder.file("out.png")), "a picture");
  EXPECT_THROW(deck->Slides(1).Export(folder.file("out.png"), "PNG", 641, 360), HostError);
}

}  // namespace
}  // namespace qrn::test
