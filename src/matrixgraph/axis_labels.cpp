#include "matrixgraph/axis_labels.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "charts/graph_notes.h"
#include "core/common.h"
#include "core/glo.h"

namespace qrn {

namespace {

using host::Layer;

constexpr const char *kVerticalLines = "verticalLine", *kHorizontalLines = "horizontalLine";
constexpr double kCaptionGap = 250;  // twips between two captions of the horizontal axis
constexpr double kCaptionTop = 100;  // twips from the horizontal axis to its captions
constexpr double kSkewInset = 125;   // first caption of a skew axis inside its cell
constexpr double kKeyOverlap = 8 * kTwipsPerPixel;
constexpr double kWidestTitle = 8000, kNarrowestTitle = 120;  // twips at 1024x768
constexpr int kLongestWord = 28;                              // characters of a first word before it is split
constexpr double kSmallest = 0.75;                            // of the caption font
constexpr int kQuarters = 4, kSolid = 1, kDotted = 3;

std::string doubledAmpersand(const std::string& text) {
  return replaceAll(text, "&", "&&");
}

// Captions set in one common font. Where their slots are narrower than `least`, every second, third ... is
// shown.
struct FittedCaptions {
  std::vector<FittedText> texts;
  int every = 1;
  double width = 0;  // of the room of one caption
};

FittedCaptions fitCaptions(const std::vector<std::string>& captions, const host::SurfaceFont& font,
                           double slot, double gap, double height) {
  FittedCaptions fitted;
  double widest = 0;
  for (const std::string& caption : captions) widest = std::max(widest, textWidth(caption, font));
  const double least = std::min(widest, 5 * textWidth("n", font));
  if (slot - gap < least && slot > 0)
    fitted.every = static_cast<int>(std::ceil((least + gap) / slot));
  fitted.width = fitted.every * slot - gap;
  host::SurfaceFont common = font;
  for (const std::string& caption : captions)
    common.size =
        std::min(common.size, fitText(caption, font, fitted.width, height, font.size * kSmallest).font.size);
  for (const std::string& caption : captions)
    fitted.texts.push_back(fitText(caption, common, fitted.width, height, common.size));
  return fitted;
}

host::Element captionElement(const GraphCanvas& canvas, const FittedText& text, const std::string& whole) {
  host::Element label = makeLabel(doubledAmpersand(text.caption), text.font);
  label.toolTip = whole;
  label.align = host::Align::centre;
  label.height = text.height;
  label.colour = readableColour(glo.runByGraphLabelColour, canvas.look);
  return label;
}

bool captionShown(const AxisPlan& plan, int i, int every) {
  return i % every == 0 && !(plan.lastHidden && i == plan.divisions);
}

void addGridLine(GraphCanvas& canvas, bool upright, int i, double at, int style) {
  const PlotArea& area = canvas.area;
  host::Element line = upright ? makeLine(at, area.Y1, at, area.Y2) : makeLine(area.X1, at, area.X2, at);
  line.colour = softened(glo.runByGraphGridColour, canvas.look);
  line.borderStyle = style;
  line.borderWidth = canvas.px(1);
  canvas.surface.add(Layer::grid, upright ? kVerticalLines : kHorizontalLines, i, std::move(line));
}

// Grid lines of one axis at whole steps; the plot is cut in four when the exercise says so.
void addGridLines(GraphCanvas& canvas, const AxisPlan& plan, bool upright) {
  const PlotArea& area = canvas.area;
  const double length = upright ? area.X2 - area.X1 : area.Y2 - area.Y1;
  const int count = glo.XYGridLinesAsQuarters ? kQuarters : plan.divisions;
  const double step = std::floor(length / count);
  for (int i = 1; i <= count; ++i) {
    const bool dotted = glo.XYGridLinesAsQuarters && (i == 1 || i == 3);
    addGridLine(canvas, upright, i, upright ? area.X1 + i * step : area.Y2 - i * step,
                dotted ? kDotted : kSolid);
  }
}

// A title ready to be broken into lines: a first word that no line holds gets a break.
std::string withSplitWord(const std::string& title) {
  const std::string first = title.substr(0, title.find(' '));
  if (characterCount(first) <= static_cast<std::size_t>(kLongestWord))
    return title;
  std::string head;
  int count = 0;
  for (const std::uint32_t code : characters(first)) {
    if (count++ == kLongestWord)
      head += ' ';
    appendCharacter(head, code);
  }
  return head + title.substr(first.size());
}

void addTitle(GraphCanvas& canvas, const char* array, const std::string& title, double left, double width,
              double top, double height, bool upper) {
  width = std::min(width, kWidestTitle * canvas.scale);
  FittedText text = fitText(title, canvas.axisTitleFont, width, height, canvas.captionFont.size * kSmallest);
  if (text.caption != title)
    text = fitText(withSplitWord(title), canvas.axisTitleFont, width, height,
                   canvas.captionFont.size * kSmallest);
  host::Element label = makeLabel(doubledAmpersand(text.caption), text.font);
  label.toolTip = title;
  label.width = std::max(text.width, kNarrowestTitle);
  label.height = text.height;
  label.left = upper ? left : left - label.width / 2;
  label.top = upper ? top + height - text.height : top;
  label.align = upper ? host::Align::left : host::Align::centre;
  label.colour = readableColour(glo.runByGraphLabelColour, canvas.look);
  canvas.surface.add(Layer::titles, array, 0, std::move(label));
}

// Gives the left edge of its first text.
double layHorizontalAxis(GraphCanvas& canvas, const AxisPlan& plan, bool skew) {
  const PlotArea& area = canvas.area;
  const double stepWidth = std::floor((area.X2 - area.X1) / plan.divisions);
  const double top = area.Y2 + kCaptionTop;
  const FittedCaptions fitted = fitCaptions(plan.captions, canvas.captionFont, stepWidth, kCaptionGap,
                                            bottomRows(canvas).captionsEnd - top);
  for (int i = 0; i <= plan.divisions; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const double edge = 2 * (canvas.width() - area.X1 - i * stepWidth) - canvas.px(8);
    FittedText text = fitted.texts[at];
    if (!skew && text.width > edge)  // the last one: what is right of its line is less than half a slot
      text = fitText(plan.captions[at], text.font, edge, bottomRows(canvas).captionsEnd - top,
                     text.font.size * 0.8);
    host::Element label = captionElement(canvas, text, plan.captions[at]);
    label.width = fitted.width;
    label.top = top;
    const double begin = area.X1 + i * stepWidth;
    label.left = !skew ? begin - label.width / 2 : i == 0 ? area.X1 + kSkewInset : begin;
    label.visible = captionShown(plan, i, fitted.every);
    canvas.surface.add(Layer::captions, "xAxisLabel", i, std::move(label));
  }
  addGridLines(canvas, plan, true);
  return skew ? area.X1 : area.X1 - fitted.texts.front().width / 2;
}

// Keeps its first caption clear of the horizontal one that begins at `cornerLeft`; gives the height of its
// top caption.
double layVerticalAxis(GraphCanvas& canvas, const AxisPlan& plan, bool skew, double cornerLeft) {
  const PlotArea& area = canvas.area;
  const double stepHeight = std::floor((area.Y2 - area.Y1) / plan.divisions);
  const double room = area.X1 - canvas.keyWidth + kKeyOverlap - canvas.px(4);
  const double line = lineHeight(canvas.captionFont);
  const int every = std::max(1, static_cast<int>(std::ceil(line / stepHeight)));
  const FittedCaptions fitted = fitCaptions(plan.captions, canvas.captionFont, room, 0,
                                            std::min(2 * line, std::max(line, every * stepHeight)));
  double topHeight = 0;
  for (int i = 0; i <= plan.divisions; ++i) {
    const auto at = static_cast<std::size_t>(i);
    host::Element label = captionElement(canvas, fitted.texts[at], plan.captions[at]);
    label.width = std::min(fitted.texts[at].width, room);
    label.left = area.X1 - label.width - canvas.keyWidth + kKeyOverlap;
    label.top = area.Y2 - i * stepHeight - (skew ? stepHeight / 2 : 0) - label.height / 2;
    if (i == 0 &&
        label.left + label.width > cornerLeft - canvas.px(4))  // the captions of the corner would meet
      label.top = std::min(label.top, area.Y2 + kCaptionTop - label.height);
    label.visible = captionShown(plan, i, every);
    if (label.visible)
      topHeight = label.height;
    canvas.surface.add(Layer::captions, "yAxisLabel", i, std::move(label));
  }
  addGridLines(canvas, plan, false);
  return topHeight;
}

}  // namespace

void layAxisLines(GraphCanvas& canvas) {
  const PlotArea& area = canvas.area;
  host::Element upright = makeLine(area.X1, area.Y1, area.X1, area.Y2);
  host::Element level = makeLine(area.X1, area.Y2, area.X2, area.Y2);
  for (host::Element* axis : {&upright, &level}) {
    axis->colour = readableColour(glo.runByGraphGridColour, canvas.look, kShapeContrast);
    axis->borderWidth = canvas.px(2);
  }
  canvas.surface.add(Layer::grid, kVerticalLines, 0, std::move(upright));
  canvas.surface.add(Layer::grid, kHorizontalLines, 0, std::move(level));
}

double AxisLabels(GraphCanvas& canvas, const AxisPlan& across, const AxisPlan& up, bool skew) {
  const double cornerLeft = layHorizontalAxis(canvas, across, skew);
  return layVerticalAxis(canvas, up, skew, cornerLeft);
}

void layAxisTitles(GraphCanvas& canvas, const std::string& vertical, const std::string& horizontal,
                   double topCaption) {
  const PlotArea& area = canvas.area;
  const BottomRows rows = bottomRows(canvas);
  const double below = canvas.px(6) + lineHeight(canvas.titleFont);  // the graph's own title
  const double end = area.Y1 - std::max(topCaption, canvas.keyHeight) / 2 - canvas.px(2);
  addTitle(canvas, "criteria1Label", vertical, canvas.px(8), area.X2 - canvas.px(8), below, end - below,
           true);
  addTitle(canvas, "criteria2Label", horizontal, (area.X1 + area.X2) / 2, area.X2 - area.X1, rows.titleTop,
           rows.titleHeight, false);
}

BottomRows bottomRows(const GraphCanvas& canvas) {
  const double line = lineHeight(canvas.captionFont);
  BottomRows rows;
  rows.footTop = canvas.height() - kFootMargin - line;
  rows.titleHeight = 1.5 * line;
  rows.titleTop = rows.footTop - rows.titleHeight - canvas.px(2);
  rows.captionsEnd = rows.titleTop - canvas.px(1);
  return rows;
}

}  // namespace qrn
