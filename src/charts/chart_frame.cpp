#include "charts/chart_frame.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "charts/chart_layout.h"

namespace qrn {

namespace {

using host::Align;
using host::Element;
using host::Layer;
using host::SurfaceFont;

constexpr double kMarkShare = 0.92;    // of a slot, for the value above the bar
constexpr double kLegendShare = 0.27;  // of the chart's height
constexpr double kScaleColumn = 0.16;  // of the width, for the words of an upright scale
constexpr double kTallestCaption = 2;  // lines

void setFonts(ChartSheet& s) {
  const double height = s.surface.height;
  const FontRecord& labels = s.chart.Axis.Bottom.Labels.Font;
  s.labelFont = themedFont(labels, kUntouchedType, look::Size::label, height, false);
  s.valueFont = themedFont(s.chart.Axis.Left.Labels.Font, kUntouchedType, look::Size::floor, height, false);
  s.markFont = s.labelFont;
  s.markFont.bold = true;
  s.smallest = look::points(look::Size::floor, height);
}

std::string subtitle(const ChartSheet& s) {
  std::string text = s.chart.Header.Sub;
  if (s.chart.pageCount() > 1)
    text += (text.empty() ? "" : " · ") + std::to_string(s.chart.firstPoint() + 1) + " to " +
            std::to_string(s.chart.firstPoint() + s.chart.pointsOnPage()) + " of " +
            std::to_string(s.chart.pointCount());
  return text;
}

void header(ChartSheet& s) {
  if (!s.chart.Header.Visible || s.chart.Header.Text.empty())
    return;
  const std::string text = joined(s.chart.Header.Text, "\n");
  const SurfaceFont font = headerFont(s.chart, s.surface.height);
  const FittedText fitted = fitText(text, font, s.right - s.left, 3 * lineHeight(font), font.size);
  Element& title = s.label("header", 0, fitted.caption, fitted.font, Layer::titles);
  place(title, s.left, s.top - s.px(4), s.right - s.left, fitted.height);
  title.colour = s.coloured(s.chart.Header.Font.colour, s.theme.text);
  s.top = title.bottom();
  const std::string below = subtitle(s);
  if (!below.empty()) {
    Element& line =
        s.label("subtitle", 0, cutToWidth(below, s.labelFont, s.right - s.left), s.labelFont, Layer::titles);
    line.toolTip = below;
    place(line, s.left, s.top + s.px(2), s.right - s.left, lineHeight(s.labelFont));
    line.colour = s.theme.quiet;
    s.top = line.bottom();
  }
  s.top += 0.02 * s.area.height;
}

// Above the plot and at the foot of the chart.
void axisTitles(ChartSheet& s) {
  const auto title = [&](int n, const std::string& text, double top) {
    Element& element = s.label("axisTitle", n, cutToWidth(text, s.valueFont, s.right - s.left), s.valueFont);
    place(element, s.left, top, s.right - s.left, lineHeight(s.valueFont));
    element.align = n == 0 ? Align::left : Align::centre;
    element.colour = s.theme.quiet;
    return element.height;
  };
  if (!s.chart.Axis.Left.title.empty())
    s.top += title(0, s.chart.Axis.Left.title, s.top);
  if (!s.chart.Axis.Bottom.title.empty())
    s.bottom -= title(1, s.chart.Axis.Bottom.title, s.bottom - lineHeight(s.valueFont));
}

double widestMark(const ChartSheet& s) {
  double widest = 0;
  for (int n = 0; n < s.chart.seriesCount(); ++n)
    for (const ChartPoint& point : s.chart.SERIES(n).points)
      widest =
          std::max(widest, textWidth(numberText(point.value, s.chart.SERIES(n).ValueFormat), s.markFont));
  return widest;
}

// Values above the bars are drawn as large as the widest of them fits its slot.
void fitMarks(ChartSheet& s) {
  const double widest = widestMark(s);
  if (widest > 0)
    s.markFont.size = std::min(s.markFont.size,
                               std::floor(s.markFont.size * kMarkShare * s.geometry.slot() / widest * 4) / 4);
  s.marksFit = s.markFont.size >= s.smallest;  // else the values are left out
  s.markFont.size = std::max(s.markFont.size, s.smallest);
}

// Every how many words of a lying scale stand below it: no word is cut, and the last one stands where a few
// less let it.
int captionStep(const ChartSheet& s, double slot) {
  double word = 0;
  for (const std::string& text : s.scale.texts)
    for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
      end = std::min(text.find(' ', at), text.size());
      word = std::max(word, textWidth(text.substr(at, end - at), s.valueFont));
    }
  const int last = std::max(1, static_cast<int>(s.scale.texts.size()) - 1);
  const int least = std::clamp(static_cast<int>(std::ceil(word / (slot * kCaptionShare))), 1, last);
  for (int step = least; step <= std::min(2 * least, last); ++step)
    if (last % step == 0)
      return step;
  return least;
}

// Height of the words below a lying scale of that width.
double captionHeight(ChartSheet& s, double width) {
  const double slot = width / s.scale.count();
  s.captionStep = captionStep(s, slot);
  double lines = 1;
  for (const std::string& text : s.scale.texts)
    lines = std::max(
        lines,
        static_cast<double>(host::wrapText(text, s.valueFont, slot * s.captionStep * kCaptionShare).size()));
  lines = std::min(lines, kTallestCaption);
  return lines * lineHeight(s.valueFont);
}

// Texts beside the bars, all pages alike; values at their ends; the words of the scale below.
void placeLying(ChartSheet& s) {
  ChartArea& plot = s.geometry.plot;
  const double most = kTextColumn * s.area.width;
  SurfaceFont bold = s.labelFont;  // that of the chosen one
  bold.bold = true;
  double column = 0;
  for (const std::string& text : s.chart.Axis.Bottom.Labels.Item)
    if (column = std::max(column, textWidth(text, bold)); column >= most)
      break;
  column = std::min(column, most);
  plot.left = s.left + column + kChartGap * s.area.width;
  plot.width = s.right - widestMark(s) - 0.6 * kChartGap * s.area.width - plot.left;
  plot.top = s.top;
  plot.height = s.bottom - s.top - s.px(8) - captionHeight(s, plot.width);
  if (lineHeight(s.markFont) > s.geometry.slot())
    s.markFont.size = s.smallest;
}

// Room below standing bars: the labels and their legend.
double slotLabelHeight(ChartSheet& s) {
  std::vector<std::string> texts;
  for (int i = s.geometry.first; i < s.geometry.first + s.geometry.shown; ++i) texts.push_back(s.slotText(i));
  s.labels = setSlotLabels(
      texts, s.chart.Axis.Bottom.Labels, s.labelFont,
      {s.geometry.slot(), s.right - s.left, kLegendShare * (s.bottom - s.top), s.px(1), s.smallest});
  return s.labels.height + (s.labels.legend.rows.empty() ? 0 : s.labels.legend.height + s.px(10));
}

void placeUpright(ChartSheet& s) {
  ChartArea& plot = s.geometry.plot;
  double widest = 0;
  for (const std::string& text : s.scale.texts) widest = std::max(widest, textWidth(text, s.valueFont));
  plot.left = s.left + std::min(widest, kScaleColumn * s.area.width) + 0.6 * kChartGap * s.area.width;
  plot.width = s.right - plot.left;
  fitMarks(s);
  plot.top = s.top + lineHeight(s.markFont);
  plot.height = s.bottom - plot.top - slotLabelHeight(s) - s.px(8);
}

// Which points the page shows, and on which axes.
void setPoints(ChartSheet& s) {
  ChartGeometry& geometry = s.geometry;
  const TChart& chart = s.chart;
  geometry.low = s.scale.low;
  geometry.high = s.scale.high;
  geometry.inverted = chart.Axis.Left.Inverted;
  geometry.lying = chart.seriesCount() > 0 && chart.SERIES(0).kind == SeriesKind::asHorizBar;
  geometry.first = chart.firstPoint();
  geometry.shown = chart.pointsOnPage();
  const bool evenPages = chart.pageCount() > 1 && !chart.Page.ScaleLastPage;
  geometry.places = std::max(1, evenPages ? chart.Page.MaxPointsPerPage : geometry.shown);
}

}  // namespace

void frameChart(ChartSheet& s) {
  setFonts(s);
  s.left = s.area.left + s.area.width * s.chart.MarginLeft / 100;
  s.right = s.area.left + s.area.width * (1 - s.chart.MarginRight / 100);
  s.top = s.area.top + s.area.height * s.chart.MarginTop / 100;
  s.bottom = s.area.top + s.area.height * (1 - s.chart.MarginBottom / 100);
  header(s);
  axisTitles(s);
  s.scale = chartTicks(s.chart);
  setPoints(s);
  s.geometry.lying ? placeLying(s) : placeUpright(s);
  s.geometry.plot.height = std::max(s.geometry.plot.height, s.px(20));
}

}  // namespace qrn
