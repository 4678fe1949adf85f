#include "store/scores/results.h"

#include <cstddef>
#include <string_view>

#include "core/glo.h"
#include "core/item_label.h"
#include "store/record_statistics.h"
#include "store/scores/all_scores.h"

namespace qrn {

namespace {

ItemResult resultOf(RiskRecord& item) {
  ItemResult result;
  result.identifier = itemIdentifier(item.ID);
  result.text = item.text;
  result.id = item.ID;
  result.sortKey = item.sortKey;
  result.voting = item.voting;
  for (std::size_t slot = 0; slot < kSlots; ++slot) {
    if (!item.hasScore(slot))
      continue;
    result.average[slot] = item.average[slot];
    if (slot >= kAssessments)
      continue;  // a multi-plot has an average alone
    result.standardDeviation[slot] = item.standardDeviation[slot];
    result.diversity[slot] = item.diversity[slot];
  }
  return result;
}

}  // namespace

std::vector<ItemResult> results() {
  std::array<std::vector<RecordScore>, kAssessments> scores;
  std::string missing = kDataMessage;
  for (std::size_t a = 0; a < kAssessments; ++a) {
    scores[a] = refreshScores(static_cast<int>(a) + 1);
    if (glo.assessmentInfo[a].active)
      missing += glo.dataMessage.substr(std::string_view(kDataMessage).size());
  }
  glo.dataMessage = missing;
  std::vector<ItemResult> table;
  for (int i = 0; i < glo.itemCount(); ++i) {
    ItemResult& result = table.emplace_back(resultOf(glo.item(i)));
    for (std::size_t a = 0; a < kAssessments; ++a) {
      if (static_cast<std::size_t>(i) >= scores[a].size())
        continue;
      result.participants[a] = scores[a][static_cast<std::size_t>(i)].participants;
      result.abstains[a] = scores[a][static_cast<std::size_t>(i)].abstains;
    }
  }
  return table;
}

}  // namespace qrn
