#include "vote/link/keypad_arrays.h"

#include <algorithm>
#include <cstddef>

#include "core/glo.h"

namespace qrn {

namespace {

constexpr int kDefaultHighestKeypad = 650;

// Number of elements up to the last keypad that has voted in the open vote.
std::size_t votedExtent() {
  std::size_t extent = glo.liveVotes.size();
  while (extent > 0 && (glo.liveVotes[extent - 1].empty() || glo.liveVotes[extent - 1] == "-100")) --extent;
  return extent;
}

}  // namespace

void ResizeVoteArrays(bool keepClearedFlags) {
  const int highest = glo.keypadsNotVotedHi < 1 ? kDefaultHighestKeypad : glo.keypadsNotVotedHi;
  std::size_t size = static_cast<std::size_t>(highest) + 1;
  if (glo.voteOpen)
    size = std::max(size, votedExtent() + 1);
  glo.liveVotes.resize(size, "-100");
  glo.keypadIncluded.resize(size, 1);
  if (keepClearedFlags && glo.keypadCounted.size() > 1)
    glo.keypadCounted.resize(size, 0);
  else
    glo.keypadCounted.assign(1, 0);
}

void ResetVotes() {
  std::fill(glo.liveVotes.begin(), glo.liveVotes.end(), "-100");
  glo.keypadCounted.assign(1, 0);
}

}  // namespace qrn
