#include "charts/chart_geometry.h"

#include <cmath>

namespace qrn {

double ChartGeometry::placeOf(double value) const {
  const double part = (value - low) / (high - low), fraction = inverted ? 1 - part : part;
  return lying ? plot.left + fraction * plot.width : plot.bottom() - fraction * plot.height;
}

double ChartGeometry::valueAt(double place) const {
  const double fraction = lying ? (place - plot.left) / plot.width : (plot.bottom() - place) / plot.height;
  return low + (inverted ? 1 - fraction : fraction) * (high - low);
}

ChartArea ChartGeometry::slotOf(int point) const {
  const double begin = (point - first) * slot();
  return lying ? ChartArea{plot.left, plot.top + begin, plot.width, slot()}
               : ChartArea{plot.left + begin, plot.top, slot(), plot.height};
}

double ChartGeometry::middleOf(int point) const {
  const ChartArea place = slotOf(point);
  return lying ? place.top + place.height / 2 : place.left + place.width / 2;
}

std::optional<int> ChartGeometry::pointAt(double x, double y) const {
  if (x < plot.left || x >= plot.right() || y < plot.top || y >= plot.bottom())
    return std::nullopt;
  const int at = static_cast<int>(std::floor((lying ? y - plot.top : x - plot.left) / slot()));
  return at < shown ? std::optional(first + at) : std::nullopt;
}

}  // namespace qrn
