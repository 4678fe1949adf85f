#include "charts/graph_fixture.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn {
namespace {

namespace key = host::key;
using test::GraphWorld;
using Texts = std::vector<std::string>;

class GraphKeys : public GraphWorld {
 protected:
  GraphKeys() {
    registerGraphForms();
    addItems(30);  // "A" to "Z", "A2" to "D2"
    for (int a = 1; a <= 4; ++a) addScale(a, "Name" + std::to_string(a), 5);
    for (int item : {0, 1, 2, 27})
      for (int a : {1, 2}) vote(item, a, "3;");
    vote(0, 3, "4;");  // A alone stands in pair 2
    vote(0, 4, "4;");
    vote(3, 3, "4;");  // D stands in pair 2 only
    vote(3, 4, "4;");
  }
  xyVoteGraph& draw(const PlotRequest& pairs) {
    drawMatrixGraph(pairs, 1024, 768);
    return host::host().forms->as<xyVoteGraph>("xyVoteGraph");
  }
  static Texts shown(const xyVoteGraph& form) {
    Texts texts;
    for (const char* array : {"labelRisk", "labelRiskRound2"})
      for (const std::string& text : captions(form.surface(), array)) texts.push_back(text);
    return texts;
  }
  const PlotRequest pairs_{1, 2, 3, 4, -1, -1, -1, -1};
  const Texts everything_{"A", "B", "C", "B2", "A\u00b9", "D\u00b9"};
};

TEST_F(GraphKeys, ALetterShowsItsItemAloneInAllPairs) {
  xyVoteGraph& form = draw(pairs_);
  ASSERT_EQ(shown(form), everything_);
  const auto builtBefore = form.surface().elementCount();
  form.Form_KeyPress('a');
  EXPECT_EQ(shown(form), (Texts{"A", "A\u00b9"}));
  EXPECT_EQ(all(form.surface(), "lineRound1ToRound2").size(), 1U);
  EXPECT_EQ(form.graphTitle, "A: item 0");
  EXPECT_EQ(form.List1[static_cast<std::size_t>(form.ListIndex)].text, "A: item 0");
  form.Form_KeyPress('B');
  EXPECT_EQ(shown(form), Texts{"B"});
  EXPECT_TRUE(all(form.surface(), "lineRound1ToRound2").empty());
  form.Form_KeyDown('A', key::ctrlMask);
  EXPECT_EQ(shown(form), everything_);
  EXPECT_EQ(form.graphTitle, "Workshop");
  EXPECT_EQ(form.surface().elementCount(), builtBefore);
}

TEST_F(GraphKeys, TheSuffixStaysUntilItIsTakenBack) {
  xyVoteGraph& form = draw(pairs_);
  form.Form_KeyDown('2', key::shiftMask);
  form.Form_KeyPress('b');
  EXPECT_EQ(shown(form), Texts{"B2"});
  form.Form_KeyDown('0', key::shiftMask);
  form.Form_KeyPress('b');
  EXPECT_EQ(shown(form), Texts{"B"});
}

TEST_F(GraphKeys, TheSameLetterTwiceGoesToTheDistribution) {
  xyVoteGraph& form = draw(pairs_);
  form.Form_KeyPress('B');
  form.Form_KeyPress('A');  // another letter in between starts again
  form.Form_KeyPress('B');
  EXPECT_EQ(form.distributionRisk, -1);
  form.Form_KeyPress('B');
  EXPECT_EQ(form.distributionRisk, 1);
  EXPECT_EQ(form.distributionPairs, (PlotRequest{1, 2, -1, -1, -1, -1, -1, -1}));  // B is in pair 1 alone
  EXPECT_EQ(form.zoomedItemKey, "");
}

TEST_F(GraphKeys, TellsWhyALetterShowsNothing) {
  glo.risks[4].voting = false;
  xyVoteGraph& form = draw(pairs_);
  struct Case {
    char letter;
    const char* suffix;
    bool filter;
    const char* message;
  };
  const Case cases[] = {
      {'D', "", false, "quorin matrix: Item D\r\n does not have enough data to graph"},
      {'E', "", false, "quorin matrix: Item E\r\n is not currently displayed"},
      {'A', "9", false, "quorin matrix: Item A9\r\n does not exist in the list"},
      {'E', "", true, "quorin matrix: Item E\r\n is not in the active filter"},
  };
  for (const Case& c : cases) {
    form.itemKeySuffix = c.suffix;
    form.graphFilterActive = c.filter;
    form.zoomedItemKey.clear();
    world.expectMsgBox(c.message);
    form.Form_KeyPress(c.letter);
  }
}

TEST_F(GraphKeys, LettersNeverZoomWhileAMultiPlotIsShown) {
  glo.multiPlot[0].Enabled = true;
  glo.multiPlot[0].Assessments[0] = true;
  xyVoteGraph& form = draw({10, 2, -1, -1, -1, -1, -1, -1});
  ASSERT_TRUE(form.showingMultiPlot);
  const Texts before = shown(form);
  world.expectMsgBox("Cannot zoom in whilst showing MultiPlot");
  form.Form_KeyPress('A');
  world.expectMsgBox("Zoom unavailable whilst showing MultiPlot");
  form.Form_KeyPress('A');
  glo.OptionMatrixItemNavigation = 1;
  world.expectMsgBox("Cannot zoom in whilst showing MultiPlot");
  form.Form_KeyPress('A');
  EXPECT_EQ(shown(form), before);
}

TEST_F(GraphKeys, ItemNavigationGoesStraightToTheDistribution) {
  glo.OptionMatrixItemNavigation = 1;
  xyVoteGraph& form = draw(pairs_);
  form.Form_KeyPress('A');
  EXPECT_EQ(form.distributionRisk, 0);
  EXPECT_EQ(form.distributionPairs, pairs_);
  EXPECT_EQ(shown(form), everything_);
  world.expectMsgBox("Nothing defined for this item");
  form.Form_KeyPress('Z');
}

TEST_F(GraphKeys, EscShowsAllFirstAndClosesThen) {
  struct Case {
    const char* mode;
    bool staysOpen;
  };
  for (const Case& c : {Case{"DISPLAY", true}, Case{"EDIT", false}}) {
    glo.cmdMode = c.mode;
    xyVoteGraph& form = draw(pairs_);
    form.Form_KeyPress('A');
    form.Form_KeyDown(key::escape, 0);
    EXPECT_EQ(shown(form), everything_) << c.mode;
    form.Form_KeyDown(key::space, 0);
    EXPECT_EQ(world.forms.isLoaded("xyVoteGraph"), c.staysOpen) << c.mode;
    draw(pairs_).Form_KeyDown(key::pageDown, 0);  // the show moves on, and nothing else has that key
    EXPECT_EQ(world.forms.isLoaded("xyVoteGraph"), !c.staysOpen) << c.mode;
  }
}

TEST_F(GraphKeys, AListOfOneRowIgnoresEveryKey) {
  for (std::size_t item = 1; item < 30; ++item) glo.risks[item].voting = false;
  xyVoteGraph& form = draw(pairs_);
  ASSERT_EQ(form.List1.size(), 1U);
  form.Form_KeyPress('A');
  form.Form_KeyDown(key::escape, 0);
  form.Form_KeyDown('3', key::shiftMask);
  EXPECT_TRUE(world.forms.isLoaded("xyVoteGraph"));
  EXPECT_EQ(form.zoomedItemKey + form.itemKeySuffix, "");
  EXPECT_FALSE(form.keyHandled);
}

TEST_F(GraphKeys, PairsAndTheirLinesHideWithoutADraw) {
  xyVoteGraph& form = draw(pairs_);
  form.menuPairLines();
  EXPECT_TRUE(all(form.surface(), "lineRound1ToRound2").empty());
  EXPECT_TRUE(all(form.surface(), "endOfLine1to2Blob").empty());
  form.tmr_load_Timer();  // off stays off
  EXPECT_TRUE(all(form.surface(), "lineRound1ToRound2").empty());
  form.menuPairLines();
  EXPECT_EQ(all(form.surface(), "lineRound1ToRound2").size(), 1U);
  form.menuHideShowRound(2);
  EXPECT_EQ(shown(form), (Texts{"A", "B", "C", "B2"}));
  EXPECT_TRUE(all(form.surface(), "labelRiskRound2Shadow").empty());
  EXPECT_TRUE(all(form.surface(), "lineRound1ToRound2").empty());
  form.menuHideShowRound(3);  // no such pair on the graph
  EXPECT_FALSE(form.view.roundVisible[2]);
  form.menuHideShowAllPlots();
  EXPECT_EQ(shown(form), everything_);
  EXPECT_EQ(all(form.surface(), "lineRound1ToRound2").size(), 1U);
}

}  // namespace
}  // namespace qrn
