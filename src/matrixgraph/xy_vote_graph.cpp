#include "matrixgraph/xy_vote_graph.h"

#include <algorithm>
#include <cmath>

#include "analysis/multiplot.h"
#include "charts/graph_notes.h"
#include "charts/xy_vote_average_graph.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/errors.h"
#include "host/host.h"
#include "matrixgraph/axis_labels.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

constexpr const char* kFormName = "xyVoteGraph";
constexpr const char* kMainForm = "xyVote";  // stays behind the graph
constexpr int kLoadDelayMs = 10;
constexpr int kSkewPlotting = 2;
constexpr PlotRequest kDiversityAxes{10, 10, -1, -1, -1, -1, -1, -1};

void say(const std::string& text) {
  host::host().dialogs->MsgBox(text, host::kTitle, host::Buttons::ok, host::Icon::information);
}

void progress(const std::string& line) {
  host::host().dialogs->Info(line);
}

std::string titleOf(int assessment) {
  return assessment >= kMultiPlotSlot ? multiPlotName(assessment - kMultiPlotSlot)
                                      : glo.assessmentTitles[static_cast<std::size_t>(assessment - 1)];
}

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
  int pairs = 0, items = 0;
  for (int pair = 0; pair < kPairs; ++pair) pairs += pairUsed(request, pair) ? 1 : 0;
  for (int item = 0; item < glo.itemCount(); ++item)
    items += glo.risks[static_cast<std::size_t>(item)].voting && inCategoriesShown(item) ? 1 : 0;
  return pairs * items;
}

std::string joinedTitles(const PlotRequest& request, bool vertical) {
  std::string titles;
  for (int pair = 0; pair < kPairs; ++pair)
    if (pairUsed(request, pair))
      titles += "/" + titleOf(vertical ? verticalOf(request, pair) : horizontalOf(request, pair));
  return titles.empty() ? titles : titles.substr(1);
}

}  // namespace

xyVoteGraph::xyVoteGraph() : Form(kFormName), tmr_load(kLoadDelayMs, [this] { tmr_load_Timer(); }) {}

void xyVoteGraph::Form_Load() {
  trapErrors(kFormName, "Form_Load", [&] {
    progress("Loading Matrix Graph");
    progress("Setting titles");
    graphTitle = replaceAll(glo.listTitle, " & ", " && ");
    progress("Setting Graph Labels");
    fillPairs();
    tmr_load.setEnabled(true);
  });
}

void xyVoteGraph::Form_Unload() {
  tmr_load.setEnabled(false);
  progress("");
}

void xyVoteGraph::Form_Resize() {
  tmr_load.setEnabled(true);
}

// The pairs of the exercise stand until the user picks others.
void xyVoteGraph::fillPairs() {
  if (positiveValues(glo.currentPlotPairings) < 2)
    glo.currentPlotPairings = pairsOfExercise();
}

void xyVoteGraph::tmr_load_Timer() {
  tmr_load.setEnabled(false);
  progress("Drawing Matrix Graph");
  const PlotRequest p = choosePairs();
  if (positiveValues(p) < 2) {
    say("Unable to display, as two assessments are not available");
    failGraph();
    return;
  }
  drawGraph(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7]);
}

void xyVoteGraph::failGraph() {
  graphFailed = true;
  host::host().forms->unload(name);
}

void xyVoteGraph::drawGraph(int pair1First, int pair1Second, int pair2First, int pair2Second, int pair3First,
                            int pair3Second, int pair4First, int pair4Second) {
  PlotRequest request{pair1First, pair1Second, pair2First, pair2Second,
                      pair3First, pair3Second, pair4First, pair4Second};
  for (int& value : request)
    if (value > kSlots)
      value = -1;
  trapErrors(kFormName, "drawGraph", [&] {
    selectedRiskIndex = -1;
    zoomedItemKey.clear();
    zoomedRisk_ = -1;
    if (positiveValues(request) <= 1) {
      failGraph();
      return;
    }
    if (host::host().forms->isVisible(kMainForm))
      host::host().forms->bringToFront(name);
    glo.lastDrawnPairings = request;
    GetAllScores();
    computeMultiPlots(request);
    canvas_.begin(ScaleWidth, ScaleHeight, expectedKeys(request));
    menuHideShowRoundN.fill({});
    roundVisible.fill(false);
    plotted.clear();
    cmd_info = false;
    const bool skew = glo.MatrixGraphPlotting == kSkewPlotting;
    const ScaleSizes sizes = skew ? selectBoundsSkew(request) : selectBoundsRegular(request);
    scaleSizes = {std::max(sizes.first, 1), std::max(sizes.second, 1)};
    layAxisLines(canvas_);
    glo.dataMessage = kDataMessage;
    if (!AxisLabels(showingDiversity ? kDiversityAxes : request, skew))
      return;
    std::vector<PlottedItem> placed = plotPairs(request);
    layTitles(request);
    canvas_.surface.finish();
    plotted = std::move(placed);
    applyVisibility();  // lines or shadows may be switched off
    setTitle(replaceAll(glo.listTitle, " & ", " && "));
    showRiskList();
    progress("");
    host::host().forms->refresh(name);
  });
}

void xyVoteGraph::computeMultiPlots(const PlotRequest& request) {
  showingMultiPlot = false;
  for (int plot = 0; plot < 2; ++plot) {
    if (std::count(request.begin(), request.end(), kMultiPlotSlot + plot) == 0)
      continue;
    showingMultiPlot = true;
    GetMultiPlotValues(plot);
  }
}

bool xyVoteGraph::AxisLabels(const PlotRequest& request, bool skew) {
  const AxisPlan across = planAxis(axisAssessment(request, false), skew, showingDiversity);
  const AxisPlan up = planAxis(axisAssessment(request, true), skew, showingDiversity);
  for (const AxisPlan* plan : {&across, &up})
    if (plan->divisions <= 0) {
      say("You need to define voting points for Assessment " + std::to_string(plan->assessment));
      failGraph();
      return false;
    }
  xScaleMax = across.scaleMax;
  yScaleMax = up.scaleMax;
  const double cornerLeft = layHorizontalAxis(canvas_, across, skew);
  topCaptionHeight_ = layVerticalAxis(canvas_, up, skew, cornerLeft);
  if (skew) {
    canvas_.area.cellWidth = std::floor((canvas_.area.X2 - canvas_.area.X1) / across.divisions + 0.5);
    canvas_.area.cellHeight = std::floor((canvas_.area.Y2 - canvas_.area.Y1) / up.divisions + 0.5);
  }
  return true;
}

std::vector<PlottedItem> xyVoteGraph::plotPairs(const PlotRequest& request) {
  ItemPlotter plotter(canvas_, request, showingDiversity, glo.dataMessage);
  for (int pair = 0; pair < kPairs; ++pair) {
    if (!pairUsed(request, pair))
      continue;
    plotter.plotPair(pair);
    menuHideShowRoundN[static_cast<std::size_t>(pair)] = {true, true};
    roundVisible[static_cast<std::size_t>(pair)] = true;
    cmd_info = cmd_info || glo.dataMessage != kDataMessage;
  }
  return plotter.takePlotted();
}

void xyVoteGraph::layTitles(const PlotRequest& request) {
  layAxisTitles(canvas_, joinedTitles(request, true), joinedTitles(request, false), topCaptionHeight_);
  host::Element title = makeLabel("graphTitle", 0, "", canvas_.titleFont);
  title.align = host::Align::centre;
  title.colour = readableColour(glo.fontColour, canvas_.look);
  canvas_.surface.add(Layer::titles, std::move(title));

  const double titleWidth = textWidth(glo.listTitle, canvas_.titleFont);
  GraphNotes notes = makeNotes(canvas_.surface.surface(), canvas_.look, canvas_.captionFont, titleWidth,
                               categoryLine(), canvas_.px(16), graphFilterActive);
  canvas_.surface.add(Layer::titles, std::move(notes.filter));
  canvas_.surface.add(Layer::titles, std::move(notes.foot));
}

// Its font falls a point at a time until the text fits 0.8 of the form; it stands centred at the top.
void xyVoteGraph::setTitle(const std::string& text) {
  graphTitle = text;
  host::Element* title = element("graphTitle", 0);
  if (title == nullptr)
    return;
  const double room = 0.8 * ScaleWidth;
  title->font = canvas_.titleFont;
  while (title->font.size > canvas_.captionFont.size && textWidth(text, title->font) > room)
    title->font.size -= 1;
  title->caption = cutToWidth(text, title->font, room);
  title->toolTip = text;
  title->width = textWidth(title->caption, title->font);
  title->height = lineHeight(title->font);
  title->left = (ScaleWidth - title->width) / 2;
  title->top = canvas_.px(6);
}

// One row for each item on the graph, in the order of the sort keys.
void xyVoteGraph::showRiskList() {
  List1.clear();
  ListIndex = -1;
  for (const PlottedItem& item : plotted) {
    const RiskRecord& record = glo.risks[static_cast<std::size_t>(item.risk)];
    std::string text = itemLabel(item.risk) + (record.newItem ? "*" : "");
    text = replaceAll(replaceAll(replaceAll(std::move(text), "\r\n", "  "), "\n", "  "), "\r", "  ");
    List1.push_back({text, item.risk, record.sortKey});
  }
  std::stable_sort(List1.begin(), List1.end(),
                   [](const ListRow& a, const ListRow& b) { return a.sortKey < b.sortKey; });
}

void xyVoteGraph::cmd_info_Click() {
  if (cmd_info)
    say(glo.dataMessage);
}

void xyVoteGraph::cmd_list_Click() {
  listVisible = !listVisible;
}

void xyVoteGraph::cmd_close_Click() {
  host::host().forms->unload(name);
}

void registerGraphForms() {
  registerChartForms();
  host::host().forms->define(kFormName, [] { return std::make_unique<xyVoteGraph>(); });
}

const host::Surface& drawMatrixGraph(const PlotRequest& pairs, int widthPx, int heightPx) {
  host::FormRegistry& forms = *host::host().forms;
  auto& form = forms.as<xyVoteGraph>(kFormName);
  form.ScaleWidth = widthPx * kTwipsPerPixel;
  form.ScaleHeight = heightPx * kTwipsPerPixel;
  if (pairs != kNoPairs)
    glo.currentPlotPairings = pairs;
  form.tmr_load_Timer();
  if (!forms.isLoaded(kFormName))
    throw HostError(Fault::badData, 5, "The matrix graph cannot be shown");
  return form.surface();
}

}  // namespace qrn
