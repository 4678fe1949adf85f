#include <algorithm>

#include "charts/chart_layout.h"
#include "charts/graph_notes.h"

namespace qrn {

namespace {

constexpr double kFilterGap = 120;  // twips between a filter's line and the title below it

bool sameFrame(const host::Surface& a, const host::Surface& b) {
  return a.width == b.width && a.height == b.height &&
         static_cast<const host::Ground&>(a) == static_cast<const host::Ground&>(b);
}

}  // namespace

const host::Surface& ChartSurface::lower(const TChart& chart, double width, double height,
                                         const std::string& footer, bool tellsValue) {
  const FilterLine filter = showFilter(0, 0, width, height, 0, 0, false);
  host::Surface frame;
  frame.width = width;
  frame.height = height;
  setGraphBackground(frame, "");
  if (sameFrame(frame, surface_) && footer_ == footer && filter_ == filter && chart_ == chart)
    return surface_;
  ++builds_;
  chart_ = chart;
  footer_ = footer;
  filter_ = filter;
  surface_ = std::move(frame);
  const GraphLook look = chooseLook(surface_);
  addPanel(surface_, look);
  const auto font = [&](look::Size size) {
    return themedFont(chart.Axis.Left.Labels.Font, kUntouchedType, size, height, false);
  };
  // the title stands below a filter's line in a corner at the top
  GraphNotes notes =
      makeNotes(surface_, look, font(look::Size::floor), 0, footer, width * chart.MarginLeft / 100, false,
                tellsValue ? font(look::Size::label).size : 0);
  ChartArea area{0, 0, width, height};
  for (const host::Element* line : {&notes.filter, &notes.foot})
    if (line->visible && line->top > height / 2)
      area.height = std::min(area.height, line->top);
  if (notes.filter.visible && notes.filter.top < height / 2)
    area.top = notes.filter.bottom() + kFilterGap - height * chart.MarginTop / 100;
  area.height -= area.top;
  addNotes(std::move(notes), surface_);
  geometry_ = layoutChart(chart, area, look, surface_);
  return surface_;
}

}  // namespace qrn
