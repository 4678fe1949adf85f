#include "matrixgraph/axis_plan.h"

#include "charts/graph_fixture.h"

namespace qrn {
namespace {

using test::GraphWorld;
using Texts = std::vector<std::string>;

class AxisPlanTest : public GraphWorld {
 protected:
  AxisPlanTest() {
    addItems(2);
    addScale(1, "Impact", 5);
    addScale(2, "Chance", 7, 0);
    addScale(3, "Share", 3);
    glo.assessments[2].voteType = 3;
  }
  // MultiPlot 1 as the sum of assessments 1 and 2 whose largest value is `top`.
  void sumUpTo(float top) {
    glo.multiPlot[0].Enabled = true;
    glo.multiPlot[0].PlotType = 0;
    glo.multiPlot[0].Assessments[0] = glo.multiPlot[0].Assessments[1] = true;
    glo.risks[0].average[9] = top;
  }
};

TEST_F(AxisPlanTest, SizesFollowTheFirstPairThatIsComplete) {
  const PlotRequest later{0, 1, 1, 2, 2, 1, -1, -1};
  EXPECT_EQ(selectBoundsRegular(later).first, 4);
  EXPECT_EQ(selectBoundsRegular(later).second, 6);
  EXPECT_EQ(selectBoundsSkew(later).first, 5);
  EXPECT_EQ(selectBoundsSkew(later).second, 7);
  EXPECT_EQ(selectBoundsRegular(kNoPairs).first, 0);
}

TEST_F(AxisPlanTest, RegularMultiPlotSizeTakesTheStepOffTheQuotient) {
  sumUpTo(37);  // top 40, step 5
  const PlotRequest pair{10, 1, -1, -1, -1, -1, -1, -1};
  EXPECT_EQ(selectBoundsRegular(pair).first, 3);  // 40 / 5 - 5
  EXPECT_EQ(selectBoundsSkew(pair).first, 8);
}

TEST_F(AxisPlanTest, AxisShowsTheLastPair) {
  const PlotRequest request{1, 2, 3, 4, -1, -1, -1, -1};
  EXPECT_EQ(axisAssessment(request, true), 3);
  EXPECT_EQ(axisAssessment(request, false), 4);
  EXPECT_EQ(axisAssessment(kNoPairs, true), 0);
}

TEST_F(AxisPlanTest, CaptionsByModeAndKind) {
  glo.scaleLabels[0][0] = "rarely";
  struct Case {
    const char* name;
    int assessment, mode, letters;
    bool skew, percent;
    int divisions;
    Texts captions;
  };
  const Case cases[] = {
      {"texts", 1, 0, 0, false, false, 4, {"rarely", "s2", "s3", "s4", "s5"}},
      {"cells", 1, 0, 0, true, false, 5, {"rarely", "s2", "s3", "s4", "s5", ""}},
      {"abbreviated", 1, 1, 3, false, false, 4, {"rar", "s2", "s3", "s4", "s5"}},
      {"abbreviated to nothing", 1, 1, 0, false, false, 4, {"rarely", "s2", "s3", "s4", "s5"}},
      {"numbers from 1", 1, 2, 0, false, false, 4, {"1", "2", "3", "4", "5"}},
      {"numbers from 0", 2, 2, 0, false, false, 6, {"0", "1", "2", "3", "4", "5", "6"}},
      {"percentage type", 3, 0, 0, false, false, 4, {"0", "25", "50", "75", "100"}},
      {"percentage type numbered", 3, 2, 0, false, false, 4, {"0", "25", "50", "75", "100"}},
      {"diversity", 1, 0, 0, false, true, 4, {"0", "25", "50", "75", "100"}},
  };
  for (const Case& c : cases) {
    glo.OptionScatterScale = c.mode;
    glo.TextScatterScaleAbbreviate = c.letters;
    const AxisPlan plan = planAxis(c.assessment, c.skew, c.percent);
    EXPECT_EQ(plan.divisions, c.divisions) << c.name;
    EXPECT_EQ(plan.captions, c.captions) << c.name;
    EXPECT_EQ(plan.lastHidden, c.skew) << c.name;
  }
}

TEST_F(AxisPlanTest, MultiPlotCaptionsCountBySteps) {
  sumUpTo(37);
  const AxisPlan plan = planAxis(10, false, false);
  EXPECT_EQ(plan.scaleMax, 40);
  EXPECT_EQ(plan.captions, (Texts{"5", "10", "15", "20", "25", "30", "35", "40"}));
}

TEST_F(AxisPlanTest, AMultiPlotWithoutScaleHasOneDivision) {
  EXPECT_EQ(planAxis(10, false, false).divisions, 1);
}

TEST_F(AxisPlanTest, AScaleOfOnePointHasNoDivision) {
  addScale(1, "Impact", 1);
  EXPECT_EQ(planAxis(1, false, false).divisions, 0);
  EXPECT_EQ(planAxis(1, true, false).divisions, 0);
}

}  // namespace
}  // namespace qrn
