#include "analysis/orders.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

#include "analysis/multiplot.h"
#include "analysis/progress_line.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/edit.h"
#include "core/glo.h"
#include "core/options.h"
#include "host/dialogs.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

constexpr const char* kModule = "ListOrder";

ItemListForm* itemListForm() {
  return dynamic_cast<ItemListForm*>(host::host().forms->find(formName::xyVote));
}

void renumber() {
  if (ItemListForm* list = itemListForm())
    list->renumber();
}

void rebuildList() {
  if (ItemListForm* list = itemListForm())
    list->rebuildList();
}

void setOrderCode(int code) {
  glo.listOrderCode = code;
  if (std::exchange(glo.listOrder, code) != code)
    exerciseHistory().touched();
}

// Puts the records where a stable sort of their keys wants them; each record moves once.
template <class Key, class Less>
void moveRecords(const std::vector<Key>& keys, Less less) {
  std::vector<std::size_t> places(keys.size());
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::stable_sort(places.begin(), places.end(),
                   [&](std::size_t x, std::size_t y) { return less(keys[x], keys[y]); });
  if (std::is_sorted(places.begin(), places.end()))
    return;
  exerciseHistory().touched();
  std::vector<RiskRecord> sorted;
  sorted.reserve(glo.risks.size());
  for (const std::size_t place : places) sorted.push_back(std::move(glo.risks[place]));
  for (std::size_t i = keys.size(); i < glo.risks.size(); ++i) sorted.push_back(std::move(glo.risks[i]));
  glo.risks = std::move(sorted);
}

// By a number per item; equal numbers keep their places in both directions.
template <class KeyOf>
void sortByNumber(bool decreasing, KeyOf keyOf) {
  std::vector<double> keys;
  for (int i = 0; i < glo.itemCount(); ++i) {
    const double key = static_cast<double>(keyOf(glo.item(i)));
    keys.push_back(std::isnan(key) ? 0 : key);
  }
  moveRecords(keys, [decreasing](double a, double b) { return decreasing ? a > b : a < b; });
}

void sortByText() {
  std::vector<std::string> keys;
  for (int i = 0; i < glo.itemCount(); ++i) keys.push_back(lowerCase(foldCase(glo.item(i).text)));
  moveRecords(keys, [](const std::string& a, const std::string& b) { return a < b; });
}

// One order from progress line to renumbering. An error is reported and leaves what has been done.
template <class Body>
void runOrder(const std::string& name, const char* procedure, Body body) {
  trapErrors(kModule, procedure, [&] {
    const ProgressLine progress("Reordering list: " + name);
    body();
    renumber();
  });
}

void cumulativeOrder(bool decreasing) {
  const double start = iniOptions().logEventsToFile ? highResolutionTimer() : 0;
  GetAllScores();
  glo.dataMessage.clear();
  computeCumulative();
  sortByNumber(decreasing, [](const RiskRecord& item) { return item.cumulative; });
  setOrderCode(decreasing ? order::cumulativeDescending : order::cumulativeAscending);
  if (iniOptions().logEventsToFile) {
    const double seconds = std::round((highResolutionTimer() - start) * 1000) / 1000;
    writeDebugLog(kModule, "cumulative order", plainNumber(seconds) + " s");
  }
}

bool weightedOrder(bool decreasing) {
  bool done = false;
  trapErrors(kModule, "reorderListWeightedCumulative", [&] {
    const ProgressLine progress(std::string("Reordering list: weighted cumulative ") +
                                (decreasing ? "descending" : "ascending"));
    GetAllScores();
    if (!computeWeightedCumulative()) {
      rebuildList();
      return;
    }
    sortByNumber(decreasing, [](const RiskRecord& item) { return item.weightedCumulative; });
    setOrderCode(decreasing ? order::weightedDescending : order::weightedAscending);
    renumber();
    done = true;
  });
  return done;
}

void multiPlotOrder(int plot, bool decreasing) {
  if (plot != 0 && plot != 1)
    return;
  // "decending" is how the product has always spelt it.
  runOrder(multiPlotName(plot) + (decreasing ? " decending" : " ascending"), "reorderListmultiplot", [&] {
    GetAllScores();
    GetMultiPlotValues(plot);
    const std::size_t slot = 9 + static_cast<std::size_t>(plot);
    sortByNumber(decreasing, [slot](const RiskRecord& item) { return item.average[slot]; });
    const int ascending = plot == 0 ? order::multiPlot1Ascending : order::multiPlot2Ascending;
    setOrderCode(decreasing ? ascending + 1 : ascending);
  });
}

}  // namespace

void MenuReorderList(int assessment, bool increasing, bool noRefresh) {
  glo.dataMessage = kDataMessage;
  Edit edit("List order");
  if (assessment == 0)
    reorderListBySifterSorter(!increasing);
  else
    reorderList(assessment, !increasing);
  edit.commit();
  if (noRefresh)
    return;
  rebuildList();
  ItemListForm* list = itemListForm();
  if (list != nullptr && glo.dataMessage.size() > std::string(kDataMessage).size())
    list->showDataMessage(glo.dataMessage);
}

void reorderList(int assessment, bool decreasing) {
  if (assessment < 1 || assessment > kAssessments)
    return;
  const int before = glo.currentAssessment;
  runOrder("Assessment " + std::to_string(assessment), "reorderList", [&] {
    glo.currentAssessment = assessment;
    refreshScores(assessment);
    const std::size_t a = static_cast<std::size_t>(assessment - 1);
    sortByNumber(decreasing, [a](const RiskRecord& item) { return item.average[a]; });
    setOrderCode(2 * assessment - (decreasing ? 0 : 1));
  });
  glo.currentAssessment = before;
}

void reorderListAlpha(bool alsoFirst) {
  const ProgressLine progress("Updating Values");
  runOrder("Alphabetical", "reorderListAlpha", [&] {
    if (alsoFirst)
      cumulativeOrder(false);
    sortByText();
    setOrderCode(order::alphabetical);
  });
}

void reorderListCumulativeIncreasing() {
  runOrder("cumulative ascending", "reorderListCumulativeIncreasing", [] { cumulativeOrder(false); });
}

void reorderListCumulativeDecreasing() {
  runOrder("cumulative descending", "reorderListCumulativeDecreasing", [] { cumulativeOrder(true); });
}

bool reorderListWeightedCumulativeIncreasing() {
  return weightedOrder(false);
}

bool reorderListWeightedCumulativeDecreasing() {
  return weightedOrder(true);
}

void reorderListmultiplotIncreasing(int plot) {
  multiPlotOrder(plot, false);
}

void reorderListmultiplotDecreasing(int plot) {
  multiPlotOrder(plot, true);
}

void reorderListBySifterSorter(bool decreasing) {
  runOrder("Sifter Sorter", "reorderListBySifterSorter",
           [&] { sortByNumber(decreasing, [](const RiskRecord& item) { return item.sifterScore; }); });
}

void setReorderList() {
  const int code = glo.listOrder;
  if (code >= 1 && code <= 2 * kAssessments)
    reorderList((code + 1) / 2, code % 2 == 0);
  else if (code == order::alphabetical)
    reorderListAlpha(false);
  else if (code == order::cumulativeAscending || code == order::cumulativeDescending)
    code == order::cumulativeAscending ? reorderListCumulativeIncreasing()
                                       : reorderListCumulativeDecreasing();
  else if (code == order::weightedAscending || code == order::weightedDescending)
    weightedOrder(code == order::weightedDescending);
  else if (code == order::multiPlot1Ascending || code == order::multiPlot1Descending)
    multiPlotOrder(0, code == order::multiPlot1Descending);
  else if (code == order::multiPlot2Ascending || code == order::multiPlot2Descending)
    multiPlotOrder(1, code == order::multiPlot2Descending);
}

bool countsInCumulative(const RiskRecord& item, std::size_t a) {
  return glo.assessmentInfo[a].active && item.hasScore(a);
}

void computeCumulative() {
  for (int i = 0; i < glo.itemCount(); ++i) {
    RiskRecord& item = glo.item(i);
    int n = 0;
    item.cumulative = 0;
    for (std::size_t a = 0; a < kAssessments; ++a)
      if (countsInCumulative(item, a)) {
        item.cumulative += item.average[a];
        ++n;
      }
    if (n != 0)
      item.cumulative /= static_cast<float>(n);
  }
}

bool computeWeightedCumulative() {
  int weightSum = 0;
  for (const AssessmentInfoRecord& info : glo.assessmentInfo) weightSum += info.weightingOn ? info.weight : 0;
  if (weightSum == 0) {
    if (host::host().dialogs != nullptr)
      host::host().dialogs->MsgBox("No weightings have been selected", host::kTitle);
    return false;
  }
  for (int i = 0; i < glo.itemCount(); ++i) {
    RiskRecord& item = glo.item(i);
    item.weightedCumulative = 0;
    for (std::size_t a = 0; a < kAssessments; ++a) {
      const AssessmentInfoRecord& info = glo.assessmentInfo[a];
      const float share =
          info.weightingOn ? static_cast<float>(info.weight) / static_cast<float>(weightSum) : 0;
      item.weightedCumulative += share * item.average[a];
    }
  }
  return true;
}

}  // namespace qrn
