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

}  // namespace
}  // namespace qrn
