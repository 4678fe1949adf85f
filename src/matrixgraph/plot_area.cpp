#include "matrixgraph/plot_area.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace qrn {

namespace {

double nearest(double twips) {
  return std::floor(twips + 0.5);
}

}  // namespace

PlotArea placePlotArea(double width, double height, bool numbered) {
  PlotArea area;
  area.X1 = numbered ? 0.085 * width : 128.0 / 800 * width;
  area.Y1 = numbered ? 0.12 * height : 64.0 / 600 * height;
  area.X2 = 760.0 / 800 * width;
  area.Y2 = height - 0.15 * height;
  return area;
}

// A single shows seven digits; the format rounds those, halves away from zero.
float roundHundredths(float value) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "%.7g", static_cast<double>(value));
  const double shown = std::strtod(digits, nullptr);
  return static_cast<float>(std::copysign(std::floor(std::fabs(shown) * 100 + 0.5 + 1e-9) / 100, shown));
}

double scoreFraction(float value, float range) {
  const float rounded = roundHundredths(value);
  if (rounded < 0 || rounded > range)
    return kOffScale;
  return range > 0 ? static_cast<double>(rounded) / static_cast<double>(range) : 0;
}

PlotPoint pointOf(const PlotArea& area, double fractionX, double fractionY) {
  return {nearest(area.X1 + fractionX * ((area.X2 - area.X1) - area.cellWidth) + area.cellWidth / 2),
          nearest(area.Y2 - fractionY * ((area.Y2 - area.Y1) - area.cellHeight) - area.cellHeight / 2)};
}

}  // namespace qrn
