#include "desktop/pictures/made_up_exercise.h"

#include <cstdint>
#include <sstream>
#include <string>

#include "core/glo.h"
#include "core/model.h"
#include "support/run_case.h"

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
  test::addItems(items);
  for (int i = 0; i < items; ++i) glo.item(i).text = kItems[static_cast<std::size_t>(i) % kItems.size()];
}

void addAssessments(int points) {
  for (auto& info : glo.assessmentInfo) info.active = false;
  const std::size_t skip = kScale.size() > static_cast<std::size_t>(points) ? 1 : 0;
  for (std::size_t a = 0; a < kTitles.size(); ++a) {
    test::addScale(static_cast<int>(a) + 1, kTitles[a], points);
    for (std::size_t i = 0; i < static_cast<std::size_t>(points); ++i)
      glo.scaleLabels[a][i] = kScale[(i + skip) % kScale.size()];
  }
  glo.matrixAxes = {0, 1};
  glo.currentPlotPairings = {1, 2, -1, -1, -1, -1, -1, -1};
}

void addVotes(int items, int points, int keypads) {
  Dice dice;
  glo.voteRecords.assign("");
  glo.postalRecords.assign("");
  for (int item = 0; item < items; ++item)
    for (int a = 1; a <= static_cast<int>(kTitles.size()); ++a) {
      const int middle = dice.upTo(points);
      std::string votes;
      for (int k = 0; k < keypads; ++k)
        votes += std::to_string(std::min(std::min(points, 9), std::max(1, middle + dice.upTo(3) - 2))) + ";";
      test::addVote(item, a, votes);
    }
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
