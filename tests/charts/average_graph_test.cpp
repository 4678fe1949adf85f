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
};

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
  EXPECT_TRUE(form.infoButton);
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
  const host::Element& other = *form.surface().find("bars", 0);
  form.Form_MouseDown(host::mouse::left, other.left - 10, other.top + 10);  // in its place, beside it
  EXPECT_EQ(form.List1.current(), 0);
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

// Where nobody has voted the chart says so, with numbers; nothing stands in place of a bar.
TEST_F(AverageGraph, SaysWhatIsMissing) {
  xyVoteAverageGraph& form = draw(2);
  const auto message = [&] { return all(form.surface(), "message").at(0)->toolTip; };
  EXPECT_EQ(message(), "No item has votes on Name2 yet (0 of 3)");
  glo.demographicFilterOn = true;
  form.drawGraph(2, 0);
  EXPECT_EQ(message(), "Nobody in the chosen groups has voted on Name2 (0 of 3)");
  for (const char* array : {"bars", "barValue", "gridLine"})
    EXPECT_TRUE(all(form.surface(), array).empty()) << array;
  for (RiskRecord& risk : glo.risks) risk.voting = false;
  form.redraw();
  EXPECT_EQ(message(), "None of the 3 items is in what is shown");
  addItems(0);
  form.redraw();
  EXPECT_EQ(message(), "There are no items yet");
}

// From four items to four hundred: bars stand while their whole texts do below them, else they lie, ten to
// twelve on a page; a picture, whose pages nobody turns, has all of them. Nothing is cut, small or over the
// edge, and nothing meets its neighbour.
TEST_F(AverageGraph, StaysLegibleForFewAndForMany) {
  struct Case {
    int items, own;  // bars on a page: 0 automatic, -1 a picture
    int bars;
    bool lying;
  };
  for (const auto& [width, height] : {std::pair{1024, 768}, {1920, 1080}, {3840, 2160}})
    for (const Case& c : {Case{1, 0, 1, false}, Case{4, 0, 4, false}, Case{9, 0, 9, true},
                          Case{20, 0, 10, true}, Case{26, 0, 10, true}, Case{100, 0, 12, true},
                          Case{400, 0, 12, true}, Case{20, -1, 20, true}, Case{30, 4, 4, false},
                          Case{30, 20, 20, true}, Case{90, 60, 60, false}, Case{400, -1, 400, false}}) {
      const std::string where =
          std::to_string(c.items) + "/" + std::to_string(c.own) + " at " + std::to_string(width);
      addItems(c.items);
      glo.barCountAuto = c.own <= 0;
      glo.runByAverageBarCount = c.own;
      for (int item = 0; item < c.items; ++item) {
        glo.risks[static_cast<std::size_t>(item)].text = "pumps fail for a week";
        vote(item, 1, "3;4;");
      }
      xyVoteAverageGraph& form = draw(1, width, height);
      form.request.onOnePage = c.own < 0;
      form.redraw();
      const host::Surface& surface = form.surface();
      EXPECT_EQ(form.chart.SERIES(0).kind == SeriesKind::asHorizBar, c.lying) << where;
      EXPECT_EQ(static_cast<int>(all(surface, "bars").size()), c.bars) << where;
      double end = -1, last = -1;
      for (const host::Element* label : all(surface, "bottomAxisLabel")) {
        const double wide = world.textMeasure.TextWidth(label->caption, "", label->font.size, false, false);
        const double left = c.lying ? label->top : label->left + label->width / 2 - wide / 2;
        EXPECT_GE(left, end - 1) << where;
        end = c.lying ? label->bottom() : left + wide;
        EXPECT_EQ(label->caption.find("...") == std::string::npos &&
                      label->caption.find("week") != std::string::npos,
                  c.bars <= 22)
            << where << label->caption;
        EXPECT_LE(label->bottom(), surface.height) << where;
      }
      for (const host::Element* value : all(surface, "barValue")) {
        EXPECT_GE(c.lying ? value->top : value->left, last - 1) << where;
        last = c.lying ? value->bottom() : value->right();
        EXPECT_LE(value->right(), surface.width * 0.99) << where;
      }
      for (const host::ElementArray& array : surface.arrays())
        for (const host::Element& e : array) {
          const bool small = e.font.size < look::points(look::Size::floor, surface.height) - 1e-6;
          EXPECT_FALSE(small && e.visible && !e.caption.empty()) << where << array.name();
        }
    }
}

}  // namespace
}  // namespace qrn
