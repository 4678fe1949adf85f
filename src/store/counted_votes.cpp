#include "store/counted_votes.h"

#include <cstddef>

#include "core/common.h"
#include "core/glo.h"
#include "store/vote_line.h"

namespace qrn {

bool countsLive() {
  return glo.CheckUseLivePostal == 0 || glo.CheckUseLivePostal == 2;
}

bool countsPostal() {
  return glo.CheckUseLivePostal == 1 || glo.CheckUseLivePostal == 2;
}

void CountedVotes::addLive(double vote) {
  if (!countsLive())
    return;
  if (vote >= 0)
    values.push_back(static_cast<float>(vote));
  else if (vote == kAbstained && glo.opt_abstain)
    ++abstains;
}

void CountedVotes::addPostal(double vote) {
  if (countsPostal() && vote >= 0)
    values.push_back(static_cast<float>(vote));
}

CountedVotes countedVotes() {
  CountedVotes counted;
  for (std::size_t i = 0; i + 1 < glo.liveVotes.size(); ++i)
    if (!glo.liveVotes[i].empty())  // not voted, as in a record
      counted.addLive(qrnVal(glo.liveVotes[i]));
  for (std::size_t i = 0; i + 1 < glo.postalVotes.size(); ++i) counted.addPostal(glo.postalVotes[i]);
  return counted;
}

}  // namespace qrn
