#include "charts/vote_screen/live_bars.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>

#include "core/glo.h"

namespace qrn {

namespace {

// The vote as a whole number; -100 for a text that is none.
int wholeVote(const std::string& text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end ? value : -100;
}

}  // namespace

std::vector<int> CountVotes(int startFrom, int options) {
  std::vector<int> counts(static_cast<std::size_t>(std::max(0, options - startFrom + 1)), 0);
  for (int i = 0; i < upperBound(glo.liveVotes); ++i) {
    const int vote = wholeVote(glo.liveVotes[static_cast<std::size_t>(i)]);
    if (vote >= startFrom && vote <= options)
      ++counts[static_cast<std::size_t>(vote - startFrom)];
  }
  return counts;
}

std::string BarMark(int count, int total, int percentOrNumber) {
  const std::string number = "(" + std::to_string(count) + ")";
  if (percentOrNumber == 0)
    return number;
  const long percent = total > 0 ? std::lround(100.0 * count / total) : 0;
  const std::string share = std::to_string(percent) + "%";
  return percentOrNumber == 1 ? share : share + " " + number;
}

int LiveBars::total() const {
  return std::accumulate(counts.begin(), counts.end(), 0);
}

}  // namespace qrn
