#include "matrixgraph/plot_area.h"

#include <gtest/gtest.h>

namespace qrn {
namespace {

TEST(PlotArea, TakesItsShareOfTheForm) {
  struct Case {
    const char* name;
    double width, height;  // pixels
    bool numbered;
    double X1, Y1, X2, Y2;  // twips
  };
  // 1024x768 is 15360x11520 twips: 128/800 of 15360 is 2457.6, 64/600 of 11520 is 1228.8, and so on.
  const Case cases[] = {
      {"XGA", 1024, 768, false, 2457.6, 1228.8, 14592, 9792},
      {"XGA numbered", 1024, 768, true, 1305.6, 1382.4, 14592, 9792},
      {"full HD", 1920, 1080, false, 4608, 1728, 27360, 13770},
      {"ultra HD", 3840, 2160, false, 9216, 3456, 54720, 27540},
      {"ultra HD numbered", 3840, 2160, true, 4896, 3888, 54720, 27540},
  };
  for (const Case& c : cases) {
    const PlotArea area = placePlotArea(c.width * 15, c.height * 15, c.numbered);
    EXPECT_NEAR(area.X1, c.X1, 1e-6) << c.name;
    EXPECT_NEAR(area.Y1, c.Y1, 1e-6) << c.name;
    EXPECT_NEAR(area.X2, c.X2, 1e-6) << c.name;
    EXPECT_NEAR(area.Y2, c.Y2, 1e-6) << c.name;
  }
}

TEST(ScoreFraction, RoundsToHundredthsFirst) {
  struct Case {
    float value, range;
    double fraction;
  };
  const Case cases[] = {
      {0, 4, 0},
      {4, 4, 1},
      {2, 4, 0.5},
      {4.004F, 4, 1},                               // shows as 4.00
      {4.005F, 4, kOffScale},                       // shows as 4.01
      {-0.004F, 4, 0},                              // shows as 0.00
      {-0.005F, 4, kOffScale},                      // shows as -0.01
      {1.0F / 3, 1, 0.33F},                         // as a single
      {2.675F, 4, static_cast<double>(2.68F) / 4},  // seven digits read 2.675000
      {0, 0, 0},
      {1, 0, kOffScale},
  };
  for (const Case& c : cases) EXPECT_DOUBLE_EQ(scoreFraction(c.value, c.range), c.fraction) << c.value;
}

TEST(PointOf, RoundsToTheNearestTwip) {
  const PlotArea regular = placePlotArea(15360, 11520, false);
  PlotArea skew = regular;
  skew.cellWidth = 2427;   // 12134.4 / 5
  skew.cellHeight = 1713;  // 8563.2 / 5 is 1712.64
  struct Case {
    const char* name;
    const PlotArea& area;
    double across, up, x, y;
  };
  const Case cases[] = {
      {"on both axes", regular, 0, 0, 2458, 9792},
      {"far corner", regular, 1, 1, 14592, 1229},
      {"middle", regular, 0.5, 0.5, 8525, 5510},
      {"middle of the first cell", skew, 0, 0, 3671, 8936},  // 2457.6 + 1213.5, 9792 - 856.5 (rounds up)
      {"middle of the last cell", skew, 1, 1, 13379, 2085},  // 14592 - 1213.5, 1228.8 + 856.5
      {"half a cell further", skew, 0.25, 0.5, 6098, 5510},
  };
  for (const Case& c : cases) {
    const PlotPoint point = pointOf(c.area, c.across, c.up);
    EXPECT_EQ(point.x, c.x) << c.name;
    EXPECT_EQ(point.y, c.y) << c.name;
  }
  EXPECT_LT(pointOf(regular, kOffScale, 0.5).x, -1e6);
}

}  // namespace
}  // namespace qrn
