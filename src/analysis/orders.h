// The orders of the item list. An order moves the records themselves and is kept as glo.listOrderCode (and
// glo.listOrder, for saving). Equal items keep their places in both directions.
#pragma once

#include <cstddef>
#include <string>

#include "core/records.h"

namespace qrn {

// 0 alphabetical; 2a-1 and 2a assessment a (1 to 9) ascending and descending; then the ones named here.
namespace order {
inline constexpr int alphabetical = 0, cumulativeAscending = 19, cumulativeDescending = 20,
                     weightedAscending = 21, weightedDescending = 22, multiPlot1Ascending = 23,
                     multiPlot1Descending = 24, multiPlot2Ascending = 27, multiPlot2Descending = 28;
}  // namespace order

// The form "xyVote" as an order sees it, when it is loaded.
class ItemListForm {
 public:
  virtual ~ItemListForm() = default;
  virtual void renumber() = 0;                                   // list positions, after each order
  virtual void rebuildList() = 0;                                // the shown list
  virtual void showDataMessage(const std::string& message) = 0;  // items without data
};

// Menu entry: `assessment` 1 to 9, or 0 for the sifter/sorter scores.
void MenuReorderList(int assessment, bool increasing, bool noRefresh = false);

// By the average on `assessment` (1 to 9; others do nothing) after refreshing it.
void reorderList(int assessment, bool decreasing);
// By text; with `alsoFirst` the cumulative order comes first, so that equal names stand in that order.
void reorderListAlpha(bool alsoFirst);
void reorderListCumulativeIncreasing();
void reorderListCumulativeDecreasing();
// False when no assessment is weighted: the message is shown, order and code stay.
bool reorderListWeightedCumulativeIncreasing();
bool reorderListWeightedCumulativeDecreasing();
// `plot` 0 or 1.
void reorderListmultiplotIncreasing(int plot);
void reorderListmultiplotDecreasing(int plot);
void reorderListBySifterSorter(bool decreasing);

// The order of glo.listOrderCode again, after data has changed.
void setReorderList();

// Whether a score of the item on assessment `a` (0 to 8) goes into its cumulative: in the running order, and
// voted.
bool countsInCumulative(const RiskRecord& item, std::size_t a);

// From the scores as they stand: the mean of the active assessments that somebody voted on into `cumulative`
// (0 when there is none), and the weighted sum into `weightedCumulative`, where a missing average goes in as
// the 0 that stands there. Without a weighted assessment that is told, nothing changes, and false comes back.
void computeCumulative();
bool computeWeightedCumulative();

}  // namespace qrn
