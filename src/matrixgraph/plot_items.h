// The items of the matrix graph: where each stands in each pair, its label and shadow, and the lines between
// pairs.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "matrixgraph/graph_canvas.h"
#include "matrixgraph/graph_parts.h"
#include "matrixgraph/plot_request.h"

namespace qrn {

// The scale of a value of the plot request. `multiPlotTop` is its top where that is a MultiPlot.
ScaleSpan scaleSpan(int assessment, bool diversity, int multiPlotTop);

// Score of an item on a value of the plot request as a fraction of its scale. `multiPlotTop` is the top of
// the scale where the value is a MultiPlot.
double itemFraction(int risk, int assessment, bool diversity, int multiPlotTop);

// A key on a disc of that colour.
void dressKey(host::Element& key, std::int32_t disc);

// Puts a shadow a pixel right of and below its label.
void placeShadow(host::Element& shadow, const host::Element& label);

class ItemPlotter {
 public:
  // `dataMessage` gets a line for each item and assessment without votes.
  ItemPlotter(GraphCanvas& canvas, const PlotRequest& request, bool diversity, std::string& dataMessage);
  void plotPair(int pair);
  const std::array<PairSpans, kPairs>& spans() const { return spans_; }
  const std::array<std::int32_t, kPairs>& discs() const { return discs_; }
  int lastPair() const { return lastPair_; }
  std::vector<PlottedItem> takePlotted();  // the items that stand in some pair, in list order

 private:
  double fraction(int risk, int assessment) const;
  bool hasData(int risk, int pair);
  // The arrays and colours of the pair being plotted.
  struct PairLook {
    int pair;
    host::ElementArray &keys, &shadows, &dots, &ghosts;
    std::int32_t disc = 0, line = 0;
  };
  PairLook lookOf(int pair) const;
  void addItem(PlottedItem& item, const PairLook& look, int n);
  void addKey(const PlottedItem& item, const PairLook& look, const std::string& tip);
  void joinToPairBefore(PlottedItem& item, const PairLook& look);
  void markTop();

  GraphCanvas& canvas_;
  const PlotRequest request_;
  const bool diversity_;
  int lastPair_ = 0;
  std::array<std::int32_t, kPairs> discs_{};
  std::array<PairSpans, kPairs> spans_{};
  std::array<int, 2> multiPlotTop_{};
  std::string& dataMessage_;
  std::vector<PlottedItem> items_;  // by index into glo.risks
};

}  // namespace qrn
