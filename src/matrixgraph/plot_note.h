// What a plot says about items that do not stand on it.
#pragma once

#include <string>
#include <vector>

#include "matrixgraph/graph_parts.h"
#include "matrixgraph/plot_request.h"

namespace qrn {

struct PlotNote {
  std::string text;    // "" when every item stands on the plot
  bool empty = false;  // nothing stands there
};
std::vector<int> itemsShown();  // that vote, of the categories shown
PlotNote plotNote(const PlotRequest& request, const std::vector<PlottedItem>& plotted);

}  // namespace qrn
