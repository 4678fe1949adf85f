// The scores of the whole exercise, straight from the bytes of the vote records: the same values, bit for
// bit, as LoadVotes and SetStats item by item, without a text per keypad.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/records.h"
#include "store/record_statistics.h"

namespace qrn {

// Refreshes average, standard deviation, diversity, `active` and `postalData` of every item on `assessment`
// (1 to 9) under the filter in force, and starts glo.dataMessage anew with the items that have no score. The
// list's order and the votes in memory stay as they are. The scores come back as they were found, one per
// item (none for an assessment outside 1 to 9).
std::vector<RecordScore> refreshScores(int assessment);

// Adds a line to `message` (which begins as kDataMessage) when `item` has no score on `assessment` (1 to 9).
void tellIfMissing(std::string& message, const RiskRecord& item, int assessment);

// Refreshes every assessment, in the running order or not, and the sifter/sorter scores. The list's order
// stays.
void GetAllScores();

// What an item scored with one group of the default demographic question.
struct GroupScore {
  std::string groupName;
  float average = 0;
  int participants = 0;
};

// One entry per group of the default question (at most 12), for item `risk` on `assessment` (1 to 9); empty
// while a filter is in force or without a default question.
std::vector<GroupScore> demographicGroupScores(int risk, int assessment);

inline constexpr const char* kDataMessage = "Data not found for these items: ";

}  // namespace qrn
