// What the facilitator does on the average graph, told in case files.
#include "analysis/weighting_selector.h"
#include "charts/graph_fixture.h"
#include "charts/xy_vote_average_graph.h"
#include "core/edit.h"
#include "support/action_cases.h"

namespace qrn {
namespace {

using test::Words;

class AverageKeys : public test::ActionCases, protected test::GraphExercise {
 protected:
  AverageKeys() {
    registerChartForms();
    addItems(10);
    for (int a : {1, 3, 9}) addScale(a, "Name" + std::to_string(a), 5);
    for (int item = 0; item < 10; ++item) vote(item, 1, "3;4;");
    for (int item = 0; item < 9; ++item) vote(item, 3, "5;");
    glo.barCountAuto = false;
    glo.runByAverageBarCount = 4;
    glo.currentAssessment = 1;
    exerciseHistory().begin();
    on("draw", [this](const Words&) { renew(); });
    on("mode", [](const Words& words) { glo.cmdMode = words.word(0); });
    on("multiplot", [](const Words&) { glo.multiPlot[0].Enabled = glo.multiPlot[0].Assessments[0] = true; });
    on("multiplots", [this](const Words&) {
      for (std::size_t plot = 0; plot < 2; ++plot) {
        const MultiPlotRecord& record = glo.multiPlot[plot];
        std::string parts;
        for (std::size_t part = 0; part < 10; ++part)
          if (record.Assessments[part])
            parts += " " + std::to_string(part) + ":" + record.ToolTips[part];
        tell(glo.assessmentTitles[9 + plot], (record.Enabled ? " on" : " off"), parts, " type ",
             record.PlotType, (record.ReverseCalc ? " reversed" : ""));
      }
    });
    // right ROW: a right click on that bar, from 0
    on("right", [this](const Words& words) {
      const host::Element& bar = *graph().surface().find("bars", words.number(0));
      tellChange([&] { graph().Form_MouseDown(host::mouse::right, bar.left + 10, bar.bottom() - 10); });
    });
    world.forms.attach("xyVoteAverageGraph", watching());
    on("listmenu", [this](const Words&) { tellChange([this] { graph().List1.menuWanted(0); }); });
    on("resize", [this](const Words& words) {
      graph().ScaleWidth = words.number(0);
      tellChange([this] { graph().Form_Resize(); });
    });
    on("undo", [this](const Words&) { tellChange([] { exerciseHistory().undo(); }); });
  }

  xyVoteAverageGraph& graph() { return world.forms.as<xyVoteAverageGraph>("xyVoteAverageGraph"); }
  host::Form* form() override { return world.forms.find("xyVoteAverageGraph"); }
  test::TestHost& testHost() override { return world; }
  void renew() override {
    world.forms.unload("xyVoteAverageGraph");
    glo.averageDisplayKind = 0;
    graph();
    world.forms.show("xyVoteAverageGraph");
  }
  std::string picture() override { return test::drawingOf(graph().surface()); }
  State state() override {
    xyVoteAverageGraph& now = graph();
    std::string weights, foot, page;
    for (const AssessmentInfoRecord& info : glo.assessmentInfo)
      if (info.active)
        weights += std::to_string(info.weight) + (info.weightingOn ? "! " : " ");
    for (const std::string& text : captions(now.surface(), "LabelCategory")) foot += text;
    for (const std::string& text : captions(now.surface(), "subtitle"))
      page += text.substr(text.rfind("\u00b7 ") == std::string::npos ? 0 : text.rfind("\u00b7 ") + 3);
    const std::vector<std::string> bars = captions(now.surface(), "barValue");
    return {{"row", rowOf(now.List1)},
            {"page", page},
            {"scroll", now.cmd_scrollVisible ? "shown" : ""},
            {"chosen", std::to_string(now.chart.selectedPoint)},
            {"bar", bars.empty() ? "" : bars[0]},
            {"foot", foot},
            {"header", captions(now.surface(), "header").front()},
            {"list", now.listVisible ? "beside it" : "away"},
            {"buttons", now.buttonsVisible ? "shown" : "hidden"},
            {"diversity button", now.diversityButtonVisible ? "shown" : ""},
            {"weights", weights},
            {"step", exerciseHistory().undoName()}};
  }
};

const bool kRegistered = test::registerCases<AverageKeys>("AverageKeys", QUORIN_CASES "/average_keys.case");

}  // namespace
}  // namespace qrn
