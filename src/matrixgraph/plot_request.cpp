#include "matrixgraph/plot_request.h"

#include <algorithm>

#include "core/glo.h"

namespace qrn {

namespace {

bool usable(int assessment) {
  return assessment >= 1 && assessment <= kAssessments && glo.running(assessment).active;
}

std::vector<int> activeAssessments() {
  std::vector<int> active;
  for (int a = 1; a <= kAssessments; ++a)
    if (usable(a))
      active.push_back(a);
  return active;
}

}  // namespace

std::vector<int> usedPairs(const PlotRequest& request) {
  std::vector<int> used;
  for (const int pair : kAllPairs)
    if (pairUsed(request, pair))
      used.push_back(pair);
  return used;
}

int positiveValues(const PlotRequest& request) {
  return static_cast<int>(std::count_if(request.begin(), request.end(), [](int value) { return value > 0; }));
}

bool hasBothAxes(const PlotRequest& request) {
  bool vertical = false, horizontal = false;
  for (const int pair : kAllPairs) {
    vertical = vertical || verticalOf(request, pair) > 0;
    horizontal = horizontal || horizontalOf(request, pair) > 0;
  }
  return vertical && horizontal;
}

// glo.matrixAxes counts assessments from 0, glo.remainingAssessments from 1.
PlotRequest pairsOfExercise() {
  PlotRequest pairs = kNoPairs;
  const int first = glo.matrixAxes[0] + 1, second = glo.matrixAxes[1] + 1;
  if (usable(first) && usable(second) && first != second) {
    pairs[0] = first;
    pairs[1] = second;
  } else {
    const std::vector<int> active = activeAssessments();
    if (active.size() < 2)
      return kNoPairs;
    pairs[0] = active[0];
    pairs[1] = active[1];
  }
  std::size_t slot = 2;
  const int further = std::clamp(glo.optionAveragePairing, 0, kPairs - 1);
  for (std::size_t i = 0; i < static_cast<std::size_t>(2 * further); i += 2) {
    const int vertical = glo.remainingAssessments[i], horizontal = glo.remainingAssessments[i + 1];
    if (!usable(vertical) || !usable(horizontal))
      continue;
    pairs[slot++] = vertical;
    pairs[slot++] = horizontal;
  }
  return pairs;
}

PlotRequest choosePairs() {
  PlotRequest chosen = kNoPairs;
  if (glo.useUserPairings) {
    for (const int pair : kAllPairs)
      if (glo.userPairActive[static_cast<std::size_t>(pair)] == 1)
        std::copy_n(glo.userSelectedPlotPairings.begin() + 2 * pair, 2, chosen.begin() + 2 * pair);
  } else {
    chosen = glo.currentPlotPairings;
  }
  if (positiveValues(chosen) < 2)
    chosen = glo.useUserPairings ? glo.currentPlotPairings : glo.userSelectedPlotPairings;
  return chosen;
}

}  // namespace qrn
