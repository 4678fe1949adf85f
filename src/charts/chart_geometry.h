// Where values and points lie on a chart that has been laid out, and back. Lengths are twips.
#pragma once

#include <optional>

namespace qrn {

struct ChartArea {
  double left = 0, top = 0, width = 0, height = 0;
  double right() const { return left + width; }
  double bottom() const { return top + height; }
};

struct ChartGeometry {
  ChartArea plot;
  double low = 0, high = 1;              // of the value axis
  bool lying = false;                    // values grow to the right, points follow each other downwards
  bool inverted = false;                 // the value axis runs the other way
  int first = 0, shown = 0, places = 1;  // first point, points and places on this page

  double slot() const { return (lying ? plot.height : plot.width) / places; }
  // Along the value axis: upwards, to the right where the bars lie.
  double placeOf(double value) const;
  double valueAt(double place) const;
  // Across it: the place of one point, whole in the plot's other direction, and the point at a place in the
  // plot.
  ChartArea slotOf(int point) const;
  double middleOf(int point) const;
  std::optional<int> pointAt(double x, double y) const;
};

}  // namespace qrn
