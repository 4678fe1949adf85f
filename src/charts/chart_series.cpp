#include "charts/chart_series.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qrn {

namespace {

using host::Align;
using host::Element;
using host::Layer;

constexpr double kBarShare = 0.62;                                // of a slot
constexpr double kThickestLying = 0.06, kThickestUpright = 0.16;  // of the chart's height and width
constexpr double kCorner = 0.22;                                  // of a bar's thickness
constexpr double kLeastRound = 6 * kTwipsPerPixel;                // thinner bars have no round corners
constexpr double kNarrowSlot = 10 * kTwipsPerPixel, kCrowdedSlot = 4 * kTwipsPerPixel;

// The bars that matter are the highest ones.
double highest(const ChartSeries& series) {
  double most = std::numeric_limits<double>::lowest();
  for (const ChartPoint& point : series.points) most = std::max(most, point.value);
  return most;
}

std::int32_t fillOf(const ChartSheet& s, const ChartPoint& point, int i, double most) {
  if (i == s.chart.selectedPoint)
    return s.chart.highlightColour < 0 ? s.theme.highlight
                                       : readableColour(s.chart.highlightColour, s.look, kShapeContrast);
  if (point.colour != kUntouched)
    return readableColour(point.colour, s.look, kShapeContrast);
  return point.value == most ? s.theme.data : s.theme.dataRest;
}

void mark(ChartSheet& s, const ChartSeries& series, int i, double tip) {
  double value = series.points[static_cast<std::size_t>(i)].value;
  std::string format = series.ValueFormat;
  if (series.inPercent) {
    double sum = 0;
    for (const ChartPoint& point : series.points) sum += point.value;
    value = sum != 0 ? value / sum : 0;
    format = series.PercentFormat;
  }
  Element& text = s.label("barValue", i, numberText(value, format), s.markFont);
  text.item = s.itemOf(i);
  const double w = textWidth(text.caption, s.markFont), h = lineHeight(s.markFont),
               middle = s.geometry.middleOf(i);
  if (s.geometry.lying)
    place(text, tip + 0.6 * kChartGap * s.area.width, topForMiddle(middle, s.markFont), w, h);
  else
    place(text, middle - w / 2, std::min(tip, s.geometry.plot.bottom()) - h - s.px(1), w, h);
  text.align = s.geometry.lying ? Align::left : Align::centre;
  text.colour = s.theme.text;
}

// A bar that is not yet placed.
Element barOf(const ChartSheet& s, const ChartSeries& series, int i, double thick) {
  const ChartPoint& point = series.points[static_cast<std::size_t>(i)];
  Element bar;
  bar.kind = Element::Kind::rectangle;
  bar.toolTip = point.label;
  bar.item = point.item;
  bar.cornerRadius = thick < kLeastRound ? 0 : std::min(kCorner * thick, s.px(8));
  bar.roundOneSide = true;
  bar.toward = s.geometry.lying ? host::Toward::right : host::Toward::up;
  bar.gradient = series.Gradient;
  bar.backColourEnd = readableColour(series.StartColor, s.look, kShapeContrast);
  bar.fill = series.Transparent ? host::Fill::transparent : host::Fill::solid;
  bar.bordered = series.BarPen.Visible;
  bar.colour = series.BarPen.Color;
  bar.borderWidth = s.px(series.BarPen.Width);
  return bar;
}

double wholePixels(double length) {
  return std::round(length / kTwipsPerPixel) * kTwipsPerPixel;
}

// Where a bar begins across the axis, and how thick it is: between whole pixels, equal bars alike. Where the
// slots are narrow the gaps are alike instead, and in a crowd there are none: uneven ones would make stripes.
struct Across {
  double begin, thick;
};
Across acrossOf(const ChartSheet& s, int i) {
  const ChartGeometry& geometry = s.geometry;
  const double slot = geometry.slot(), middle = geometry.middleOf(i);
  if (slot < kNarrowSlot) {
    const double gap = slot < kCrowdedSlot ? 0 : wholePixels(slot * (1 - kBarShare));
    const double begin = wholePixels(middle - (slot - gap) / 2);
    return {begin, wholePixels(middle + (slot + gap) / 2) - gap - begin};
  }
  const double most = geometry.lying ? kThickestLying * s.area.height : kThickestUpright * s.area.width;
  const double thick = wholePixels(std::min(slot * kBarShare, most));
  return {wholePixels(middle - thick / 2), thick};
}

void bars(ChartSheet& s, const ChartSeries& series) {
  const ChartGeometry& geometry = s.geometry;
  const double strong = highest(series);
  for (int i = geometry.first; i < s.endOfPage(series); ++i) {
    const ChartPoint& point = series.points[static_cast<std::size_t>(i)];
    const auto [begin, thick] = acrossOf(s, i);
    const double tip = geometry.placeOf(std::clamp(point.value, geometry.low, geometry.high));
    Element bar = barOf(s, series, i, thick);
    if (geometry.lying)
      place(bar, geometry.plot.left, begin, std::max(tip - geometry.plot.left, s.px(2)), thick);
    else
      place(bar, begin, std::min(tip, geometry.plot.bottom() - s.px(2)), thick,
            std::max(geometry.plot.bottom() - tip, s.px(2)));
    bar.backColour = fillOf(s, point, i, strong);
    s.surface.add(Layer::bars, "bars", i, std::move(bar));
    if (series.marks && (s.marksFit || i == s.chart.selectedPoint))
      mark(s, series, i, tip);
  }
}

void line(ChartSheet& s, const ChartSeries& series) {
  const double half = s.px(4);
  const Element* last = nullptr;
  for (int i = s.geometry.first; i < s.endOfPage(series); ++i) {
    const ChartPoint& point = series.points[static_cast<std::size_t>(i)];
    const double at = s.geometry.placeOf(std::clamp(point.value, s.geometry.low, s.geometry.high)),
                 across = s.geometry.middleOf(i);
    Element dot;
    dot.kind = Element::Kind::ellipse;
    place(dot, (s.geometry.lying ? at : across) - half, (s.geometry.lying ? across : at) - half, 2 * half,
          2 * half);
    dot.backColour = readableColour(point.colour, s.look, kShapeContrast);
    dot.bordered = false;
    const Element& now = s.surface.add(Layer::blobs, "linePoint", i, std::move(dot));
    if (last != nullptr) {
      Element& join = s.line(Layer::lines, "seriesLine", i);
      ends(join, last->left + half, last->top + half, now.left + half, now.top + half);
      join.colour = now.backColour;
      join.borderWidth = s.px(2);
    }
    last = &now;
  }
}

}  // namespace

void drawSeries(ChartSheet& s, const ChartSeries& series) {
  if (series.kind == SeriesKind::asBar || series.kind == SeriesKind::asHorizBar)
    bars(s, series);
  else if (series.kind == SeriesKind::asLine)
    line(s, series);
}

}  // namespace qrn
