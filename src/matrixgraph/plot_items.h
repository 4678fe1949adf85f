// The items of the matrix graph: where each stands in each pair, its label and shadow, and the lines between
// pairs.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "matrixgraph/graph_canvas.h"
#include "matrixgraph/plot_request.h"

namespace qrn {

// One item on the graph: its index in the arrays of each pair (0: not plotted in that pair) and its centres,
// twips.
struct PlottedItem {
  int risk = -1;
  std::array<int, kPairs> n{};
  std::array<PlotPoint, kPairs> centre{};
  std::array<bool, kPairs> onScale{};
  std::array<bool, kPairs> joined{};  // a line runs here from the pair before
};

// Names of the control arrays of a pair (0 to 3); the lines of pair 0 have none.
struct PairArrays {
  const char *label, *shadow, *line, *blob;
};
const PairArrays& pairArrays(int pair);

// Score of an item on a value of the plot request as a fraction of its scale. `multiPlotTop` is the top of
// the scale where the value is a MultiPlot.
double itemFraction(int risk, int assessment, bool diversity, int multiPlotTop);

// Superscripts taken off, so that a caption can be compared with an identifier.
std::string keyOfCaption(const std::string& caption);

class ItemPlotter {
 public:
  // `dataMessage` gets a line for each item and assessment without votes.
  ItemPlotter(GraphCanvas& canvas, const PlotRequest& request, bool diversity, std::string& dataMessage);
  void plotPair(int pair);
  std::vector<PlottedItem> takePlotted();  // the items that stand in some pair, in list order

 private:
  double fraction(int risk, int assessment) const;
  bool hasData(int risk, int pair);
  void addItem(PlottedItem& item, int pair, int n);
  void joinToPairBefore(PlottedItem& item, int pair, double width);

  GraphCanvas& canvas_;
  const PlotRequest request_;
  const bool diversity_;
  std::array<int, 2> multiPlotTop_{};
  std::string& dataMessage_;
  std::vector<PlottedItem> items_;  // by index into glo.risks
};

}  // namespace qrn
