// What is scored straight from the bytes of the records is what the keypads would have given, on random
// texts.
#include <random>

#include "store/scores/all_scores.h"
#include "store/statistics.h"
#include "store/vote_store.h"
#include "support/run_case.h"

namespace qrn::test {
namespace {

std::string piecesOf(std::mt19937& random, const std::vector<std::string>& pieces, unsigned long most) {
  std::string text;
  for (unsigned long i = random() % most; i > 0; --i) text += pieces[random() % pieces.size()];
  return text;
}

TEST(RandomVotes, TheIndexAgreesWithThePlainScan) {
  const std::vector<std::string> pieces{",",      "1C1",   "12C3", "1c10", "-5C2", "\r\n",
                                        "\r\n",   "X;-;",  "5;",   "\"",   "C",    "[SSD]",
                                        "0012C3", "1C123", ",,",   "\n",   "\r",   "12345678901234C1"};
  std::mt19937 random(11);
  for (int round = 0; round < 3000; ++round) {
    VoteRecordText records;
    records.assign(piecesOf(random, pieces, 40));
    for (unsigned long i = random() % 4; i > 0; --i) records.append(piecesOf(random, pieces, 40));
    for (const char* key : {"1C1", "1C10", "1C12", "12C3", "-5C2", "0012C3", "1C123", "5C2", "C", "", "12C",
                            "12345678901234C1", "2C3", "1c1"}) {
      const std::string_view plain = VoteRecordText::lastLineByScan(records.text(), key);
      const std::string_view found = records.lastLine(key);
      ASSERT_EQ(found.data(), plain.data()) << key << " in:\n" << records.text();
      ASSERT_EQ(found, plain) << key << " in:\n" << records.text();
    }
  }
}

std::string randomRecord(std::mt19937& random, const std::string& sortKey) {
  static const char* const kTokens[] = {"1", "2", "3", "4",  "5", "0", "9",
                                        "X", "-", "A", "12", "b", "",  "\"3\""};
  const unsigned long odd = random() % 3;  // tokens: none, a few, many
  const bool old = random() % 8 == 0;
  std::string line = "d,t,";
  const unsigned long keypads = random() % 20 == 0 ? 0 : 1 + random() % 300;
  for (unsigned long k = 0; k < keypads; ++k)
    line += std::string(kTokens[random() % (odd == 2 || (odd == 1 && random() % 40 == 0) ? 14 : 10)]) +
            (old ? "" : ";");
  return line + "," + sortKey + "C1" + (random() % 4 == 0 ? ",,,35X-A0" : "") + "\r\n";
}

class RandomScores : public RunCase {
 protected:
  // A text of votes and all that decides which of them count.
  void draw(int round) {
    std::vector<std::string> keys;
    for (int i = 1; i <= 1 + round % 19; ++i) keys.push_back(std::to_string(i));
    items(keys);
    std::string text;
    for (const std::string& key : keys)
      if (random() % 6 != 0)
        text += randomRecord(random, key);
    store(text);
    slideTags().values["QRNPOSTALVOTES"] = round % 3 == 0 ? "2C1;P1;4;-;X;250;A\r\n5C1;0" : "";
    glo.postalRecords.forget();
    glo.CheckUseLivePostal = round % 4 % 3;
    glo.opt_abstain = round % 2 == 0;
    glo.demographicQuestions = {{1, 1, "", "", "d,t,1;2;1;1;1;2;1;1;2;2;1;1;", 1, true, {{1, "A", true}}}};
    glo.demographicFilterOn = round % 5 == 0;
    for (RiskRecord& risk : glo.risks) risk.diversity[0] = 7;
    glo.maxKeypads = 6;
  }
  // The item at hand, loaded into the keypads, against what came straight from the bytes.
  void compare(const RecordScore& score, const RiskRecord& direct, int item) {
    RiskRecord& plain = glo.risks[static_cast<std::size_t>(item)];
    const bool live = LoadVotes(voteKey(item, 1)), postal = LoadPostalVotes(voteKey(item, 1));
    EXPECT_EQ(score.live, live);
    EXPECT_EQ(score.postal, postal);
    EXPECT_EQ(direct.postalData[0], postal);
    if (live || postal)
      SetStats(item, 0);
    else
      plain.diversity[0] = direct.diversity[0];
    // Bit for bit: no tolerance.
    EXPECT_EQ(direct.counted[0], plain.counted[0]);
    EXPECT_EQ(direct.average[0], plain.average[0]);
    EXPECT_EQ(direct.standardDeviation[0], plain.standardDeviation[0]);
    EXPECT_EQ(direct.diversity[0], plain.diversity[0]);
    if (direct.average[0] != 0) {
      EXPECT_EQ(score.abstains, glo.abstainCount);
    }
  }
  std::mt19937 random{5};
};

TEST_F(RandomScores, FromTheBytesAreThoseOfLoadVotesAndSetStats) {
  for (int round = 0; round < 60; ++round) {
    draw(round);
    const std::vector<RiskRecord> before = glo.risks;
    const std::vector<RecordScore> scores = refreshScores(1);
    ASSERT_EQ(scores.size() + 1, before.size());
    const std::vector<RiskRecord> direct = glo.risks;
    const int widest = glo.maxKeypads;
    glo.risks = before;
    glo.maxKeypads = 6;
    for (std::size_t i = 0; i < scores.size(); ++i) compare(scores[i], direct[i], static_cast<int>(i));
    ASSERT_EQ(widest, glo.maxKeypads);
    ASSERT_FALSE(HasFailure()) << slideTags().values["QRNVOTES"];
  }
}

TEST_F(RandomScores, OfAVeryWideVoteAreTheSameEitherWay) {
  std::string votes;
  for (int k = 0; k < 70'003; ++k) votes += k % 7 == 0 ? "9;" : "A;";
  store("d,t," + votes + ",10C1\r\n");
  const std::vector<RecordScore> scores = refreshScores(1);
  const RiskRecord direct = glo.risks[0];
  EXPECT_GT(direct.average[0], 9.8F);
  compare(scores[0], direct, 0);
}

}  // namespace
}  // namespace qrn::test
