// The scale of one axis: which assessment it shows, how many divisions it has and their captions.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "matrixgraph/plot_request.h"

namespace qrn {

// Scale sizes of the first pair with both values at least 1; 0 and 0 when there is none.
struct ScaleSizes {
  std::int32_t first = 0, second = 0;
};
// Points lie on the grid lines: N points give N - 1 divisions.
ScaleSizes selectBoundsRegular(const PlotRequest& request);
// Every point owns a cell: N points give N cells.
ScaleSizes selectBoundsSkew(const PlotRequest& request);

// The assessment an axis shows: the last positive value among the first (vertical) or second (horizontal)
// members of the pairs; 0 when there is none.
int axisAssessment(const PlotRequest& request, bool vertical);

struct AxisPlan {
  int assessment = 0;
  int divisions = 0;                  // 0 or less: the assessment has no voting points
  std::vector<std::string> captions;  // divisions + 1, from the axis outwards
  float scaleMax = 0;                 // top of a computed axis, 0 for a scale of voting points
  bool lastHidden = false;            // the last caption is a cell boundary
};

// `percent`: both axes run 0 to 100 whatever their assessment (diversity).
AxisPlan planAxis(int assessment, bool skew, bool percent);

}  // namespace qrn
