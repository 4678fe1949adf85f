#include "charts/xy_vote_average_graph.h"

#include <algorithm>

#include "analysis/multiplot.h"
#include "analysis/orders.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/show_keys.h"
#include "host/dialogs.h"
#include "host/errors.h"
#include "host/host.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

namespace key = host::key;

constexpr const char* kFormName = "xyVoteAverageGraph";
constexpr const char* kModule = "xyVoteAverageGraph";

std::size_t slotOf(int assessment) {
  return static_cast<std::size_t>(assessment - 1);
}

std::string assessmentName(int assessment) {
  return assessment >= 1 && assessment <= kAssessments ? glo.assessmentTitles[slotOf(assessment)] : "";
}

}  // namespace

xyVoteAverageGraph::xyVoteAverageGraph() : ChartForm(kFormName) {}

void xyVoteAverageGraph::Form_Load() {
  assessment = std::clamp(glo.currentAssessment, 1, kAssessments);
  redraw();
}

void xyVoteAverageGraph::Form_Resize() {
  draw(shownTitle_);
}

void xyVoteAverageGraph::drawGraph(int assessmentNumber, int roundNumber) {
  trapErrors(kModule, "drawGraph", [&] {
    if (assessmentNumber >= 10) {
      drawGraphMultiPlot(assessmentNumber - 10);
      return;
    }
    if (assessmentNumber < 1)
      return;
    assessment = assessmentNumber;
    round = roundNumber;
    drawGraphCategories();
  });
}

void xyVoteAverageGraph::drawGraphCategories() {
  glo.averageDisplayKind = kPlainAverage;
  glo.showCumulative = glo.showWeightedCumulative = false;
  refreshScores(assessment);
  draw("Average: " + assessmentName(assessment));
  dataCheck();
}

void xyVoteAverageGraph::drawGraphCategoriesCumulative() {
  trapErrors(kModule, "drawGraphCategoriesCumulative", [&] {
    GetAllScores();
    computeCumulative();
    glo.averageDisplayKind = kCumulative;
    glo.showCumulative = true;
    glo.showWeightedCumulative = false;
    infoButton = false;
    draw("Cumulative averages");
  });
}

void xyVoteAverageGraph::drawGraphCategoriesWeightedCumulative() {
  trapErrors(kModule, "drawGraphCategoriesWeightedCumulative", [&] {
    GetAllScores();
    if (!computeWeightedCumulative())
      return;  // the message has been shown, the kind stays
    glo.averageDisplayKind = kWeightedCumulative;
    glo.showWeightedCumulative = true;
    glo.showCumulative = false;
    infoButton = false;
    draw("Weighted cumulative averages");
  });
}

void xyVoteAverageGraph::drawGraphMultiPlot(int plot) {
  trapErrors(kModule, "drawGraphMultiPlot", [&] {
    if (plot < 0 || plot > 1)
      return;
    GetAllScores();
    GetMultiPlotValues(plot);
    glo.averageDisplayKind = plot == 0 ? kMultiPlot1 : kMultiPlot2;
    glo.showCumulative = glo.showWeightedCumulative = false;
    infoButton = false;
    draw(multiPlotName(plot));
  });
}

void xyVoteAverageGraph::drawGraphDiversity() {
  trapErrors(kModule, "drawGraphDiversity", [&] {
    refreshScores(assessment);
    glo.averageDisplayKind = kDiversity;
    glo.showCumulative = glo.showWeightedCumulative = false;
    draw("Diversity");
    dataCheck();
  });
}

void xyVoteAverageGraph::redraw() {
  switch (glo.averageDisplayKind) {
    case kCumulative:
    case kCumulative + 1:
      drawGraphCategoriesCumulative();
      break;
    case kWeightedCumulative:
    case kWeightedCumulative + 1:
      drawGraphCategoriesWeightedCumulative();
      break;
    case kMultiPlot1:
    case kMultiPlot1 + 1:
      drawGraphMultiPlot(0);
      break;
    case kMultiPlot2:
    case kMultiPlot2 + 1:
      drawGraphMultiPlot(1);
      break;
    case kDiversity:
    case kDiversity + 1:
      drawGraphDiversity();
      break;
    default:
      drawGraph(assessment, round);
  }
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
  if (row < 0 || row >= static_cast<int>(List1.size()))
    return;
  ListIndex = row;
  chart.selectedPoint = row;
  if (chart.Page.MaxPointsPerPage > 0)
    showPage(row / chart.Page.MaxPointsPerPage + 1);
}

void xyVoteAverageGraph::showPage(int page) {
  chart.Page.Current = std::clamp(page, 1, chart.pageCount());
}

const host::Surface& xyVoteAverageGraph::surface() {
  std::string footer = upperBound(glo.categories) > 1 ? labelCategory : "";
  const auto putFirst = [&](const std::string& text) {
    footer = text + (footer.empty() ? "" : "      " + footer);
  };
  if (averageLabelVisible && !averageLabel.empty())
    putFirst(averageLabel);
  if (chart.pageCount() > 1)
    putFirst("Page " + std::to_string(chart.Page.Current) + " of " + std::to_string(chart.pageCount()));
  return lowered_.lower(chart, ScaleWidth, ScaleHeight, footer);
}

void xyVoteAverageGraph::draw(const std::string& title) {
  const int selected = ListIndex >= 0 ? List1[static_cast<std::size_t>(ListIndex)].risk : -1;
  shownTitle_ = title;
  DisplayAverageChart(*this);
  ResizeChartTitle(*this, title);
  labelCategory = DoCategoryLabel();
  cmd_scrollVisible = chart.pageCount() > 1;
  double sum = 0;
  for (const ChartPoint& point : chart.SERIES(0).points) sum += point.value;
  averageLabel.clear();
  if (!List1.empty())
    averageLabel = "Average: " + formatPlaces(sum / static_cast<double>(List1.size()), 2);
  for (int row = 0; row < static_cast<int>(List1.size()); ++row)
    if (selected >= 0 && List1[static_cast<std::size_t>(row)].risk == selected)
      selectItem(row);
  host::host().forms->refresh(name);
}

void xyVoteAverageGraph::dataCheck() {
  infoText = glo.dataMessage;
  infoButton = infoText.size() > std::string(kDataMessage).size();
}

void xyVoteAverageGraph::Form_KeyDown(int keyCode, int shift) {
  if ((shift & key::altMask) != 0) {
    if (!handleAltKeys(keyCode, shift))
      return;
  } else if (shift == 0) {
    handlePlainKeys(keyCode);
  }
  host::host().forms->refresh(name);
}

bool xyVoteAverageGraph::handleAltKeys(int keyCode, int shift) {
  if (keyCode == 'D' && (shift & key::shiftMask) != 0) {
    diversityButtonVisible = true;
  } else if (keyCode == 'D') {
    averageLabelVisible = !averageLabelVisible;
  } else if (keyCode >= '1' && keyCode <= '6') {
    const int picked = keyCode - '0';
    if (glo.assessmentInfo[slotOf(picked)].active)
      drawGraph(picked, 0);
  } else if (keyCode == 'L') {
    listVisible ? hideList() : showList();
  } else if (keyCode == 'I') {
    cmd_info_Click();
  } else if (keyCode == key::up || keyCode == key::down) {
    buttonsVisible = keyCode == key::up;
  } else {
    return false;
  }
  return true;
}

void xyVoteAverageGraph::handlePlainKeys(int keyCode) {
  const int last = static_cast<int>(List1.size()) - 1;
  switch (keyCode) {
    case key::escape:
      if (!displayedInShow())
        cmd_close_Click();
      break;
    case key::f3:
      redraw();
      break;
    case key::left:
    case key::up:
      selectItem(std::max(ListIndex - 1, 0));
      break;
    case key::right:
    case key::down:
      selectItem(std::min(ListIndex + 1, last));
      break;
    case key::pageUp:
      showPage(chart.Page.Current - 1);
      break;
    case key::pageDown:
      pageOn();
      break;
    case 'N':
      if (displayedInShow())
        cmd_close_Click();
      break;
    case key::home:
      selectItem(0);
      break;
    case key::end:
      selectItem(last);
      break;
    case 'L':
      listVisible ? hideList() : showList();
      break;
    case 'I':
      cmd_info_Click();
      break;
    default:
      break;
  }
}

// Behind the last page the show goes on.
void xyVoteAverageGraph::pageOn() {
  if (displayedInShow() && chart.Page.Current >= chart.pageCount())
    cmd_close_Click();
  else
    showPage(chart.Page.Current + 1);
}

void registerChartForms() {
  host::host().forms->define(kFormName, [] { return std::make_unique<xyVoteAverageGraph>(); });
}

const host::Surface& drawAverageGraph(int assessment, int widthPx, int heightPx) {
  if (assessment < 1 || assessment > kSlots)
    throw HostError(Fault::badData, 5,
                    "There is no assessment " + std::to_string(assessment) + " (1 to 9, or 10 and 11)");
  auto& form = host::host().forms->as<xyVoteAverageGraph>(kFormName);
  form.ScaleWidth = widthPx * kTwipsPerPixel;
  form.ScaleHeight = heightPx * kTwipsPerPixel;
  form.onOnePage = true;
  form.drawGraph(assessment, 0);
  return form.surface();
}

}  // namespace qrn
