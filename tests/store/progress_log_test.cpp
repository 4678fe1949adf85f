#include "store/progress_log.h"

#include <gmock/gmock.h>

#include <sstream>

#include "store/vote_fixture.h"

namespace qrn::test {
namespace {

using ::testing::HasSubstr;

class ProgressLogTest : public VoteTest {
 protected:
  ProgressLogTest() {
    addItems({12, 7, 30});
    resetLogState();
    glo.assessmentInfo[2].active = true;
  }
  std::string log() { return slide.stubborn.values["QRNMATRIXLOG"]; }
};

TEST_F(ProgressLogTest, TheTextNamesEveryValueInOrder) {
  glo.currentItem = 1;
  glo.currentAssessment = 1;
  glo.logAssessments[1] = false;
  glo.logPairCount = 4;
  glo.risks[2].newItem = true;
  writeLog();
  EXPECT_EQ(log(),
            "category = 1\r\nassessment = 1\r\nrisk = 2\r\npairCount = 4\r\ncumulativePairCount = 0\r\n"
            "a1 = True\r\na2 = False\r\na3 = True\r\na4 = True\r\na5 = True\r\na6 = True\r\na7 = True\r\n"
            "a8 = True\r\na9 = True\r\nAssessment index = 0\r\nprocess finished = False\r\nrecords = 0\r\n"
            "risk list\r\n12,False,000000000\r\n7,False,100000000\r\n30,True,000000000\r\n");
  EXPECT_EQ(world.dialogs.infos, (std::vector<std::string>{"Writing Log File", ""}));
}

TEST_F(ProgressLogTest, TheTextTellsThePlaceOfTheNextVote) {
  struct Case {
    int runByOption, item, assessment, risk, nextAssessment;
  };
  for (const Case& c : {Case{0, 0, 1, 1, 1}, Case{0, 2, 1, 0, 2}, Case{0, 2, 9, 0, 10}, Case{1, 0, 1, 0, 3},
                        Case{1, 0, 3, 1, 1}, Case{1, 2, 3, 3, 1}}) {
    addItems({12, 7, 30});
    glo.runByOption = c.runByOption;
    glo.currentItem = c.item;
    glo.currentAssessment = c.assessment;
    writeLog();
    EXPECT_THAT(log(), HasSubstr("assessment = " + std::to_string(c.nextAssessment) +
                                 "\r\nrisk = " + std::to_string(c.risk) + "\r\n"));
  }
}

// A run may be killed after a record was stored and before the log was, or after the votes were cleared.
TEST_F(ProgressLogTest, RecordsTellWhatTheLogDoesNotYetKnow) {
  struct Case {
    const char *before, *after;
    std::vector<bool> voted;  // on the first assessment
  };
  const std::string record = "1/1/2026,9:00,3;4;,";
  for (const Case& c :
       {Case{"12C1", "", {true, false, false}}, Case{"12C1", "7C1", {true, true, false}},
        Case{"12C1", "7C1 30C1", {true, true, true}}, Case{"12C1", "99C1 12C17", {true, false, false}},
        Case{"12C1 7C1", "-12C1", {true, false, false}}}) {
    addItems({12, 7, 30});
    glo.currentItem = 0;
    std::istringstream before(c.before), after(c.after);
    std::string key, text;
    while (before >> key) text += record + key + "\r\n";
    glo.voteRecords.assign(text);
    writeLog();
    const bool cleared = c.after[0] == '-';
    if (cleared)
      text.clear();
    while (after >> key) text += record + key.substr(cleared ? 1 : 0) + "\r\n";
    glo.voteRecords.assign(text);
    addItems({12, 7, 30});
    ASSERT_TRUE(readlog());
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(glo.risks[i].voted[0], c.voted[i]) << c.after << " " << i;
  }
}

// Its first vote makes a new item one of the others; marks go by key, whatever the order of the list.
TEST_F(ProgressLogTest, TheMarksGoByKey) {
  for (RiskRecord& risk : glo.risks) risk.newItem = true;
  glo.currentItem = 0;
  writeLog();
  addItems({30, 12, 99, 7});
  ASSERT_TRUE(readlog());
  EXPECT_TRUE(glo.resumePending);
  std::string marks;
  for (int i = 0; i < 4; ++i) {
    const RiskRecord& risk = glo.risks[static_cast<std::size_t>(i)];
    marks += std::string(risk.voted[0] ? "v" : "-") + (risk.newItem ? "n " : "- ");
  }
  EXPECT_EQ(marks, "-n v- -- -n ");
}

TEST_F(ProgressLogTest, AFinishedOrMissingProcessLeavesNothingToResume) {
  EXPECT_FALSE(readlog());
  writeLog(true);
  glo.resumePending = true;
  EXPECT_TRUE(readlog());
  EXPECT_FALSE(glo.resumePending);
}

TEST_F(ProgressLogTest, DamagedTextReadsWhatItCan) {
  slide.stubborn.values["QRNMATRIXLOG"] =
      "category = 99999999\nrisk = x\nnonsense\na2 = true\nrisk list\n7\n,,\nzz\n12,True,01";
  EXPECT_TRUE(readlog());
  EXPECT_EQ(glo.logCategory, 32767);
  EXPECT_TRUE(glo.logAssessments[1]);
  EXPECT_TRUE(glo.risks[0].newItem && glo.risks[0].voted[1] && !glo.risks[0].voted[0]);
}

}  // namespace
}  // namespace qrn::test
