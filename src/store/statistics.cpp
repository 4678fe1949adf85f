#include "store/statistics.h"

#include <cmath>
#include <cstddef>

#include "base/errors.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/forms.h"
#include "host/host.h"
#include "host/names.h"
#include "store/counted_votes.h"

namespace qrn {

namespace {

constexpr int kObjectMissing = 91, kDivisionByZero = 11, kOutOfRange = 9;

void readTextBoxes(StatsTarget& target, const std::string& form) {
  const auto* running = dynamic_cast<const HasVoteBoxes*>(host::host().forms->find(form));
  if (running == nullptr)
    return;
  try {
    const VoteFormBoxes boxes = running->boxes();
    target.assessment = static_cast<int>(qrnVal(boxes.txt_AssNum));
    target.risk = static_cast<int>(qrnVal(boxes.txt_RiskNum));
  } catch (const HostError& error) {
    if (error.number() != kObjectMissing)
      throw;
  }
}

void checkTarget(const StatsTarget& target, int round) {
  if (target.risk < 0 || target.risk >= glo.itemCount() || target.assessment < 0 ||
      target.assessment >= kSlots || round >= kRounds)
    throw HostError(Fault::program, kOutOfRange, "Subscript out of range");
}

void setCurrentResult(const StatsTarget& target, const CountedVotes& votes, float average) {
  float squares = 0;
  if (average != 0) {
    glo.abstainCount = votes.abstains;
    for (const float vote : votes.values) squares += (vote - average) * (vote - average);
  }
  storeStatistics(target.risk, target.assessment, static_cast<int>(votes.values.size()), average, squares);
}

}  // namespace

StatsTarget SetStats(int risk, int assessment, const std::string& form, int round, const std::string& label) {
  StatsTarget target{risk, assessment};
  trapErrors("xyVoteModule", "SetStats", [&] {
    if (form == formName::runtime)
      readTextBoxes(target, form);
    checkTarget(target, round);
    RiskRecord& item = glo.item(target.risk);
    const std::size_t a = static_cast<std::size_t>(target.assessment);
    if (round == -1 && glo.assessments[a].voteType != scaleKind::scalar) {
      clearScore(item, a);
      return;
    }
    const CountedVotes votes = countedVotes();
    const int count = static_cast<int>(votes.values.size());
    float sum = 0;
    for (const float vote : votes.values) sum += vote;
    const float average = count == 0 ? 0 : sum / static_cast<float>(count);
    if (round == -1)
      setCurrentResult(target, votes, average);
    else
      item.rounds[a][static_cast<std::size_t>(round)] = {count == 0 ? "" : label, average, count};
  });
  return target;
}

void clearScore(RiskRecord& item, std::size_t a) {
  item.average[a] = item.standardDeviation[a] = item.diversity[a] = 0;
  item.counted[a] = 0;
}

void storeStatistics(int risk, int assessment, int participants, float average, float squares) {
  RiskRecord& item = glo.item(risk);
  const std::size_t a = static_cast<std::size_t>(assessment);
  item.average[a] = average;
  item.counted[a] = participants;
  if (average == 0) {
    item.standardDeviation[a] = 0;
    return;
  }
  item.standardDeviation[a] = std::sqrt(squares / static_cast<float>(participants));
  const float n = static_cast<float>(criteriaCount(assessment) + 1);
  const float fromMiddle = n - (n + 1) / 2;
  const float largest = std::sqrt(fromMiddle * fromMiddle);
  if (largest == 0)
    throw HostError(Fault::badData, kDivisionByZero, "Division by zero");
  item.diversity[a] = item.standardDeviation[a] / largest;
}

int criteriaCount(int a) {
  return a >= 0 && a < kAssessments ? glo.labelCount(a) - 1 : 0;
}

}  // namespace qrn
