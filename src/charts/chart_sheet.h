// What the parts of one chart are drawn on: the surface, what is still free of it, fonts, scale and geometry.
// The frame settles these, then the parts draw.
#pragma once

#include <string>

#include "charts/chart_geometry.h"
#include "charts/chart_ticks.h"
#include "charts/look/graph_look.h"
#include "charts/slot_labels.h"
#include "charts/tchart.h"
#include "host/surface.h"

namespace qrn {

inline constexpr double kChartGap = 0.016;     // of the width, between texts and bars
inline constexpr double kCaptionShare = 0.95;  // of its slot, for a word of the scale below lying bars

struct ChartSheet {
  ChartSheet(const TChart& drawn, const ChartArea& place, const GraphLook& dress, host::Surface& on)
      : chart(drawn), area(place), look(dress), theme(dress.theme), surface(on) {}

  double px(double pixels) const;
  // The colour of somebody's choice, made readable, else the theme's.
  std::int32_t coloured(std::int32_t own, std::int32_t themes) const;
  int itemOf(int point) const;
  std::string slotText(int point) const;
  int endOfPage(const ChartSeries& series) const;  // behind the last point of the page that the series has

  host::Element& label(const char* array, int index, const std::string& caption,
                       const host::SurfaceFont& font, host::Layer layer = host::Layer::captions);
  host::Element& line(host::Layer layer, const char* array, int index);

  const TChart& chart;
  const ChartArea area;
  const GraphLook& look;
  const look::Theme& theme;
  host::Surface& surface;
  double left = 0, right = 0, top = 0, bottom = 0;  // what is still free
  double smallest = 1;                              // type, points
  host::SurfaceFont labelFont, valueFont, markFont;
  ChartTicks scale;
  int captionStep = 1;  // every how many words of the scale stand below lying bars
  ChartGeometry geometry;
  bool marksFit = true;
  SlotLabels labels;
};

void place(host::Element& element, double left, double top, double width, double height);
void ends(host::Element& line, double x1, double y1, double x2, double y2);

}  // namespace qrn
