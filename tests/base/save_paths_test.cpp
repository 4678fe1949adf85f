// Whatever is saved: on a disk that fails the person is told which file and why, and the old one stands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QGuiApplication>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "adapters/qt/slide_painter.h"
#include "adapters/system/files.h"
#include "base/disk.h"
#include "base/failing_disk.h"
#include "host/surface.h"
#include "render/render.h"

namespace qrn::test {
namespace {

using deck::Deck;
using ::testing::HasSubstr;
using Call = FailingDisk::Call;

struct World {
  TempFolder folder;
  std::unique_ptr<Deck> deck;
};

void addVote(World& world, const std::string& vote) {
  if (!world.deck)
    world.deck = Deck::open(world.folder.deck());
  world.deck->Slides(1).tags().Append("QRNVOTES", vote);
}

void savePicture(const std::string& file, int width) {
  host::Surface surface;
  surface.width = 1500;
  surface.height = 1500;
  render::saveSurface(surface, file, width, width);
}

// One way to save; `begin` makes the old file and all that `save` does not write itself.
struct SavePath {
  const char* name;
  const char* file;
  std::function<void(World&, const std::string&file)> begin, save;
};

const SavePath kPaths[] = {
    {"deck", "talk.pptx", [](World& world, const std::string&) { addVote(world, "1C0;1;\r\n"); },
     [](World& world, const std::string&) { world.deck->Save(); }},
    {"journal", "talk.pptx.journal", [](World& world, const std::string&) { addVote(world, "1C0;1;\r\n"); },
     [](World& world, const std::string&) { addVote(world, "2C0;2;\r\n"); }},
    {"exercise", "list.mtx", [](World&, const std::string& file) { system::DiskFiles().write(file, "old"); },
     [](World&, const std::string& file) { system::DiskFiles().write(file, "newer"); }},
    {"graph", "graph.png", [](World&, const std::string& file) { savePicture(file, 40); },
     [](World&, const std::string& file) { savePicture(file, 60); }},
    {"slide", "slide.png", [](World&, const std::string& file) { saveText(file, "old"); },
     [](World&, const std::string& file) { qt::QtSlidePainter().paint({}, file, "PNG", 40, 30); }},
    {"private", "room.state",
     [](World&, const std::string& file) {
       saveText(file, "old", {"", 0600});
     },
     [](World&, const std::string& file) {
       saveText(file, "newer", {"", 0600});
     }},
};

struct Failure {
  Call call;
  const char* reason;
};

const Failure kFailures[] = {{Call::write, "the disk is full"},
                             {Call::flush, "Input/output error"},
                             {Call::rename, "Input/output error"}};

void expectOldFileStays(const SavePath& path, const Failure& failure) {
  World world;
  const std::string file = world.folder.file(path.file);
  path.begin(world, file);
  const std::string old = readFile(file);
  const std::vector<std::string> around = world.folder.names();
  ASSERT_FALSE(old.empty());
  {
    FailingDisk disk;
    if (failure.call == Call::rename && std::string(path.name) == "journal")
      disk.fail(2, 1);  // an append whose flush fails is tried as a new file
    disk.failAll(failure.call);
    try {
      path.save(world, file);
      ADD_FAILURE() << "told as saved";
    } catch (const HostError& error) {
      EXPECT_THAT(error.what(), HasSubstr(path.file));
      EXPECT_THAT(error.what(), HasSubstr(failure.reason));
      EXPECT_EQ(error.fault(), Fault::world);
    }
    EXPECT_TRUE(disk.hasFailed());
  }
  EXPECT_EQ(readFile(file), old);
  EXPECT_EQ(world.folder.names(), around) << "nothing half made stays";
  EXPECT_NO_THROW(path.save(world, file)) << "a disk that is well again takes it";
  EXPECT_NE(readFile(file), old);
}

TEST(SavePathOnABadDisk, SaysSoAndLeavesTheOldFile) {
  int count = 1;
  char name[] = "test", *names[] = {name};
  const QGuiApplication application(count, names);
  for (const SavePath& path : kPaths)
    for (const Failure& failure : kFailures) {
      SCOPED_TRACE(std::string(path.name) + ", call " + std::to_string(static_cast<int>(failure.call)));
      expectOldFileStays(path, failure);
    }
}

TEST(NewFile, ADraftOfAKilledRunGoesAndThatOfAnotherWriterStays) {
  const TempFolder folder;
  const std::string file = folder.file("list.mtx");
  writeFile(folder.file(".list.mtx.quorin-new"), "left over");
  const NewFile other(file);
  writeAll(other.fd(), "half of", file);
  saveText(file, "whole");
  EXPECT_EQ(readFile(file), "whole");
  EXPECT_EQ(readFile(other.path()), "half of");
}

}  // namespace
}  // namespace qrn::test
