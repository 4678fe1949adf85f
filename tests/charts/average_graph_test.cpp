#include "base/errors.h"
#include "charts/graph_fixture.h"
#include "charts/xy_vote_average_graph.h"

namespace qrn {
namespace {

using test::GraphWorld;
using Texts = std::vector<std::string>;

class AverageGraph : public GraphWorld {
 protected:
  AverageGraph() {
    registerChartForms();
    addItems(3);
    for (int a = 1; a <= 5; ++a) addScale(a, "Name" + std::to_string(a), 5);
    vote(0, 1, "4;5;");
    vote(0, 3, "2;2;");
    vote(1, 1, "2;");
    vote(1, 3, "-;-;");
  }
  xyVoteAverageGraph& draw(int assessment = 1, int width = 1024, int height = 768) {
    drawAverageGraph(assessment, width, height);
    return host::host().forms->as<xyVoteAverageGraph>("xyVoteAverageGraph");
  }
  static std::vector<double> values(const xyVoteAverageGraph& form) {
    std::vector<double> all;
    for (const ChartPoint& point : form.chart.SERIES(0).points) all.push_back(point.value);
    return all;
  }
  static const host::Element& first(const host::Surface& surface, const std::string& array) {
    return *all(surface, array, false).front();
  }
};

TEST_F(AverageGraph, ShowsOneBarForEachItemWithAScore) {
  xyVoteAverageGraph& form = draw();
  EXPECT_EQ(captions(form.surface(), "header"), Texts{"Average: Name1"});
  EXPECT_EQ(captions(form.surface(), "barValue"), (Texts{"4.50", "2.00"}));
  EXPECT_EQ(captions(form.surface(), "bottomAxisLabel"), (Texts{"A: item 0", "B: item 1"}));
  EXPECT_TRUE(form.infoButton);  // item 2 has no votes
  EXPECT_EQ(form.infoText, "Data not found for these items: \r\nitem 2, assessment 1");
  // On a scale of 1 to 5 the bar of 4.5 is seven eighths of the axis and that of 2 a quarter.
  const auto bars = all(form.surface(), "bars");
  const host::Element& axis = first(form.surface(), "axisLine");
  EXPECT_NEAR(bars[0]->height, (axis.y2 - axis.y1) * 0.875, 1);
  EXPECT_NEAR(bars[1]->height, (axis.y2 - axis.y1) * 0.25, 1);
}

TEST_F(AverageGraph, CumulativeIsTheMeanOfTheAssessmentsVoted) {
  xyVoteAverageGraph& form = draw();
  form.drawGraphCategoriesCumulative();
  EXPECT_EQ(glo.averageDisplayKind, 19);
  EXPECT_TRUE(glo.showCumulative);
  EXPECT_EQ(values(form), (std::vector<double>{3.25, 2}));  // (4.5 + 2) / 2; item 1 abstained on the third
  EXPECT_EQ(captions(form.surface(), "header"), Texts{"Cumulative averages"});
  form.drawGraph(1, 0);
  EXPECT_EQ(glo.averageDisplayKind, 0);
  EXPECT_FALSE(glo.showCumulative);
  // One that is not active any more keeps its bars, and goes into no mean.
  glo.assessmentInfo[0].active = false;
  form.drawGraph(1, 0);
  EXPECT_EQ(values(form), (std::vector<double>{4.5, 2}));
  form.drawGraphCategoriesCumulative();
  EXPECT_EQ(values(form), std::vector<double>{2});
  form.drawGraphCategories();
  form.Form_Load();
  EXPECT_EQ(captions(form.surface(), "header"), Texts{"Average: Name2"}) << "the first one in use";
}

// On a scale from 0 an average of 0 is a score like any other, and a record without a counted vote is none.
TEST_F(AverageGraph, WhatNobodyVotedOnIsNoScore) {
  for (int a = 1; a <= 3; ++a) addScale(a, "Name" + std::to_string(a), 5, 0);
  glo.multiPlot[0].Assessments[1] = glo.multiPlot[0].Assessments[2] = true;
  vote(0, 1, "0;0;X;");
  vote(0, 2, "3;");
  vote(1, 1, "X;-;");
  vote(1, 2, "4;");
  xyVoteAverageGraph& form = draw();
  EXPECT_EQ(captions(form.surface(), "barValue"), Texts{"0.00"});
  EXPECT_EQ(form.infoText,
            "Data not found for these items: \r\nitem 1, assessment 1\r\nitem 2, assessment 1");
  form.drawGraphDiversity();
  EXPECT_EQ(form.List1.rows().size(), 1U);
  form.drawGraphCategoriesCumulative();
  EXPECT_EQ(values(form), (std::vector<double>{5.0F / 3, 4}));  // 0, 3 and 2; 4 alone
  form.drawGraph(10, 0);
  EXPECT_EQ(values(form), (std::vector<double>{5, 4}));
  // The filter leaves nobody: nothing to show, and it is said.
  glo.demographicQuestions = {{1, 1, "", "", "d,t,2;2;2;", 1, true, {{1, "Sales", true}}}};
  glo.demographicFilterOn = true;
  form.drawGraph(1, 0);
  EXPECT_TRUE(form.List1.rows().empty());
  EXPECT_NE(form.infoText.find("item 0, assessment 1"), std::string::npos);
  form.drawGraphCategoriesCumulative();
  EXPECT_TRUE(form.List1.rows().empty());
}

TEST_F(AverageGraph, WeightedCumulativeTakesMissingAveragesAsTheyStand) {
  for (std::size_t a : {0, 1, 2}) {
    glo.assessmentInfo[a].weightingOn = true;
    glo.assessmentInfo[a].weight = static_cast<int>(a) + 1;
  }
  xyVoteAverageGraph& form = draw();
  form.drawGraphCategoriesWeightedCumulative();
  EXPECT_EQ(glo.averageDisplayKind, 21);
  ASSERT_EQ(values(form).size(), 2U);
  EXPECT_NEAR(values(form)[0], 4.5 / 6 + 0 * 2.0 / 6 + 2.0 * 3 / 6, 1e-6);
  EXPECT_NEAR(values(form)[1], 2.0 / 6, 1e-6);
}

TEST_F(AverageGraph, WithoutWeightsTheKindStays) {
  xyVoteAverageGraph& form = draw();
  form.drawGraphCategoriesCumulative();
  world.expectMsgBox("quorin matrix: No weightings have been selected");
  form.drawGraphCategoriesWeightedCumulative();
  EXPECT_EQ(glo.averageDisplayKind, 19);
  EXPECT_EQ(captions(form.surface(), "header"), Texts{"Cumulative averages"});
}

TEST_F(AverageGraph, OtherKindsHaveTheirOwnScaleAndTitle) {
  glo.multiPlot[1].Enabled = true;
  glo.multiPlot[1].Assessments[0] = true;
  glo.assessmentTitles[10] = "Exposure";
  xyVoteAverageGraph& form = draw(11);
  EXPECT_EQ(captions(form.surface(), "header"), Texts{"Exposure"});
  EXPECT_EQ(captions(form.surface(), "barValue"), (Texts{"4.50", "2.00"}));
  form.drawGraphDiversity();
  EXPECT_EQ(captions(form.surface(), "barValue"), (Texts{"25.00%", "0.00%"}));
  EXPECT_EQ(form.chart.Axis.Left.Maximum, 1);
  EXPECT_THROW(drawAverageGraph(12, 1024, 768), HostError);
}

TEST_F(AverageGraph, AStoredRoundShowsWhatWasStored) {
  glo.risks[0].rounds[0][2] = {"", 0, 1};
  glo.risks[1].rounds[0][2] = {"before lunch", 3.5F, 2};
  xyVoteAverageGraph& form = draw();
  form.drawGraph(1, 3);
  EXPECT_EQ(captions(form.surface(), "barValue"), (Texts{"0.00", "3.50"}));
  EXPECT_EQ(form.List1.rows()[1].cells[0], "B: item 1");
}

TEST_F(AverageGraph, CategoryLabelNamesTheSelectedOnes) {
  glo.categories.assign(3, CategoryRecord{});
  glo.categories[0].CategoryName = "unallocated";
  glo.categories[1].CategoryName = "Plant";
  xyVoteAverageGraph& form = draw();
  EXPECT_EQ(form.DoCategoryLabel(), "Category: ALL   ");
  glo.categories.insert(glo.categories.begin() + 2, CategoryRecord{});
  glo.categories[2].CategoryName = "People";
  glo.categories[0].Selected = false;
  EXPECT_EQ(form.DoCategoryLabel(), "Category: Plant, People");
}

TEST_F(AverageGraph, AClickOnABarSelectsItsItem) {
  xyVoteAverageGraph& form = draw();
  const host::Element& bar = *form.surface().find("bars", 1);
  form.Form_MouseDown(host::mouse::left, bar.left + 10, bar.bottom() - 10);
  EXPECT_EQ(form.List1.current(), 1);
  form.Form_MouseDown(host::mouse::left, 5, 5);
  EXPECT_EQ(form.List1.current(), 1);
}

TEST_F(AverageGraph, LowersAgainOnlyForOtherDataOrSize) {
  ChartSurface lowered;
  TChart chart = draw().chart;
  lowered.lower(chart, 15360, 11520, "");
  lowered.lower(chart, 15360, 11520, "");
  EXPECT_EQ(lowered.builds(), 1);
  chart.SERIES(0).points[0].value += 1;
  lowered.lower(chart, 15360, 11520, "");
  lowered.lower(chart, 28800, 16200, "");
  EXPECT_EQ(lowered.builds(), 3);
  glo.backgroundStart = {0, 0, 0};
  lowered.lower(chart, 28800, 16200, "");
  EXPECT_EQ(lowered.builds(), 4);
}

// A text that has no room whole under its bar stands in a legend; nothing is cut while there is room for one.
TEST_F(AverageGraph, NamesItsBarsInFull) {
  struct Case {
    int items;
    std::size_t legendRows;
  };
  for (const Case& c : {Case{1, 0}, Case{4, 0}, Case{20, 20}, Case{90, 0}}) {
    addItems(c.items);
    for (int item = 0; item < c.items; ++item) {
      glo.risks[static_cast<std::size_t>(item)].text = "the pumps fail for a week";
      vote(item, 1, "3;");
    }
    const host::Surface& surface = draw(1, 1920, 1080).surface();
    const auto labels = all(surface, "bottomAxisLabel"), rows = all(surface, "legendRow");
    EXPECT_EQ(rows.size(), c.legendRows) << c.items;
    EXPECT_EQ(labels.front()->caption.find("week") != std::string::npos, c.items <= 4) << c.items;
    for (const host::Element* row : rows) {
      EXPECT_EQ(row->caption, row->toolTip);
      EXPECT_GE(row->top, labels.front()->top + labels.front()->height);
      EXPECT_LE(row->top + row->height, surface.height);
      EXPECT_LE(row->left + world.textMeasure.TextWidth(row->caption, "", row->font.size, false, false),
                surface.width);
    }
  }
}

// From four items to four hundred nothing runs into its neighbour or over the edge.
TEST_F(AverageGraph, StaysLegibleForFewAndForMany) {
  for (const auto& [width, height] : {std::pair{1024, 768}, {3840, 2160}})
    for (const auto& [items, automatic] :
         {std::pair{1, true}, {4, true}, {35, true}, {400, true}, {400, false}}) {
      addItems(items);
      glo.barCountAuto = automatic;
      for (int item = 0; item < items; ++item) {
        glo.risks[static_cast<std::size_t>(item)].text = "the supplier of the cooling plant fails for a week";
        vote(item, 1, "3;4;");
      }
      glo.runByAverageBarCount = items;
      xyVoteAverageGraph& form = draw(1, width, height);
      form.request.onOnePage = false;
      form.redraw();
      const host::Surface& surface = form.surface();
      double end = -1;
      for (const host::Element* label : all(surface, "bottomAxisLabel")) {
        const double wide = world.textMeasure.TextWidth(label->caption, "", label->font.size, true, false);
        const double left = label->left + label->width / 2 - wide / 2;
        EXPECT_GE(left, end) << items << " items at " << width;
        end = left + wide;
        EXPECT_LE(label->top + label->height, surface.height);
        EXPECT_FALSE(label->caption.empty());
      }
      EXPECT_LE(end, surface.width);
      end = 0;
      for (const host::Element* value : all(surface, "barValue")) {
        EXPECT_GE(value->left, end - 1) << items << " items at " << width;
        end = value->left + value->width;
      }
      EXPECT_FALSE(all(surface, "bottomAxisLabel").empty());
      const auto bars = static_cast<int>(all(surface, "bars").size());
      EXPECT_GE(bars, automatic ? std::min(items, 35) : items);
      EXPECT_LE(bars, automatic ? std::min(items, 60) : items);
    }
}

}  // namespace
}  // namespace qrn
