#include "charts/look/graph_look.h"

#include "charts/graph_fixture.h"
#include "charts/graph_notes.h"

namespace qrn {
namespace {

using test::GraphWorld;

class GraphLookTest : public GraphWorld {};

constexpr std::int32_t kWhite = 0xffffff;

TEST_F(GraphLookTest, TextReadsOnEveryBackground) {
  EXPECT_NEAR(contrastRatio(0, kWhite), 21, 1e-9);
  EXPECT_NEAR(contrastRatio(host::RGB(0x77, 0x77, 0x77), kWhite), 4.48, 0.01);  // the known borderline grey
  struct Case {
    const char* name;
    std::int32_t top, end;
    bool gradient, picture;
  };
  const Case cases[] = {
      {"dark", host::RGB(0, 0, 64), 0, false, false},
      {"light", host::RGB(250, 250, 240), 0, false, false},
      {"middle", host::RGB(128, 128, 128), 0, false, false},
      {"gradient", host::RGB(128, 128, 255), host::RGB(0, 0, 128), true, false},
      {"black to white", 0, kWhite, true, false},
      {"picture", 0, 0, false, true},
  };
  for (const Case& c : cases) {
    host::Surface surface;
    surface.background = c.top;
    surface.backgroundEnd = c.end;
    surface.gradient = c.gradient;
    surface.backgroundFile = c.picture ? "slide.jpg" : "";
    const GraphLook look = chooseLook(surface);
    std::vector<std::int32_t> behind{c.top};
    if (c.gradient)
      behind.push_back(c.end);
    if (c.picture)
      behind = {0, kWhite};
    for (const std::int32_t wanted : {0, kWhite, host::RGB(106, 94, 19), host::RGB(120, 10, 148), 65535, -5})
      for (const std::int32_t colour : behind)
        EXPECT_GE(
            contrastRatio(readableColour(wanted, look), blend(colour, look.panelColour, look.panelOpacity)),
            kTextContrast - 0.05)
            << c.name << " " << wanted << " on " << colour;
  }
}

TEST_F(GraphLookTest, AColourThatReadsIsLeftAlone) {
  host::Surface dark;
  const GraphLook look = chooseLook(dark);
  EXPECT_EQ(look.panelOpacity, 0);
  EXPECT_EQ(readableColour(host::RGB(255, 255, 0), look), host::RGB(255, 255, 0));
}

TEST_F(GraphLookTest, BackgroundIsTheFirstPictureThatExists) {
  glo.matrixPath = "/m/";
  glo.usePPTBackground = true;
  glo.backgroundFile = "/b.jpg";
  host::Surface surface;
  setGraphBackground(surface, "/own.jpg");
  EXPECT_EQ(surface.backgroundFile, "");
  EXPECT_FALSE(surface.gradient) << "colours that nobody set give way to the theme";
  glo.backgroundStart[0] = 1;
  setGraphBackground(surface, "/own.jpg");
  EXPECT_TRUE(surface.gradient);
  for (const char* file : {"/b.jpg", "/m/matrix_background.jpg", "/own.jpg"}) {
    world.files.files[file] = "x";
    setGraphBackground(surface, "/own.jpg");
    EXPECT_EQ(surface.backgroundFile, file);
  }
}

TEST_F(GraphLookTest, NotesKeepApartInEveryCorner) {
  host::Surface surface;
  surface.width = 15360;
  surface.height = 11520;
  const host::SurfaceFont font{"Arial", 12, false, false, false};  // a line is 288 high, a character 144 wide
  struct Case {
    const char* corner;
    double filterLeft, filterTop;
    bool footLeft;
  };
  // "Filtered View" is 13 x 144 wide.
  for (const Case& c :
       {Case{"TL", 240, 240, true}, Case{"TR", 15360 - 240 - 1872, 240, true},
        Case{"BL", 240, 11520 - 240 - 288, false}, Case{"BR", 15360 - 240 - 1872, 11520 - 528, true}}) {
    glo.opt_StatsBoxPosition = c.corner;
    const GraphNotes notes =
        makeNotes(surface, chooseLook(surface), font, 6000, std::string(90, 'c'), 240, true);
    EXPECT_EQ(notes.filter.caption, "Filtered View") << c.corner;
    EXPECT_DOUBLE_EQ(notes.filter.left, c.filterLeft) << c.corner;
    EXPECT_DOUBLE_EQ(notes.filter.top, c.filterTop) << c.corner;
    EXPECT_EQ(notes.foot.left == 240, c.footLeft) << c.corner;
    EXPECT_LE(notes.foot.left + notes.foot.width, 15360 - 240) << c.corner;
    const bool apart = notes.foot.left >= notes.filter.left + notes.filter.width ||
                       notes.foot.left + notes.foot.width <= notes.filter.left;
    EXPECT_TRUE(apart || notes.filter.top != notes.foot.top) << c.corner;
  }
  // A wide title leaves a tenth of the width, 1536 less two margins: seven characters.
  glo.opt_StatsBoxPosition = "TL";
  EXPECT_EQ(makeNotes(surface, chooseLook(surface), font, 15000, "", 240, true).filter.caption, "Filt...");
  EXPECT_FALSE(makeNotes(surface, chooseLook(surface), font, 6000, "", 240, false).filter.visible);
}

// Ten points: a character is 120 twips wide, a line 240 high.
TEST_F(GraphLookTest, FitsTextIntoItsSlot) {
  const host::SurfaceFont font{"Arial", 10, false, false, false};
  EXPECT_EQ(cutToWidth("abcdefgh", font, 960), "abcdefgh");
  EXPECT_EQ(cutToWidth("abcdefgh", font, 959), "abcd...");
  EXPECT_EQ(cutToWidth("ab \u00e4\u00f6\u00fcgh", font, 720), "ab...");
  EXPECT_EQ(cutToWidth("abcdefgh", font, 360), "...");
  EXPECT_EQ(cutToWidth("abcdefgh", font, 359), "");
  struct Case {
    const char* text;
    double width, height, smallest;
    const char* caption;
    double size;
  };
  const Case cases[] = {
      {"one two", 840, 240, 6, "one two", 10},
      {"one two", 600, 480, 10, "one\ntwo", 10},
      {"one two", 600, 240, 6, "one two", 7},  // 7 characters of 84 twips
      {"one two", 600, 240, 8, "one...", 8},   // two lines of 192 do not fit, nor one of 672
      {"one two three", 480, 480, 10, "one\nt...", 10},
      {"first\nsecond", 900, 240, 10, "firs...", 10},
      {"first\nsecond", 960, 240, 10, "first...", 10},
  };
  for (const Case& c : cases) {
    const FittedText fitted = fitText(c.text, font, c.width, c.height, c.smallest);
    EXPECT_EQ(fitted.caption, c.caption) << c.text << " " << c.width;
    EXPECT_EQ(fitted.font.size, c.size) << c.text << " " << c.width;
  }
}

}  // namespace
}  // namespace qrn
