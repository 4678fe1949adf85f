#include "matrixgraph/axis_plan.h"

#include <algorithm>
#include <cmath>

#include "analysis/multiplot.h"
#include "base/utf8.h"
#include "core/common.h"
#include "core/glo.h"
#include "host/names.h"

namespace qrn {

namespace {

constexpr int kPercentDivisions = 4;
constexpr int kInFull = 0, kAbbreviated = 1, kNumbers = 2;  // glo.OptionScatterScale

bool isMultiPlot(int assessment) {
  return assessment >= kMultiPlotSlot;
}

const std::vector<std::string>& criteriaOf(int assessment) {
  return glo.scaleLabels[static_cast<std::size_t>(assessment - 1)];
}

std::int32_t regularSize(int assessment) {
  if (!isMultiPlot(assessment))
    return upperBound(criteriaOf(assessment)) - 1;
  const int max = GetMultiPlotMaxScale(assessment - kMultiPlotSlot, true, true);
  const int step = GetMultiPlotAxisScaleStep(max);
  return static_cast<std::int32_t>(std::floor(static_cast<double>(max) / step - step));
}

std::int32_t skewSize(int assessment) {
  if (!isMultiPlot(assessment))
    return upperBound(criteriaOf(assessment));
  const int max = GetMultiPlotMaxScale(assessment - kMultiPlotSlot, true, true);
  return max / GetMultiPlotAxisScaleStep(max);
}

ScaleSizes sizesBy(const PlotRequest& request, std::int32_t (*sizeOf)(int)) {
  for (const int pair : usedPairs(request))
    return {sizeOf(verticalOf(request, pair)), sizeOf(horizontalOf(request, pair))};
  return {};
}

std::string abbreviated(const std::string& text) {
  return firstCharacters(text, glo.TextScatterScaleAbbreviate);
}

// Caption of scale point `i` of a voted assessment.
std::string pointCaption(int assessment, int i) {
  if (glo.OptionScatterScale == kNumbers)
    return std::to_string(glo.assessment(assessment).startFrom + i);
  const auto& criteria = criteriaOf(assessment);
  const std::string& text = criteria[static_cast<std::size_t>(i)];  // behind the last stands ""
  const bool cut = glo.OptionScatterScale == kAbbreviated && glo.TextScatterScaleAbbreviate > 0;
  return cut ? abbreviated(text) : text;  // cut to nothing, captions would tell nothing
}

}  // namespace

ScaleSizes selectBoundsRegular(const PlotRequest& request) {
  return sizesBy(request, regularSize);
}

ScaleSizes selectBoundsSkew(const PlotRequest& request) {
  return sizesBy(request, skewSize);
}

int axisAssessment(const PlotRequest& request, bool vertical) {
  int last = 0;
  for (std::size_t i = vertical ? 0 : 1; i < request.size(); i += 2)
    if (request[i] > 0)
      last = request[i];
  return last;
}

AxisPlan planAxis(int assessment, bool skew, bool percent) {
  AxisPlan plan;
  plan.assessment = assessment;
  percent =
      percent || (!isMultiPlot(assessment) && glo.assessment(assessment).voteType == scaleKind::balance);
  int step = 1;
  if (percent) {
    plan.divisions = kPercentDivisions;
    plan.scaleMax = 100;
  } else if (isMultiPlot(assessment)) {
    plan.scaleMax = static_cast<float>(GetMultiPlotMaxScale(assessment - kMultiPlotSlot, true, true));
    step = GetMultiPlotAxisScaleStep(static_cast<int>(plan.scaleMax));
    plan.divisions = std::max(1, static_cast<int>(std::floor(plan.scaleMax / static_cast<float>(step) - 1)));
  } else {
    plan.divisions = upperBound(criteriaOf(assessment)) - 1;
  }
  if (plan.divisions <= 0)
    return plan;
  plan.divisions += skew ? 1 : 0;
  plan.lastHidden = skew;
  for (int i = 0; i <= plan.divisions; ++i) {
    if (percent)
      plan.captions.push_back(plainNumber(plan.scaleMax * (static_cast<float>(i) / kPercentDivisions)));
    else if (isMultiPlot(assessment))
      plan.captions.push_back(std::to_string(step * (i + 1)));
    else
      plan.captions.push_back(pointCaption(assessment, i));
  }
  return plan;
}

}  // namespace qrn
