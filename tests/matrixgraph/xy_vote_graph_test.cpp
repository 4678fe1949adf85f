#include "matrixgraph/xy_vote_graph.h"

#include "base/errors.h"
#include "charts/graph_fixture.h"
#include "charts/look/graph_look.h"

namespace qrn {
namespace {

using test::GraphWorld;
using Texts = std::vector<std::string>;

constexpr PlotRequest kOnePair{1, 2, -1, -1, -1, -1, -1, -1};
constexpr PlotRequest kTwoPairs{1, 2, 3, 4, -1, -1, -1, -1};

class MatrixGraph : public GraphWorld {
 protected:
  MatrixGraph() {
    registerGraphForms();
    addItems(3);
    for (int a = 1; a <= 4; ++a) addScale(a, "Name" + std::to_string(a), 5);
  }
  void voteAll() {
    for (int item = 0; item < glo.itemCount(); ++item)
      for (int a = 1; a <= 4; ++a) vote(item, a, "3;");
  }
  xyVoteGraph& draw(const PlotRequest& pairs, int width = 1024, int height = 768) {
    drawMatrixGraph(pairs, width, height);
    return host::host().forms->as<xyVoteGraph>("xyVoteGraph");
  }
  static int count(const xyVoteGraph& form, const char* array) {
    const host::ElementArray* found = form.surface().find(array);
    return found ? found->count() : 0;
  }
  static double centreX(const host::Element& e) { return e.left + e.width / 2; }
  static double centreY(const host::Element& e) { return e.top + e.height / 2; }
};

TEST_F(MatrixGraph, PlacesLabelsByTheFirstUpwardsAndTheSecondAcross) {
  vote(0, 1, "1;");
  vote(0, 2, "5;");
  vote(1, 1, "2;3;");
  vote(1, 2, "3;");
  xyVoteGraph& form = draw(kOnePair);
  const host::Element* a = form.surface().find("labelRisk", 1);
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->caption, "A");
  EXPECT_DOUBLE_EQ(centreX(*a), 14592);  // the far edge
  EXPECT_DOUBLE_EQ(centreY(*a), 9792);   // the axis
  const host::Element* b = form.surface().find("labelRisk", 2);
  ASSERT_NE(b, nullptr);
  EXPECT_DOUBLE_EQ(centreX(*b), 8525);
  EXPECT_DOUBLE_EQ(centreY(*b), 6581);  // 9792 - 0.375 * 8563.2 = 6580.8
  EXPECT_TRUE(a->font.bold);
  // The shadow lies one pixel off and in the complement.
  const host::Element* shadow = form.surface().find("labelRiskShadow", 1);
  ASSERT_NE(shadow, nullptr);
  EXPECT_DOUBLE_EQ(shadow->left - a->left, 15);
  EXPECT_DOUBLE_EQ(shadow->top - a->top, 15);
  EXPECT_EQ(shadow->colour, 0xffffff - a->colour);
}

TEST_F(MatrixGraph, SkewPlottingStandsInTheMiddleOfCells) {
  glo.MatrixGraphPlotting = 2;
  vote(0, 1, "1;");
  vote(0, 2, "5;");
  xyVoteGraph& form = draw(kOnePair);
  EXPECT_DOUBLE_EQ(centreX(*form.surface().find("labelRisk", 1)), 13379);
  EXPECT_DOUBLE_EQ(centreY(*form.surface().find("labelRisk", 1)), 8936);
  EXPECT_EQ(all(form.surface(), "xAxisLabel").size(), 5U);
  EXPECT_EQ(count(form, "xAxisLabel"), 6);
  EXPECT_FALSE(form.surface().find("xAxisLabel", 5)->visible);
  EXPECT_DOUBLE_EQ(form.surface().find("xAxisLabel", 0)->left, 2457.6 + 125);
  EXPECT_DOUBLE_EQ(form.surface().find("xAxisLabel", 2)->left, 2457.6 + 2 * 2426);
  // The lowest caption stands level with the middle of its cell.
  EXPECT_DOUBLE_EQ(centreY(*form.surface().find("yAxisLabel", 0)), 9792 - 1712 / 2.0);
}

TEST_F(MatrixGraph, AScoreOutsideTheScaleIsOffThePlotWithoutALine) {
  vote(0, 1, "7;");  // above a scale of five points
  vote(0, 2, "3;");
  vote(0, 3, "3;");
  vote(0, 4, "3;");
  xyVoteGraph& form = draw(kTwoPairs);
  EXPECT_GT(form.surface().find("labelRisk", 1)->top, form.ScaleHeight);
  for (int toggles = 0; toggles < 3; ++toggles) {
    EXPECT_FALSE(form.surface().find("lineRound1ToRound2", 1)->visible);
    EXPECT_FALSE(form.surface().find("endOfLine1to2Blob", 1)->visible);
    form.menuPairLines();
  }
}

TEST_F(MatrixGraph, RegularAxisHasALineAndACaptionForEachPoint) {
  voteAll();
  xyVoteGraph& form = draw(kOnePair);
  EXPECT_EQ(captions(form.surface(), "xAxisLabel"), (Texts{"s1", "s2", "s3", "s4", "s5"}));
  EXPECT_EQ(count(form, "verticalLine"), 5);
  // Steps are whole twips: 12134.4 / 4 is 3033.
  EXPECT_DOUBLE_EQ(form.surface().find("verticalLine", 3)->x1, 2457.6 + 3 * 3033);
  EXPECT_DOUBLE_EQ(form.surface().find("horizontalLine", 4)->y1, 9792 - 4 * 2140);
  EXPECT_DOUBLE_EQ(form.surface().find("xAxisLabel", 1)->width, 3033 - 250);
  EXPECT_DOUBLE_EQ(centreX(*form.surface().find("xAxisLabel", 1)), 2457.6 + 3033);
  EXPECT_DOUBLE_EQ(form.surface().find("xAxisLabel", 1)->top, 9892);
  EXPECT_DOUBLE_EQ(centreY(*form.surface().find("yAxisLabel", 4)), 9792 - 4 * 2140);
}

TEST_F(MatrixGraph, QuartersCutThePlotInFourWhateverTheScale) {
  addScale(2, "Name2", 7);
  voteAll();
  glo.XYGridLinesAsQuarters = true;
  xyVoteGraph& form = draw(kOnePair);
  for (const char* array : {"verticalLine", "horizontalLine"}) {
    ASSERT_EQ(count(form, array), 5) << array;
    EXPECT_EQ(form.surface().find(array, 1)->borderStyle, 3) << array;
    EXPECT_EQ(form.surface().find(array, 2)->borderStyle, 1) << array;
    EXPECT_EQ(form.surface().find(array, 3)->borderStyle, 3) << array;
  }
  EXPECT_EQ(count(form, "xAxisLabel"), 7);
  EXPECT_EQ(count(form, "yAxisLabel"), 5);
}

TEST_F(MatrixGraph, PairsAreJoinedByLinesFromCentreToCentre) {
  vote(0, 1, "1;");
  vote(0, 2, "1;");
  vote(0, 3, "5;");
  vote(0, 4, "5;");
  vote(1, 1, "2;");
  vote(1, 2, "2;");
  xyVoteGraph& form = draw(kTwoPairs);
  const host::Element* line = form.surface().find("lineRound1ToRound2", 1);
  ASSERT_NE(line, nullptr);
  EXPECT_DOUBLE_EQ(line->x1, 2458);
  EXPECT_DOUBLE_EQ(line->y1, 9792);
  EXPECT_DOUBLE_EQ(line->x2, 14592);
  EXPECT_DOUBLE_EQ(line->y2, 1229);
  EXPECT_NE(form.surface().find("endOfLine1to2Blob", 1), nullptr);
  EXPECT_EQ(count(form, "lineRound1ToRound2"), 2);  // B has no second place
  EXPECT_EQ(form.surface().find("labelRiskRound2", 1)->caption, "A\u00b9");
  EXPECT_EQ(captions(form.surface(), "criteria1Label"), Texts{"Name1/Name3"});
  EXPECT_EQ(captions(form.surface(), "criteria2Label"), Texts{"Name2/Name4"});
  EXPECT_EQ(form.surface().find("xAxisLabel", 0)->caption, "s1");
}

TEST_F(MatrixGraph, TellsWhichDataIsMissingInTheOrderMet) {
  addScale(1, "Name1", 5, 0);
  vote(1, 1, "0;");
  vote(1, 2, "3;");
  vote(2, 1, "X;-;");  // a record in which nobody counts, on a scale where 0 is a score
  vote(2, 2, "3;");
  xyVoteGraph& form = draw(kOnePair);
  EXPECT_EQ(glo.dataMessage,
            "Data not found for these items: \r\nitem 0, assessment 1\r\nitem 0, assessment 2\r\nitem 2, "
            "assessment 1");
  EXPECT_TRUE(form.cmd_info);
  EXPECT_EQ(form.model().plotted.size(), 1U);
  world.expectMsgBox("item 2, assessment 1");
  form.cmd_info_Click();
}

// What a multi-plot lacks is not told, only what an assessment does.
TEST_F(MatrixGraph, LeavesOutWhatHasNoVoteInAMultiPlot) {
  glo.multiPlot[0].Assessments[2] = true;
  vote(0, 2, "3;");
  vote(1, 2, "3;");
  vote(1, 3, "2;");
  vote(2, 3, "2;");
  EXPECT_EQ(captions(draw({10, 2, -1, -1, -1, -1, -1, -1}).surface(), "labelRisk"), Texts{"B"});
  EXPECT_EQ(glo.dataMessage, "Data not found for these items: \r\nitem 2, assessment 2");
  glo.assessmentInfo[1].active = glo.assessmentInfo[2].active = false;  // what was voted on them stands
  for (RiskRecord& risk : glo.risks) static_cast<ItemScores&>(risk) = {};
  EXPECT_EQ(captions(draw({3, 2, -1, -1, -1, -1, -1, -1}).surface(), "labelRisk"), Texts{"B"});
}

TEST_F(MatrixGraph, LeavesOutWhatIsNotVotingOrNotInACategoryShown) {
  voteAll();
  glo.risks[0].voting = false;
  glo.categories.assign(3, CategoryRecord{});
  glo.categories[0].CategoryName = "unallocated";
  glo.categories[0].Selected = false;
  glo.categories[1] = {7, "Plant & tools", {1, -1}, true, true, 0};
  xyVoteGraph& form = draw(kOnePair);
  ASSERT_EQ(form.List1.rows().size(), 1U);
  EXPECT_EQ(form.List1.rows()[0].cells[0], "B: item 1");
  EXPECT_EQ(form.surface().find("LabelCategory", 0)->toolTip, "Category: Plant & tools, ");
  glo.categories[0].Selected = true;
  EXPECT_EQ(draw(kOnePair).surface().find("LabelCategory", 0)->toolTip, "Category: ALL  ");
}

TEST_F(MatrixGraph, ClosesWithAMessageWhenAnAxisHasNoPoints) {
  voteAll();
  addScale(1, "Impact", 1);
  world.expectMsgBox("quorin matrix: You need to define voting points for Assessment 1");
  EXPECT_THROW(drawMatrixGraph(kOnePair, 1024, 768), HostError);
  EXPECT_FALSE(world.forms.isLoaded("xyVoteGraph"));
}

TEST_F(MatrixGraph, DiversityRunsBothAxesToAHundred) {
  vote(0, 1, "1;1;5;");
  vote(0, 2, "3;3;");
  xyVoteGraph& form = draw(kOnePair);
  form.menuDiversity();
  form.tmr_load_Timer();
  EXPECT_EQ(captions(form.surface(), "yAxisLabel"), (Texts{"0", "25", "50", "75", "100"}));
  EXPECT_DOUBLE_EQ(centreX(*form.surface().find("labelRisk", 1)), 2458);
  // A diversity of 0.9428 is 94.28 of 100: 9792 - 0.9428 * 8563.2.
  EXPECT_DOUBLE_EQ(centreY(*form.surface().find("labelRisk", 1)), 1719);
}

TEST_F(MatrixGraph, ChoosesThePairsThatCanBeDrawn) {
  struct Case {
    const char* name;
    PlotRequest current, user;
    std::array<int, 4> on;
    bool useUser;
    PlotRequest chosen;
  };
  const PlotRequest other{3, 4, 1, 2, -1, -1, -1, -1};
  const Case cases[] = {
      {"current", kOnePair, other, {1, 1, 0, 0}, false, kOnePair},
      {"user's active ones", kOnePair, other, {0, 1, 0, 0}, true, {-1, -1, 1, 2, -1, -1, -1, -1}},
      {"user's none active", kOnePair, other, {0, 0, 0, 0}, true, kOnePair},
      {"current empty", kNoPairs, other, {0, 0, 0, 0}, false, other},
  };
  for (const Case& c : cases) {
    glo.currentPlotPairings = c.current;
    glo.userSelectedPlotPairings = c.user;
    glo.userPairActive = c.on;
    glo.useUserPairings = c.useUser;
    EXPECT_EQ(choosePairs(), c.chosen) << c.name;
  }
}

TEST_F(MatrixGraph, TakesItsPairsFromTheExercise) {
  glo.matrixAxes = {1, 0};
  glo.remainingAssessments = {3, 4, -1, -1, -1, -1, -1, -1, -1};
  EXPECT_EQ(pairsOfExercise(), (PlotRequest{2, 1, -1, -1, -1, -1, -1, -1}));
  glo.optionAveragePairing = 1;
  EXPECT_EQ(pairsOfExercise(), (PlotRequest{2, 1, 3, 4, -1, -1, -1, -1}));
  glo.matrixAxes = {9, 9};
  glo.assessmentInfo[0].active = false;
  glo.optionAveragePairing = 0;
  EXPECT_EQ(pairsOfExercise(), (PlotRequest{2, 3, -1, -1, -1, -1, -1, -1}));
  glo.assessmentInfo[1].active = glo.assessmentInfo[2].active = false;
  EXPECT_EQ(pairsOfExercise(), kNoPairs);
}

TEST_F(MatrixGraph, ClosesWithAMessageWithoutTwoAssessments) {
  for (std::size_t a = 1; a < 4; ++a) glo.assessmentInfo[a].active = false;
  for (const PlotRequest& pairs : {kNoPairs, {1, -1, 2, -1, -1, -1, -1, -1}, {-1, 1, -1, 2, -1, 3, -1, 4}}) {
    glo.currentPlotPairings = kNoPairs;
    world.expectMsgBox("quorin matrix: Unable to display, as two assessments are not available");
    EXPECT_THROW(drawMatrixGraph(pairs, 1024, 768), HostError);
  }
}

TEST_F(MatrixGraph, DrawsByItsTimerAfterLoading) {
  voteAll();
  world.forms.load("xyVoteGraph");
  auto& form = world.forms.as<xyVoteGraph>("xyVoteGraph");
  host::waitUntil([&] { return !form.List1.rows().empty(); });
  EXPECT_EQ(glo.lastDrawnPairings, kOnePair);
  EXPECT_FALSE(form.tmr_load.enabled());
}

// Text stands clear of its neighbours and of the edges at the sizes that rooms use, however many the points.
TEST_F(MatrixGraph, CaptionsKeepApartAndInside) {
  voteAll();
  glo.assessmentTitles[0] = "How much the plan depends on people outside of the department";
  glo.assessmentTitles[1] = "Overwhelminglycomplicatedprocedures and their cost over the years to come";
  for (const auto& [width, height] : {std::pair{1024, 768}, {1920, 1080}, {3840, 2160}})
    for (const int points : {2, 5, 10, 100}) {
      addScale(2, glo.assessmentTitles[1], points);
      for (std::string& text : glo.scaleLabels[1]) text = "a fairly long caption of a point " + text;
      addScale(1, glo.assessmentTitles[0], points);
      xyVoteGraph& form = draw(kOnePair, width, height);
      double end = -1e9;
      for (const host::Element* one : all(form.surface(), "xAxisLabel")) {
        const double wide = textWidth(one->caption, one->font);
        EXPECT_GE(centreX(*one) - wide / 2, end) << points << " points at " << width;
        EXPECT_DOUBLE_EQ(one->top, 0.85 * form.ScaleHeight + 100);
        end = centreX(*one) + wide / 2;
        EXPECT_LE(end, form.ScaleWidth) << points << " points at " << width;
        EXPECT_LE(one->top + one->height, form.surface().find("criteria2Label", 0)->top + 1) << points;
      }
      double below = 1e9;
      for (const host::Element* one : all(form.surface(), "yAxisLabel")) {
        EXPECT_LE(one->top + one->height, below + 30) << points << " points at " << width;
        below = one->top;
        EXPECT_GE(one->left, 0);
      }
      const host::Element &across = *form.surface().find("xAxisLabel", 0),
                          &up = *form.surface().find("yAxisLabel", 0);
      const double left = centreX(across) - textWidth(across.caption, across.font) / 2;
      EXPECT_TRUE(up.top + up.height <= across.top + 0.01 || up.left + up.width <= left)
          << points << " points at " << width;
      EXPECT_GE(form.surface().find("criteria1Label", 0)->left, up.left + up.width);
      for (const char* title : {"graphTitle", "criteria1Label", "criteria2Label"}) {
        const host::Element& one = *form.surface().find(title, 0);
        EXPECT_GE(one.left, 0) << title;
        EXPECT_LE(one.left + one.width, form.ScaleWidth) << title;
        EXPECT_LE(one.top + one.height, form.ScaleHeight) << title;
      }
    }
}

// Type is a part of the height, the smallest for many keys; a size of the exercise is obeyed down to that.
TEST_F(MatrixGraph, KeysAreReadFromTheBackRow) {
  struct Case {
    int width, height, items;
    double own, points;
  };
  for (const Case& c :
       {Case{1024, 768, 3, 12, 0.033 * 768 * 0.75}, Case{1920, 1080, 40, 12, 0.033 * 1080 * 0.75},
        Case{1920, 1080, 41, 12, 0.028 * 1080 * 0.75}, Case{1024, 768, 3, 30, 30},
        Case{1024, 768, 400, 9, 0.028 * 768 * 0.75}}) {
    addItems(c.items);
    voteAll();
    glo.itemPlotFont.size = c.own;
    EXPECT_NEAR(draw(kOnePair, c.width, c.height).surface().find("labelRisk", 1)->font.size, c.points, 1e-9)
        << c.items << " items at " << c.width;
  }
}

// In a window, keys at one place: the selected one is seen, else the first; the others are a dot and a
// number.
TEST_F(MatrixGraph, NoKeyCoversAnother) {
  voteAll();
  xyVoteGraph& form = draw(kOnePair);
  EXPECT_EQ(captions(form.surface(), "labelRisk"), (Texts{"A", "B", "C"})) << "without a window";
  EXPECT_EQ(all(form.surface(), "dot").size() + all(form.surface(), "keysBehind").size(), 0U);
  form.view.covering = true;
  form.tmr_load_Timer();
  struct Case {
    int selected;
    Texts keys;
    std::size_t dots;
  };
  for (const Case& c : {Case{-1, {"A"}, 2}, Case{2, {"C"}, 2}, Case{1, {"B"}, 2}}) {
    form.List1_Click(c.selected);
    EXPECT_EQ(captions(form.surface(), "labelRisk"), c.keys) << c.selected;
    EXPECT_EQ(all(form.surface(), "dot").size(), c.dots);
    EXPECT_EQ(captions(form.surface(), "keysBehind"), Texts{"+2"});
  }
  form.Form_KeyPress('A');  // alone and grown about its place; the others are ghosts
  const host::Element& key = *form.surface().find("labelRisk", 1);
  EXPECT_TRUE(key.visible);
  EXPECT_NEAR(key.width / form.surface().find("labelRisk", 2)->width, 1.4, 1e-9);
  EXPECT_NEAR(centreX(key), centreX(*form.surface().find("labelRisk", 2)), 1e-6);
  EXPECT_EQ(all(form.surface(), "keysBehind").size(), 0U);
  // From the middle of the plot to its upper edge, the keys do not meet any more.
  vote(2, 1, "5;");
  form.tmr_load_Timer();
  EXPECT_EQ(captions(form.surface(), "labelRisk"), (Texts{"A", "C"}));
}

// Every item and its score in a sentence, wherever it is missing.
TEST_F(MatrixGraph, TellsInThePlotWhatDoesNotStandThere) {
  struct Case {
    const char* name;
    std::vector<std::pair<int, int>> votes;  // item, assessment
    const char* note;
    const char* score;
  };
  for (const Case& c :
       {Case{"nothing", {}, "No item has votes on both scales yet. Name1 0 of 3, Name2 0 of 3", "3;"},
        Case{"one scale",
             {{0, 1}, {2, 1}},
             "No item has votes on both scales yet. Name1 2 of 3, Name2 0 of 3",
             "3;"},
        Case{"one item", {{0, 1}, {0, 2}, {1, 2}}, "1 of 3 items have votes on both scales", "3;"},
        Case{"off", {{0, 1}, {0, 2}}, "1 of 3 items have votes on both scales, 1 off the scale", "7;"},
        Case{"all", {{0, 1}, {0, 2}, {1, 1}, {1, 2}, {2, 1}, {2, 2}}, "", "3;"}}) {
    glo.voteRecords.assign("");
    for (const auto& [item, assessment] : c.votes) vote(item, assessment, c.score);
    const xyVoteGraph& form = draw(kOnePair);
    const host::Element* note = form.surface().find("plotNote", 0);
    EXPECT_EQ(note != nullptr ? note->toolTip : "", c.note) << c.name;
    for (const host::Element* key : all(form.surface(), "labelRisk"))
      EXPECT_TRUE(centreX(*key) > 2458 + 100 || centreX(*key) < 0 || centreY(*key) > 1e5)
          << c.name << " at the origin";
  }
}

}  // namespace
}  // namespace qrn
