// Any text as the vote records of a slide: the index agrees with the plain scan, the scores from the bytes
// agree with those by way of the keypads, and nothing breaks.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "analysis/filter/filters.h"
#include "core/glo.h"
#include "store/scores/all_scores.h"
#include "store/statistics.h"
#include "store/vote_store.h"
#include "store/votes_rec_conversion.h"

namespace {

using qrn::glo;

void require(bool holds) {
  if (!holds)
    std::abort();
}

void checkIndex(std::string_view first, std::string_view second) {
  qrn::VoteRecordText records;
  records.assign(std::string(first));
  records.append(second);
  for (const char* key : {"1C1", "1C12", "2C1", "-3C1", "0C", "", "1c1", "12345C9"}) {
    const std::string_view found = records.lastLine(key);
    const std::string_view plain = qrn::VoteRecordText::lastLineByScan(records.text(), key);
    require(found.data() == plain.data() && found.size() == plain.size());
  }
}

void prepare(std::string_view votes, std::string_view postal, int mode) {
  glo = qrn::Glo();
  glo.maxKeypads = 4;
  glo.opt_abstain = true;
  glo.CheckUseLivePostal = mode;
  glo.scaleLabels[0].assign(6, "");
  glo.risks.assign(4, qrn::RiskRecord());
  for (int i = 0; i < 3; ++i) glo.risks[static_cast<std::size_t>(i)].sortKey = i;
  glo.voteRecords.assign(std::string(votes));
  glo.postalRecords.assign(std::string(postal));
}

void checkScores() {
  const std::vector<qrn::RecordScore> scores = qrn::refreshScores(1);
  const std::vector<qrn::RiskRecord> direct = glo.risks;
  for (int i = 0; i < 3; ++i) {
    const std::size_t at = static_cast<std::size_t>(i);
    const bool live = qrn::LoadVotes(qrn::voteKey(i, 1)), postal = qrn::LoadPostalVotes(qrn::voteKey(i, 1));
    require(scores[at].live == live && scores[at].postal == postal);
    if (!live && !postal)
      continue;
    qrn::SetStats(i, 0);
    require(direct[at].average[0] == glo.risks[at].average[0]);
    require(direct[at].standardDeviation[0] == glo.risks[at].standardDeviation[0]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::size_t half = text.find('|') == std::string_view::npos ? size : text.find('|');
  const std::string_view first = text.substr(0, half), second = text.substr(half);
  checkIndex(first, second);
  for (int mode = 0; mode < 3; ++mode) {
    prepare(first, second, mode);
    checkScores();
  }
  qrn::LoadSifterSorterData();
  qrn::convertVotesRec(first, "a.mtx");
  std::vector<int> flags(5, -1);
  qrn::applyGroup(flags, first, 1, size % 2 == 0);
  return 0;
}
