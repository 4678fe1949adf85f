// Which assessments stand against which: eight values, pair by pair, the first of a pair on the vertical axis
// and the second on the horizontal one. 1 to 9 are assessments, 10 and 11 MultiPlot 1 and 2, anything below 1
// is unused.
#pragma once

#include <array>
#include <vector>

namespace qrn {

inline constexpr int kPairs = 4;
inline constexpr std::array<int, kPairs> kAllPairs{0, 1, 2, 3};
inline constexpr int kMultiPlotSlot = 10;  // the first value that is a MultiPlot

using PlotRequest = std::array<int, 8>;
inline constexpr PlotRequest kNoPairs{-1, -1, -1, -1, -1, -1, -1, -1};

constexpr int verticalOf(const PlotRequest& request, int pair) {
  return request[static_cast<std::size_t>(2 * pair)];
}
constexpr int horizontalOf(const PlotRequest& request, int pair) {
  return request[static_cast<std::size_t>(2 * pair + 1)];
}
constexpr bool pairUsed(const PlotRequest& request, int pair) {
  return verticalOf(request, pair) > 0 && horizontalOf(request, pair) > 0;
}
std::vector<int> usedPairs(const PlotRequest& request);
int positiveValues(const PlotRequest& request);
bool hasBothAxes(const PlotRequest& request);

// The pairs an exercise asks for: its axes and its further assessments where they can be drawn, else its
// first two active assessments; kNoPairs when there are not two.
PlotRequest pairsOfExercise();

// The pairs to draw now: the user's own (where active) or the current ones; with fewer than two values in the
// one set, the other set whole.
PlotRequest choosePairs();

}  // namespace qrn
