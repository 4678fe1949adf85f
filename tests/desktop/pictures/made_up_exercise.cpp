#include "desktop/pictures/made_up_exercise.h"

#include <array>
#include <cstdint>
#include <sstream>
#include <string>

#include "core/glo.h"
#include "core/item_label.h"
#include "core/model.h"

namespace qrn::pictures {

namespace {

constexpr std::array<const char*, 26> kItems{"Benches along the quay",
                                             "A ferry to the north bank every quarter of an hour",
                                             "Night lights on the cranes",
                                             "Dredge the inner basin to six metres",
                                             "A market hall in the old warehouse",
                                             "Cycle path over the lock gates",
                                             "Moorings for visiting yachts",
                                             "Plant the embankment with trees that stand salt water and wind",
                                             "Move the bus terminal to the pier",
                                             "Public bath in the dry dock",
                                             "Workshops to let to boat builders",
                                             "Close the front to cars on Sundays",
                                             "A lift to the upper town",
                                             "Warm rooms for winter swimmers",
                                             "Sort the waste of the fish market on the spot",
                                             "A stage that floats",
                                             "Repair the old slipway",
                                             "Charging points for boats and cars",
                                             "Open the lighthouse to visitors",
                                             "More police at night",
                                             "A school of sailing for everyone",
                                             "Toilets that stay open",
                                             "Raise the quay by half a metre before the next high water",
                                             "A tram from the station",
                                             "Let artists paint the silos",
                                             "Water taxis between the basins"};
constexpr std::array<const char*, 4> kTitles{"Value to the town", "Effort", "Urgency",
                                             "Support in the council"};
constexpr std::array<const char*, 10> kScale{"None at all", "Very low",      "Low",  "Rather low",
                                             "Middling",    "Rather high",   "High", "Very high",
                                             "Extreme",     "Beyond compare"};

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
  constexpr std::array<const char*, 12> kTexts{"沿码头设置长椅，供行人休息",
                                               "我们应该先清理内港，还是先修建防波堤？请每一位参加者投票。",
                                               "岸壁に沿ってベンチを置き、夜はクレーンを照らす",
                                               "부두를 따라 벤치를 놓고 나무를 심는다",
                                               "วางม้านั่งตามแนวท่าเรือและปลูกต้นไม้ที่ทนน้ำเค็มและลมแรง",
                                               "घाट के किनारे बेंच और नमक सहने वाले पेड़",
                                               "مقاعد على طول رصيف الميناء",
                                               "ספסלים לאורך הרציף",
                                               "A ferry ⛴️ every quarter of an hour 👍🏽",
                                               "Σκάλες και καθίσματα στην προκυμαία",
                                               "Скамейки вдоль набережной",
                                               "Ghế dài dọc bến cảng"};
  for (int i = 0; i < glo.itemCount(); ++i)
    glo.item(i).text = kTexts[static_cast<std::size_t>(i) % kTexts.size()];
  glo.assessmentTitles[0] = "对城镇的价值 คุณค่า मूल्य";
  glo.assessmentTitles[1] = "الجهد מאמץ";
  glo.scaleLabels[0] = {"很低", "ต่ำ", "मध्यम", "مرتفع", "גבוה מאוד", ""};
}

}  // namespace qrn::pictures
