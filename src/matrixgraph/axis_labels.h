// The axes of the matrix graph on its surface: lines, captions, titles, and the rows below the plot.
#pragma once

#include <string>

#include "matrixgraph/axis_plan.h"
#include "matrixgraph/graph_canvas.h"

namespace qrn {

// verticalLine(0) and horizontalLine(0).
void layAxisLines(GraphCanvas& canvas);

// Captions and grid lines of both axes. Gives the height that the top caption takes, twips.
double AxisLabels(GraphCanvas& canvas, const AxisPlan& across, const AxisPlan& up, bool skew);

// criteria1Label above the vertical axis and criteria2Label below the horizontal one. `topCaption` is the
// height that the top caption takes.
void layAxisTitles(GraphCanvas& canvas, const std::string& vertical, const std::string& horizontal,
                   double topCaption);

// Rows below the plot, twips from the top of the form.
struct BottomRows {
  double captionsEnd = 0, titleTop = 0, titleHeight = 0, footTop = 0;
};
BottomRows bottomRows(const GraphCanvas& canvas);

}  // namespace qrn
