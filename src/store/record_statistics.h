// Statistics straight from the bytes of the vote records. The values are those of LoadVotes followed by
// SetStats, bit for bit: sums of small whole numbers are exact in single precision in any order, and the
// squares are added up in keypad order, several records side by side so that one addition need not wait for
// the other.
#pragma once

#include <optional>
#include <span>
#include <vector>

namespace qrn {

struct RecordScore {
  bool live = false;     // LoadVotes finds votes
  bool postal = false;   // LoadPostalVotes finds votes
  int participants = 0;  // votes that count
  int abstains = 0;      // keypads that count and have abstained, where the exercise allows that
  float average = 0;     // 0 without participants
  float squares = 0;     // of the differences from the average, added up
  int keypads = 0;       // width of the record
};

// One score per entry of `items` (indices into glo.risks) on `assessment` (1 to 9). `mask` holds a flag per
// keypad position, 1 counts and positions beyond it do not; without a mask everyone counts. Raises
// glo.maxKeypads to the widest record.
std::vector<RecordScore> scoreRecords(int assessment, std::span<const int> items,
                                      const std::vector<int>* mask);

// The mask of the filter in force, wide enough for every answer, with glo.keypadIncluded and the filter's
// caption renewed; none without a filter.
std::optional<std::vector<int>> currentMask();

}  // namespace qrn
