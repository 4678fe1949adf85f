// Lowers a chart to positioned text, lines and rectangles, in twips.
//
// Arrays: "plotPanel", "gridLine", "leftAxisLabel", "bars", "barValue", "bottomAxisLabel", "axisLine",
// "legendRow", "header", "subtitle", "axisTitle", "message", "linePoint", "seriesLine". Index n of "bars",
// "barValue", "bottomAxisLabel" and "legendRow" is the point's number in its series, whatever the page.
#pragma once

#include "analysis/filter/filters.h"
#include "charts/chart_geometry.h"
#include "charts/look/graph_look.h"
#include "charts/tchart.h"
#include "host/surface.h"

namespace qrn {

// Sizes of type in a chart are told for a surface of this height, twips; the untouched size of labels.
inline constexpr double kHeightOfSizes = 768 * kTwipsPerPixel, kUntouchedType = 12;
inline constexpr double kTextColumn = 0.45;  // of the width at most, for the texts of lying bars
host::SurfaceFont headerFont(const TChart& chart, double surfaceHeight);

// Adds the chart to `surface`, whose size and background are already set.
ChartGeometry layoutChart(const TChart& chart, const ChartArea& area, const GraphLook& look,
                          host::Surface& surface);

// Keeps the last lowered chart and lowers again only for another chart, foot line, filter, background or
// size.
class ChartSurface {
 public:
  // `footer` stands below the chart, "" for none, as large as labels where it tells a value; the filter in
  // force has its own line.
  const host::Surface& lower(const TChart& chart, double width, double height, const std::string& footer,
                             bool tellsValue = false);
  const ChartGeometry& geometry() const { return geometry_; }  // of the last chart lowered
  int builds() const { return builds_; }

 private:
  TChart chart_;
  std::string footer_;
  FilterLine filter_;
  int builds_ = 0;
  host::Surface surface_;
  ChartGeometry geometry_;
};

}  // namespace qrn
