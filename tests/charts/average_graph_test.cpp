#include "charts/graph_fixture.h"
#include "charts/xy_vote_average_graph.h"

namespace qrn {
namespace {

using test::GraphWorld;

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
};

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
  glo.demographicFilterOn = true;
  glo.demographicFilterText = "Sales";
  for (int i = 0; i < 2; ++i) lowered.lower(chart, 28800, 16200, "");
  EXPECT_EQ(lowered.builds(), 5);
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
