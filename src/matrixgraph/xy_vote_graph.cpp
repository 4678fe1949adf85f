#include "matrixgraph/xy_vote_graph.h"

#include <algorithm>

#include "analysis/multiplot.h"
#include "base/errors.h"
#include "base/text.h"
#include "charts/xy_vote_average_graph.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

constexpr int kLoadDelayMs = 10, kFrameMs = 15;
constexpr int kSkewPlotting = 2;

void say(const std::string& text) {
  host::host().dialogs->MsgBox(text, host::kTitle, host::Buttons::ok, host::Icon::information);
}

void progress(const std::string& line) {
  host::host().dialogs->Info(line);
}

// The pairs of the exercise stand until the user picks others.
void fillPairs() {
  if (positiveValues(glo.currentPlotPairings) < 2)
    glo.currentPlotPairings = pairsOfExercise();
}

// True when the request holds a multi-plot; its values are computed.
bool computeMultiPlots(const PlotRequest& request) {
  bool any = false;
  for (const int plot : {0, 1}) {
    if (std::count(request.begin(), request.end(), kMultiPlotSlot + plot) == 0)
      continue;
    any = true;
    GetMultiPlotValues(plot);
  }
  return any;
}

}  // namespace

xyVoteGraph::xyVoteGraph()
    : Form(formName::matrixGraph),
      tmr_load(kLoadDelayMs, [this] { tmr_load_Timer(); }),
      tmr_grow(kFrameMs, [this] { tmr_grow_Timer(); }) {
  List1.columns = {{.title = "List items plotted"}};
  List1.selectionChanged = [this](int row) { selectItem(riskOfRow(row)); };
  List1.activated = [this](int row) { List1_DblClick(row); };
  List1.menuWanted = [this](int row) { List1_RightClick(row); };
}

void xyVoteGraph::Form_Load() {
  trapErrors(formName::matrixGraph, "Form_Load", [&] {
    progress("Loading Matrix Graph");
    progress("Setting titles");
    graphTitle = glo.listTitle;
    progress("Setting Graph Labels");
    fillPairs();
    tmr_load.setEnabled(true);
  });
}

void xyVoteGraph::Form_Unload() {
  tmr_grow.setEnabled(false);
  tmr_load.setEnabled(false);
  progress("");
}

// What is on the graph is laid out for the new size at once; what is chosen stays chosen.
void xyVoteGraph::Form_Resize() {
  if (model_.plotted.empty() || tmr_load.enabled()) {
    tmr_load.setEnabled(true);
    return;
  }
  trapErrors(formName::matrixGraph, "Form_Resize", [&] {
    drag_ = {};
    model_ = plotMatrix(requestFor(glo.lastDrawnPairings));
    model_.show(view);
    setTitle(graphTitle);
    host::host().forms->refresh(name);
  });
}

MatrixRequest xyVoteGraph::requestFor(const PlotRequest& pairs) const {
  return {pairs,
          ScaleWidth,
          ScaleHeight,
          glo.MatrixGraphPlotting == kSkewPlotting,
          showingDiversity,
          graphFilterActive};
}

void xyVoteGraph::tmr_load_Timer() {
  tmr_load.setEnabled(false);
  progress("Drawing Matrix Graph");
  const PlotRequest p = choosePairs();
  if (!hasBothAxes(p)) {
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
  trapErrors(formName::matrixGraph, "drawGraph", [&] {
    selectedRiskIndex = -1;
    zoomedItemKey.clear();
    view.zoomedItem = view.selectedItem = host::kNoItem;
    drag_ = {};
    if (!hasBothAxes(request)) {
      failGraph();
      return;
    }
    if (host::host().forms->isVisible(formName::xyVote))
      host::host().forms->bringToFront(name);
    glo.lastDrawnPairings = request;
    GetAllScores();
    showingMultiPlot = computeMultiPlots(request);
    giveIdentifiers();
    plot(request);
  });
}

void xyVoteGraph::plot(const PlotRequest& request) {
  model_ = plotMatrix(requestFor(request));
  glo.dataMessage = model_.dataMessage;
  cmd_info = glo.dataMessage != kDataMessage;
  for (const int pair : kAllPairs) {
    const bool used = pairUsed(request, pair) && model_.withoutPoints == 0;
    view.roundVisible[static_cast<std::size_t>(pair)] = used;
  }
  if (model_.withoutPoints != 0) {
    say("You need to define voting points for Assessment " + std::to_string(model_.withoutPoints));
    failGraph();
    return;
  }
  model_.show(view);
  setTitle(glo.listTitle);
  showRiskList();
  progress("");
  host::host().forms->refresh(name);
}

void xyVoteGraph::setTitle(const std::string& text) {
  graphTitle = text;
  model_.setTitle(text);
}

// One row for each item on the graph, in the order of the sort keys; none is selected.
void xyVoteGraph::showRiskList() {
  std::vector<host::PanelRow> rows;
  for (const PlottedItem& item : model_.plotted) {
    const RiskRecord& record = glo.item(item.risk);
    std::string text = itemLabel(item.risk) + (record.newItem ? "*" : "");
    text = replaceAll(replaceAll(replaceAll(std::move(text), "\r\n", "  "), "\n", "  "), "\r", "  ");
    rows.push_back({.cells = {std::move(text)}, .id = item.risk, .marked = item.top});
  }
  const auto sortKey = [](const host::PanelRow& row) { return glo.item(row.id).sortKey; };
  std::ranges::stable_sort(rows, {}, sortKey);
  List1.setRows({});
  List1.setRows(std::move(rows));
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
  host::host().forms->define(formName::matrixGraph, [] { return std::make_unique<xyVoteGraph>(); });
}

const host::Surface& drawMatrixGraph(const PlotRequest& pairs, int widthPx, int heightPx) {
  host::FormRegistry& forms = *host::host().forms;
  auto& form = forms.as<xyVoteGraph>(formName::matrixGraph);
  form.ScaleWidth = widthPx * kTwipsPerPixel;
  form.ScaleHeight = heightPx * kTwipsPerPixel;
  form.view.covering = false;
  if (pairs != kNoPairs)
    glo.currentPlotPairings = pairs;
  form.tmr_load_Timer();
  if (!forms.isLoaded(formName::matrixGraph))
    throw HostError(Fault::badData, 5, "The matrix graph cannot be shown");
  return form.surface();
}

}  // namespace qrn
