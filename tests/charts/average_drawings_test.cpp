// The average graph as it is drawn, told in case files: where everything stands, in which type and colour.
#include <set>

#include "charts/graph_fixture.h"
#include "charts/xy_vote_average_graph.h"

namespace qrn::test {
namespace {

class AverageDrawings : public GraphCase {
 protected:
  AverageDrawings() {
    registerChartForms();
    // voted ASSESSMENT VOTES ...: of the items in their order
    on("voted", [](const Words& words) {
      for (std::size_t item = 1; item < words.size(); ++item)
        addVote(static_cast<int>(item) - 1, words.number(0), words[item]);
    });
    on("everyone", [](const Words& words) {
      for (int item = 0; item < glo.itemCount(); ++item) addVote(item, words.number(0), words[1]);
    });
    on("file", [this](const Words& words) { world.files.files[words[0]] = "x"; });
    on("toned", [this](const Words& words) {
      world.presentation.scheme[1] = words.number(0);
      runLine("draw 1");
      runLine("drawing " + words.rest(1));
    });
    on("corner", [this](const Words& words) {
      world.forms.unload("xyVoteAverageGraph");
      glo.opt_StatsBoxPosition = words[0];
      runLine("draw 1");
      runLine("drawing lbl_filter LabelCategory header");
    });
    on("round", [this](const Words& words) {
      form().drawGraph(1, words.number(0));
      tellCaptions("barValue");
    });
    on("ordered", [this](const Words& words) {
      runLine("voted 1 " + words.rest(0));
      runLine("draw 1");
      tellCaptions("subtitle");
    });
    on("onpages", [this](const Words& words) {
      addItems(words.number(0));
      glo.item(0).text += words.rest(1);
      runLine("everyone 1 3;");
      runLine("draw 1");
      form().request.onOnePage = false;
      form().redraw();
      tell(form().chart.pageCount(), " of ", form().chart.pointsOnPage());
    });
    // gaps: between the bars, in pixels
    on("gaps", [this](const Words&) {
      std::set<double> gaps;
      const host::ElementArray& bars = *surface().find("bars");
      for (std::size_t i = 1; i < bars.size(); ++i) gaps.insert((bars[i].left - bars[i - 1].right()) / 15);
      for (const double gap : gaps) tell(gap);
    });
    // stored ITEM ROUND ASSESSMENT AVERAGE COUNTED LABEL
    on("stored", [](const Words& words) {
      glo.item(words.number(0))
          .rounds[static_cast<std::size_t>(words.number(2) - 1)][static_cast<std::size_t>(
              words.number(1) - 1)] = {words.word(5), std::stof(words[3]), words.number(4)};
    });
    // filter ANSWERS GROUP: the first answer is in it
    on("filter", [](const Words& words) {
      glo.demographicQuestions = {{1, 1, "", "", "d,t," + words[0], 1, true, {{1, words[1], true}}}};
      glo.demographicFilterOn = true;
    });
    on("categories", [](const Words& words) {
      glo.categories.assign(words.size() + 1, CategoryRecord{});
      for (std::size_t c = 0; c < words.size(); ++c) glo.categories[c].CategoryName = words[c];
    });
    // draw ASSESSMENT [WIDTH HEIGHT]
    on("draw", [](const Words& words) {
      drawAverageGraph(words.number(0), words.size() > 1 ? words.number(1) : 1024,
                       words.size() > 2 ? words.number(2) : 768);
    });
    // assessment NUMBER [ROUND]
    on("assessment", [this](const Words& words) {
      form().drawGraph(words.number(0), words.size() > 1 ? words.number(1) : 0);
    });
    on("first", [this](const Words&) { form().drawGraphCategories(), form().Form_Load(); });
    on("cumulative", [this](const Words&) { form().drawGraphCategoriesCumulative(); });
    on("weighted", [this](const Words&) { form().drawGraphCategoriesWeightedCumulative(); });
    on("diversity", [this](const Words&) { form().drawGraphDiversity(); });
    on("select", [this](const Words& words) { form().selectItem(words.number(0)); });
    on("perform", [this](const Words& words) { form().actions().perform(words[0]); });
    on("click", [this](const Words& words) {
      form().Form_MouseDown(host::mouse::left, words.number(0), words.number(1));
      tell("row ", form().List1.current());
    });
    on("rows", [this](const Words&) { tellRows(form().List1); });
    on("values", [this](const Words&) {
      for (const ChartPoint& point : form().chart.SERIES(0).points) tell(point.value);
    });
    on("info", [this](const Words&) {
      tell(form().infoButton ? "offered: " : "not offered: ", escaped(form().infoText));
    });
    on("label", [this](const Words&) { tell(form().DoCategoryLabel()); });
  }
  xyVoteAverageGraph& form() { return world.forms.as<xyVoteAverageGraph>("xyVoteAverageGraph"); }
  const host::Surface& surface() override { return form().surface(); }
};

const bool kRegistered =
    registerCases<AverageDrawings>("AverageDrawings", QUORIN_CASES "/average_drawings.case") &&
    registerCases<AverageDrawings>("AverageGraphCase", QUORIN_CASES "/average_graph.case");

}  // namespace
}  // namespace qrn::test
