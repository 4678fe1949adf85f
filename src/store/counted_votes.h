// Which votes a figure counts: the one rule behind averages, participants and bars.
#pragma once

#include <vector>

namespace qrn {

// An exercise counts the votes of the keypads, those on paper, or both (glo.CheckUseLivePostal 0, 1, 2).
bool countsLive();
bool countsPostal();

// Votes that count, live before postal, in the order of the keypads. A vote is a value from 0 up; abstained
// (-2) and not voted (-1, -100) are none.
struct CountedVotes {
  std::vector<float> values;
  int abstains = 0;  // of the keypads alone, and where the exercise allows abstaining
  void addLive(double vote);
  void addPostal(double vote);
};

// Those of the votes in memory, glo.liveVotes and glo.postalVotes without their spare top elements.
CountedVotes countedVotes();

}  // namespace qrn
