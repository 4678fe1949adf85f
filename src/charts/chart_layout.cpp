#include "charts/chart_layout.h"

#include <algorithm>
#include <cmath>

#include "charts/chart_ticks.h"
#include "charts/slot_labels.h"

namespace qrn {

namespace {

using host::Align;
using host::Element;
using host::Layer;
using host::SurfaceFont;

constexpr double kMarkShare = 0.92;                               // of a slot, for the value above the bar
constexpr double kLegendShare = 0.27;                             // of the chart's height
constexpr double kBarShare = 0.62;                                // of a slot
constexpr double kThickestLying = 0.06, kThickestUpright = 0.16;  // of the chart's height and width
constexpr double kScaleColumn = 0.16;   // of the width, for the words of an upright scale
constexpr double kGap = 0.016;          // of the width, between texts and bars
constexpr double kCorner = 0.22;        // of a bar's thickness
constexpr double kTallestCaption = 2;   // lines
constexpr double kCaptionShare = 0.95;  // of its slot below lying bars
constexpr std::int32_t kUntouched = 0xffffff;

// Lays one chart out. Bars stand on the bottom axis; those of an asHorizBar series lie against the left one.
class Layout {
 public:
  Layout(const TChart& chart, const ChartArea& area, const GraphLook& look, host::Surface& surface)
      : chart_(chart), area_(area), look_(look), theme_(look.theme), surface_(surface) {}

  ChartGeometry run() {
    setFonts();
    left_ = area_.left + area_.width * chart_.MarginLeft / 100;
    right_ = area_.left + area_.width * (1 - chart_.MarginRight / 100);
    top_ = area_.top + area_.height * chart_.MarginTop / 100;
    bottom_ = area_.top + area_.height * (1 - chart_.MarginBottom / 100);
    header();
    axisTitles();
    scale_ = chartTicks(chart_);
    geo_.low = scale_.low;
    geo_.high = scale_.high;
    geo_.inverted = chart_.Axis.Left.Inverted;
    geo_.lying = chart_.seriesCount() > 0 && chart_.SERIES(0).kind == SeriesKind::asHorizBar;
    geo_.first = chart_.firstPoint();
    geo_.shown = chart_.pointsOnPage();
    geo_.places = std::max(
        1, chart_.pageCount() > 1 && !chart_.Page.ScaleLastPage ? chart_.Page.MaxPointsPerPage : geo_.shown);
    geo_.lying ? placeLying() : placeUpright();
    geo_.plot.height = std::max(geo_.plot.height, px(20));
    if (geo_.shown == 0 && !chart_.Message.empty())
      message();
    else
      parts();
    return geo_;
  }

 private:
  // The frame
  void setFonts() {
    const double height = surface_.height;
    const FontRecord& labels = chart_.Axis.Bottom.Labels.Font;
    labelFont_ = themedFont(labels, kUntouchedType, look::Size::label, height, false);
    valueFont_ = themedFont(chart_.Axis.Left.Labels.Font, kUntouchedType, look::Size::floor, height, false);
    markFont_ = labelFont_;
    markFont_.bold = true;
    floor_ = look::points(look::Size::floor, height);
  }

  void header() {
    if (!chart_.Header.Visible || chart_.Header.Text.empty())
      return;
    std::string text;
    for (const std::string& one : chart_.Header.Text) text += (text.empty() ? "" : "\n") + one;
    const SurfaceFont font = headerFont(chart_, surface_.height);
    const FittedText fitted = fitText(text, font, right_ - left_, 3 * lineHeight(font), font.size);
    Element& title = label("header", 0, fitted.caption, fitted.font, Layer::titles);
    place(title, left_, top_ - px(4), right_ - left_, fitted.height);
    title.colour = coloured(chart_.Header.Font.colour, theme_.text);
    top_ = title.bottom();
    const std::string below = subtitle();
    if (!below.empty()) {
      Element& line =
          label("subtitle", 0, cutToWidth(below, labelFont_, right_ - left_), labelFont_, Layer::titles);
      line.toolTip = below;
      place(line, left_, top_ + px(2), right_ - left_, lineHeight(labelFont_));
      line.colour = theme_.quiet;
      top_ = line.bottom();
    }
    top_ += 0.02 * area_.height;
  }

  // Above the plot and at the foot of the chart.
  void axisTitles() {
    const auto title = [&](int n, const std::string& text, double top) {
      Element& element = label("axisTitle", n, cutToWidth(text, valueFont_, right_ - left_), valueFont_);
      place(element, left_, top, right_ - left_, lineHeight(valueFont_));
      element.align = n == 0 ? Align::left : Align::centre;
      element.colour = theme_.quiet;
      return element.height;
    };
    if (!chart_.Axis.Left.title.empty())
      top_ += title(0, chart_.Axis.Left.title, top_);
    if (!chart_.Axis.Bottom.title.empty())
      bottom_ -= title(1, chart_.Axis.Bottom.title, bottom_ - lineHeight(valueFont_));
  }

  std::string subtitle() const {
    std::string text = chart_.Header.Sub;
    if (chart_.pageCount() > 1)
      text += (text.empty() ? "" : " · ") + std::to_string(chart_.firstPoint() + 1) + " to " +
              std::to_string(chart_.firstPoint() + chart_.pointsOnPage()) + " of " +
              std::to_string(chart_.pointCount());
    return text;
  }

  double widestMark() const {
    double widest = 0;
    for (int n = 0; n < chart_.seriesCount(); ++n)
      for (const ChartPoint& point : chart_.SERIES(n).points)
        widest =
            std::max(widest, textWidth(numberText(point.value, chart_.SERIES(n).ValueFormat), markFont_));
    return widest;
  }

  // Texts beside the bars, all pages alike; values at their ends; the words of the scale below.
  void placeLying() {
    const double most = kTextColumn * area_.width;
    double column = 0;
    for (const std::string& text : chart_.Axis.Bottom.Labels.Item)
      if (column = std::max(column, textWidth(text, labelFont_)); column >= most)
        break;
    column = std::min(column, most);
    geo_.plot.left = left_ + column + kGap * area_.width;
    geo_.plot.width = right_ - widestMark() - 0.6 * kGap * area_.width - geo_.plot.left;
    geo_.plot.top = top_;
    geo_.plot.height = bottom_ - top_ - px(8) - captionHeight(geo_.plot.width);
    if (lineHeight(markFont_) > geo_.slot())
      markFont_.size = floor_;
  }

  void placeUpright() {
    double widest = 0;
    for (const std::string& text : scale_.texts) widest = std::max(widest, textWidth(text, valueFont_));
    geo_.plot.left = left_ + std::min(widest, kScaleColumn * area_.width) + 0.6 * kGap * area_.width;
    geo_.plot.width = right_ - geo_.plot.left;
    fitMarks();
    geo_.plot.top = top_ + lineHeight(markFont_);
    geo_.plot.height = bottom_ - geo_.plot.top - slotLabelHeight() - px(8);
  }

  // Every how many words of a lying scale stand below it: no word is cut, and the last one stands where a few
  // less let it.
  int captionStep(double slot) const {
    double word = 0;
    for (const std::string& text : scale_.texts)
      for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
        end = std::min(text.find(' ', at), text.size());
        word = std::max(word, textWidth(text.substr(at, end - at), valueFont_));
      }
    const int last = std::max(1, static_cast<int>(scale_.texts.size()) - 1);
    const int least = std::clamp(static_cast<int>(std::ceil(word / (slot * kCaptionShare))), 1, last);
    for (int step = least; step <= std::min(2 * least, last); ++step)
      if (last % step == 0)
        return step;
    return least;
  }

  // Height of the words below a lying scale of that width.
  double captionHeight(double width) {
    const double slot = width / scale_.count();
    every_ = captionStep(slot);
    double lines = 1;
    for (const std::string& text : scale_.texts)
      lines = std::max(
          lines, static_cast<double>(host::wrapText(text, valueFont_, slot * every_ * kCaptionShare).size()));
    lines = std::min(lines, kTallestCaption);
    return lines * lineHeight(valueFont_);
  }

  // Room below standing bars: the labels and their legend.
  double slotLabelHeight() {
    std::vector<std::string> texts;
    for (int i = geo_.first; i < geo_.first + geo_.shown; ++i) texts.push_back(slotText(i));
    labels_ = setSlotLabels(texts, chart_.Axis.Bottom.Labels, labelFont_,
                            {geo_.slot(), right_ - left_, kLegendShare * (bottom_ - top_), px(1), floor_});
    return labels_.height + (labels_.legend.rows.empty() ? 0 : labels_.legend.height + px(10));
  }

  // Values above the bars are drawn as large as the widest of them fits its slot.
  void fitMarks() {
    const double widest = widestMark();
    if (widest > 0)
      markFont_.size =
          std::min(markFont_.size, std::floor(markFont_.size * kMarkShare * geo_.slot() / widest * 4) / 4);
    marksFit_ = markFont_.size >= floor_;  // else the values are left out
    markFont_.size = std::max(markFont_.size, floor_);
  }

  // The parts
  void parts() {
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
    geo_.lying ? lyingLabels() : uprightLabels();
    axis();
  }

  void message() {
    SurfaceFont font = labelFont_;
    font.size = look::points(look::Size::word, surface_.height);
    std::string caption;
    const auto lines = host::wrapBalanced(chart_.Message, font, (right_ - left_) * 0.8);
    for (const std::string& line : lines) caption += (caption.empty() ? "" : "\n") + line;
    Element& text = label("message", 0, caption, font);
    text.toolTip = chart_.Message;
    const double height = static_cast<double>(lines.size()) * lineHeight(font);
    place(text, left_, (top_ + bottom_ - height) / 2, right_ - left_, height);
    text.align = Align::centre;
    text.colour = theme_.text;
  }

  void grid() {
    for (int i = 0; i < static_cast<int>(scale_.texts.size()); ++i) {
      const double at = geo_.placeOf(scale_.valueOf(i));
      Element& rule = lineElement(Layer::grid, "gridLine", i);
      if (geo_.lying)
        ends(rule, at, geo_.plot.top, at, geo_.plot.bottom());
      else
        ends(rule, geo_.plot.left, at, geo_.plot.right(), at);
      const std::int32_t own = chart_.Axis.Left.GridPen.Color;
      rule.colour = own == kUntouched ? theme_.grid : softened(own, look_);
      rule.borderWidth = px(1);
      rule.visible = chart_.Axis.Left.GridPen.Visible;
      scaleLabel(i, at);
    }
  }

  void scaleLabel(int i, double at) {
    const std::string& text = scale_.texts[static_cast<std::size_t>(i)];
    const double line = lineHeight(valueFont_);
    const double slot = (geo_.lying ? geo_.plot.width : geo_.plot.height) / scale_.count();
    double width = geo_.plot.left - 0.6 * kGap * area_.width - left_;
    if (geo_.lying)  // centred at its line, inside the margin
      width = std::min(slot * every_ * kCaptionShare, 2 * (area_.left + area_.width * 0.985 - at));
    const FittedText fitted =
        fitText(text, valueFont_, width, geo_.lying || slot >= 2 * line ? 2 * line : line, valueFont_.size);
    Element& caption = label("leftAxisLabel", i, fitted.caption, fitted.font);
    caption.toolTip = text;
    caption.colour = coloured(chart_.Axis.Left.Labels.Font.colour, theme_.quiet);
    if (geo_.lying)
      place(caption, at - fitted.width / 2, geo_.plot.bottom() + px(8), fitted.width, fitted.height);
    else
      place(caption, left_, at - fitted.height / 2, width, fitted.height);
    caption.align = geo_.lying ? Align::centre : Align::right;
    const int upright = slot > 0 ? static_cast<int>(std::ceil(line / slot)) : 1;
    caption.visible = chart_.Axis.Left.Labels.Visible && i % (geo_.lying ? every_ : upright) == 0;
  }

  // The bar that matters is the highest one.
  int strongest(const ChartSeries& series) const {
    const auto most =
        std::max_element(series.points.begin(), series.points.end(),
                         [](const ChartPoint& a, const ChartPoint& b) { return a.value < b.value; });
    return static_cast<int>(most - series.points.begin());
  }

  std::int32_t fillOf(const ChartPoint& point, int i, int strong) const {
    if (i == chart_.selectedPoint)
      return chart_.highlightColour < 0 ? theme_.highlight
                                        : readableColour(chart_.highlightColour, look_, kShapeContrast);
    if (point.colour != kUntouched)
      return readableColour(point.colour, look_, kShapeContrast);
    return i == strong ? theme_.data : theme_.dataRest;
  }

  void bars(const ChartSeries& series) {
    const int strong = strongest(series);
    const double thick = std::min(
        geo_.slot() * kBarShare, geo_.lying ? kThickestLying * area_.height : kThickestUpright * area_.width);
    for (int i = geo_.first; i < std::min(geo_.first + geo_.shown, static_cast<int>(series.points.size()));
         ++i) {
      const ChartPoint& point = series.points[static_cast<std::size_t>(i)];
      const double begin = geo_.middleOf(i) - thick / 2;
      const double tip = geo_.placeOf(std::clamp(point.value, geo_.low, geo_.high));
      Element bar;
      bar.kind = Element::Kind::rectangle;
      bar.toolTip = point.label;
      bar.item = point.item;
      if (geo_.lying)
        place(bar, geo_.plot.left, begin, std::max(tip - geo_.plot.left, px(2)), thick);
      else
        place(bar, begin, std::min(tip, geo_.plot.bottom() - px(2)), thick,
              std::max(geo_.plot.bottom() - tip, px(2)));
      bar.cornerRadius = std::min(kCorner * thick, px(8));
      bar.roundOneSide = true;
      bar.toward = geo_.lying ? host::Toward::right : host::Toward::up;
      bar.backColour = fillOf(point, i, strong);
      bar.gradient = series.Gradient;
      bar.backColourEnd = readableColour(series.StartColor, look_, kShapeContrast);
      bar.fill = series.Transparent ? host::Fill::transparent : host::Fill::solid;
      bar.bordered = series.BarPen.Visible;
      bar.colour = series.BarPen.Color;
      bar.borderWidth = px(series.BarPen.Width);
      surface_.add(Layer::bars, "bars", i, std::move(bar));
      if (series.marks && (marksFit_ || i == chart_.selectedPoint))
        mark(series, i, tip);
    }
  }

  void mark(const ChartSeries& series, int i, double tip) {
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
    const double w = textWidth(text.caption, markFont_), h = lineHeight(markFont_), middle = geo_.middleOf(i);
    if (geo_.lying)
      place(text, tip + 0.6 * kGap * area_.width, topForMiddle(middle, markFont_), w, h);
    else
      place(text, middle - w / 2, std::min(tip, geo_.plot.bottom()) - h - px(1), w, h);
    text.align = geo_.lying ? Align::left : Align::centre;
    text.colour = theme_.text;
  }

  void line(const ChartSeries& series) {
    const double half = px(4);
    const Element* last = nullptr;
    for (int i = geo_.first; i < std::min(geo_.first + geo_.shown, static_cast<int>(series.points.size()));
         ++i) {
      const ChartPoint& point = series.points[static_cast<std::size_t>(i)];
      const double at = geo_.placeOf(std::clamp(point.value, geo_.low, geo_.high)), across = geo_.middleOf(i);
      Element dot;
      dot.kind = Element::Kind::ellipse;
      place(dot, (geo_.lying ? at : across) - half, (geo_.lying ? across : at) - half, 2 * half, 2 * half);
      dot.backColour = readableColour(point.colour, look_, kShapeContrast);
      dot.bordered = false;
      const Element& now = surface_.add(Layer::blobs, "linePoint", i, std::move(dot));
      if (last != nullptr) {
        Element& join = lineElement(Layer::lines, "seriesLine", i);
        ends(join, last->left + half, last->top + half, now.left + half, now.top + half);
        join.colour = now.backColour;
        join.borderWidth = px(2);
      }
      last = &now;
    }
  }

  Element& slotLabel(const char* array, int i, const std::string& caption, const SurfaceFont& font) {
    Element& element = label(array, i, caption, font);
    element.toolTip = slotText(i);
    element.item = itemOf(i);
    element.colour = coloured(chart_.Axis.Bottom.Labels.Font.colour, theme_.text);
    return element;
  }

  void uprightLabels() {
    if (!chart_.Axis.Bottom.Labels.Visible)
      return;
    const double below = geo_.plot.bottom() + px(8);
    for (int i = geo_.first; i < geo_.first + geo_.shown; i += labels_.every) {
      Element& element = slotLabel("bottomAxisLabel", i,
                                   labels_.captions[static_cast<std::size_t>(i - geo_.first)], labels_.font);
      place(element, geo_.middleOf(i) - labels_.width / 2, below, labels_.width, labels_.height);
      element.align = Align::centre;
    }
    const SlotLabels::Legend& legend = labels_.legend;
    const double line = lineHeight(legend.font), top = below + labels_.height + px(10);
    for (int i = 0; i < static_cast<int>(legend.rows.size()); ++i) {
      Element& row =
          slotLabel("legendRow", geo_.first + i, legend.rows[static_cast<std::size_t>(i)], legend.font);
      place(row, left_ + (i / legend.perColumn) * legend.columnWidth, top + (i % legend.perColumn) * line,
            legend.columnWidth, line);
    }
  }

  // In balanced lines, then a size smaller, then cut.
  void lyingLabels() {
    const double room = geo_.plot.left - left_ - kGap * area_.width;
    for (int i = geo_.first; i < geo_.first + geo_.shown; ++i) {
      const double height = geo_.slot();
      SurfaceFont font = labelFont_;
      font.bold = i == chart_.selectedPoint;
      FittedText fitted = fitText(slotText(i), font, room, height, std::min(floor_, font.size));
      if (fitted.caption.find('\n') != std::string::npos) {
        const auto even = host::wrapBalanced(slotText(i), fitted.font, room);
        if (std::count(fitted.caption.begin(), fitted.caption.end(), '\n') + 1 ==
            static_cast<std::ptrdiff_t>(even.size())) {
          fitted.caption.clear();
          for (const std::string& one : even) fitted.caption += (fitted.caption.empty() ? "" : "\n") + one;
        }
      }
      Element& element = slotLabel("bottomAxisLabel", i, fitted.caption, fitted.font);
      const double first = topForMiddle(geo_.middleOf(i), fitted.font);
      const double more = fitted.height - lineHeight(fitted.font);
      place(element, left_, first - more / 2, room, fitted.height);
      element.align = Align::right;
    }
  }

  // Where the bars begin.
  void axis() {
    Element& base = lineElement(Layer::axes, "axisLine", 0);
    if (geo_.lying)
      ends(base, geo_.plot.left, geo_.plot.top, geo_.plot.left, geo_.plot.bottom());
    else
      ends(base, geo_.plot.left, geo_.plot.bottom(), geo_.plot.right(), geo_.plot.bottom());
    const ChartPen& pen = chart_.Axis.Bottom.AxisPen;
    base.colour = pen.Color == kUntouched
                      ? look::tintUntil(theme_.axis, theme_.text, theme_.ground, kShapeContrast)
                      : readableColour(pen.Color, look_, kShapeContrast);
    base.borderWidth = px(2 * pen.Width);
    base.visible = pen.Visible;
  }

  // Small helpers
  int itemOf(int i) const {
    const auto& points = chart_.SERIES(0).points;
    return i < static_cast<int>(points.size()) ? points[static_cast<std::size_t>(i)].item : host::kNoItem;
  }

  std::string slotText(int i) const {
    const auto& items = chart_.Axis.Bottom.Labels.Item;
    return i >= 0 && i < static_cast<int>(items.size()) ? items[static_cast<std::size_t>(i)] : "";
  }

  std::int32_t coloured(std::int32_t own, std::int32_t themes) const {
    return own == kUntouched ? themes : readableColour(own, look_);
  }

  double px(double pixels) const {
    return pixels * kTwipsPerPixel * graphScale(surface_.width, surface_.height);
  }

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

  const TChart& chart_;
  const ChartArea area_;
  const GraphLook& look_;
  const look::Theme& theme_;
  host::Surface& surface_;
  double left_ = 0, right_ = 0, top_ = 0, bottom_ = 0;  // what is still free
  double floor_ = 1;
  ChartTicks scale_;
  int every_ = 1;  // of them below lying bars
  SurfaceFont labelFont_, valueFont_, markFont_;
  ChartGeometry geo_;
  bool marksFit_ = true;
  SlotLabels labels_;
};

}  // namespace

ChartGeometry layoutChart(const TChart& chart, const ChartArea& area, const GraphLook& look,
                          host::Surface& surface) {
  return Layout(chart, area, look, surface).run();
}

SurfaceFont headerFont(const TChart& chart, double surfaceHeight) {
  SurfaceFont font = themedFont(chart.Header.Font, 0, look::Size::item, surfaceHeight, true);
  font.size = chart.Header.Font.size * surfaceHeight / kHeightOfSizes;
  return font;
}

}  // namespace qrn
