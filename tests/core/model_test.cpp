// A new exercise.
#include "core/model.h"

#include <gmock/gmock.h>

#include "core/glo.h"
#include "support/test_host.h"

namespace qrn {
namespace {

class Model : public ::testing::Test {
 protected:
  ~Model() override { glo = Glo{}; }
  test::TestHost world;
};

TEST_F(Model, beginsEmptyWithOneCategoryAndOneAssessment) {
  glo.risks.resize(7);
  glo.voteWindow.left = 3;
  initXYVote();
  EXPECT_EQ(glo.itemCount(), 0);
  ASSERT_EQ(upperBound(glo.categories), 1);
  EXPECT_EQ(glo.categories[0].CategoryName, "unallocated");
  EXPECT_TRUE(glo.categories[0].Selected && glo.categories[0].Enabled);
  for (std::size_t a = 0; a < kAssessments; ++a) {
    EXPECT_EQ(glo.assessmentInfo[a].active, a == 0);
    EXPECT_EQ(glo.assessmentInfo[a].votingOrder, static_cast<int>(a));
    EXPECT_EQ(glo.assessments[a].scalePointCount, 1);
  }
  EXPECT_EQ(glo.assessmentTitles[8], "9th assessment");
  EXPECT_EQ(glo.assessmentInfo[2].endMessage, "End of 3rd assessment");
  EXPECT_EQ(glo.voteWindow, (PaneRect{0.1F, 0, 0.8F, 0.5F}));
  EXPECT_EQ(upperBound(glo.ownerLists), 5);
  EXPECT_EQ(upperBound(glo.rootCauseLists), 7);
  EXPECT_EQ(upperBound(glo.rootCauseLists[6].values), 7);
  EXPECT_EQ(glo.barColours3[9], 39 * 65536 + 45 * 256);
  EXPECT_TRUE(glo.usePPTBackground);
}

TEST_F(Model, fontsAndColoursComeFromThePresentationWhereItHasThem) {
  glo.oPresentation = &world.presentation;
  world.presentation.titleFont = host::MasterFont{"Georgia", 40, true, false, true, 77};
  world.presentation.scheme = {{1, 111}, {5, 555}, {10, 101}};
  initXYVote();
  const AssessmentRecord& last = glo.assessments[10];
  EXPECT_EQ(last.titleFont, (FontRecord{"Georgia", 40, true, false, true, false, 77}));
  EXPECT_EQ(last.font2, (FontRecord{"Arial", 18}));
  EXPECT_EQ(last.pointColours[0], 555);
  EXPECT_EQ(last.pointColours[1], glo.barColours1[1]);
  EXPECT_EQ(last.pointColours[5], 101);
  EXPECT_EQ(last.pointColours[10], glo.barColours1[10]);
}

TEST_F(Model, defaultsOfAssessmentsCanKeepTheFonts) {
  initXYVote();
  AssessmentRecord& one = glo.assessments[1];
  one.font3 = {"Georgia", 33};
  one.voteType = 3;
  one.pcaQuestion = "?";
  one.lbl_Risk.width = 5;
  InitAssessmentInfo(true);
  EXPECT_EQ(one.font3, (FontRecord{"Georgia", 33}));
  EXPECT_EQ(one.voteType, 1);
  EXPECT_EQ(one.pcaQuestion, "Which do you prefer?");
  EXPECT_EQ(one.lbl_Risk.width, 5);
  InitAssessmentInfo(false);
  EXPECT_EQ(one.font3, (FontRecord{"Arial", 16}));
  EXPECT_EQ(one.lbl_Risk.width, 0);
}

TEST_F(Model, remainingAssessmentsAreThoseOutsideTheAxes) {
  initXYVote();
  glo.matrixAxes = {0, 4};
  setRemainingAssessments();
  EXPECT_THAT(glo.remainingAssessments, ::testing::ElementsAre(2, 3, 4, 6, 7, 8, 9, -1, -1));
  glo.matrixAxes = {9, 9};
  setRemainingAssessments();
  EXPECT_THAT(glo.remainingAssessments, ::testing::ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST_F(Model, storedRoundsAreOnlyThereWhenUsed) {
  RiskRecord one, two;
  EXPECT_EQ(std::as_const(one).rounds[3][4].average, 0);
  two.rounds[10][10].label.clear();
  EXPECT_TRUE(one.rounds == two.rounds);
  two.rounds[3][4] = {"1st", 2.5F};
  EXPECT_FALSE(one.rounds == two.rounds);
  EXPECT_EQ(one, two) << "scores are not the exercise";
  EXPECT_EQ(two.rounds[3][4].label, "1st");
}

}  // namespace
}  // namespace qrn
