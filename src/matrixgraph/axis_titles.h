// The names of the axes.
#pragma once

#include <string>

#include "matrixgraph/plot_request.h"

namespace qrn {

// Name of an assessment, or of a multi-plot where the value of the request is one.
std::string axisTitle(int assessment);

// Those of all pairs, joined by "/".
std::string joinedTitles(const PlotRequest& request, bool vertical);

}  // namespace qrn
