#include "charts/average_kinds.h"

#include <algorithm>
#include <array>

#include "analysis/multiplot.h"
#include "analysis/orders.h"
#include "core/glo.h"
#include "host/names.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

std::size_t slotOf(const ChartRequest& request) {
  return static_cast<std::size_t>(request.assessment - 1);
}

bool hasCumulative(const RiskRecord& risk) {
  for (std::size_t a = 0; a < kAssessments; ++a)
    if (countsInCumulative(risk, a))
      return true;
  return false;
}

bool hasAnyScore(const RiskRecord& risk) {
  for (std::size_t a = 0; a < kAssessments; ++a)
    if (risk.hasScore(a))
      return true;
  return false;
}

ChartBounds boundsOf(int assessment) {
  const AssessmentRecord& record = glo.assessment(assessment);
  if (record.voteType == scaleKind::balance)
    return {0, 100};
  const int points = std::max(glo.labelCount(assessment - 1), record.scalePointCount);
  return {static_cast<double>(record.startFrom), static_cast<double>(record.startFrom + points - 1)};
}

ChartBounds boundsOfAll() {
  ChartBounds all;
  bool first = true;
  for (int a = 1; a <= kAssessments; ++a) {
    if (!glo.running(a).active)
      continue;
    const ChartBounds one = boundsOf(a);
    all.low = first ? one.low : std::min(all.low, one.low);
    all.high = first ? one.high : std::max(all.high, one.high);
    first = false;
  }
  return all;
}

bool computeOne(const ChartRequest& request) {
  refreshScores(request.assessment);
  return true;
}

ChartValue plainValue(const ChartRequest& request, const RiskRecord& risk) {
  const std::size_t slot = slotOf(request);
  if (request.round < 1 || request.round > kRounds)
    return {risk.hasScore(slot), risk.average[slot], risk.counted[slot]};
  const RoundRecord& round = risk.rounds[slot][static_cast<std::size_t>(request.round - 1)];
  return {round.counted > 0, round.average, round.counted};
}

template <int plot>
constexpr AverageKind multiPlotKind(int kind) {
  return {kind,
          "0.00",
          false,
          false,
          [](const ChartRequest&) {
            GetAllScores();
            GetMultiPlotValues(plot);
            return true;
          },
          [](const ChartRequest&) { return multiPlotName(plot); },
          [](const ChartRequest&, const RiskRecord& risk) {
            const std::size_t slot = static_cast<std::size_t>(kAssessments + plot);
            return ChartValue{risk.hasScore(slot), risk.average[slot]};
          },
          [](const ChartRequest&) {
            return ChartBounds{0, static_cast<double>(GetMultiPlotMaxScale(plot, true, true))};
          }};
}

constexpr std::array<AverageKind, 6> kKinds{{
    {kPlainAverage, "0.00", true, true, computeOne,
     [](const ChartRequest& request) { return "Average: " + glo.assessmentTitles[slotOf(request)]; },
     plainValue, [](const ChartRequest& request) { return boundsOf(request.assessment); }},
    {kCumulative, "0.00", false, false,
     [](const ChartRequest&) {
       GetAllScores();
       computeCumulative();
       return true;
     },
     [](const ChartRequest&) { return std::string("Cumulative averages"); },
     [](const ChartRequest&, const RiskRecord& risk) {
       return ChartValue{hasCumulative(risk), risk.cumulative};
     },
     [](const ChartRequest&) { return boundsOfAll(); }},
    {kWeightedCumulative, "0.00", false, false,
     [](const ChartRequest&) {
       GetAllScores();
       return computeWeightedCumulative();
     },
     [](const ChartRequest&) { return std::string("Weighted cumulative averages"); },
     [](const ChartRequest&, const RiskRecord& risk) {
       return ChartValue{hasAnyScore(risk), risk.weightedCumulative};
     },
     [](const ChartRequest&) {  // a missing average pulls a weighted value below the scales
       return ChartBounds{0, boundsOfAll().high};
     }},
    multiPlotKind<0>(kMultiPlot1),
    multiPlotKind<1>(kMultiPlot2),
    {kDiversity, "0.00%", false, true, computeOne,
     [](const ChartRequest&) { return std::string("Diversity"); },
     [](const ChartRequest& request, const RiskRecord& risk) {
       const std::size_t slot = slotOf(request);
       return ChartValue{risk.hasScore(slot), risk.diversity[slot], risk.counted[slot]};
     },
     [](const ChartRequest&) {
       return ChartBounds{0, 1};
     }},
}};

}  // namespace

const AverageKind& averageKind(int displayKind) {
  const auto found = std::find_if(kKinds.begin() + 1, kKinds.end(), [&](const AverageKind& kind) {
    return displayKind == kind.kind || displayKind == kind.kind + 1;
  });
  return found == kKinds.end() ? kKinds.front() : *found;
}

}  // namespace qrn
