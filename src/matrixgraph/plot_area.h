// From score to place: the plot area, the fraction of a score on its scale, the point on the screen. Lengths
// are twips.
#pragma once

namespace qrn {

struct PlotArea {
  double X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;  // left, top, right, bottom
  double cellWidth = 0, cellHeight = 0;   // 0 in Regular plotting
};

struct PlotPoint {
  double x = 0, y = 0;
};

inline constexpr double kOffScale = -1000.0;  // fraction of a score that is not on its scale

// Plot area of a form of that size. `numbered`: the axis captions are numbers, which leaves other margins.
PlotArea placePlotArea(double width, double height, bool numbered);

// value / range, both counted from the first scale point, `value` as "0.00" shows it; kOffScale outside 0 to
// range, 0 for an empty range.
double scoreFraction(float value, float range);

// What a scale holds: its lowest score and how far it reaches.
struct ScaleSpan {
  double low = 0, range = 0;
};

// Centre of a label, whole twips to the nearest.
PlotPoint pointOf(const PlotArea& area, double fractionX, double fractionY);
// The fractions across and up at a place: the way back.
PlotPoint fractionsAt(const PlotArea& area, PlotPoint place);

}  // namespace qrn
