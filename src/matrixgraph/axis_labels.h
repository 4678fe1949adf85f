// The axes of the matrix graph on its surface: lines, captions, titles, and the rows below the plot.
#pragma once

#include <string>

#include "matrixgraph/axis_plan.h"
#include "matrixgraph/graph_canvas.h"

namespace qrn {

// verticalLine(0) and horizontalLine(0).
void layAxisLines(GraphCanvas& canvas);

struct AxisTitles {
  std::string vertical, horizontal;
  double noteWidth = 0;    // kept free at the right end of the vertical title's row
  bool footBelow = false;  // a line stands at the foot of the form
};

// Captions and grid lines of both axes; criteria1Label above the vertical one, from the left edge of the
// plot, and criteria2Label close under the captions of the horizontal one.
void layAxes(GraphCanvas& canvas, const AxisPlan& across, const AxisPlan& up, bool skew,
             const AxisTitles& titles);

}  // namespace qrn
