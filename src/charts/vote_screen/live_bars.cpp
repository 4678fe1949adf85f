#include "charts/vote_screen/live_bars.h"

#include <algorithm>
#include <cmath>

#include "store/counted_votes.h"

namespace qrn {

std::vector<int> CountVotes(int startFrom, int options) {
  const std::vector<float> votes = countedVotes().values;
  std::vector<int> counts;
  for (int option = startFrom; option <= options; ++option)
    counts.push_back(static_cast<int>(std::count_if(votes.begin(), votes.end(), [&](float vote) {
      return std::floor(vote) == static_cast<float>(option);
    })));
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
