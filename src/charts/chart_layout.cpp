#include "charts/chart_layout.h"

#include <algorithm>
#include <cmath>

#include "analysis/filter/filters.h"
#include "charts/graph_notes.h"
#include "charts/slot_labels.h"
#include "core/common.h"

namespace qrn {

namespace {

using host::Align;
using host::Element;
using host::Layer;
using host::SurfaceFont;

constexpr double kMarkShare = 0.92;                     // of a slot, for the value above the bar
constexpr double kLargestMark = 1.5;                    // of the labels: values above wide bars
constexpr double kLegendShare = 0.27, kLegendGap = 10;  // of the chart's height; pixels at 1024x768
constexpr double kBarShare = 0.72;                      // of a slot
constexpr double kThickestBar = 150;                    // pixels at 1024x768

SurfaceFont scaled(const FontRecord& font, double scale) {
  SurfaceFont out;
  if (!font.name.empty())
    out.name = font.name;
  out.size = (font.size > 0 ? font.size : 12) * scale;
  out.bold = font.bold;
  out.italic = font.italic;
  out.underline = font.underline;
  return out;
}

double roundStep(double range) {
  if (range <= 0)
    return 1;
  const double power = std::pow(10.0, std::floor(std::log10(range / 4)));
  for (const double factor : {1.0, 2.0, 2.5, 5.0})
    if (range / (factor * power) <= 5.0 + 1e-9)
      return factor * power;
  return 10 * power;
}

std::string numberText(double value, const std::string& format) {
  const bool percent = !format.empty() && format.back() == '%';
  const bool decimals = format.find(".00") != std::string::npos;
  return formatPlaces(percent ? value * 100 : value, decimals ? 2 : 0) + (percent ? "%" : "");
}

std::string axisNumber(double value, const std::string& format) {
  if (!format.empty() && format.back() == '%')
    return numberText(value, "0%");
  return plainNumber(roundPlaces(value, 6));
}

// Lays one chart out. Bars stand on the bottom axis; those of an asHorizBar series lie against the left one.
class Layout {
 public:
  Layout(const TChart& chart, const ChartArea& area, double scale, const GraphLook& look,
         host::Surface& surface)
      : chart_(chart), area_(area), scale_(scale), look_(look), surface_(surface) {}

  ChartGeometry run() {
    margins();
    header();
    scaleRange();
    labelFont_ = scaled(chart_.Axis.Bottom.Labels.Font, scale_);
    markFont_ = labelFont_;
    geo_.inverted = valueAxis().Inverted;
    geo_.lying = chart_.seriesCount() > 0 && chart_.SERIES(0).kind == SeriesKind::asHorizBar;
    placePlot();
    grid();
    for (int n = 0; n < chart_.seriesCount(); ++n) {
      const ChartSeries& series = chart_.SERIES(n);
      if (!series.Active)
        continue;
      if (series.kind == SeriesKind::asBar || series.kind == SeriesKind::asHorizBar)
        bars(series);
      else if (series.kind == SeriesKind::asLine)
        line(series);
    }
    slotLabels();
    axes();
    return geo_;
  }

 private:
  // The frame
  void margins() {
    left_ = area_.left + area_.width * chart_.MarginLeft / 100;
    right_ = area_.left + area_.width * (1 - chart_.MarginRight / 100);
    top_ = area_.top + area_.height * chart_.MarginTop / 100;
    bottom_ = area_.top + area_.height * (1 - chart_.MarginBottom / 100);
  }

  void header() {
    if (!chart_.Header.Visible || chart_.Header.Text.empty())
      return;
    std::string text;
    for (const std::string& one : chart_.Header.Text) text += (text.empty() ? "" : "\n") + one;
    const SurfaceFont font = scaled(chart_.Header.Font, scale_);
    const FittedText fitted = fitText(text, font, right_ - left_, 3 * lineHeight(font), font.size);
    Element& title = label("header", 0, fitted.caption, fitted.font, Layer::titles);
    place(title, left_, top_, right_ - left_, fitted.height);
    title.align = Align::centre;
    title.colour = readableColour(chart_.Header.Font.colour, look_);
    top_ += fitted.height + px(6);
  }

  void scaleRange() {
    const ChartAxis& axis = valueAxis();
    geo_.low = axis.Minimum;
    geo_.high = axis.Maximum;
    if (axis.Automatic || axis.AutomaticMinimum || axis.AutomaticMaximum) {
      double least = 0, most = 0;
      for (int n = 0; n < chart_.seriesCount(); ++n)
        for (const ChartPoint& point : chart_.SERIES(n).points) {
          least = std::min(least, point.value);
          most = std::max(most, point.value);
        }
      if (axis.Automatic || axis.AutomaticMinimum)
        geo_.low = least;
      if (axis.Automatic || axis.AutomaticMaximum)
        geo_.high = most;
    }
    if (!(geo_.high > geo_.low))
      geo_.high = geo_.low + 1;
    step_ = axis.Increment > 0 ? axis.Increment : roundStep(geo_.high - geo_.low);
    if ((geo_.high - geo_.low) / step_ > 50)
      step_ = roundStep(geo_.high - geo_.low);
  }

  const ChartAxis& valueAxis() const { return chart_.Axis.Left; }
  const ChartAxis& pointAxis() const { return chart_.Axis.Bottom; }

  void placePlot() {
    const std::string format = chart_.seriesCount() > 0 ? chart_.SERIES(0).ValueFormat : "0";
    format_ = format;
    valueFont_ = scaled(valueAxis().Labels.Font, scale_);
    double widest = 0;
    for (int i = 0; geo_.low + i * step_ <= geo_.high + step_ * 1e-6; ++i)
      widest = std::max(widest, textWidth(axisNumber(geo_.low + i * step_, format), valueFont_));
    geo_.first = chart_.firstPoint();
    geo_.shown = chart_.pointsOnPage();
    geo_.places = std::max(
        1, chart_.pageCount() > 1 && !chart_.Page.ScaleLastPage ? chart_.Page.MaxPointsPerPage : geo_.shown);
    if (!valueAxis().title.empty() && !geo_.lying)
      axisTitle(valueAxis().title);
    geo_.plot = {left_, top_, 0, 0};
    if (geo_.lying) {
      geo_.plot.left += slotLabelWidth() + px(8);
      geo_.plot.width = right_ - geo_.plot.left - textWidth("00.00", labelFont_) - px(8);
      geo_.plot.height = bottom_ - top_ - lineHeight(valueFont_) - px(6);
    } else {
      geo_.plot.left += widest + px(10);
      geo_.plot.width = right_ - geo_.plot.left;
      fitMarks();
      geo_.plot.top += lineHeight(markFont_) + px(4);
      geo_.plot.height = bottom_ - geo_.plot.top - slotLabelHeight() - px(6);
    }
    geo_.plot.height = std::max(geo_.plot.height, px(20));
  }

  // Labels of lying bars stand left of them, at most a third of the chart wide.
  double slotLabelWidth() const {
    double widest = 0;
    for (int i = geo_.first; i < geo_.first + geo_.shown; ++i)
      widest = std::max(widest, textWidth(slotText(i), labelFont_));
    return std::min(widest, area_.width / 3);
  }

  // Room below the bars: the labels, the legend and the title of the axis.
  double slotLabelHeight() {
    if (!pointAxis().Labels.Visible)
      return 0;
    std::vector<std::string> texts;
    for (int i = geo_.first; i < geo_.first + geo_.shown; ++i) texts.push_back(slotText(i));
    labels_ = setSlotLabels(texts, pointAxis().Labels, labelFont_,
                            {geo_.slot(), right_ - left_, kLegendShare * (bottom_ - top_), scale_});
    double height = labels_.height;
    if (!labels_.legend.rows.empty())
      height += labels_.legend.height + px(kLegendGap);
    return height + (pointAxis().title.empty() ? 0 : lineHeight(labelFont_));
  }

  int itemOf(int i) const {
    const auto& points = chart_.SERIES(0).points;
    return i < static_cast<int>(points.size()) ? points[static_cast<std::size_t>(i)].item : host::kNoItem;
  }

  std::string slotText(int i) const {
    const auto& items = pointAxis().Labels.Item;
    return i >= 0 && i < static_cast<int>(items.size()) ? items[static_cast<std::size_t>(i)] : "";
  }

  // Values above the bars are drawn as large as the widest of them fits its slot.
  void fitMarks() {
    double widest = 0;
    for (int n = 0; n < chart_.seriesCount(); ++n)
      for (const ChartPoint& point : chart_.SERIES(n).points)
        widest =
            std::max(widest, textWidth(numberText(point.value, chart_.SERIES(n).ValueFormat), labelFont_));
    const double least = kSmallestChartType * scale_;
    if (widest > 0)
      markFont_.size = std::min(kLargestMark * labelFont_.size,
                                std::floor(labelFont_.size * kMarkShare * geo_.slot() / widest * 4) / 4);
    marksFit_ = markFont_.size >= least;  // else the values are left out
    markFont_.size = std::max(markFont_.size, least);
  }

  // The parts
  void grid() {
    for (int i = 0; geo_.low + i * step_ <= geo_.high + step_ * 1e-6; ++i) {
      const double value = geo_.low + i * step_, at = geo_.placeOf(value);
      Element& rule = lineElement(Layer::grid, "gridLine", i);
      if (geo_.lying)
        ends(rule, at, geo_.plot.top, at, geo_.plot.top + geo_.plot.height);
      else
        ends(rule, geo_.plot.left, at, geo_.plot.left + geo_.plot.width, at);
      rule.colour = softened(valueAxis().GridPen.Color, look_);
      rule.borderWidth = px(1);
      rule.borderStyle = i == 0 ? 1 : 3;
      rule.visible = valueAxis().GridPen.Visible;
      Element& text = label("leftAxisLabel", i, axisNumber(value, format_), valueFont_);
      text.visible = valueAxis().Labels.Visible;
      text.colour = readableColour(valueAxis().Labels.Font.colour, look_);
      const double h = lineHeight(valueFont_);
      if (geo_.lying) {
        const double w = textWidth(text.caption, valueFont_);
        place(text, at - w / 2, geo_.plot.top + geo_.plot.height + px(4), w, h);
        text.align = Align::centre;
      } else {
        place(text, left_, at - h / 2, geo_.plot.left - px(6) - left_, h);
        text.align = Align::right;
      }
    }
  }

  void bars(const ChartSeries& series) {
    for (int i = geo_.first; i < std::min(geo_.first + geo_.shown, static_cast<int>(series.points.size()));
         ++i) {
      const ChartPoint& point = series.points[static_cast<std::size_t>(i)];
      const double thick = std::min(geo_.slot() * kBarShare, px(kThickestBar));
      const double begin =
          (geo_.lying ? geo_.plot.top : geo_.plot.left) + (i - geo_.first + 0.5) * geo_.slot() - thick / 2;
      const double value = std::clamp(point.value, geo_.low, geo_.high);
      const double tip = geo_.placeOf(value);
      Element bar;
      bar.kind = Element::Kind::rectangle;
      bar.toolTip = point.label;
      bar.item = point.item;
      if (geo_.lying)
        place(bar, geo_.plot.left, begin, std::max(tip - geo_.plot.left, px(2)), thick);
      else
        place(bar, begin, std::min(tip, geo_.plot.top + geo_.plot.height - px(2)), thick,
              std::max(geo_.plot.top + geo_.plot.height - tip, px(2)));
      bar.backColour = readableColour(i == chart_.selectedPoint ? chart_.highlightColour : point.colour,
                                      look_, kShapeContrast);
      bar.gradient = series.Gradient;
      bar.backColourEnd = readableColour(series.StartColor, look_, kShapeContrast);
      bar.fill = series.Transparent ? host::Fill::transparent : host::Fill::solid;
      bar.bordered = series.BarPen.Visible;
      bar.colour = series.BarPen.Color;
      bar.borderWidth = px(series.BarPen.Width);
      surface_.add(Layer::bars, "bars", i, std::move(bar));
      if (series.marks && (marksFit_ || i == chart_.selectedPoint))
        mark(series, i, tip, begin + thick / 2);
    }
  }

  void mark(const ChartSeries& series, int i, double tip, double middle) {
    double value = series.points[static_cast<std::size_t>(i)].value;
    std::string format = series.ValueFormat;
    if (series.inPercent) {
      double sum = 0;
      for (const ChartPoint& point : series.points) sum += point.value;
      value = sum != 0 ? value / sum : 0;
      format = series.PercentFormat;
    }
    Element& text = label("barValue", i, numberText(value, format), markFont_);
    text.item = itemOf(i);
    const double w = textWidth(text.caption, markFont_), h = lineHeight(markFont_);
    if (geo_.lying)
      place(text, tip + px(4), middle - h / 2, w, h);
    else
      place(text, middle - w / 2, std::min(tip, geo_.plot.top + geo_.plot.height) - h - px(1), w, h);
    text.align = Align::centre;
    text.colour = readableColour(valueAxis().Labels.Font.colour, look_);
  }

  void line(const ChartSeries& series) {
    const double half = px(4);
    PlotEnd last{};
    for (int i = geo_.first; i < std::min(geo_.first + geo_.shown, static_cast<int>(series.points.size()));
         ++i) {
      const ChartPoint& point = series.points[static_cast<std::size_t>(i)];
      const double x = geo_.plot.left + (i - geo_.first + 0.5) * geo_.slot(),
                   y = geo_.placeOf(std::clamp(point.value, geo_.low, geo_.high));
      if (last.set) {
        Element& join = lineElement(Layer::lines, "seriesLine", i);
        ends(join, last.x, last.y, x, y);
        join.colour = readableColour(point.colour, look_, kShapeContrast);
        join.borderWidth = px(2);
      }
      Element dot;
      dot.kind = Element::Kind::ellipse;
      place(dot, x - half, y - half, 2 * half, 2 * half);
      dot.backColour = readableColour(point.colour, look_, kShapeContrast);
      dot.bordered = false;
      surface_.add(Layer::blobs, "linePoint", i, std::move(dot));
      last = {true, x, y};
    }
  }

  // Labels of the points, their legend and the title of the axis.
  void slotLabels() {
    if (!pointAxis().Labels.Visible)
      return;
    if (geo_.lying) {
      for (int i = geo_.first; i < geo_.first + geo_.shown; ++i) lyingLabel(i);
      return;
    }
    double below = geo_.plot.top + geo_.plot.height + px(6);
    for (int i = geo_.first; i < geo_.first + geo_.shown; i += labels_.every) {
      Element& element = label("bottomAxisLabel", i,
                               labels_.captions[static_cast<std::size_t>(i - geo_.first)], labels_.font);
      element.toolTip = slotText(i);
      element.item = itemOf(i);
      element.colour = readableColour(pointAxis().Labels.Font.colour, look_);
      place(element, geo_.plot.left + (i - geo_.first + 0.5) * geo_.slot() - labels_.width / 2, below,
            labels_.width, labels_.height);
      element.align = Align::centre;
    }
    below += labels_.height;
    if (!pointAxis().title.empty()) {
      Element& title =
          label("axisTitle", 1, cutToWidth(pointAxis().title, labelFont_, geo_.plot.width), labelFont_);
      place(title, geo_.plot.left, below, geo_.plot.width, lineHeight(labelFont_));
      title.align = Align::centre;
      title.colour = readableColour(pointAxis().Labels.Font.colour, look_);
      below += lineHeight(labelFont_);
    }
    legend(below + px(kLegendGap));
  }

  void legend(double top) {
    const SlotLabels::Legend& legend = labels_.legend;
    const double line = lineHeight(legend.font);
    for (int i = 0; i < static_cast<int>(legend.rows.size()); ++i) {
      Element& row =
          label("legendRow", geo_.first + i, legend.rows[static_cast<std::size_t>(i)], legend.font);
      row.toolTip = slotText(geo_.first + i);
      row.item = itemOf(geo_.first + i);
      row.colour = readableColour(pointAxis().Labels.Font.colour, look_);
      place(row, left_ + (i / legend.perColumn) * legend.columnWidth, top + (i % legend.perColumn) * line,
            legend.columnWidth, line);
    }
  }

  void lyingLabel(int i) {
    const double room = geo_.plot.left - left_ - px(8), line = lineHeight(labelFont_);
    Element& element = label("bottomAxisLabel", i, cutToWidth(slotText(i), labelFont_, room), labelFont_);
    element.toolTip = slotText(i);
    element.item = itemOf(i);
    element.colour = readableColour(pointAxis().Labels.Font.colour, look_);
    place(element, left_, geo_.plot.top + (i - geo_.first + 0.5) * geo_.slot() - line / 2, room, line);
    element.align = Align::right;
  }

  void axisTitle(const std::string& text) {
    Element& title = label("axisTitle", 0, cutToWidth(text, valueFont_, (right_ - left_) / 2), valueFont_);
    place(title, left_, top_, (right_ - left_) / 2, lineHeight(valueFont_));
    title.colour = readableColour(valueAxis().Labels.Font.colour, look_);
    top_ += lineHeight(valueFont_);
  }

  void axes() {
    const double x = geo_.plot.left, y = geo_.plot.top + geo_.plot.height;
    Element& upright = lineElement(Layer::axes, "axisLine", 0);
    ends(upright, x, geo_.plot.top, x, y);
    Element& level = lineElement(Layer::axes, "axisLine", 1);
    ends(level, x, y, x + geo_.plot.width, y);
    for (Element* axis : {&upright, &level}) {
      const ChartPen& pen = axis == &upright ? chart_.Axis.Left.AxisPen : chart_.Axis.Bottom.AxisPen;
      axis->colour = readableColour(pen.Color, look_, kShapeContrast);
      axis->borderWidth = px(2 * pen.Width);
      axis->visible = pen.Visible;
    }
  }

  double px(double pixels) const { return pixels * kTwipsPerPixel * scale_; }

  Element& label(const char* array, int index, const std::string& caption, const SurfaceFont& font,
                 Layer layer = Layer::captions) {
    Element element;
    element.caption = caption;
    element.font = font;
    return surface_.add(layer, array, index, std::move(element));
  }

  Element& lineElement(Layer layer, const char* array, int index) {
    Element element;
    element.kind = Element::Kind::line;
    return surface_.add(layer, array, index, std::move(element));
  }

  static void place(Element& element, double left, double top, double width, double height) {
    element.left = left;
    element.top = top;
    element.width = width;
    element.height = height;
  }

  static void ends(Element& element, double x1, double y1, double x2, double y2) {
    element.x1 = x1;
    element.y1 = y1;
    element.x2 = x2;
    element.y2 = y2;
  }

  struct PlotEnd {
    bool set = false;
    double x = 0, y = 0;
  };

  const TChart& chart_;
  const ChartArea area_;
  const double scale_;
  const GraphLook& look_;
  host::Surface& surface_;
  double left_ = 0, right_ = 0, top_ = 0, bottom_ = 0;  // what is still free
  double step_ = 1;
  std::string format_;
  SurfaceFont labelFont_, valueFont_, markFont_;
  ChartGeometry geo_;
  bool marksFit_ = true;
  SlotLabels labels_;
};

bool sameFrame(const host::Surface& a, const host::Surface& b) {
  return a.width == b.width && a.height == b.height &&
         static_cast<const host::Ground&>(a) == static_cast<const host::Ground&>(b);
}

}  // namespace

ChartGeometry layoutChart(const TChart& chart, const ChartArea& area, double scale, const GraphLook& look,
                          host::Surface& surface) {
  return Layout(chart, area, scale, look, surface).run();
}

const host::Surface& ChartSurface::lower(const TChart& chart, double width, double height,
                                         const std::string& footer) {
  const std::string filter = filterCaption();
  host::Surface frame;
  frame.width = width;
  frame.height = height;
  setGraphBackground(frame, "");
  if (builds_ > 0 && sameFrame(frame, surface_) && footer_ == footer && filter_ == filter && chart_ == chart)
    return surface_;
  ++builds_;
  chart_ = chart;
  footer_ = footer;
  filter_ = filter;
  surface_ = std::move(frame);
  const GraphLook look = chooseLook(surface_);
  addPanel(surface_, look);
  const double scale = graphScale(width, height);
  const SurfaceFont title = scaled(chart.Header.Font, scale);
  double titleWidth = 0;
  for (const std::string& one : chart.Header.Text) titleWidth = std::max(titleWidth, textWidth(one, title));
  GraphNotes notes = makeNotes(surface_, look, scaled(chart.Axis.Bottom.Labels.Font, scale), titleWidth,
                               footer, width * chart.MarginLeft / 100, false);
  ChartArea area{0, 0, width, height};
  for (const host::Element* line : {&notes.filter, &notes.foot})
    if (line->visible && line->top > height / 2)
      area.height = line->top;
  addNotes(std::move(notes), surface_);
  geometry_ = layoutChart(chart, area, scale, look, surface_);
  return surface_;
}

}  // namespace qrn
