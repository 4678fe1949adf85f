#include "matrixgraph/matrix_model.h"

#include <algorithm>
#include <cmath>

#include "analysis/multiplot.h"
#include "base/text.h"
#include "charts/chart_display.h"
#include "charts/graph_notes.h"
#include "core/glo.h"
#include "matrixgraph/axis_labels.h"
#include "matrixgraph/axis_titles.h"
#include "matrixgraph/plot_items.h"
#include "matrixgraph/plot_note.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

constexpr PlotRequest kDiversityAxes{10, 10, -1, -1, -1, -1, -1, -1};
constexpr double kTitleShare = 0.8;  // of the width
constexpr double kNoteShare = 0.65;  // of the plot's width: the vertical title has the rest of the row
constexpr double kTitleTop = 0.012;  // of the height

// Names of the selected categories; "" when no category is there to filter by.
std::string categoryLine() {
  if (upperBound(glo.categories) <= 1)
    return "";
  std::string names;
  bool all = true;
  for (int i = 0; i < upperBound(glo.categories); ++i) {
    const CategoryRecord& category = glo.categories[static_cast<std::size_t>(i)];
    all = all && category.Selected;
    if (category.Selected)
      names += category.CategoryName + ", ";
  }
  return all ? "Category: ALL  " : "Category: " + names;
}

// Keys that the pairs put on the plot if every item has votes.
int expectedKeys(const PlotRequest& request) {
  return static_cast<int>(usedPairs(request).size() * itemsShown().size());
}

ScaleSizes sizesOf(const MatrixRequest& request) {
  const ScaleSizes sizes =
      request.skew ? selectBoundsSkew(request.pairs) : selectBoundsRegular(request.pairs);
  return {std::max(sizes.first, 1), std::max(sizes.second, 1)};
}

void planAxes(MatrixModel& model, const MatrixRequest& request) {
  const PlotRequest& axes = request.diversity ? kDiversityAxes : request.pairs;
  model.across = planAxis(axisAssessment(axes, false), request.skew, request.diversity);
  model.up = planAxis(axisAssessment(axes, true), request.skew, request.diversity);
  for (const AxisPlan* plan : {&model.across, &model.up})
    if (plan->divisions <= 0 && model.withoutPoints == 0)
      model.withoutPoints = plan->assessment;
  PlotArea& area = model.canvas.area;
  if (request.skew && model.withoutPoints == 0) {
    area.cellWidth = std::floor((area.X2 - area.X1) / model.across.divisions + 0.5);
    area.cellHeight = std::floor((area.Y2 - area.Y1) / model.up.divisions + 0.5);
  }
}

void plotPairs(MatrixModel& model, const MatrixRequest& request) {
  ItemPlotter plotter(model.canvas, request.pairs, request.diversity, model.dataMessage);
  for (const int pair : usedPairs(request.pairs)) plotter.plotPair(pair);
  model.plotted = plotter.takePlotted();
  model.discs = plotter.discs();
  model.lastPair = plotter.lastPair();
  model.spans = plotter.spans();
}

// In the row of the vertical title, or in the middle of an empty plot.
host::Element noteElement(const GraphCanvas& canvas, const PlotNote& note) {
  const PlotArea& area = canvas.area;
  host::Element label = makeLabel(note.text, canvas.captionFont);
  label.colour = canvas.theme().quiet;
  label.align = note.empty ? host::Align::centre : host::Align::right;
  label.toolTip = note.text;
  label.width = area.X2 - area.X1;
  label.left = area.X1;
  label.top = area.Y1 - lineHeight(label.font) - canvas.px(6);
  if (!note.empty) {
    label.caption = cutToWidth(note.text, label.font, kNoteShare * label.width);
    label.height = lineHeight(label.font);
    return label;
  }
  label.font.size = look::points(look::Size::word, canvas.height());
  label.colour = canvas.theme().text;
  const auto lines = host::wrapBalanced(note.text, label.font, kTitleShare * label.width);
  label.caption = joined(lines, "\n");
  label.height = static_cast<double>(lines.size()) * lineHeight(label.font);
  label.top = (area.Y1 + area.Y2 - label.height) / 2;
  return label;
}

void layTitles(MatrixModel& model, const MatrixRequest& request) {
  GraphCanvas& canvas = model.canvas;
  PlotNote note = plotNote(request.pairs, model.plotted);
  if (request.diversity && !note.empty)
    note.text = "Diversity in %" + (note.text.empty() ? "" : ", " + note.text);
  const std::string foot = categoryLine();
  AxisTitles titles{joinedTitles(request.pairs, true), joinedTitles(request.pairs, false)};
  titles.footBelow = !foot.empty();
  if (!note.text.empty()) {
    host::Element label = noteElement(canvas, note);
    if (!note.empty)
      titles.noteWidth = textWidth(label.caption, label.font) + canvas.px(16);
    canvas.surface.add(host::Layer::titles, "plotNote", 0, std::move(label));
  }
  layAxes(canvas, model.across, model.up, request.skew, titles);
  host::Element title = makeLabel("", canvas.titleFont);
  title.align = host::Align::centre;
  title.colour = glo.fontColour == Exercise{}.fontColour ? canvas.theme().text
                                                         : readableColour(glo.fontColour, canvas.look);
  canvas.surface.add(host::Layer::titles, "graphTitle", 0, std::move(title));
  addNotes(
      makeNotes(canvas.surface, canvas.look, canvas.captionFont, textWidth(glo.listTitle, canvas.titleFont),
                foot, canvas.width() * look::kMarginX, request.graphFilter),
      canvas.surface);
}

}  // namespace

MatrixModel plotMatrix(const MatrixRequest& request) {
  MatrixModel model;
  model.dataMessage = kDataMessage;
  GraphCanvas& canvas = model.canvas;
  canvas.begin(request.width, request.height, expectedKeys(request.pairs));
  model.scaleSizes = sizesOf(request);
  layAxisLines(canvas);
  planAxes(model, request);
  if (model.withoutPoints != 0)
    return model;
  plotPairs(model, request);
  layTitles(model, request);
  return model;
}

PlotPoint MatrixModel::scoresAt(int pair, PlotPoint place) const {
  const PairSpans& scales = spans[static_cast<std::size_t>(pair)];
  const PlotPoint part = fractionsAt(canvas.area, place);
  return {scales.across.low + part.x * scales.across.range, scales.up.low + part.y * scales.up.range};
}

PlotPoint MatrixModel::placeOf(int pair, PlotPoint scores) const {
  const PairSpans& scales = spans[static_cast<std::size_t>(pair)];
  const auto part = [](double score, const ScaleSpan& scale) {
    return scale.range > 0 ? (score - scale.low) / scale.range : 0;
  };
  return pointOf(canvas.area, part(scores.x, scales.across), part(scores.y, scales.up));
}

// Its font falls a point at a time until the text fits; it stands centred at the top.
void MatrixModel::setTitle(const std::string& text) {
  host::Element* title = canvas.surface.find("graphTitle", 0);
  if (title == nullptr)
    return;
  const double room = kTitleShare * canvas.width();
  title->font = canvas.titleFont;
  while (title->font.size > canvas.captionFont.size && textWidth(text, title->font) > room)
    title->font.size -= 1;
  title->caption = cutToWidth(text, title->font, room);
  title->toolTip = text;
  title->width = textWidth(title->caption, title->font);
  title->height = lineHeight(title->font);
  title->left = (canvas.width() - title->width) / 2;
  title->top = kTitleTop * canvas.height();
}

}  // namespace qrn
