#include "host/panel.h"

#include <gtest/gtest.h>

#include "host/forms.h"

namespace qrn::host {
namespace {

PanelRow row(int id, int depth = 0) {
  PanelRow one;
  one.cells = {"row " + std::to_string(id)};
  one.id = id;
  one.depth = depth;
  return one;
}

// Rows 10, 11 (disabled), 12, 13, 14.
struct PanelTest : ::testing::Test {
  PanelTest() {
    std::vector<PanelRow> rows;
    for (int id = 10; id < 15; ++id) rows.push_back(row(id));
    rows[1].enabled = false;
    rows[2].checkable = true;
    panel.setRows(rows);
    panel.selectionChanged = [this](int at) { told.push_back(at); };
  }
  Panel panel;
  std::vector<int> told;
};

TEST_F(PanelTest, KeysPassOverWhatIsDisabledAndStopAtTheEnds) {
  struct Step {
    int key, current;
  };
  for (const auto& [key, current] :
       {Step{key::down, 0}, Step{key::down, 2}, Step{key::end, 4}, Step{key::down, 4}, Step{key::pageUp, 0},
        Step{key::up, 0}, Step{key::pageDown, 4}, Step{key::home, 0}}) {
    EXPECT_TRUE(panel.keyDown(key, 0));
    EXPECT_EQ(panel.current(), current) << key;
  }
  EXPECT_EQ(told.size(), 8U);
  EXPECT_FALSE(panel.keyDown(key::f3, 0));
}

TEST_F(PanelTest, SeveralAreSelectedByShiftAndCtrl) {
  panel.select(0);
  panel.select(3, Panel::How::range);
  EXPECT_EQ(panel.selected(), (std::vector<int>{3})) << "one at a time, unless told otherwise";
  panel.multiSelect = true;
  panel.select(0);
  panel.select(3, Panel::How::range);
  EXPECT_EQ(panel.selected(), (std::vector<int>{0, 2, 3}));
  panel.select(2, Panel::How::add);
  panel.select(4, Panel::How::add);
  EXPECT_EQ(panel.selected(), (std::vector<int>{0, 3, 4}));
  EXPECT_TRUE(panel.keyDown('A', key::ctrlMask));
  EXPECT_EQ(panel.selected(), (std::vector<int>{0, 2, 3, 4}));
}

TEST_F(PanelTest, NewRowsKeepTheSelectionByWhatTheyStandFor) {
  panel.multiSelect = true;
  panel.select(2);
  panel.select(4, Panel::How::add);
  panel.setRows({row(14), row(10), row(12)});
  EXPECT_EQ(panel.selected(), (std::vector<int>{0, 2}));
  EXPECT_EQ(panel.current(), 0);
  panel.setRows({row(99)});
  EXPECT_TRUE(panel.selected().empty());
  EXPECT_EQ(panel.current(), -1);
}

TEST_F(PanelTest, SpaceTicksEnterOpensAndLettersFind) {
  int opened = -1, ticked = -1;
  panel.activated = [&](int at) { opened = at; };
  panel.toggled = [&](int at) { ticked = at; };
  panel.select(0);
  EXPECT_FALSE(panel.keyDown(key::space, 0)) << "no box to tick";
  EXPECT_TRUE(panel.typeAhead("ROW 12"));
  EXPECT_TRUE(panel.keyDown(key::space, 0));
  EXPECT_TRUE(panel.keyDown(key::enter, 0));
  EXPECT_EQ(ticked, 2);
  EXPECT_EQ(opened, 2);
  EXPECT_TRUE(panel.rows()[2].checked);
  EXPECT_FALSE(panel.typeAhead("row 11")) << "it is disabled";
}

TEST(PanelTree, ClosedRowsHideWhatIsBelowThem) {
  Panel tree;
  tree.setRows({row(1), row(2, 1), row(3, 2), row(4, 1), row(5)});
  tree.select(2);
  EXPECT_TRUE(tree.keyDown(key::left, 0));  // to the row above it
  EXPECT_EQ(tree.current(), 1);
  EXPECT_TRUE(tree.keyDown(key::left, 0));  // closes that
  EXPECT_FALSE(tree.shown(2));
  EXPECT_TRUE(tree.shown(3));
  EXPECT_TRUE(tree.keyDown(key::down, 0));
  EXPECT_EQ(tree.current(), 3);
  tree.setOpen(0, false);
  EXPECT_EQ(tree.current(), 0) << "what is at hand does not stay hidden";
  EXPECT_FALSE(tree.shown(2));
  EXPECT_TRUE(tree.keyDown(key::right, 0));
  EXPECT_TRUE(tree.shown(3));
  EXPECT_FALSE(tree.shown(2)) << "its own row is closed still";
}

}  // namespace
}  // namespace qrn::host
