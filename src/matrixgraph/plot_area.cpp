#include "matrixgraph/plot_area.h"

#include <cmath>

#include "core/common.h"

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

double scoreFraction(float value, float range) {
  const auto rounded = static_cast<float>(roundPlaces(static_cast<double>(value), 2));
  if (rounded < 0 || rounded > range)
    return kOffScale;
  return range > 0 ? static_cast<double>(rounded) / static_cast<double>(range) : 0;
}

PlotPoint fractionsAt(const PlotArea& area, PlotPoint place) {
  return {(place.x - area.X1 - area.cellWidth / 2) / (area.X2 - area.X1 - area.cellWidth),
          (area.Y2 - area.cellHeight / 2 - place.y) / (area.Y2 - area.Y1 - area.cellHeight)};
}

PlotPoint pointOf(const PlotArea& area, double fractionX, double fractionY) {
  return {nearest(area.X1 + fractionX * ((area.X2 - area.X1) - area.cellWidth) + area.cellWidth / 2),
          nearest(area.Y2 - fractionY * ((area.Y2 - area.Y1) - area.cellHeight) - area.cellHeight / 2)};
}

}  // namespace qrn
