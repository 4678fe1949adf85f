// Everything that a table of results shows, item by item in the order of the list.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/records.h"

namespace qrn {

struct ItemResult {
  std::string identifier, text;
  int id = 0, sortKey = 0;
  bool voting = false;
  std::array<std::optional<float>, kSlots> average{}, standardDeviation{},
      diversity{};                               // none without a score
  std::array<int, kAssessments> participants{};  // votes counted, live and postal by the exercise's choice
  std::array<int, kAssessments> abstains{};      // 0 where abstaining is not allowed
};

// Refreshes the scores, then reads them; glo.dataMessage lists what has no votes in any active assessment.
// Slots 9 and 10 are the multi-plots as last computed.
std::vector<ItemResult> results();

}  // namespace qrn
