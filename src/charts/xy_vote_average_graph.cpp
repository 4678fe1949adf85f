#include "charts/xy_vote_average_graph.h"

#include <algorithm>

#include "analysis/multiplot_form.h"
#include "analysis/weighting_selector.h"
#include "base/errors.h"
#include "charts/average_kinds.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/show_keys.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/names.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

constexpr int kMultiPlotAssessment = 10;  // the first number that is a multi-plot

// The assessment at hand, or the first one that has averages when it has none.
int firstShown() {
  const int now = std::clamp(glo.currentAssessment, 1, kAssessments);
  for (int a = 1; a <= kAssessments && !glo.isScored(now); ++a)
    if (glo.isScored(a))
      return a;
  return now;
}

}  // namespace

xyVoteAverageGraph::xyVoteAverageGraph() : Form(formName::averageGraph) {
  List1.columns = {{.title = "List items plotted"}};
  List1.selectionChanged = [this](int row) { selectItem(row); };
  List1.menuWanted = [this](int) { openMenu(); };
}

void xyVoteAverageGraph::Form_Load() {
  request.assessment = firstShown();
  redraw();
}

void xyVoteAverageGraph::Form_Resize() {
  draw();
}

void xyVoteAverageGraph::drawGraph(int assessmentNumber, int roundNumber) {
  if (assessmentNumber >= kMultiPlotAssessment) {
    drawGraphMultiPlot(assessmentNumber - kMultiPlotAssessment);
    return;
  }
  if (assessmentNumber < 1)
    return;
  request.assessment = assessmentNumber;
  request.round = roundNumber;
  drawGraphCategories();
}

void xyVoteAverageGraph::drawGraphCategories() {
  show(kPlainAverage);
}

void xyVoteAverageGraph::drawGraphCategoriesCumulative() {
  show(kCumulative);
}

void xyVoteAverageGraph::drawGraphCategoriesWeightedCumulative() {
  show(kWeightedCumulative);
}

void xyVoteAverageGraph::drawGraphMultiPlot(int plot) {
  if (plot == 0 || plot == 1)
    show(plot == 0 ? kMultiPlot1 : kMultiPlot2);
}

void xyVoteAverageGraph::drawGraphDiversity() {
  show(kDiversity);
}

void xyVoteAverageGraph::redraw() {
  show(glo.averageDisplayKind);
}

// Where the values cannot be computed the kind stays.
void xyVoteAverageGraph::show(int displayKind) {
  trapErrors(formName::averageGraph, "drawGraph", [&] {
    const AverageKind& kind = averageKind(displayKind);
    if (!kind.compute(request))
      return;
    glo.averageDisplayKind = kind.kind;
    glo.showCumulative = kind.kind == kCumulative;
    glo.showWeightedCumulative = kind.kind == kWeightedCumulative;
    infoText = kind.tellsMissing ? glo.dataMessage : "";
    infoButton = infoText.size() > std::string(kDataMessage).size();
    draw();
  });
}

std::string xyVoteAverageGraph::DoCategoryLabel() const {
  std::string names;
  bool all = true;
  for (int i = 0; i < upperBound(glo.categories); ++i) {
    const CategoryRecord& category = glo.categories[static_cast<std::size_t>(i)];
    if (category.Selected)
      names += (names.empty() ? "" : ", ") + category.CategoryName;
    else
      all = false;
  }
  return all ? "Category: ALL   " : "Category: " + names;
}

void xyVoteAverageGraph::cmd_info_Click() {
  if (infoButton)
    host::host().dialogs->MsgBox(infoText, host::kTitle, host::Buttons::ok, host::Icon::information);
}

void xyVoteAverageGraph::cmd_close_Click() {
  host::host().forms->unload(name);
}

void xyVoteAverageGraph::showList() {
  listVisible = true;
}

void xyVoteAverageGraph::hideList() {
  listVisible = false;
}

void xyVoteAverageGraph::selectItem(int row) {
  if (row < 0)
    return;
  if (row != List1.current())
    return List1.select(row);  // and here again
  chart.selectedPoint = row;
  if (chart.Page.MaxPointsPerPage > 0)
    showPage(row / chart.Page.MaxPointsPerPage + 1);
  host::host().forms->refresh(name);
}

void xyVoteAverageGraph::showPage(int page) {
  chart.Page.Current = std::clamp(page, 1, chart.pageCount());
}

const host::Surface& xyVoteAverageGraph::surface() {
  std::string footer = upperBound(glo.categories) > 1 ? labelCategory : "";
  const auto putFirst = [&](const std::string& text) {
    footer = text + (footer.empty() ? "" : "      " + footer);
  };
  const bool mean = averageLabelVisible && !averageLabel.empty();
  if (mean)
    putFirst(averageLabel);
  return lowered_.lower(chart, ScaleWidth, ScaleHeight, footer, mean);
}

void xyVoteAverageGraph::draw() {
  const int page = chart.Page.Current;
  request.width = ScaleWidth;
  request.height = ScaleHeight;
  giveIdentifiers();
  ChartModel model = DisplayAverageChart(request);
  chart = std::move(model.chart);
  std::vector<host::PanelRow> rows;
  for (ListRow& row : model.rows) rows.push_back({.cells = {std::move(row.text)}, .id = row.risk});
  List1.setRows(std::move(rows));
  showPage(page);
  labelCategory = DoCategoryLabel();
  cmd_scrollVisible = chart.pageCount() > 1;
  double sum = 0;
  for (const ChartPoint& point : chart.SERIES(0).points) sum += point.value;
  averageLabel.clear();
  const bool percent = chart.SERIES(0).ValueFormat.ends_with('%');
  if (lastRow() >= 0)
    averageLabel =
        "Average: " + formatPlaces(sum / (lastRow() + 1) * (percent ? 100 : 1), 2) + (percent ? "%" : "");
  selectItem(List1.current());
  host::host().forms->refresh(name);
}

// Behind the last page the show goes on.
void xyVoteAverageGraph::pageOn() {
  if (displayedInShow() && chart.Page.Current >= chart.pageCount())
    cmd_close_Click();
  else
    showPage(chart.Page.Current + 1);
}

void registerChartForms() {
  host::host().forms->define(formName::averageGraph, [] { return std::make_unique<xyVoteAverageGraph>(); });
  registerWeightingForm();
  registerMultiPlotForm();
}

const host::Surface& drawAverageGraph(int assessment, int widthPx, int heightPx) {
  if (assessment < 1 || assessment > kSlots)
    throw HostError(Fault::badData, 5,
                    "There is no assessment " + std::to_string(assessment) + " (1 to 9, or 10 and 11)");
  auto& form = host::host().forms->as<xyVoteAverageGraph>(formName::averageGraph);
  form.ScaleWidth = widthPx * kTwipsPerPixel;
  form.ScaleHeight = heightPx * kTwipsPerPixel;
  form.request.onOnePage = true;
  form.drawGraph(assessment, 0);
  return form.surface();
}

}  // namespace qrn
