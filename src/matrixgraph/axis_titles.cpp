#include "matrixgraph/axis_titles.h"

#include "analysis/multiplot.h"
#include "core/glo.h"

namespace qrn {

std::string axisTitle(int assessment) {
  return assessment >= kMultiPlotSlot ? multiPlotName(assessment - kMultiPlotSlot)
                                      : glo.assessmentTitles[static_cast<std::size_t>(assessment - 1)];
}

std::string joinedTitles(const PlotRequest& request, bool vertical) {
  std::string titles;
  for (const int pair : usedPairs(request))
    titles += "/" + axisTitle(vertical ? verticalOf(request, pair) : horizontalOf(request, pair));
  return titles.empty() ? titles : titles.substr(1);
}

}  // namespace qrn
