// The average graph as it is drawn, told in case files: where everything stands, in which type and colour.
#include "charts/xy_vote_average_graph.h"
#include "support/drawing.h"
#include "support/run_case.h"

namespace qrn::test {
namespace {

class AverageDrawings : public RunCase {
 protected:
  AverageDrawings() {
    registerChartForms();
    glo.voteRecords.assign("");
    glo.postalRecords.assign("");
    on("plots", [](const Words& words) { addItems(words.number(0)); });
    // voted ASSESSMENT VOTES ...: of the items in their order
    on("voted", [](const Words& words) {
      for (std::size_t item = 1; item < words.size(); ++item)
        addVote(static_cast<int>(item) - 1, words.number(0), words[item]);
    });
    // filter ANSWERS GROUP: the first answer is in it
    on("filter", [](const Words& words) {
      glo.demographicQuestions = {{1, 1, "", "", "d,t," + words[0], 1, true, {{1, words[1], true}}}};
      glo.demographicFilterOn = true;
    });
    // draw ASSESSMENT [WIDTH HEIGHT]
    on("draw", [](const Words& words) {
      drawAverageGraph(words.number(0), words.size() > 1 ? words.number(1) : 1024,
                       words.size() > 2 ? words.number(2) : 768);
    });
    on("cumulative", [this](const Words&) { form().drawGraphCategoriesCumulative(); });
    on("diversity", [this](const Words&) { form().drawGraphDiversity(); });
    on("select", [this](const Words& words) { form().selectItem(words.number(0)); });
    on("perform", [this](const Words& words) { form().actions().perform(words[0]); });
    on("drawing", [this](const Words& words) { tell(drawingOf(form().surface(), words)); });
  }
  xyVoteAverageGraph& form() { return world.forms.as<xyVoteAverageGraph>("xyVoteAverageGraph"); }
};

const bool kRegistered =
    registerCases<AverageDrawings>("AverageDrawings", QUORIN_CASES "/average_drawings.case");

}  // namespace
}  // namespace qrn::test
