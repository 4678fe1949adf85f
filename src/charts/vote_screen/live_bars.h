// How the votes on one question spread over its options, as counts and as bars.
#pragma once

#include <string>
#include <vector>

namespace qrn {

// The votes that count (store/counted_votes) per option, the first for the value `startFrom`; votes outside
// the scale are left out.
std::vector<int> CountVotes(int startFrom, int options);

// What stands behind a bar by glo.graphPercentOrNumber: 0 "12", 1 "40 %", 2 "40 %" and more quietly "12".
// Percent of `total`, whole number. An option without votes has "0".
struct BarMark {
  std::string strong, quiet;
  bool operator==(const BarMark&) const = default;
};
BarMark barMark(int count, int total, int percentOrNumber);

struct LiveBars {
  std::vector<int> counts;  // per option, in the order of the options
  int abstains = 0;
  bool Visible = false;
};

}  // namespace qrn
