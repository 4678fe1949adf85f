// The end of a run, the background behind it, and where its forms stand.
#include <gmock/gmock.h>

#include "core/entry_fixture.h"

namespace qrn {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The end

TEST_F(EntryTest, TheEndStoresTheRunAndHandsTheShowBack) {
  storeExercise();
  world.link.canShare = true;
  world.files.files["/install/MatrixActive.txt"] = "";
  world.files.files["/install/baseKB.txt"] = "";
  entryHooks().startVote = [&] {
    world.forms.show("xyVoteRuntime");
    glo.listTitle = "Changed";
    glo.keyboardTurnedOn = true;
    world.link.sent.clear();
    endProgram();
    endProgram();
  };
  Main("QRNMATRIX,DISPLAY");
  EXPECT_THAT(world.link.sent, ElementsAre("EndVote", "KBOARD-OFF"));
  EXPECT_FALSE(world.files.fileExists("/install/baseKB.txt"));
  EXPECT_EQ(tags().Item("qrnVoteTerminated"), "Vote finished");
  EXPECT_FALSE(world.files.fileExists("/install/MatrixActive.txt"));
  EXPECT_THAT(slideTags().Item("qrnMatrix"), HasSubstr("Changed"));
  EXPECT_EQ(world.presentation.saves, 1);
  EXPECT_EQ(world.program.keysSent, "~");
  EXPECT_FALSE(world.forms.isLoaded("xyVoteRuntime"));
}

TEST_F(EntryTest, TheEndKeepsWhatItIsToldToKeep) {
  storeExercise();
  const std::string stored = slideTags().Item("qrnMatrix");
  Main("QRNMATRIX,SETUP");
  glo.listTitle = "Changed";
  world.files.files["/install/seriesVoteRunning.txt"] = "";
  endProgram(false, true);
  EXPECT_EQ(slideTags().Item("qrnMatrix"), stored);
  EXPECT_EQ(world.program.keysSent, "") << "a series moves its show by itself";
  EXPECT_EQ(world.presentation.saves, 1);
}

// Background and windows

TEST_F(EntryTest, TheSlideWithoutItsShapesIsTheBackground) {
  struct Slide : test::MemorySlide {
    Slide() : MemorySlide(900, 1) {}
    void Export(const std::string& file, std::string_view format, int width, int height) override {
      for (const test::MemoryShape& shape : shapes) seenVisible = seenVisible || shape.visible;
      what = file + " " + std::string(format) + " " + std::to_string(width) + "x" + std::to_string(height);
      if (fails)
        throw HostError(Fault::world, 5, "no pictures here");
    }
    bool fails = false, seenVisible = false;
    std::string what;
  } slide;
  glo.oPresentation = &world.presentation;
  glo.oVoteSlide = &slide;
  glo.matrixPath = "/tmp/t/quorin/";
  glo.usePPTBackground = true;
  slide.shapes = {test::MemoryShape("a"), test::MemoryShape("b")};
  slide.shapes[1].visible = false;
  for (const bool fails : {false, true}) {
    slide.fails = fails;
    blankForm form;
    form.DoBackground();
    EXPECT_EQ(slide.what, "/tmp/t/quorin/matrix_background.jpg JPG 1920x1080");
    EXPECT_FALSE(slide.seenVisible);
    EXPECT_TRUE(slide.shapes[0].visible);
    EXPECT_FALSE(slide.shapes[1].visible) << "a shape hidden before stays hidden";
    EXPECT_EQ(form.background.file, fails ? "" : "/tmp/t/quorin/matrix_background.jpg");
    EXPECT_TRUE(form.background.gradient);
    EXPECT_EQ(form.surface.background, host::RGB(128, 128, 255));
  }
}

TEST_F(EntryTest, WithoutTheSlideTheSettingsPaintTheBackground) {
  glo.backgroundFile = "/pictures/sea.jpg";
  EXPECT_EQ(currentBackground().file, "") << "the picture is missing";
  world.files.files["/pictures/sea.jpg"] = "picture";
  EXPECT_EQ(currentBackground().file, "/pictures/sea.jpg");
  glo.backgroundMode = 1;
  EXPECT_FALSE(currentBackground().gradient);
}

TEST_F(EntryTest, TheShowsRectangleTakesTheSlidesProportions) {
  EXPECT_EQ(AdjustSlideShowRECTforScreenRatio({0, 0, 1920, 1080}, 960, 720),
            (host::WindowRect{240, 0, 1680, 1080}));
  EXPECT_EQ(AdjustSlideShowRECTforScreenRatio({100, 50, 1124, 818}, 960, 540),
            (host::WindowRect{100, 146, 1124, 722}));
  EXPECT_TRUE(AdjustSlideShowRECTforScreenRatio({}, 960, 540).empty());
}

}  // namespace
}  // namespace qrn
