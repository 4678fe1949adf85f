#include "matrixgraph/axis_labels.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/text.h"
#include "base/utf8.h"
#include "charts/graph_notes.h"
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
constexpr double kApart = 1.35;      // of a line, between captions that stand above each other
constexpr double kNearEdge = 0.012;  // of the width, for captions that do not fit inside the margin
constexpr double kArrow = 0.62;      // of the type's size: the triangle behind an axis title
constexpr std::int32_t kUntouchedColour = 0xffffff;
constexpr int kQuarters = 4, kSolid = 1, kDotted = 3;

// Captions of one size. Where their slots are narrower than `least`, every second, third ... is
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
  fitted.every = std::max(1, static_cast<int>(std::ceil((least + gap) / std::max(slot, 1.0))));
  fitted.width = fitted.every * slot - gap;
  for (const std::string& caption : captions)
    fitted.texts.push_back(fitText(caption, font, fitted.width, height, font.size));
  return fitted;
}

std::int32_t labelColour(const GraphCanvas& canvas, std::int32_t themes) {
  return glo.runByGraphLabelColour == kUntouchedColour
             ? themes
             : readableColour(glo.runByGraphLabelColour, canvas.look);
}

host::Element captionElement(const GraphCanvas& canvas, const FittedText& text, const std::string& whole) {
  host::Element label = makeLabel(text.caption, text.font);
  label.toolTip = whole;
  label.align = host::Align::centre;
  label.height = text.height;
  label.colour = labelColour(canvas, canvas.theme().quiet);
  return label;
}

bool captionShown(const AxisPlan& plan, int i, int every) {
  return i % every == 0 && !(plan.lastHidden && i == plan.divisions);
}

void addGridLine(GraphCanvas& canvas, bool upright, int i, double at, int style) {
  const PlotArea& area = canvas.area;
  host::Element line = upright ? makeLine(at, area.Y1, at, area.Y2) : makeLine(area.X1, at, area.X2, at);
  line.colour = glo.runByGraphGridColour == kUntouchedColour
                    ? canvas.theme().grid
                    : softened(glo.runByGraphGridColour, canvas.look);
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
  std::string head;
  int count = 0;
  for (const std::uint32_t code : characters(first)) {
    if (count++ == kLongestWord)
      head += ' ';
    appendCharacter(head, code);
  }
  return head + title.substr(first.size());
}

struct TitlePlace {
  double left, width, top, height;
  bool upright;  // of the vertical axis: begins at the left and stands on the bottom of its place
};

// A title with a triangle that tells where the axis grows.
void addTitle(GraphCanvas& canvas, const char* array, const std::string& title, const TitlePlace& place) {
  const host::SurfaceFont& font = canvas.axisTitleFont;
  const double arrow = kArrow * font.size * kTwipsPerPoint, gap = textWidth(" ", font);
  const double width = std::min(place.width - arrow - gap, kWidestTitle * canvas.scale);
  FittedText text = fitText(title, font, width, place.height, canvas.captionFont.size);
  if (text.caption != title)
    text = fitText(withSplitWord(title), font, width, place.height, canvas.captionFont.size);
  host::Element label = makeLabel(text.caption, text.font);
  label.toolTip = title;
  label.width = std::max(text.width, kNarrowestTitle);
  label.height = text.height;
  label.left = place.upright ? place.left : place.left + (place.width - label.width - gap - arrow) / 2;
  label.top = place.upright ? place.top + place.height - text.height : place.top;
  label.colour = labelColour(canvas, canvas.theme().text);
  host::Element mark;
  mark.kind = host::Element::Kind::triangle;
  mark.toward = place.upright ? host::Toward::up : host::Toward::right;
  mark.width = mark.height = arrow;
  mark.left = label.left + label.width + gap;
  mark.top =
      topForMiddle(label.top + lineHeight(text.font) / 2, text.font) + lineHeight(text.font) / 2 - arrow / 2;
  mark.backColour = label.colour;
  mark.bordered = false;
  mark.visible = !title.empty();
  canvas.surface.add(Layer::titles, place.upright ? "criteria1Arrow" : "criteria2Arrow", 0, std::move(mark));
  canvas.surface.add(Layer::titles, array, 0, std::move(label));
}

bool isCut(const FittedText& fitted, const std::string& caption) {
  return replaceAll(fitted.caption, "\n", " ") != caption;
}

// The last caption has less than half a slot right of its line. It goes nearer to the edge before it is cut.
FittedText fitAtEdge(const GraphCanvas& canvas, const std::string& caption, const FittedText& wide, double at,
                     double height) {
  const double all = 2 * (canvas.width() - at), near = 2 * kNearEdge * canvas.width();
  if (wide.width <= all - near)
    return wide;
  FittedText text = fitText(caption, wide.font, all - near, height, wide.font.size);
  return isCut(text, caption) ? fitText(caption, wide.font, all - canvas.px(4), height, wide.font.size)
                              : text;
}

// What the titles and the other axis must leave alone.
struct LaidCaptions {
  double cornerLeft = 0;  // left edge of the first text
  double bottom = 0;
};

LaidCaptions layHorizontalAxis(GraphCanvas& canvas, const AxisPlan& plan, bool skew, double captionsEnd) {
  const PlotArea& area = canvas.area;
  const double stepWidth = std::floor((area.X2 - area.X1) / plan.divisions);
  const double top = area.Y2 + kCaptionTop;
  const FittedCaptions fitted =
      fitCaptions(plan.captions, canvas.captionFont, stepWidth, kCaptionGap, captionsEnd - top);
  LaidCaptions laid{skew ? area.X1 : area.X1 - fitted.texts.front().width / 2, top};
  for (int i = 0; i <= plan.divisions; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const double begin = area.X1 + i * stepWidth;
    const FittedText text =
        skew ? fitted.texts[at]
             : fitAtEdge(canvas, plan.captions[at], fitted.texts[at], begin, captionsEnd - top);
    host::Element label = captionElement(canvas, text, plan.captions[at]);
    label.width = fitted.width;
    label.top = top;
    label.left = !skew ? begin - label.width / 2 : i == 0 ? area.X1 + kSkewInset : begin;
    label.visible = captionShown(plan, i, fitted.every);
    if (label.visible)
      laid.bottom = std::max(laid.bottom, label.bottom());
    canvas.surface.add(Layer::captions, "xAxisLabel", i, std::move(label));
  }
  addGridLines(canvas, plan, true);
  return laid;
}

bool anyCut(const FittedCaptions& fitted, const std::vector<std::string>& captions) {
  for (std::size_t i = 0; i < captions.size(); ++i)
    if (isCut(fitted.texts[i], captions[i]))
      return true;
  return false;
}

// Inside the margin where all of them fit there whole.
FittedCaptions fitUprightCaptions(const GraphCanvas& canvas, const AxisPlan& plan, double room,
                                  double height) {
  const double margin = (look::kMarginX - kNearEdge) * canvas.width();
  FittedCaptions fitted = fitCaptions(plan.captions, canvas.captionFont, room - margin, 0, height);
  return anyCut(fitted, plan.captions) ? fitCaptions(plan.captions, canvas.captionFont, room, 0, height)
                                       : fitted;
}

// Keeps its first caption clear of the horizontal one that begins at `cornerLeft`.
void layVerticalAxis(GraphCanvas& canvas, const AxisPlan& plan, bool skew, double cornerLeft) {
  const PlotArea& area = canvas.area;
  const double stepHeight = std::floor((area.Y2 - area.Y1) / plan.divisions);
  const double room = area.X1 - canvas.keyWidth + kKeyOverlap - kNearEdge * canvas.width();
  const double line = lineHeight(canvas.captionFont);
  const int every = std::max(1, static_cast<int>(std::ceil(kApart * line / stepHeight)));
  const FittedCaptions fitted =
      fitUprightCaptions(canvas, plan, room, std::min(2 * line, std::max(line, every * stepHeight)));
  for (int i = 0; i <= plan.divisions; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const double right = area.X1 - canvas.keyWidth + kKeyOverlap;
    const bool meets = i == 0 && right > cornerLeft - canvas.px(4);  // the captions of the corner would meet
    // one that gives way has less room below the next
    const FittedText text =
        meets && every * stepHeight < 2 * fitted.texts[at].height
            ? fitText(plan.captions[at], fitted.texts[at].font, room, line, fitted.texts[at].font.size)
            : fitted.texts[at];
    host::Element label = captionElement(canvas, text, plan.captions[at]);
    label.width = std::min(text.width, room);
    label.left = right - label.width;
    label.top = area.Y2 - i * stepHeight - (skew ? stepHeight / 2 : 0) - label.height / 2;
    if (meets)
      label.top = std::min(label.top, area.Y2 + kCaptionTop - label.height);
    label.visible = captionShown(plan, i, every);
    canvas.surface.add(Layer::captions, "yAxisLabel", i, std::move(label));
  }
  addGridLines(canvas, plan, false);
}

}  // namespace

void layAxisLines(GraphCanvas& canvas) {
  const PlotArea& area = canvas.area;
  host::Element upright = makeLine(area.X1, area.Y1, area.X1, area.Y2);
  host::Element level = makeLine(area.X1, area.Y2, area.X2, area.Y2);
  for (host::Element* axis : {&upright, &level}) {
    axis->colour =
        glo.runByGraphGridColour == kUntouchedColour
            ? look::tintUntil(canvas.theme().axis, canvas.theme().text, canvas.theme().ground, kShapeContrast)
            : readableColour(glo.runByGraphGridColour, canvas.look, kShapeContrast);
    axis->borderWidth = canvas.px(2);
  }
  canvas.surface.add(Layer::grid, kVerticalLines, 0, std::move(upright));
  canvas.surface.add(Layer::grid, kHorizontalLines, 0, std::move(level));
}

void layAxes(GraphCanvas& canvas, const AxisPlan& across, const AxisPlan& up, bool skew,
             const AxisTitles& titles) {
  const PlotArea& area = canvas.area;
  const double line = lineHeight(canvas.axisTitleFont), gap = canvas.px(2);
  const double end = titles.footBelow ? canvas.height() - kFootMargin - lineHeight(canvas.captionFont)
                                      : canvas.height() * (1 - look::kMarginY) + canvas.px(4);
  const LaidCaptions laid = layHorizontalAxis(canvas, across, skew, end - line - 2 * gap);
  layVerticalAxis(canvas, up, skew, laid.cornerLeft);
  addTitle(canvas, "criteria1Label", titles.vertical,
           {area.X1, area.X2 - area.X1 - titles.noteWidth, area.Y1 - line - 3 * gap, line, true});
  addTitle(canvas, "criteria2Label", titles.horizontal,
           {area.X1, area.X2 - area.X1, std::min(laid.bottom + gap, end - line), line, false});
}

}  // namespace qrn
