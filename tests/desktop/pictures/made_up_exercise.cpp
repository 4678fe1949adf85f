#include "desktop/pictures/made_up_exercise.h"

#include <cstdint>
#include <sstream>
#include <string>

#include "core/glo.h"
#include "core/item_label.h"
#include "core/model.h"

namespace qrn::pictures {

namespace {

const std::vector<std::string> kItems = madeUp("items"), kTitles = madeUp("assessments"),
                               kScale = madeUp("scale");

// The same numbers in every run.
class Dice {
 public:
  int upTo(int top) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(top)) + 1;
  }

 private:
  std::uint64_t state_ = 2026;
};

void addItems(int items) {
  glo.risks.assign(static_cast<std::size_t>(items) + 1, RiskRecord{});
  for (int i = 0; i < items; ++i) {
    RiskRecord& risk = glo.item(i);
    risk.ID = risk.sortKey = i;
    risk.text = kItems[static_cast<std::size_t>(i) % kItems.size()];
    risk.identifier = itemIdentifier(i);
    risk.voting = true;
    risk.active.fill(true);
  }
}

void addAssessments(int points) {
  for (std::size_t a = 0; a < kAssessments; ++a) {
    glo.assessmentInfo[a].active = a < kTitles.size();
    if (a >= kTitles.size())
      continue;
    glo.assessmentTitles[a] = kTitles[a];
    const std::size_t skip = kScale.size() > static_cast<std::size_t>(points) ? 1 : 0;
    glo.scaleLabels[a].clear();
    for (std::size_t i = 0; i < static_cast<std::size_t>(points); ++i)
      glo.scaleLabels[a].emplace_back(kScale[(i + skip) % kScale.size()]);
    glo.scaleLabels[a].emplace_back();
    glo.assessments[a].scalePointCount = points;
  }
  glo.matrixAxes = {0, 1};
  glo.currentPlotPairings = {1, 2, -1, -1, -1, -1, -1, -1};
}

void addVotes(int items, int points, int keypads) {
  Dice dice;
  std::string records;
  for (int item = 0; item < items; ++item)
    for (std::size_t a = 1; a <= kTitles.size(); ++a) {
      const int middle = dice.upTo(points);
      std::string votes;
      for (int k = 0; k < keypads; ++k)
        votes += std::to_string(std::min(std::min(points, 9), std::max(1, middle + dice.upTo(3) - 2))) + ";";
      records += "14/03/2026,09:30:00," + votes + "," + recordKey(item, static_cast<int>(a)) + "\r\n";
    }
  glo.voteRecords.assign(records);
  glo.postalRecords.assign("");
}

}  // namespace

void keepVotes(int items) {
  std::string kept;
  std::istringstream records(glo.voteRecords.text());
  for (std::string record; std::getline(records, record);) {
    const std::string key = record.substr(record.rfind(',') + 1);
    if (std::stoi(key) < items)
      kept += record + "\n";
  }
  glo.voteRecords.assign(kept);
}

void fillExercise(MadeUpDeck& deck, int items, int points, int keypads) {
  glo = Glo{};
  glo.oPresentation = &deck;
  glo.oVoteSlide = &deck.Slides(3);
  initXYVote();
  glo.listTitle = "Renewing the harbour front";
  addItems(items);
  addAssessments(points);
  addVotes(items, points, keypads);
  glo.keypadsNotVotedHi = keypads;
  glo.liveVotes.assign(static_cast<std::size_t>(keypads) + 1, "-100");
  for (int k = 0; k < keypads; ++k)
    glo.liveVotes[static_cast<std::size_t>(k)] = std::to_string(1 + (k * k) % std::min(points, 9));
}

void translateExercise() {
  const std::vector<std::string> texts = madeUp("items in many scripts");
  for (int i = 0; i < glo.itemCount(); ++i)
    glo.item(i).text = texts[static_cast<std::size_t>(i) % texts.size()];
  glo.assessmentTitles[0] = "对城镇的价值 คุณค่า मूल्य";
  glo.assessmentTitles[1] = "الجهد מאמץ";
  glo.scaleLabels[0] = {"很低", "ต่ำ", "मध्यम", "مرتفع", "גבוה מאוד", ""};
}

}  // namespace qrn::pictures
