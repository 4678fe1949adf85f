#include "store/statistics.h"

#include <cmath>
#include <random>

#include "store/scores/all_scores.h"
#include "store/scores/results.h"
#include "store/vote_fixture.h"
#include "store/vote_store.h"

namespace qrn::test {
namespace {

class StatisticsTest : public VoteTest {
 protected:
  StatisticsTest() { addItems({12, 7}); }
  ~StatisticsTest() override { xyVoteRuntimeBoxes = nullptr; }
  RiskRecord& item() { return glo.risks[0]; }
  std::string errorLog() { return world.files.files["/appdata/quorin/Err.log"]; }
};

TEST_F(StatisticsTest, FiguresOfOneVote) {
  struct Case {
    std::vector<std::string> live;
    std::vector<int> postal;
    int mode;
    float average, deviation, diversity;
    int abstains, counted;
  };
  const Case cases[] = {
      {{"1", "1", "5"}, {}, 0, 7.0F / 3, 1.8856F, 0.9428F, 0, 3},
      {{"3", "3"}, {5, 5}, 0, 3, 0, 0, 0, 2},
      {{"3", "3", "4"}, {5, 5, -2}, 1, 5, 0, 0, 0, 2},
      {{"3", "-2"}, {5, -100}, 2, 4, 1, 0.5F, 1, 2},
      {{"10", "0", "-2", "-100", "-1"}, {}, 0, 5, 5, 2.5F, 1, 2},
      {{"-100", "-100"}, {}, 0, 0, 0, 7, -1, 0},  // nothing counts: diversity and abstains stay as they were
      {{"0", "0", "-2"}, {}, 0, 0, 0, 7, -1, 2},
  };
  glo.opt_abstain = true;
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    setVotes(c.live);
    glo.postalVotes = c.postal;
    glo.postalVotes.push_back(0);
    glo.CheckUseLivePostal = c.mode;
    item().diversity[0] = 7;
    glo.abstainCount = -1;
    SetStats(0, 0);
    EXPECT_FLOAT_EQ(item().average[0], c.average);
    EXPECT_NEAR(item().standardDeviation[0], c.deviation, 5e-5);
    EXPECT_NEAR(item().diversity[0], c.diversity, 5e-5);
    EXPECT_EQ(glo.abstainCount, c.abstains);
    EXPECT_EQ(item().counted[0], c.counted);
  }
}

TEST_F(StatisticsTest, ARoundKeepsItsAverageAndLabelAlone) {
  setVotes({"2", "4"});
  SetStats(0, 3, "", 2, "before lunch");
  EXPECT_EQ(item().rounds[3][2], (RoundRecord{"before lunch", 3, 2}));
  EXPECT_EQ(item().average[3], 0);
  setVotes({"-100"});
  SetStats(0, 3, "", 2, "after lunch");
  EXPECT_EQ(item().rounds[3][2], RoundRecord());
}

TEST_F(StatisticsTest, OtherVoteTypesScoreNothing) {
  glo.assessments[0].voteType = 3;
  item().average[0] = item().standardDeviation[0] = item().diversity[0] = 7;
  item().counted[0] = 7;
  setVotes({"2", "4"});
  SetStats(0, 0);
  EXPECT_EQ(item().average[0] + item().standardDeviation[0] + item().diversity[0], 0);
  EXPECT_FALSE(item().hasScore(0));
}

TEST_F(StatisticsTest, TheRunningFormNamesItemAndAssessment) {
  setVotes({"4"});
  SetStats(0, 0, "xyVoteRuntime");  // no form: the arguments count
  EXPECT_EQ(item().average[0], 4);
  xyVoteRuntimeBoxes = [] { return VoteFormBoxes{"1", " 2 "}; };
  SetStats(0, 0, "xyVoteRuntime");
  EXPECT_EQ(glo.risks[1].average[2], 4);
  xyVoteRuntimeBoxes = []() -> VoteFormBoxes { throw HostError(Fault::program, 91, "gone"); };
  SetStats(0, 1, "xyVoteRuntime");
  EXPECT_EQ(item().average[1], 4);
  EXPECT_EQ(errorLog(), "");
  xyVoteRuntimeBoxes = []() -> VoteFormBoxes { throw HostError(Fault::program, 13, "Type mismatch"); };
  SetStats(0, 3, "xyVoteRuntime");
  EXPECT_EQ(item().average[3], 0);
  EXPECT_NE(errorLog().find("Type mismatch"), std::string::npos);
}

TEST_F(StatisticsTest, AScaleOfOnePointDividesByZero) {
  glo.scaleLabels[0].assign(2, "");
  setVotes({"1", "3"});
  item().diversity[0] = 7;
  SetStats(0, 0);
  EXPECT_EQ(item().standardDeviation[0], 1);
  EXPECT_EQ(item().diversity[0], 7);
  EXPECT_NE(errorLog().find("Number: 11"), std::string::npos);
  EXPECT_NE(errorLog().find("Procedure: SetStats"), std::string::npos);
  SetStats(2, 0);  // the spare element is no item
  EXPECT_NE(errorLog().find("Number: 9"), std::string::npos);
}

// Straight from the bytes and by way of the keypads
// ---------------------------------------------------------------------------------------------------------

std::string randomRecord(std::mt19937& random, int sortKey) {
  static const char* const kTokens[] = {"1", "2", "3", "4",  "5", "0", "9",
                                        "X", "-", "A", "12", "b", "",  "\"3\""};
  const unsigned long odd = random() % 3;  // tokens: none, a few, many
  const bool old = random() % 8 == 0;
  std::string line = "d,t,";
  const unsigned long keypads = random() % 20 == 0 ? 0 : 1 + random() % 300;
  for (unsigned long k = 0; k < keypads; ++k)
    line += std::string(kTokens[random() % (odd == 2 || (odd == 1 && random() % 40 == 0) ? 14 : 10)]) +
            (old ? "" : ";");
  line += "," + std::to_string(sortKey) + "C1";
  if (random() % 4 == 0)
    line += ",,,35X-A0";
  return line + "\r\n";
}

TEST_F(StatisticsTest, ScoresFromTheBytesAreThoseOfLoadVotesAndSetStats) {
  std::mt19937 random(5);
  for (int round = 0; round < 60; ++round) {
    std::vector<int> keys;
    std::string text;
    for (int i = 1; i <= 1 + round % 19; ++i) keys.push_back(i);
    addItems(keys);
    for (const int key : keys)
      if (random() % 6 != 0)
        text += randomRecord(random, key);
    store(text);
    slide.stubborn.values["QRNPOSTALVOTES"] = round % 3 == 0 ? "2C1;P1;4;-;X;250;A\r\n5C1;0" : "";
    glo.postalRecords.forget();
    glo.CheckUseLivePostal = round % 4 % 3;
    glo.opt_abstain = round % 2 == 0;
    glo.demographicQuestions = {{1, 1, "", "", "d,t,1;2;1;1;1;2;1;1;2;2;1;1;", 1, true, {{1, "A", true}}}};
    glo.demographicFilterOn = round % 5 == 0;
    for (RiskRecord& risk : glo.risks) risk.diversity[0] = 7;
    const std::vector<RiskRecord> before = glo.risks;
    glo.maxKeypads = 6;
    const std::vector<RecordScore> scores = refreshScores(1);
    ASSERT_EQ(scores.size(), keys.size());
    const std::vector<RiskRecord> direct = glo.risks;
    const int widest = glo.maxKeypads;
    glo.risks = before;
    glo.maxKeypads = 6;
    for (int i = 0; i < glo.itemCount(); ++i) {
      const std::size_t at = static_cast<std::size_t>(i);
      const bool live = LoadVotes(voteKey(i, 1)), postal = LoadPostalVotes(voteKey(i, 1));
      EXPECT_EQ(scores[at].live, live);
      EXPECT_EQ(scores[at].postal, postal);
      EXPECT_EQ(direct[at].postalData[0], postal);
      if (!live && !postal) {
        EXPECT_EQ(direct[at].average[0], 0);
        EXPECT_FALSE(direct[at].hasScore(0));
        continue;
      }
      SetStats(i, 0);
      EXPECT_EQ(direct[at].counted[0], glo.risks[at].counted[0]) << text;
      // Bit for bit: no tolerance.
      EXPECT_EQ(direct[at].average[0], glo.risks[at].average[0]) << text;
      EXPECT_EQ(direct[at].standardDeviation[0], glo.risks[at].standardDeviation[0]) << text;
      EXPECT_EQ(direct[at].diversity[0], glo.risks[at].diversity[0]) << text;
      if (direct[at].average[0] != 0) {
        EXPECT_EQ(scores[at].abstains, glo.abstainCount) << text;
      }
    }
    EXPECT_EQ(widest, glo.maxKeypads);
  }
}

TEST_F(StatisticsTest, AVeryWideVoteScoresTheSameEitherWay) {
  std::string votes;
  for (int k = 0; k < 70'003; ++k) votes += k % 7 == 0 ? "9;" : "A;";
  store("d,t," + votes + ",12C1\r\n");
  refreshScores(1);
  const RiskRecord direct = item();
  LoadVotes("12C1");
  SetStats(0, 0);
  EXPECT_GT(direct.average[0], 9.8F);
  EXPECT_EQ(direct.average[0], item().average[0]);
  EXPECT_EQ(direct.standardDeviation[0], item().standardDeviation[0]);
}

TEST_F(StatisticsTest, RefreshingListsWhatIsMissingAndKeepsTheVotesInMemory) {
  store("d,t,3;5;,7C1\r\nd,t,3;5;,7C2\r\n");
  glo.risks[1].average[1] = 55;
  glo.risks[1].counted[1] = 2;
  setVotes({"1", "2"});
  item().average[0] = 4;
  item().counted[0] = item().counted[1] = 2;
  item().active[0] = true;
  glo.assessmentInfo[1].active = true;
  glo.assessments[1].voteType = 3;
  item().average[1] = 55;  // made elsewhere
  GetAllScores();
  EXPECT_EQ(item().average[0], 0);
  EXPECT_EQ(item().average[1], 55);
  EXPECT_TRUE(item().hasScore(1));
  EXPECT_FALSE(glo.risks[1].hasScore(1));  // votes of a scale give no such average
  EXPECT_EQ(glo.risks[1].average[0], 4);
  EXPECT_TRUE(item().active[0] && glo.risks[1].active[0]);
  EXPECT_EQ(firstVotes(2), (std::vector<std::string>{"1", "2"}));
  refreshScores(1);
  EXPECT_EQ(glo.dataMessage, "Data not found for these items: \r\nitem 12, assessment 1");
}

TEST_F(StatisticsTest, ATableOfResults) {
  store("d,t,3;5;X;-;,12C1\r\nd,t,X;X;,7C1\r\nd,t,1;1;1;,7C4\r\n");
  glo.opt_abstain = true;
  glo.assessmentInfo[1].active = glo.assessmentInfo[2].active = true;
  item().average[9] = 6;  // a multi-plot, made elsewhere
  item().counted[9] = 2;
  const std::vector<ItemResult> table = results();
  ASSERT_EQ(table.size(), 2u);
  EXPECT_EQ(table[0].identifier, "A");
  EXPECT_EQ(table[0].sortKey, 12);
  EXPECT_EQ(table[0].average[0], 4);
  EXPECT_EQ(table[0].average[9], 6);
  EXPECT_EQ(table[0].standardDeviation[9], std::nullopt);
  EXPECT_EQ(table[0].participants[0], 2);
  EXPECT_EQ(table[0].abstains[0], 1);
  EXPECT_EQ(table[1].participants[0], 0);
  EXPECT_EQ(table[1].average[0], std::nullopt);  // only abstained
  EXPECT_EQ(table[1].standardDeviation[0], std::nullopt);
  EXPECT_EQ(table[1].diversity[0], std::nullopt);
  EXPECT_EQ(table[1].abstains[0], 2);
  EXPECT_EQ(table[1].participants[3], 3);
  EXPECT_EQ(table[1].average[3], std::nullopt);  // not in the running order
  EXPECT_EQ(glo.dataMessage,
            "Data not found for these items: \r\nitem 7, assessment 1\r\nitem 12, assessment 2"
            "\r\nitem 7, assessment 2\r\nitem 12, assessment 3\r\nitem 7, assessment 3");
  glo.opt_abstain = false;
  EXPECT_EQ(results()[1].abstains[0], 0);
}

TEST_F(StatisticsTest, OneScorePerGroupOfTheDefaultQuestion) {
  store("d,t,1;2;5;,12C1\r\n");
  glo.demographicQuestions = {
      {1, 1, "", "", "d,t,1;2;1;", 2, true, {{1, "Sales", false}, {2, "Works", false}}}};
  const std::vector<GroupScore> groups = demographicGroupScores(0, 1);
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(groups[0].groupName, "Sales");
  EXPECT_EQ(groups[0].average, 3);
  EXPECT_EQ(groups[1].average, 2);
  EXPECT_EQ(groups[1].participants, 1);
  glo.demographicFilterOn = true;
  EXPECT_TRUE(demographicGroupScores(0, 1).empty());
}

}  // namespace
}  // namespace qrn::test
