#include "charts/chart_display.h"

#include "charts/chart_layout.h"
#include "charts/graph_fixture.h"

namespace qrn {
namespace {

using test::GraphWorld;
using Texts = std::vector<std::string>;

class ChartDisplay : public GraphWorld {
 protected:
  static ChartRequest ask(const std::string& form, int assessment = 1) {
    ChartRequest request;
    request.form = form;
    request.width = 15360;
    request.height = 11520;
    request.assessment = assessment;
    return request;
  }
};

TEST_F(ChartDisplay, AnItemWithoutTextShowsThreeBlanks) {
  addItems(1);
  EXPECT_EQ(GetItemText(0), "item 0");
  glo.risks[0].text.clear();
  EXPECT_EQ(GetItemText(0), "   ");
  EXPECT_EQ(GetItemText(9), "   ");
}

TEST_F(ChartDisplay, AxisLabelsByFormAndScale) {
  addScale(1, "Impact", 3);
  glo.scaleLabels[0] = {"very\r\nlow", "", "high", ""};
  addScale(2, "Share", 100, 0);
  addScale(3, "Rank", 100, 1);
  struct Case {
    const char* form;
    int assessment, mode, letters;
    Texts labels;
  };
  const Case cases[] = {
      {"xyVoteRuntime", 1, 0, 0, {"very low", ".", "high"}},
      {"xyVoteDistributionGraph", 1, 2, 0, {"1", "2", "3"}},
      {"xyVoteDistributionGraph", 1, 1, 4, {"very", ".", "high"}},
      {"xyVoteRuntime", 1, 2, 0, {"very low", ".", "high"}},
      {"xyVoteRuntime", 2, 0, 0, {"0", "25", "50", "75", "100"}},
      {"xyVoteRuntime", 3, 0, 0, {"1", "25", "50", "75", "100"}},
      {"xyVoteBalance",
       1,
       0,
       0,
       {"<10", "10s", "20s", "30s", "40s", "50s", "60s", "70s", "80s", "90s", "100", "0"}},
  };
  for (const Case& c : cases) {
    ChartRequest request = ask(c.form, c.assessment);
    request.distributionAxisLabels = c.mode;
    request.distributionAxisLabelLength = c.letters;
    TChart chart;
    AddAxisLabels(request, chart, 0, false, "");
    EXPECT_EQ(chart.Axis.Bottom.Labels.Item, c.labels) << c.form << " " << c.assessment << " " << c.mode;
    EXPECT_TRUE(chart.Axis.Bottom.Labels.MultiLine);
  }
}

TEST_F(ChartDisplay, CountsTheVotesOfOneItemByOption) {
  addScale(1, "Impact", 3);
  addScale(2, "Chance", 3, 0);
  glo.opt_abstain = true;
  glo.liveVotes = {"1", "3", "3", "-2", "-100", "9", "0", "spare"};
  glo.postalVotes = {2, -2, 9, 0, 1};
  struct Case {
    int assessment, mode;
    std::vector<double> counts;
    int abstains;
  };
  for (const Case& c : {Case{1, 0, {1, 0, 2}, 1}, Case{2, 0, {1, 1, 0}, 1}, Case{1, 1, {0, 1, 0}, 0},
                        Case{1, 2, {1, 1, 2}, 1}}) {
    glo.CheckUseLivePostal = c.mode;
    ChartModel model;
    model.chart.AddSeries(SeriesKind::asBar);
    AddData(ask("xyVoteRuntime", c.assessment), model, 0, 0);
    std::vector<double> counts;
    for (const ChartPoint& point : model.chart.SERIES(0).points) counts.push_back(point.value);
    EXPECT_EQ(counts, c.counts) << c.assessment << " " << c.mode;
    EXPECT_EQ(glo.abstainCount, c.abstains);
  }
}

TEST_F(ChartDisplay, TheTitleShrinksUntilItFits) {
  TChart chart;
  ResizeChartTitle(ask("xyVoteAverageGraph"), chart, "short");
  EXPECT_EQ(chart.Header.Font.size, 37);  // 6.5 % of the height
  glo.matrixTitleFont.size = 30;
  ResizeChartTitle(ask("xyVoteAverageGraph"), chart, "short");
  EXPECT_EQ(chart.Header.Font.size, 30);
  // 0.9 of 15360 twips hold 45 characters of 0.6 x 20 x 25 points, not of 26.
  ResizeChartTitle(ask("xyVoteAverageGraph"), chart, std::string(45, 'x'));
  EXPECT_EQ(chart.Header.Font.size, 25);
}

TEST(ChartPages, HoldWhatThePageAllows) {
  struct Case {
    int points, most, current, pages, first, shown;
  };
  for (const Case& c : {Case{10, 0, 1, 1, 0, 10}, Case{10, 10, 1, 1, 0, 10}, Case{10, 4, 3, 3, 8, 2},
                        Case{10, 4, 9, 3, 8, 2}, Case{0, 4, 1, 1, 0, 0}}) {
    TChart chart;
    chart.AddSeries(SeriesKind::asBar);
    for (int i = 0; i < c.points; ++i) chart.SERIES(0).Add(i, "", 0);
    chart.Page.MaxPointsPerPage = c.most;
    chart.Page.Current = c.current;
    EXPECT_EQ(chart.pageCount(), c.pages);
    EXPECT_EQ(chart.firstPoint(), c.first);
    EXPECT_EQ(chart.pointsOnPage(), c.shown);
  }
}

// Values and points lead to places and back, whichever way the chart lies.
TEST_F(ChartDisplay, GeometryLeadsThereAndBack) {
  for (const bool lying : {false, true})
    for (const bool inverted : {false, true}) {
      TChart chart;
      ChartSeries& series = chart.SERIES(chart.AddSeries(lying ? SeriesKind::asHorizBar : SeriesKind::asBar));
      for (int i = 0; i < 7; ++i) series.Add(i, "", 0xffffff, 10 + i);
      chart.Axis.Left.Automatic = chart.Axis.Left.AutomaticMinimum = chart.Axis.Left.AutomaticMaximum = false;
      chart.Axis.Left.Minimum = -1;
      chart.Axis.Left.Maximum = 9;
      chart.Axis.Left.Inverted = inverted;
      chart.Page.MaxPointsPerPage = 4;
      chart.Page.Current = 2;
      ChartSurface lowered;
      const host::Surface& surface = lowered.lower(chart, 15360, 11520, "");
      const ChartGeometry& geometry = lowered.geometry();
      for (const double value : {-1.0, 2.5, 9.0})
        EXPECT_NEAR(geometry.valueAt(geometry.placeOf(value)), value, 1e-9) << lying << inverted;
      for (int point = 4; point < 7; ++point) {
        const host::Element& bar = *surface.find("bars", point);
        EXPECT_EQ(bar.item, 10 + point);
        EXPECT_NEAR(lying ? bar.top + bar.height / 2 : bar.left + bar.width / 2, geometry.middleOf(point),
                    1e-6);
        const ChartArea slot = geometry.slotOf(point);
        EXPECT_EQ(geometry.pointAt(slot.left + slot.width / 2, slot.top + slot.height / 2), point);
      }
      const ChartArea spare = geometry.slotOf(7);  // the page holds four, and three are left
      EXPECT_FALSE(geometry.pointAt(spare.left + 1, spare.top + 1)) << lying;
      EXPECT_FALSE(geometry.pointAt(geometry.plot.left - 1, geometry.plot.top + 1)) << lying;
      if (!inverted) {
        const host::Element& bar = *surface.find("bars", 5);
        EXPECT_NEAR(lying ? bar.right() : bar.top, geometry.placeOf(5), 1e-6);
      }
    }
}

}  // namespace
}  // namespace qrn
