// The keys of the matrix graph, the zoom on one item, and what is hidden and shown. None of it draws anew but
// the digits and the diversity graph: the rest touches visibility only.
#include <algorithm>

#include "analysis/filter/filters.h"
#include "base/text.h"
#include "core/common.h"
#include "core/glo.h"
#include "core/item_label.h"
#include "core/show_keys.h"
#include "host/dialogs.h"
#include "host/host.h"
#include "host/system.h"
#include "look/theme.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn {

namespace {

constexpr double kGrowMs = 250;

namespace key = host::key;

constexpr const char* kFilterForm = "xyVoteGraphFilter";

void say(const std::string& text) {
  host::host().dialogs->MsgBox(text, host::kTitle, host::Buttons::ok, host::Icon::information);
}

std::string keyOfRow(const std::string& row) {
  return row.substr(0, row.find(':'));
}

bool isInTable(const std::string& itemKey) {
  return std::any_of(glo.risks.begin(), glo.risks.end(),
                     [&](const RiskRecord& risk) { return risk.identifier == itemKey; });
}

// With no line ends at its end.
std::string zoomTitle(int risk) {
  return std::string(trimBlanks(itemLabel(risk)));
}

}  // namespace

// Keys
void xyVoteGraph::filterByDigit(int digit) {
  std::string caption;
  SetDemographicFilter(digit - 1, caption);
  tmr_load.setEnabled(true);
}

void xyVoteGraph::escapeOrSpace() {
  host::FormRegistry& forms = *host::host().forms;
  const bool filterOpen = forms.isLoaded(kFilterForm) && zoomedItemKey.empty();
  if (filterOpen)
    forms.unload(kFilterForm);
  if (filterOpen || graphTitle != glo.listTitle)
    showAll();
  else if (!displayedInShow())
    cmd_close_Click();
}

void xyVoteGraph::letterKey(char letter) {
  const std::string itemKey = letter + itemKeySuffix;
  if (glo.OptionMatrixItemNavigation != 0 && showingMultiPlot) {
    say("Cannot zoom in whilst showing MultiPlot");
  } else if (glo.OptionMatrixItemNavigation != 0) {
    zoomedItemKey.clear();
    PlotItemDistribution(itemKey);
  } else if (itemKey == zoomedItemKey && showingMultiPlot) {
    say("Zoom unavailable whilst showing MultiPlot");
  } else if (itemKey == zoomedItemKey) {
    zoomedItemKey.clear();
    PlotItemDistribution(itemKey);
  } else {
    showLetter(itemKey);
  }
}

// Zoom
void xyVoteGraph::showLetter(const std::string& itemKey) {
  zoomedItemKey = itemKey;
  const int risk = selectListRow(itemKey);
  if (risk < 0)
    reportUnlisted(itemKey);
  else if (showingMultiPlot)
    say("Cannot zoom in whilst showing MultiPlot");
  else
    zoomTo(risk, itemKey);
}

const std::string& xyVoteGraph::textOfRow(int row) const {
  return List1.rows()[static_cast<std::size_t>(row)].cells.front();
}

int xyVoteGraph::selectListRow(const std::string& itemKey) {
  for (int row = 0; row < static_cast<int>(List1.rows().size()); ++row)
    if (keyOfRow(textOfRow(row)) == itemKey) {
      List1.select(row);
      return riskOfRow(row);
    }
  return -1;
}

const PlottedItem* xyVoteGraph::plottedItem(int risk) const {
  const auto item = std::find_if(model_.plotted.begin(), model_.plotted.end(),
                                 [&](const PlottedItem& one) { return one.risk == risk; });
  return item == model_.plotted.end() ? nullptr : &*item;
}

void xyVoteGraph::zoomTo(int risk, const std::string& itemKey) {
  const PlottedItem* item = plottedItem(risk);
  bool hidden = item != nullptr;
  for (const int pair : kAllPairs)
    hidden = hidden && (item->n[static_cast<std::size_t>(pair)] == 0 ||
                        !view.roundVisible[static_cast<std::size_t>(pair)]);
  if (hidden) {
    zoomedItemKey.clear();
    say("Item " + itemKey + "\r\n is not currently displayed");
    return;
  }
  setTitle(zoomTitle(risk));
  if (item == nullptr || item->n[0] == 0)
    say("Item " + itemKey + "\r\n does not have enough data to graph");
  else
    ShowSingleItem(risk);
}

void xyVoteGraph::reportUnlisted(const std::string& itemKey) {
  if (graphFilterActive)
    say("Item " + itemKey + "\r\n is not in the active filter");
  else if (showingMultiPlot)
    say("Cannot zoom in whilst showing MultiPlot");
  else if (isInTable(itemKey))
    say("Item " + itemKey + "\r\n is not currently displayed");
  else
    say("Item " + itemKey + "\r\n does not exist in the list");
}

void xyVoteGraph::ShowSingleItem(int risk) {
  view.zoomedItem = glo.item(risk).ID;
  growsSince_ = host::host().clock->microseconds();
  view.growth = visible ? 1 : kGrown;  // nobody watches a form that is not shown
  tmr_grow.setEnabled(visible);
  showView();
}

void xyVoteGraph::tmr_grow_Timer() {
  const double part = static_cast<double>(host::host().clock->microseconds() - growsSince_) / 1000 / kGrowMs;
  view.growth = 1 + (kGrown - 1) * look::eased(part);
  if (part >= 1 || view.zoomedItem == host::kNoItem)
    tmr_grow.setEnabled(false);
  model_.grow(view);
  host::host().forms->refresh(name);
}

void xyVoteGraph::showAll() {
  menuHideShowAllPlots();
  zoomedItemKey.clear();
}

// Hide and show
void xyVoteGraph::showView() {
  model_.show(view);
  host::host().forms->refresh(name);
}

void xyVoteGraph::menuHideShowAllPlots() {
  setTitle(glo.listTitle);
  view.zoomedItem = host::kNoItem;
  for (const int pair : kAllPairs) view.roundVisible[static_cast<std::size_t>(pair)] = onGraph(pair + 1);
  showView();
}

bool xyVoteGraph::onGraph(int pair) const {
  return model_.withoutPoints == 0 && pairUsed(glo.lastDrawnPairings, pair - 1);
}

void xyVoteGraph::menuHideShowRound(int pair) {
  if (!onGraph(pair))
    return;
  bool& shown = view.roundVisible[static_cast<std::size_t>(pair - 1)];
  shown = !shown;
  showView();
}

void xyVoteGraph::menuPairLines() {
  view.pairLines = !view.pairLines;
  showView();
}

void xyVoteGraph::menuDiversity() {
  showingDiversity = !showingDiversity;
  tmr_load.setEnabled(true);
}

// To the distribution graph
void xyVoteGraph::PlotItemDistribution(const std::string& keyOrIndex) {
  const double risk = isNumeric(keyOrIndex) ? valueParse(keyOrIndex) : -1;
  const bool isIndex = risk >= 0 && risk < glo.itemCount();
  const PlottedItem* item =
      plottedItem(selectListRow(isIndex ? glo.item(static_cast<int>(risk)).identifier : keyOrIndex));
  if (item == nullptr) {
    say("Nothing defined for this item");
    return;
  }
  PlotRequest pairs = glo.lastDrawnPairings;
  for (const int pair : kAllPairs)
    if (item->n[static_cast<std::size_t>(pair)] == 0)
      std::fill_n(pairs.begin() + 2 * pair, 2, -1);
  if (pairUsed(pairs, 0))
    gotoDistributionGraph(pairs);
}

void xyVoteGraph::gotoDistributionGraph(const PlotRequest& pairs) {
  distributionRisk = riskOfRow(List1.current());
  distributionPairs = pairs;
  if (host::host().forms->isDefined(kDistributionForm))
    host::host().forms->show(kDistributionForm);
}

}  // namespace qrn
