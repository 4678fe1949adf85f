#include "charts/vote_screen/live_bars.h"

#include <algorithm>
#include <cmath>

#include "store/counted_votes.h"

namespace qrn {

std::vector<int> CountVotes(int startFrom, int options) {
  std::vector<int> counts(static_cast<std::size_t>(std::max(0, options - startFrom + 1)), 0);
  for (const float vote : countedVotes().values)
    if (vote >= static_cast<float>(startFrom) && vote < static_cast<float>(options) + 1)
      ++counts[static_cast<std::size_t>(static_cast<int>(vote) - startFrom)];
  return counts;
}

BarMark barMark(int count, int total, int percentOrNumber) {
  const std::string number = std::to_string(count);
  if (percentOrNumber == 0 || count <= 0 || total <= 0)
    return {number, ""};
  const std::string share = std::to_string(std::lround(100.0 * count / total)) + "\u00a0%";
  return {share, percentOrNumber == 1 ? "" : "  " + number};
}

}  // namespace qrn
