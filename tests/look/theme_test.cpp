#include "look/theme.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "look/colour.h"

namespace qrn::look {
namespace {

constexpr std::int32_t rgb(int red, int green, int blue) {
  return red | (green << 8) | (blue << 16);
}

// Slides of every tone, the theme's own grounds (-1) among them.
std::vector<Slide> slides() {
  std::vector<Slide> all{{-1, -1}, {kBlack, -1}, {kWhite, kWhite}};
  for (const int red : {0, 60, 119, 128, 200})
    for (const int green : {0, 90, 128, 255})
      for (const int blue : {0, 128, 220}) all.push_back({rgb(red, green, blue), rgb(blue, red, green)});
  return all;
}

TEST(Theme, EverythingReadsOnEverySlide) {
  for (const Slide& slide : slides()) {
    const Theme theme = themeFor(slide);
    SCOPED_TRACE(testing::Message() << std::hex << theme.ground << " accent " << slide.accent);
    for (const std::int32_t colour : {theme.text, theme.quiet, theme.highlight, theme.allWell, theme.alarm})
      EXPECT_GE(contrastRatio(colour, theme.ground), kTextContrast) << std::hex << colour;
    for (const std::int32_t colour : {theme.data, theme.dataRest})
      EXPECT_GE(contrastRatio(colour, theme.ground), kShapeContrast) << std::hex << colour;
    EXPECT_GE(contrastRatio(theme.onHighlight, theme.highlight), kTextContrast);
    EXPECT_GE(contrastRatio(theme.onData, theme.data), kTextContrast);
    EXPECT_EQ(theme.dark, luminance(theme.text) > luminance(theme.ground));
  }
}

TEST(Theme, TheSlidesAccentShowsTheDataWhereItReads) {
  const std::int32_t navy = rgb(0x13, 0x23, 0x3a), orange = rgb(0xe0, 0x99, 0x36),
                     ink = rgb(0x20, 0x30, 0x50);
  EXPECT_EQ(themeFor({navy, orange}).data, orange);
  EXPECT_EQ(themeFor({navy, ink}).data, themeFor({navy, -1}).data);
}

// Who misses one kind of cone still tells apart what the theme tells apart.
TEST(Theme, PairsStayApartWithoutOneKindOfCone) {
  constexpr double kApart = 1.25;
  for (const std::int32_t ground : {rgb(0x13, 0x23, 0x3a), rgb(0xfb, 0xfc, 0xfa)})
    for (const Deficiency kind : {Deficiency::protanopia, Deficiency::deuteranopia, Deficiency::tritanopia}) {
      const Theme theme = themeFor({ground, -1});
      const auto seen = [&](std::int32_t colour) { return seenWith(kind, colour); };
      EXPECT_GE(contrastRatio(seen(theme.text), seen(theme.ground)), kTextContrast);
      EXPECT_GE(contrastRatio(seen(theme.data), seen(theme.ground)), kShapeContrast);
      EXPECT_GE(contrastRatio(seen(theme.data), seen(theme.dataRest)), kApart) << static_cast<int>(kind);
    }
}

TEST(Theme, SizesStepDownToTheFloorAndNoFurther) {
  constexpr double kHeight = 1080 * 15;
  EXPECT_DOUBLE_EQ(points(Size::item, kHeight), 71 * 0.75);  // 6.5 % are 70.2 pixels
  EXPECT_GT(partOfHeight(Size::word), partOfHeight(Size::label));
  EXPECT_EQ(smaller(Size::label), Size::floor);
  EXPECT_EQ(smaller(Size::floor), Size::floor);
}

TEST(Colour, DeficienciesLeaveGreysAndFoldRedAndGreen) {
  for (const Deficiency kind : {Deficiency::protanopia, Deficiency::deuteranopia, Deficiency::tritanopia})
    EXPECT_EQ(seenWith(kind, rgb(128, 128, 128)), rgb(128, 128, 128));
  const std::int32_t red = rgb(220, 60, 50), green = rgb(110, 120, 40);
  EXPECT_LT(contrastRatio(seenWith(Deficiency::deuteranopia, red), seenWith(Deficiency::deuteranopia, green)),
            1.5);
  EXPECT_GT((seenWith(Deficiency::protanopia, rgb(255, 0, 0)) >> 8) & 0xff,
            60);  // red is seen as a dark yellow
}

}  // namespace
}  // namespace qrn::look
