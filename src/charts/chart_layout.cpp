#include "charts/chart_layout.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "charts/chart_frame.h"
#include "charts/chart_series.h"
#include "charts/chart_sheet.h"

namespace qrn {

using host::SurfaceFont;

namespace {

using host::Align;
using host::Element;
using host::Layer;

constexpr double kRounding = 0.5;  // twips that a text of just the width may lack
constexpr double kRowGap = 0.4;    // of a line, between rows of several lines

void message(ChartSheet& s) {
  SurfaceFont font = s.labelFont;
  font.size = look::points(look::Size::word, s.surface.height);
  const auto lines = host::wrapBalanced(s.chart.Message, font, (s.right - s.left) * 0.8);
  Element& text = s.label("message", 0, joined(lines, "\n"), font);
  text.toolTip = s.chart.Message;
  const double height = static_cast<double>(lines.size()) * lineHeight(font);
  place(text, s.left, (s.top + s.bottom - height) / 2, s.right - s.left, height);
  text.align = Align::centre;
  text.colour = s.theme.text;
}

void scaleLabel(ChartSheet& s, int i, double at) {
  const std::string& text = s.scale.texts[static_cast<std::size_t>(i)];
  const double line = lineHeight(s.valueFont);
  const double slot = (s.geometry.lying ? s.geometry.plot.width : s.geometry.plot.height) / s.scale.count();
  double width = s.geometry.plot.left - 0.6 * kChartGap * s.area.width - s.left + kRounding;
  if (s.geometry.lying)  // centred at its line, inside the margin
    width = std::min(slot * s.captionStep * kCaptionShare, 2 * (s.area.left + s.area.width * 0.985 - at));
  const FittedText fitted = fitText(text, s.valueFont, width,
                                    s.geometry.lying || slot >= 2 * line ? 2 * line : line, s.valueFont.size);
  Element& caption = s.label("leftAxisLabel", i, fitted.caption, fitted.font);
  caption.toolTip = text;
  caption.colour = s.coloured(s.chart.Axis.Left.Labels.Font.colour, s.theme.quiet);
  if (s.geometry.lying)
    place(caption, at - fitted.width / 2, s.geometry.plot.bottom() + s.px(8), fitted.width, fitted.height);
  else
    place(caption, s.left, at - fitted.height / 2, width, fitted.height);
  caption.align = s.geometry.lying ? Align::centre : Align::right;
  const int upright = static_cast<int>(std::ceil(line / slot));
  caption.visible = s.chart.Axis.Left.Labels.Visible && i % (s.geometry.lying ? s.captionStep : upright) == 0;
}

void grid(ChartSheet& s) {
  for (int i = 0; i < static_cast<int>(s.scale.texts.size()); ++i) {
    const double at = s.geometry.placeOf(s.scale.valueOf(i));
    Element& rule = s.line(Layer::grid, "gridLine", i);
    if (s.geometry.lying)
      ends(rule, at, s.geometry.plot.top, at, s.geometry.plot.bottom());
    else
      ends(rule, s.geometry.plot.left, at, s.geometry.plot.right(), at);
    const std::int32_t own = s.chart.Axis.Left.GridPen.Color;
    rule.colour = own == kUntouched ? s.theme.grid : softened(own, s.look);
    rule.borderWidth = s.px(1);
    rule.visible = s.chart.Axis.Left.GridPen.Visible;
    scaleLabel(s, i, at);
  }
}

Element& slotLabel(ChartSheet& s, const char* array, int i, const std::string& caption,
                   const SurfaceFont& font) {
  Element& element = s.label(array, i, caption, font);
  element.toolTip = s.slotText(i);
  element.item = s.itemOf(i);
  element.colour = s.coloured(s.chart.Axis.Bottom.Labels.Font.colour, s.theme.text);
  return element;
}

void uprightLabels(ChartSheet& s) {
  if (!s.chart.Axis.Bottom.Labels.Visible)
    return;
  const double below = s.geometry.plot.bottom() + s.px(8);
  for (int i = s.geometry.first; i < s.geometry.first + s.geometry.shown; i += s.labels.every) {
    Element& element =
        slotLabel(s, "bottomAxisLabel", i, s.labels.captions[static_cast<std::size_t>(i - s.geometry.first)],
                  s.labels.font);
    place(element, s.geometry.middleOf(i) - s.labels.width / 2, below, s.labels.width, s.labels.height);
    element.align = Align::centre;
  }
  const SlotLabels::Legend& legend = s.labels.legend;
  const double line = lineHeight(legend.font), top = below + s.labels.height + s.px(10);
  for (int i = 0; i < static_cast<int>(legend.rows.size()); ++i) {
    Element& row = slotLabel(s, "legendRow", s.geometry.first + i, legend.rows[static_cast<std::size_t>(i)],
                             legend.font);
    place(row, s.left + (i / legend.perColumn) * legend.columnWidth, top + (i % legend.perColumn) * line,
          legend.columnWidth, line);
  }
}

bool standsWhole(const std::string& text, const SurfaceFont& font, double width, double height) {
  const auto lines = host::wrapText(text, font, width);
  return static_cast<double>(lines.size()) * lineHeight(font) <= height + kRounding &&
         std::all_of(lines.begin(), lines.end(),
                     [&](const std::string& line) { return textWidth(line, font) <= width; });
}

// Of one row: rows of several lines are apart by a part of a line.
double rowHeight(const ChartSheet& s, const SurfaceFont& font) {
  const double line = lineHeight(font);
  return std::max(line, s.geometry.slot() - kRowGap * line);
}

// The largest type in which every text of the page stands whole beside its bar, else the smallest.
SurfaceFont lyingFont(const ChartSheet& s, double room) {
  SurfaceFont font = s.labelFont;
  for (int i = s.geometry.first; i < s.geometry.first + s.geometry.shown; ++i)
    while (font.size > s.smallest && (lineHeight(font) > s.geometry.slot() ||
                                      !standsWhole(s.slotText(i), font, room, rowHeight(s, font))))
      font.size = std::max(s.smallest, font.size - 1);
  return font;
}

// In balanced lines, the page in one size, then cut. The chosen one is bold where it has the room.
void lyingLabels(ChartSheet& s) {
  const double room = s.geometry.plot.left - s.left - kChartGap * s.area.width + kRounding;
  SurfaceFont font = lyingFont(s, room);
  for (int i = s.geometry.first; i < s.geometry.first + s.geometry.shown; ++i) {
    font.bold = false;
    const double height = rowHeight(s, font);
    FittedText fitted = fitText(s.slotText(i), font, room, height, font.size);
    if (standsWhole(s.slotText(i), font, room, height))
      fitted.caption = joined(host::wrapBalanced(s.slotText(i), font, room), "\n");
    font.bold = i == s.chart.selectedPoint;
    font.bold = font.bold && textWidth(fitted.caption, font) <= room;
    Element& element = slotLabel(s, "bottomAxisLabel", i, fitted.caption, font);
    const double first = topForMiddle(s.geometry.middleOf(i), font);
    const double more = fitted.height - lineHeight(font);
    place(element, s.left, first - more / 2, room, fitted.height);
    element.align = Align::right;
  }
}

// Where the bars begin.
void axis(ChartSheet& s) {
  Element& base = s.line(Layer::axes, "axisLine", 0);
  if (s.geometry.lying)
    ends(base, s.geometry.plot.left, s.geometry.plot.top, s.geometry.plot.left, s.geometry.plot.bottom());
  else
    ends(base, s.geometry.plot.left, s.geometry.plot.bottom(), s.geometry.plot.right(),
         s.geometry.plot.bottom());
  const ChartPen& pen = s.chart.Axis.Bottom.AxisPen;
  base.colour = pen.Color == kUntouched
                    ? look::tintUntil(s.theme.axis, s.theme.text, s.theme.ground, kShapeContrast)
                    : readableColour(pen.Color, s.look, kShapeContrast);
  base.borderWidth = s.px(2 * pen.Width);
  base.visible = pen.Visible;
}

void parts(ChartSheet& s) {
  grid(s);
  for (int n = 0; n < s.chart.seriesCount(); ++n)
    if (s.chart.SERIES(n).Active)
      drawSeries(s, s.chart.SERIES(n));
  s.geometry.lying ? lyingLabels(s) : uprightLabels(s);
  axis(s);
}

}  // namespace

ChartGeometry layoutChart(const TChart& chart, const ChartArea& area, const GraphLook& look,
                          host::Surface& surface) {
  ChartSheet sheet(chart, area, look, surface);
  frameChart(sheet);
  if (sheet.geometry.shown == 0 && !chart.Message.empty())
    message(sheet);
  else
    parts(sheet);
  return sheet.geometry;
}

SurfaceFont headerFont(const TChart& chart, double surfaceHeight) {
  return themedFont(chart.Header.Font, 0, look::Size::item, surfaceHeight, true);
}

}  // namespace qrn
