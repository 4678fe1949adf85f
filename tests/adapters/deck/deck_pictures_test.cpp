// Pictures of slides, by LibreOffice when it is installed and by the fallback painter when not.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "adapters/deck/pictures.h"
#include "adapters/deck/process.h"
#include "base/text.h"
#include "host/host.h"
#include "host/system.h"
#include "host/wait.h"
#include "support/disk_case.h"

namespace qrn::test {
namespace {

using deck::Deck;

// Tells what it is to paint.
class Painter : public deck::SlidePainter {
 public:
  void paint(const deck::SlideDrawing& drawing, const std::string& file, std::string_view format, int width,
             int height) override {
    told(drawing);
    writeFile(file, std::string(format) + std::to_string(width) + "x" + std::to_string(height));
  }
  std::function<void(const deck::SlideDrawing&)> told;
};

// talk.pptx, with the programs of `stubs` in place of LibreOffice, or without any.
class PicturesCase : public DiskCase {
 protected:
  PicturesCase() : DiskCase(folder, "talk.pptx"), path_(std::getenv("PATH")) {
    folder.deck();
    ::setenv("PATH", "/nowhere", 1);
    painter.told = [this](const deck::SlideDrawing& drawing) {
      tell("painted '", drawing.title, "': ", joined(drawing.lines, ", "), std::hex, "; ", drawing.background,
           " ", drawing.textColour);
    };
    on("stubs", [this](const Words&) {
      std::filesystem::copy(QUORIN_STUBS, folder.file("bin"));
      ::setenv("PATH", (folder.file("bin:") + path_).c_str(), 1);
    });
    on("slides", [this](const Words& words) { folder.deck({words.number(0), false, false, false, false}); });
    // open [nopainter]
    on("open", [this](const Words& words) {
      deck::OpenOptions options;
      options.fallbackPainter = words.has("nopainter") ? nullptr : &painter;
      options.cacheFolder = folder.file("cache");
      deck = Deck::open(folder.file("talk.pptx"), options);
    });
    on("title", [this](const Words& words) {
      for (std::size_t i = 0; i + 1 < words.size(); ++i)
        deck->Slides(words.number(i)).Shapes()[0]->SetText(words.back());
    });
    on("notitle",
       [this](const Words& words) { deck->Slides(words.number(0)).Shapes()[0]->SetVisible(false); });
    on("vote", [this](const Words&) {
      deck->Slides(1).tags().Add("QRNVOTES", "1");
      deck->tags().Add("A", "1");
    });
    on("new", [this](const Words& words) { deck->AddTitleOnlySlide(words.number(0)); });
    on("save", [this](const Words&) { deck->Save(); });
    pictureCommands();
    runCommands();
  }
  ~PicturesCase() override {
    run.reset();
    ::setenv("PATH", path_.c_str(), 1);
  }
  std::string shown(std::string told) const override { return replaceAll(told, folder.file(""), ""); }
  void pictureCommands() {
    on("export", [this](const Words& words) {
      const std::string file = folder.file("out");
      deck->Slides(words.number(0)).Export(file, words[1], words.number(2), words.number(3));
      tell(readFile(file));
    });
    on("office", [this](const Words&) { tell(deck->picturesByLibreOffice() ? "yes" : "no"); });
    // versions: which of them have changed since the last time
    on("versions", [this](const Words&) {
      const std::vector<std::string> before = std::exchange(versions_, versions());
      for (std::size_t i = 0; i < before.size(); ++i)
        if (before[i] != versions_[i])
          tell(i + 1, " looks otherwise");
    });
    on("cached", [this](const Words& words) {
      std::filesystem::create_directories(folder.file("cache/pictures"));
      writeFile(folder.file("cache/pictures/") + versions()[0] + words[0], words.rest(1));
    });
  }
  std::vector<std::string> versions() const {
    const deck::Parts parts(std::make_shared<deck::Package>(folder.file("talk.pptx")));
    const deck::PictureSource source(parts, "ppt/presentation.xml",
                                     deck::slidesOf(parts, "ppt/presentation.xml"));
    std::vector<std::string> all;
    for (std::size_t i = 0; i < source.slides().size(); ++i) all.push_back(source.slideVersion(i));
    return all;
  }
  void runCommands() {
    on("run", [this](const Words&) {
      run.reset();
      run = deck->ExportAll(320, 180);
    });
    on("norun", [this](const Words&) { run.reset(); });
    // come COUNT [texts]: the slides whose pictures come, until there are so many or no more
    on("come", [this](const Words& words) {
      std::string slides;
      for (int i = 0, count = 0; i < 10000 && count < words.number(0) && !run->hasEnded(); ++i)
        if (const auto picture = run->next()) {
          ++count;
          slides += words.has("texts") ? readFile(picture->file) : std::to_string(picture->slide) + " ";
        } else {
          ::usleep(1000);
        }
      tell(slides, run->hasEnded() ? "end" : "");
    });
    on("quiet", [this](const Words&) {
      for (int i = 0; i < 50; ++i)
        if (run->next())
          tell("a picture came");
    });
    on("canexport", [this](const Words&) { tell(run->canExport() ? "yes" : "no"); });
    on("waitfor", [this](const Words& words) {
      for (int i = 0; i < 10000 && !std::filesystem::exists(path(words, 0)); ++i) ::usleep(1000);
    });
    on("painter", [this](const Words&) {
      tell(::kill(std::stoi(readFile(folder.file("painter"))), 0) == 0 ? "paints" : "gone");
    });
  }

  TempFolder folder;
  Painter painter;
  std::unique_ptr<Deck> deck;
  std::unique_ptr<host::PictureRun> run;

 private:
  const std::string path_;
  std::vector<std::string> versions_;
};

const bool kRegistered = registerCases<PicturesCase>("DeckPicturesCase", QUORIN_CASES "/../picture_cases");

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

// Without a loop, and with one that goes on meanwhile.
TEST(DeckPictures, AProgramThatDoesNotEndIsEnded) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(deck::runProgram({"/bin/sh", "-c", "sleep 30"}, 0.2));
  EXPECT_EQ(deck::runProgram({"/bin/sh", "-c", "exit 3"}, 10), 3);
  EXPECT_FALSE(deck::runProgram({"/nowhere/program"}, 10));
  RealTime world;
  EXPECT_EQ(deck::runProgram({"/bin/sh", "-c", "sleep 0.1; exit 4"}, 10), 4);
  EXPECT_GT(world.yields, 10);
  EXPECT_FALSE(deck::runProgram({"/bin/sh", "-c", "sleep 30"}, 0.1));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
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
  deck::OpenOptions options;
  options.cacheFolder = folder.file("cache");
  const auto deck = Deck::open(folder.file("talk.pptx"), options);
  for (int i = 1; i <= 3; ++i) deck->Slides(i).tags().Add("QRNVOTES", "1;2;\r\n");
  deck->Save();
  const auto run = deck->ExportAll(320, 180);
  ASSERT_TRUE(run);
  std::vector<int> came;
  for (int i = 0; i < 10000 && came.size() < 3 && !run->hasEnded(); ++i)
    if (const auto picture = run->next())
      came.push_back(picture->slide);
    else
      ::usleep(1000);
  EXPECT_EQ(came, (std::vector<int>{1, 2, 3}));
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

}  // namespace
}  // namespace qrn::test
