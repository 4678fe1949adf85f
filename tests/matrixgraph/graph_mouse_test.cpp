// Labels and list rows under the mouse, and what a view lets through.
#include <algorithm>

#include "charts/graph_fixture.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn {
namespace {

namespace mouse = host::mouse;
using test::GraphWorld;

class GraphMouse : public GraphWorld {
 protected:
  GraphMouse() {
    registerGraphForms();
    world.dialogs.answersAll = true;  // the menus of right clicks
    addItems(4);
    for (int a = 1; a <= 2; ++a) addScale(a, "Name" + std::to_string(a), 5);
    for (int item = 0; item < 4; ++item)
      for (int a : {1, 2}) vote(item, a, std::to_string(item + 1) + ";");
    for (int item = 0; item < 4; ++item) {  // rows stand in another order than items, and no ID is an index
      RiskRecord& risk = glo.risks[static_cast<std::size_t>(item)];
      risk.ID = 40 - item;
    }
    drawMatrixGraph({1, 2, -1, -1, -1, -1, -1, -1}, 1024, 768);
  }
  xyVoteGraph& form() { return host::host().forms->as<xyVoteGraph>("xyVoteGraph"); }
  const host::Element& key(int n) { return *form().surface().find("labelRisk", n); }
  double x(int n) { return key(n).left + key(n).width / 2; }
  double y(int n) { return key(n).top + key(n).height / 2; }
  std::string selection() {
    return std::to_string(form().selectedRiskIndex) + " row " + std::to_string(form().List1.current());
  }
};

TEST_F(GraphMouse, APressSelectsTheItemAndItsRow) {
  const auto rowsWithout = [&](int risk) {
    std::vector<host::PanelRow> rows = form().List1.rows();
    std::erase_if(rows, [&](const host::PanelRow& row) { return row.id == risk; });
    form().List1.setRows(std::move(rows));
  };
  EXPECT_EQ(key(3).item, 38);
  rowsWithout(0);  // rows B C D
  form().Form_MouseDown(mouse::left, x(2), y(2));
  EXPECT_EQ(selection(), "1 row 0");
  form().Form_MouseDown(mouse::right, x(4), y(4));
  EXPECT_EQ(selection(), "3 row 2");
  form().Form_MouseDown(mouse::left, 10, 10);  // where nothing stands
  EXPECT_EQ(selection(), "3 row 2");
  form().Form_MouseDown(mouse::right, x(1), y(1));  // on the graph and not in the list
  EXPECT_EQ(selection(), "0 row 2");
  EXPECT_EQ(world.dialogs.asked.back(), "[menuHideShowAllPlots][cmd_list]") << "no rows for the item";
  form().Form_DblClick(x(3), y(3));
  EXPECT_EQ(form().List1.rows().size(), 4U) << "the list is built anew";
  EXPECT_EQ(selection(), "2 row 2");
  host::Panel& list = form().List1;
  list.select(0);
  EXPECT_EQ(selection(), "0 row 0");
  rowsWithout(3);
  list.activated(1);
  EXPECT_EQ(list.rows().size(), 4U);
  EXPECT_EQ(selection(), "1 row 1");
  const std::size_t asked = world.dialogs.asked.size();
  list.menuWanted(1);
  list.menuWanted(-1);
  EXPECT_EQ(world.dialogs.asked.size(), asked + 2);
  EXPECT_NE(world.dialogs.asked.back(), world.dialogs.asked[asked]) << "beside the rows it is the graph's";
}

TEST_F(GraphMouse, ADraggedLabelKeepsThePlaceOfThePress) {
  const double left = key(2).left, top = key(2).top;
  form().Form_MouseDown(mouse::left, left + 100, top + 50);
  form().Form_MouseMove(left + 130, top + 50);  // two pixels: a click
  EXPECT_EQ(key(2).left, left);
  form().Form_MouseMove(5000, 4000);
  form().Form_MouseUp(6000, 5000);
  EXPECT_EQ(key(2).left, 5900);
  EXPECT_EQ(key(2).top, 4950);
  const host::Element& shadow = *form().surface().find("labelRiskShadow", 2);
  EXPECT_EQ(shadow.left, 5915);
  EXPECT_EQ(shadow.top, 4965);
  EXPECT_EQ(shadow.width, key(2).width);
  EXPECT_EQ(shadow.colour, 0xffffff - key(2).colour);
  form().Form_MouseMove(100, 100);  // dropped
  form().Form_MouseDown(mouse::right, x(1), y(1));
  form().Form_MouseMove(200, 200);
  EXPECT_EQ(key(2).left, 5900);
  EXPECT_GT(key(1).left, 1000);
  form().tmr_load_Timer();
  EXPECT_EQ(key(2).left, left) << "a draw puts it back";
}

TEST_F(GraphMouse, ADoubleClickOpensTheFormOfTheItem) {
  struct ItemForm : host::Form {
    using Form::Form;
  };
  world.forms.define("editBox_Form", [] { return std::make_unique<ItemForm>("editBox_Form"); });
  world.at(0.1, [&] { world.forms.unload("editBox_Form"); });
  form().Form_DblClick(x(3), y(3));
  EXPECT_EQ(selection(), "2 row 2");
  world.at(0.1, [&] {  // the run ends while the form is up
    world.forms.unload("editBox_Form");
    world.forms.unload("xyVoteGraph");
  });
  xyVoteGraph& gone = form();
  gone.List1.activated(0);
  EXPECT_FALSE(world.forms.isLoaded("xyVoteGraph"));
}

TEST(GraphView, AMarkerStandsForAnItemUntilItIsShownAlone) {
  PlottedItem item{.risk = 0, .id = 5, .n = {1, 1, 0, 0}, .joined = {false, true, false, false}};
  GraphView view;
  view.roundVisible.fill(true);
  const auto shown = [&] {
    return std::pair(isShown(graphArray(Part::key, 1), item, view),
                     isShown(graphArray(Part::line, 1), item, view));
  };
  EXPECT_EQ(shown(), std::pair(true, true));
  EXPECT_FALSE(isShown(graphArray(Part::key, 2), item, view)) << "it has no number in pair 3";
  item.group[1] = 2;
  EXPECT_EQ(shown(), std::pair(false, true)) << "the marker of its group stands there";
  view.zoomedItem = item.id;
  EXPECT_EQ(shown(), std::pair(true, true));
  item.filtered[1] = true;
  EXPECT_EQ(shown(), std::pair(false, false));
}

}  // namespace
}  // namespace qrn
