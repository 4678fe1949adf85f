#include "store/statistics.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/errors.h"
#include "store/vote_line.h"

namespace qrn {

std::function<VoteFormBoxes()> xyVoteRuntimeBoxes;

namespace {

constexpr int kObjectMissing = 91, kDivisionByZero = 11, kOutOfRange = 9;

bool countsLive() {
  return glo.CheckUseLivePostal == 0 || glo.CheckUseLivePostal == 2;
}

bool countsPostal() {
  return glo.CheckUseLivePostal == 1 || glo.CheckUseLivePostal == 2;
}

void readTextBoxes(StatsTarget& target) {
  if (!xyVoteRuntimeBoxes)
    return;
  try {
    const VoteFormBoxes boxes = xyVoteRuntimeBoxes();
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

// The votes that the exercise counts, live before postal; the spare top elements are not looked at.
std::vector<float> countedVotes() {
  std::vector<float> values;
  if (countsLive())
    for (std::size_t i = 0; i + 1 < glo.liveVotes.size(); ++i)
      if (const double value = qrnVal(glo.liveVotes[i]); value >= 0)
        values.push_back(static_cast<float>(value));
  if (countsPostal())
    for (std::size_t i = 0; i + 1 < glo.postalVotes.size(); ++i)
      if (glo.postalVotes[i] >= 0)
        values.push_back(static_cast<float>(glo.postalVotes[i]));
  return values;
}

int countAbstains() {
  int count = 0;
  if (countsLive() && glo.opt_abstain)
    for (std::size_t i = 0; i + 1 < glo.liveVotes.size(); ++i)
      count += qrnVal(glo.liveVotes[i]) == kAbstained ? 1 : 0;
  return count;
}

void setCurrentResult(const StatsTarget& target, const std::vector<float>& votes, float average) {
  float squares = 0;
  if (average != 0) {
    glo.abstainCount = countAbstains();
    for (const float vote : votes) squares += (vote - average) * (vote - average);
  }
  storeStatistics(target.risk, target.assessment, static_cast<int>(votes.size()), average, squares);
}

}  // namespace

StatsTarget SetStats(int risk, int assessment, const std::string& form, int round, const std::string& label) {
  StatsTarget target{risk, assessment};
  trapErrors("xyVoteModule", "SetStats", [&] {
    if (form == "xyVoteRuntime")
      readTextBoxes(target);
    checkTarget(target, round);
    RiskRecord& item = glo.risks[static_cast<std::size_t>(target.risk)];
    const std::size_t a = static_cast<std::size_t>(target.assessment);
    if (round == -1 && glo.assessments[a].voteType != 1) {
      clearScore(item, a);
      return;
    }
    const std::vector<float> votes = countedVotes();
    float sum = 0;
    for (const float vote : votes) sum += vote;
    const float average = votes.empty() ? 0 : sum / static_cast<float>(votes.size());
    if (round == -1)
      setCurrentResult(target, votes, average);
    else
      item.rounds[a][static_cast<std::size_t>(round)] = {votes.empty() ? "" : label, average,
                                                         static_cast<int>(votes.size())};
  });
  return target;
}

void clearScore(RiskRecord& item, std::size_t a) {
  item.average[a] = item.standardDeviation[a] = item.diversity[a] = 0;
  item.counted[a] = 0;
}

void storeStatistics(int risk, int assessment, int participants, float average, float squares) {
  RiskRecord& item = glo.risks[static_cast<std::size_t>(risk)];
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
