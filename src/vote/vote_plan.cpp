#include "vote/vote_plan.h"

#include <algorithm>
#include <map>
#include <utility>

#include "core/edit.h"
#include "core/glo.h"
#include "host/names.h"
#include "store/progress_log.h"

namespace qrn {

namespace {

int voteTypeOf(int assessment) {
  return glo.assessment(assessment).voteType;
}

bool voted(int item, int assessment) {
  return glo.item(item).voted[static_cast<std::size_t>(assessment - 1)];
}

bool onAxes(int assessment) {
  return std::find(glo.matrixAxes.begin(), glo.matrixAxes.end(), assessment - 1) != glo.matrixAxes.end();
}

bool notVoted(const VoteStep& step) {
  const int item = itemOfKey(step.sortKey);
  return item >= 0 && !voted(item, step.assessment);
}

}  // namespace

std::vector<int> listKeys() {
  std::vector<int> keys;
  for (const RiskRecord& risk : glo.risks) keys.push_back(risk.sortKey);
  keys.pop_back();  // of the spare element
  return keys;
}

std::vector<int> assessmentOrder() {
  std::vector<int> order;
  for (int a = 1; a <= kAssessments; ++a)
    if (glo.running(a).active)
      order.push_back(a);
  std::stable_sort(order.begin(), order.end(),
                   [](int a, int b) { return glo.running(a).votingOrder < glo.running(b).votingOrder; });
  return order;
}

std::vector<VoteStep> stepsByItem() {
  std::vector<VoteStep> steps;
  int step = 0;
  for (const int assessment : assessmentOrder()) {
    ++step;
    if (voteTypeOf(assessment) == scaleKind::sifter) {
      steps.push_back({kSifterStep, assessment, step, true});
      continue;
    }
    for (const int key : listKeys()) steps.push_back({key, assessment, step, true});
  }
  return steps;
}

std::vector<VoteStep> stepsByAssessment() {
  std::vector<int> order = assessmentOrder();
  std::stable_partition(order.begin(), order.end(), onAxes);
  std::vector<VoteStep> steps;
  for (const int key : listKeys()) {
    const int item = itemOfKey(key);
    const bool finished = std::all_of(order.begin(), order.end(), [&](int a) { return voted(item, a); });
    int step = 0;
    for (const int assessment : order) steps.push_back({key, assessment, ++step, !finished});
  }
  return steps;
}

void beginProcess(const std::vector<VoteStep>& steps) {
  for (RiskRecord& risk : glo.risks)
    if (std::exchange(risk.newItem, false))
      exerciseHistory().touched();
  for (const VoteStep& step : steps)
    if (const int item = itemOfKey(step.sortKey); item >= 0 && step.taken)
      glo.item(item).voted[static_cast<std::size_t>(step.assessment - 1)] = false;
}

std::size_t resumeStep(std::vector<VoteStep>& steps) {
  for (VoteStep& step : steps) step.taken = step.taken && notVoted(step);
  const auto first =
      std::find_if(steps.begin(), steps.end(), [](const VoteStep& step) { return step.taken; });
  return static_cast<std::size_t>(first - steps.begin());
}

bool canBeVoted(const VoteStep& step) {
  const int item = itemOfKey(step.sortKey);
  return item >= 0 && isVotable(item, step.assessment);
}

std::string whyNothingToVote() {
  if (voteProgress().due > 0)
    return "";
  const auto selected = [](const RiskRecord& item) { return item.voting; };
  std::string why = "no active assessment has a scale of two points or more";
  if (glo.itemCount() <= 0)
    why = "the list has no items";
  else if (std::none_of(glo.risks.begin(), glo.risks.end() - 1, selected))
    why = "none of the " + std::to_string(glo.itemCount()) + " items is selected for voting";
  else if (assessmentOrder().empty())
    why = "no assessment is active";
  return "There is nothing to vote on: " + why;
}

VoteProgress voteProgress() {
  VoteProgress progress;
  for (const VoteStep& step : stepsByItem()) {
    if (!canBeVoted(step))
      continue;
    ++progress.due;
    progress.voted += notVoted(step) ? 0 : 1;
  }
  return progress;
}

int itemOfKey(int sortKey) {
  const auto end = glo.risks.end() - 1;  // the spare element
  const auto found =
      std::find_if(glo.risks.begin(), end, [&](const RiskRecord& risk) { return risk.sortKey == sortKey; });
  return found == end ? -1 : static_cast<int>(found - glo.risks.begin());
}

void loadVotePlan() {
  for (std::size_t a = 0; a < glo.assessmentVotePlan.size(); ++a) {
    const int next = std::exchange(glo.nextRounds[a], -1);
    glo.assessmentVotePlan[a] = next == -1 ? glo.defaultRounds[a] : next;
  }
}

void restoreListOrder(const std::vector<int>& keys) {
  if (listKeys() == keys)
    return;
  std::map<int, std::size_t> placeOf;
  for (const int key : keys) placeOf.emplace(key, placeOf.size());
  const auto place = [&](const RiskRecord& risk) {
    const auto it = placeOf.find(risk.sortKey);
    return it == placeOf.end() ? keys.size() : it->second;
  };
  std::ranges::stable_sort(glo.risks.begin(), glo.risks.end() - 1, {}, place);
}

}  // namespace qrn
