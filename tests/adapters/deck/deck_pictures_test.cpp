// Pictures of slides, by LibreOffice when it is installed and by the fallback painter when not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
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

// Stand-ins for the programs: `soffice` and `pdftoppm` are scripts that keep a log. LibreOffice waits for
// the file `convert`; a painter of several pages waits for `draw` when it has begun the second.
class StubPrograms {
 public:
  explicit StubPrograms(const TempFolder& folder) : folder_(folder), before_(std::getenv("PATH")) {
    const std::string wait = "() { while [ ! -e " + folder.path() + "/$1 ]; do sleep 0.01; done; }\n";
    script("soffice", "wait_for" + wait +
                          "echo convert >> log; wait_for convert\n"
                          "while [ $1 != --outdir ]; do shift; done; echo pdf > $2/deck.pdf\n");
    script("pdftoppm", "wait_for" + wait +
                           "for stem; do :; done; echo $$ > painter; echo $2-$4 >> log\n"
                           "if [ $2 = $4 ]; then echo single $2 > $stem.jpg; exit; fi\n"
                           "for page in $(seq $2 $4); do echo page $page > $stem-$(printf %02d $page).jpg\n"
                           "if [ $page = 2 ]; then echo > second; wait_for draw; fi; if [ $page = 11 ]; then "
                           "sleep 0.1; fi; done\n");
    ::setenv("PATH", (folder.file("bin:") + before_).c_str(), 1);
  }
  ~StubPrograms() { ::setenv("PATH", before_.c_str(), 1); }
  void allow(const std::string& what) const { writeFile(folder_.file(what), ""); }
  void waitFor(const std::string& what) const {
    for (int i = 0; i < 10000 && !std::filesystem::exists(folder_.file(what)); ++i) ::usleep(1000);
  }
  std::string log() const { return readFile(folder_.file("log")); }

 private:
  void script(const std::string& name, const std::string& text) const {
    std::filesystem::create_directories(folder_.file("bin"));
    writeFile(folder_.file("bin/" + name), "#!/bin/sh\ncd " + folder_.path() + "\n" + text);
    std::filesystem::permissions(folder_.file("bin/" + name), std::filesystem::perms::owner_all);
  }
  const TempFolder& folder_;
  std::string before_;
};

// Slides in the order of their pictures, until there are `count` or, in ten seconds, no more come.
std::vector<int> numbersOf(host::PictureRun& run, std::size_t count, std::string* texts = nullptr) {
  std::vector<int> all;
  for (int i = 0; i < 10000 && all.size() < count && !run.hasEnded(); ++i)
    if (const auto picture = run.next()) {
      all.push_back(picture->slide);
      if (texts != nullptr)
        *texts += readFile(picture->file);
    } else {
      ::usleep(1000);
    }
  return all;
}

TEST(DeckPictures, OfAllSlidesComeAsTheyAreDrawnAndAreKept) {
  const TempFolder folder;
  const StubPrograms programs(folder);
  Painter painter;
  const auto deck = Deck::open(folder.deck({12, false, false, false, false}), optionsWith(&painter, folder));
  auto run = deck->ExportAll(320, 180);
  ASSERT_TRUE(run);
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(run->next());
  EXPECT_FALSE(run->canExport());
  deck->Slides(1).Export(folder.file("out.jpg"), "JPG", 640, 360);
  EXPECT_EQ(painter.painted.size(), 1U) << "nobody waits for LibreOffice";
  programs.allow("convert");
  std::string texts;
  EXPECT_EQ(numbersOf(*run, 1, &texts), std::vector<int>{1});
  EXPECT_TRUE(run->canExport());
  programs.waitFor("second");
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(run->next()) << "the second page is not yet whole";
  deck->Slides(3).Export(folder.file("out.jpg"), "JPG", 640, 360);
  EXPECT_EQ(readFile(folder.file("out.jpg")), "single 3\n");
  deck->Slides(11).Shapes()[0]->SetText("Another title");
  deck->Slides(11).Export(folder.file("out.jpg"), "JPG", 640, 360);
  programs.allow("draw");
  EXPECT_EQ(numbersOf(*run, 99, &texts), (std::vector<int>{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
  EXPECT_THAT(texts, HasSubstr("page 1\npage 2\npage 3\n"));
  EXPECT_TRUE(run->hasEnded());

  for (const int slide : {5, 9, 10}) deck->Slides(slide).Shapes()[0]->SetText("Another title");
  EXPECT_EQ(numbersOf(*deck->ExportAll(320, 180), 99),
            (std::vector<int>{1, 2, 3, 4, 6, 7, 8, 12, 5, 9, 10, 11}))
      << "the old look of slide 11 is not taken for the new one";
  EXPECT_EQ(programs.log(), "convert\n1-12\n3-3\nconvert\n1-1\nconvert\n5-5\n9-11\n");
  deck->AddTitleOnlySlide(12);
  EXPECT_EQ(numbersOf(*deck->ExportAll(320, 180), 99).size(), 13U);
}

TEST(DeckPictures, OnTheirWayEndWithTheRun) {
  const TempFolder folder;
  const StubPrograms programs(folder);
  programs.allow("convert");
  const auto deck = Deck::open(folder.deck(), optionsWith(nullptr, folder));
  auto run = deck->ExportAll(320, 180);
  ASSERT_EQ(numbersOf(*run, 1).size(), 1U);
  const pid_t painter = std::stoi(readFile(folder.file("painter")));
  EXPECT_EQ(::kill(painter, 0), 0);
  run.reset();
  EXPECT_NE(::kill(painter, 0), 0);
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

deck::PictureSource sourceOf(const std::string& file) {
  const deck::Parts parts(std::make_shared<deck::Package>(file));
  return {parts, "ppt/presentation.xml", deck::slidesOf(parts, "ppt/presentation.xml")};
}

// What a slide looks like has a name; only what is drawn changes it.
TEST(DeckPictures, VotesDoNotChangeTheVersion) {
  const TempFolder folder;
  const std::string file = folder.deck();
  const auto versions = [&] {
    const deck::PictureSource source = sourceOf(file);
    std::vector<std::string> all;
    for (std::size_t i = 0; i < source.slides().size(); ++i) all.push_back(source.slideVersion(i));
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
  const auto run = deck->ExportAll(320, 180);
  ASSERT_TRUE(run);
  EXPECT_EQ(numbersOf(*run, 3), (std::vector<int>{1, 2, 3}));
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
  std::filesystem::create_directories(folder.file("cache/pictures"));
  writeFile(folder.file("cache/pictures/") + sourceOf(file).slideVersion(0) + "-640x360.png", "a picture");
  const auto deck = Deck::open(file, optionsWith(nullptr, folder));
  deck->Slides(1).Export(folder.file("out.png"), "PNG", 640, 360);
  EXPECT_EQ(readFile(folder.file("out.png")), "a picture");
  EXPECT_THROW(deck->Slides(1).Export(folder.file("out.png"), "PNG", 641, 360), HostError);
}

}  // namespace
}  // namespace qrn::test
