// Average, standard deviation and diversity of one item on one assessment, from the votes in memory.
#pragma once

#include <cstddef>
#include <string>

#include "core/records.h"

namespace qrn {

// The form that runs a vote, as the statistics see it: its text boxes hold the item's index in the list and
// the assessment's index (from 0). While none is loaded, or it throws HostError 91, the arguments of SetStats
// count.
struct VoteFormBoxes {
  std::string txt_RiskNum, txt_AssNum;
};
class HasVoteBoxes {
 public:
  virtual ~HasVoteBoxes() = default;
  virtual VoteFormBoxes boxes() const = 0;
};

// The item and assessment that SetStats has worked on, after the text boxes have had their say.
struct StatsTarget {
  int risk = 0, assessment = 0;
};

// From glo.liveVotes and glo.postalVotes into glo.risks[risk] for `assessment` (index 0 to 10). `form` is the
// name of the calling form. `round` -1 is the current result: average, standard deviation (population
// formula) and diversity (deviation over half the scale's length), and glo.abstainCount; another round (0 to
// 10) takes the average and `label` alone. An average of exactly 0 leaves the diversity as it was.
StatsTarget SetStats(int risk, int assessment, const std::string& form = "", int round = -1,
                     const std::string& label = "");

// Nobody has scored `item` in slot `a`.
void clearScore(RiskRecord& item, std::size_t a);

// The last steps of SetStats for the current result: stores the average and the number of votes it is made
// of, and from the added-up squares of the differences the deviation and the diversity. Throws HostError 11
// on a scale of one point.
void storeStatistics(int risk, int assessment, int participants, float average, float squares);

// Scale labels of assessment `a` (0 to 8) without the spare one, less 1; 0 for other slots.
int criteriaCount(int a);

}  // namespace qrn
