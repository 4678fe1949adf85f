#include "store/scores/all_scores.h"

#include <exception>
#include <numeric>
#include <optional>

#include "analysis/filter/filters.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/names.h"
#include "store/record_statistics.h"
#include "store/statistics.h"
#include "store/vote_store.h"

namespace qrn {

namespace {

constexpr std::size_t kMostGroups = 12;

std::vector<int> allItems() {
  std::vector<int> items(static_cast<std::size_t>(glo.itemCount() < 0 ? 0 : glo.itemCount()));
  std::iota(items.begin(), items.end(), 0);
  return items;
}

void storeScore(int risk, std::size_t a, const RecordScore& score) {
  RiskRecord& item = glo.item(risk);
  item.active[a] = item.active[a] || score.live;
  item.postalData[a] = score.postal;
  if (glo.assessments[a].voteType != scaleKind::scalar) {
    if (score.live || score.postal)
      clearScore(item, a);
    return;  // without a record of this kind an average of another kind stays: it is made elsewhere
  }
  if (score.average != 0)
    glo.abstainCount = score.abstains;
  storeStatistics(risk, static_cast<int>(a), score.participants, score.average, score.squares);
}

const DemographicInfo* defaultQuestion() {
  const DemographicInfo* chosen = nullptr;
  for (const DemographicInfo& question : glo.demographicQuestions)
    if (question.isDefault)
      chosen = &question;
  return chosen;
}

}  // namespace

void tellIfMissing(std::string& message, const RiskRecord& item, int assessment) {
  if (!item.hasScore(static_cast<std::size_t>(assessment - 1)))
    message += "\r\n" + item.text + ", assessment " + std::to_string(assessment);
}

std::vector<RecordScore> refreshScores(int assessment) {
  std::vector<RecordScore> scores;
  if (assessment < 1 || assessment > kAssessments)
    return scores;
  const std::size_t a = static_cast<std::size_t>(assessment - 1);
  std::exception_ptr failure;
  trapErrors("xyVoteModule", "refreshScores", [&] {
    glo.dataMessage = kDataMessage;
    const std::optional<std::vector<int>> mask = currentMask();
    scores = scoreRecords(assessment, allItems(), mask ? &*mask : nullptr);
    for (std::size_t i = 0; i < scores.size(); ++i) {
      try {
        storeScore(static_cast<int>(i), a, scores[i]);
      } catch (const std::exception&) {
        failure = std::current_exception();  // told once, not once an item
      }
      tellIfMissing(glo.dataMessage, glo.risks[i], assessment);
    }
    if (failure)
      std::rethrow_exception(failure);
  });
  return scores;
}

void GetAllScores() {
  LoadSifterSorterData();
  for (const bool active : {false, true})  // what is told as missing is that of the active ones
    for (int a = 0; a < kAssessments; ++a)
      if (glo.assessmentInfo[static_cast<std::size_t>(a)].active == active)
        refreshScores(a + 1);
}

std::vector<GroupScore> demographicGroupScores(int risk, int assessment) {
  std::vector<GroupScore> groups;
  const DemographicInfo* question = defaultQuestion();
  if (question == nullptr || glo.demographicFilterOn || risk < 0 || risk >= glo.itemCount() ||
      assessment < 1 || assessment > kAssessments)
    return groups;
  for (const DemographicInfoGroup& group : question->groups) {
    if (groups.size() == kMostGroups)
      break;
    std::vector<int> mask(roomForAnswers(*question), -1);
    applyGroup(mask, question->votes, group.optionNumber, false);
    const int item[] = {risk};
    const RecordScore score = scoreRecords(assessment, item, &mask).front();
    groups.push_back({group.groupName, score.average, score.participants});
  }
  return groups;
}

}  // namespace qrn
