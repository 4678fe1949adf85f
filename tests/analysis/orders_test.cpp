#include "analysis/orders.h"

#include <tuple>

#include "analysis/multiplot.h"
#include "core/glo.h"
#include "store/scores/all_scores.h"
#include "support/test_host.h"

namespace qrn::test {
namespace {

// Items with sort keys 1, 2, 3 ... and one voter each, whose vote is the item's average.
class OrderTest : public ::testing::Test {
 protected:
  OrderTest() {
    glo = Glo();
    glo.postalRecords.assign("");
    glo.voteRecords.assign("");
    orderHooks.renumber = [this] { ++renumbered; };
  }
  ~OrderTest() override {
    orderHooks = {};
    CompileSifterSorterData = nullptr;
    glo = Glo();
  }
  void items(int count) {
    glo.risks.assign(static_cast<std::size_t>(count) + 1, RiskRecord());
    for (int i = 0; i < count; ++i) {
      RiskRecord& item = glo.risks[static_cast<std::size_t>(i)];
      item.sortKey = i + 1;
      item.text = "item " + std::to_string(i + 1);
      item.notes = "note " + std::to_string(i + 1);
      item.owners = {std::to_string(i + 1)};
    }
    glo.risks.back().text = "spare";
  }
  // `votes[i]` on assessment `a` for item i; 0 is a vote too, -1 is none.
  void vote(int a, const std::vector<int>& votes) {
    glo.assessmentInfo[static_cast<std::size_t>(a - 1)].active = true;
    glo.scaleLabels[static_cast<std::size_t>(a - 1)].assign(6, "");
    for (std::size_t i = 0; i < votes.size(); ++i)
      if (votes[i] >= 0)
        glo.voteRecords.append("d,t," + std::to_string(votes[i]) + ";," + std::to_string(i + 1) + "C" +
                               std::to_string(a) + "\r\n");
  }
  std::vector<int> order() const {
    std::vector<int> keys;
    for (int i = 0; i < glo.itemCount(); ++i) keys.push_back(glo.risks[static_cast<std::size_t>(i)].sortKey);
    return keys;
  }

  TestHost world;
  int renumbered = 0;
};

using Order = std::vector<int>;

TEST_F(OrderTest, ByAssessmentEqualItemsKeepTheirPlacesBothWays) {
  items(7);
  vote(2, {3, 2, 2, 1, 3, -1, 2});
  glo.currentAssessment = 5;
  reorderList(2, false);
  EXPECT_EQ(order(), (Order{6, 4, 2, 3, 7, 1, 5}));
  EXPECT_EQ(glo.listOrderCode, 3);
  EXPECT_EQ(glo.listOrder, 3);
  EXPECT_EQ(glo.currentAssessment, 5);
  EXPECT_EQ(renumbered, 1);
  EXPECT_EQ(glo.risks[5].notes, "note 1");
  EXPECT_EQ(glo.risks[5].owners, std::vector<std::string>{"1"});
  EXPECT_EQ(glo.risks[7].text, "spare");
  EXPECT_EQ(glo.dataMessage, "Data not found for these items: \r\nitem 6, assessment 2");
  items(7);
  reorderList(2, true);
  EXPECT_EQ(order(), (Order{1, 5, 2, 3, 7, 4, 6}));
  EXPECT_EQ(glo.listOrderCode, 4);
  EXPECT_EQ(world.dialogs.infos.front(), "Reordering list: Assessment 2");
  EXPECT_EQ(world.dialogs.infos.back(), "");
}

TEST_F(OrderTest, WithoutVotesTheOrderStaysAndEveryItemIsListed) {
  items(3);
  std::string told;
  orderHooks.showDataMessage = [&](const std::string& message) { told = message; };
  MenuReorderList(1, false);
  EXPECT_EQ(order(), (Order{1, 2, 3}));
  EXPECT_EQ(told,
            "Data not found for these items: \r\nitem 1, assessment 1\r\nitem 2, assessment 1\r\nitem 3, "
            "assessment 1");
  told.clear();
  MenuReorderList(1, false, true);
  EXPECT_EQ(told, "");
  reorderList(10, false);
  EXPECT_EQ(glo.listOrderCode, 2);
}

TEST_F(OrderTest, CumulativeIsTheMeanOfTheScoresThereAre) {
  items(4);
  vote(1, {5, 1, 4, 2});
  vote(2, {1, 3, -1, 2});
  vote(3, {0, -1, -1, 5});
  reorderListCumulativeDecreasing();
  EXPECT_EQ(order(), (Order{3, 4, 1, 2}));
  EXPECT_EQ(glo.listOrderCode, order::cumulativeDescending);
  EXPECT_EQ(glo.risks[0].cumulative, 4);  // nobody voted on the second: it does not pull the mean down
  EXPECT_EQ(glo.risks[1].cumulative, 3);
  EXPECT_EQ(glo.risks[2].cumulative, 2);  // an average of 0 is a score
  EXPECT_EQ(glo.dataMessage, "");
  reorderListCumulativeIncreasing();
  EXPECT_EQ(order(), (Order{1, 2, 4, 3}));
}

TEST_F(OrderTest, WeightedOrdersNeedAWeight) {
  items(3);
  vote(1, {5, 1, 3});
  vote(2, {1, 4, 3});
  glo.listOrder = glo.listOrderCode = 7;
  glo.assessmentInfo[1].weight = 3;
  world.expectMsgBox("No weightings have been selected");
  EXPECT_FALSE(reorderListWeightedCumulativeIncreasing());
  EXPECT_EQ(order(), (Order{1, 2, 3}));
  EXPECT_EQ(glo.listOrderCode, 7);
  glo.assessmentInfo[0].weightingOn = glo.assessmentInfo[1].weightingOn = true;
  EXPECT_TRUE(reorderListWeightedCumulativeIncreasing());
  EXPECT_EQ(order(), (Order{1, 3, 2}));
  EXPECT_EQ(glo.risks[2].weightedCumulative, 3.25F);
  EXPECT_EQ(glo.listOrderCode, order::weightedAscending);
  glo.assessmentInfo[1].weightingOn = false;
  EXPECT_TRUE(reorderListWeightedCumulativeDecreasing());
  EXPECT_EQ(order(), (Order{1, 3, 2}));
}

TEST_F(OrderTest, AlphabeticalIgnoresCaseAndCanFollowTheScores) {
  items(5);
  const char* const texts[] = {"b", "Äpfel", "B", "a", "b"};
  for (std::size_t i = 0; i < 5; ++i) glo.risks[i].text = texts[i];
  vote(1, {3, 1, 2, 1, 1});
  reorderListAlpha(false);
  EXPECT_EQ(order(), (Order{4, 1, 3, 5, 2}));
  EXPECT_EQ(glo.listOrderCode, 0);
  EXPECT_EQ(world.dialogs.infos.front(), "Updating Values");
  reorderListAlpha(true);
  EXPECT_EQ(order(), (Order{4, 5, 3, 1, 2}));
}

TEST_F(OrderTest, SifterScoresSetNoCode) {
  items(4);
  glo.listOrder = glo.listOrderCode = 7;
  const int scores[] = {20, -1, 20, 75};
  for (std::size_t i = 0; i < 4; ++i) glo.risks[i].sifterScore = scores[i];
  MenuReorderList(0, true);
  EXPECT_EQ(order(), (Order{2, 1, 3, 4}));
  reorderListBySifterSorter(true);
  EXPECT_EQ(order(), (Order{4, 1, 3, 2}));
  EXPECT_EQ(glo.listOrderCode, 7);
}

TEST_F(OrderTest, TheKeptCodeBringsTheOrderBack) {
  items(4);
  vote(1, {2, 4, 1, 3});
  vote(2, {3, 1, 1, 2});
  glo.multiPlot[0].Assessments[0] = glo.multiPlot[1].Assessments[1] = true;
  glo.assessmentInfo[0].weightingOn = true;
  const std::pair<int, Order> cases[] = {
      {1, {3, 1, 4, 2}},  {2, {2, 4, 1, 3}},  {3, {2, 3, 4, 1}},  {4, {1, 4, 2, 3}},  {0, {1, 2, 3, 4}},
      {19, {3, 1, 2, 4}}, {20, {1, 2, 4, 3}}, {21, {3, 1, 4, 2}}, {22, {2, 4, 1, 3}}, {23, {3, 1, 4, 2}},
      {24, {2, 4, 1, 3}}, {27, {2, 3, 4, 1}}, {28, {1, 4, 2, 3}}};
  for (const auto& [code, expected] : cases) {
    items(4);
    glo.listOrder = code;
    setReorderList();
    EXPECT_EQ(order(), expected) << code;
    EXPECT_EQ(glo.listOrderCode, code);
  }
}

TEST_F(OrderTest, ARefreshLeavesTheOrderAlone) {
  items(3);
  vote(1, {3, 2, 1});
  bool compiled = true;
  CompileSifterSorterData = [&](bool apply) { compiled = apply; };
  glo.listOrder = glo.listOrderCode = 20;
  GetAllScores();
  EXPECT_FALSE(compiled);
  EXPECT_EQ(order(), (Order{1, 2, 3}));
  EXPECT_EQ(glo.listOrderCode, 20);
}

// MultiPlot
// ---------------------------------------------------------------------------------------------------------

class MultiPlotTest : public OrderTest {
 protected:
  MultiPlotTest() { items(1); }
  MultiPlotRecord& plot(int n) { return glo.multiPlot[static_cast<std::size_t>(n)]; }
  RiskRecord& item() { return glo.risks[0]; }
};

TEST_F(MultiPlotTest, ValuesByKind) {
  struct Case {
    PlotType type;
    bool reverse;
    std::vector<float> averages;
    float other;  // below 0: the other plot takes no part
    float value;
    const char* note;
  };
  using enum PlotType;
  const Case cases[] = {
      {cumulative, false, {4, 0, 5}, -1, 9, ""},
      {cumulative, false, {4, 2}, 3, 9, ""},
      {cumulativeAverage, false, {4, 0, 5}, -1, 3, ""},
      {cumulativeAverage, false, {4, 2}, 3, 3, ""},
      {cumulativeAverage, false, {}, -1, 0, ""},
      {highest, false, {4, 5, 5}, -1, 5, "(2)"},
      {highest, false, {4, 5}, 6, 6, "9"},
      {highest, false, {0, 0}, -1, 0, ""},
      {lowest, false, {4, 0, 2, 3}, -1, 2, "(3)"},
      {lowest, false, {0, 2}, -1, 0, "(1)"},
      {lowest, false, {4, 2}, 1, 1, "9"},
      {lowest, false, {}, -1, 0, "0"},
      {product, false, {4, 0, 2}, -1, 8, ""},
      {product, false, {4, 2}, 3, 24, ""},
      {product, false, {}, 3, 3, ""},
      {quotient, false, {4, 2, 5}, -1, 0.4F, ""},
      {quotient, true, {4, 2, 5}, -1, 0.625F, ""},
      {quotient, false, {0, 2, 4}, -1, 0.5F, ""},
      {quotient, false, {8, 2}, 4, 1, ""},
      {quotient, true, {8, 2}, 4, 0.25F, ""},
      {quotient, false, {}, -1, 0, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(&c - cases);
    glo.multiPlot = {};
    // plot 1 is under test; plot 0 hands on assessment 9
    plot(1).PlotType = static_cast<int>(c.type);
    plot(1).ReverseCalc = c.reverse;
    for (std::size_t a = 0; a < c.averages.size(); ++a) {
      plot(1).Assessments[a] = true;
      item().average[a] = c.averages[a];
    }
    plot(1).Assessments[9] = c.other >= 0;
    plot(0).Assessments[8] = true;
    item().average[8] = c.other;
    GetMultiPlotValues(1);
    EXPECT_FLOAT_EQ(item().average[10], c.value);
    EXPECT_EQ(item().plotText[10], c.note);
    EXPECT_TRUE(item().active[10]);
  }
}

// A value that comes from no vote at all is no score, whatever number the formula gives.
TEST_F(MultiPlotTest, AScoreNeedsAVotedPart) {
  for (const auto& [first, other, scored] : {std::tuple{0, 0, false}, {3, 0, true}, {0, 2, true}}) {
    plot(1).Assessments[0] = plot(1).Assessments[1] = plot(1).Assessments[9] = true;
    plot(0).Assessments[8] = true;
    item().counted[0] = first;
    item().counted[2] = 5;  // takes no part
    item().counted[8] = other;
    GetMultiPlotValues(1);
    EXPECT_EQ(item().hasScore(10), scored);
    EXPECT_EQ(item().hasScore(9), other > 0);
  }
}

TEST_F(MultiPlotTest, IsSetUpWhenEnabledAndMadeOfSomething) {
  EXPECT_FALSE(multiPlotSetUp(0));
  plot(0).Enabled = true;
  plot(0).Assessments[10] = true;  // stands for nothing
  EXPECT_FALSE(multiPlotSetUp(0));
  plot(0).Assessments[9] = true;
  EXPECT_TRUE(multiPlotSetUp(0));
  plot(0).Enabled = false;
  EXPECT_FALSE(multiPlotSetUp(0));
  EXPECT_FALSE(multiPlotSetUp(2));
}

TEST_F(MultiPlotTest, PlotsThatFeedOnEachOtherComeToAnEnd) {
  plot(0).Assessments = {true, false, false, false, false, false, false, false, false, true};
  plot(1).Assessments = {false, true, false, false, false, false, false, false, false, true};
  item().average[0] = 2;
  item().average[1] = 3;
  item().average[9] = 50;
  item().counted[0] = 1;
  item().counted[9] = 50;
  GetMultiPlotValues(0);
  EXPECT_FALSE(item().hasScore(10));
  EXPECT_EQ(item().counted[9], 1);
  EXPECT_EQ(item().average[10], 3);
  EXPECT_EQ(item().average[9], 5);
  glo.assessments[0].scalePointCount = glo.assessments[1].scalePointCount = 4;
  EXPECT_EQ(GetMultiPlotMaxScale(0, false, false), 10);
}

TEST_F(MultiPlotTest, StepsOfTheAxis) {
  const std::pair<int, int> cases[] = {
      {0, 1},       {10, 1},       {11, 5},       {50, 5},       {51, 10},      {100, 10},
      {101, 50},    {500, 50},     {501, 100},    {1000, 100},   {1001, 500},   {5000, 500},
      {5001, 1000}, {10000, 1000}, {10001, 5000}, {50000, 5000}, {50001, 10000}};
  for (const auto& [maximum, step] : cases) EXPECT_EQ(GetMultiPlotAxisScaleStep(maximum), step) << maximum;
}

TEST_F(MultiPlotTest, TopOfTheAxis) {
  struct Case {
    PlotType type;
    float value;
    bool round, useData;
    int top;
  };
  using enum PlotType;
  for (const Case& c : {Case{cumulative, 0, false, true, 17}, Case{cumulative, 0, true, true, 20},
                        Case{cumulative, 36.5F, true, true, 40}, Case{cumulative, 35, true, true, 35},
                        Case{cumulative, 35, false, false, 17}, Case{highest, 99, false, true, 11},
                        Case{lowest, 99, true, true, 0}, Case{product, 0, false, false, 66},
                        Case{cumulativeAverage, 0, false, false, 9}, Case{quotient, 2.2F, false, true, 3}}) {
    glo.assessments[0].scalePointCount = 5;
    glo.assessments[1].scalePointCount = 10;
    plot(0).Assessments[0] = plot(0).Assessments[1] = true;
    plot(0).PlotType = static_cast<int>(c.type);
    item().average[9] = c.value;
    EXPECT_EQ(GetMultiPlotMaxScale(0, c.round, c.useData), c.top)
        << static_cast<int>(c.type) << " " << c.value;
  }
}

}  // namespace
}  // namespace qrn::test
