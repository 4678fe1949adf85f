// What the facilitator does on the matrix graph, told in case files.
#include "charts/graph_fixture.h"
#include "host/wait.h"
#include "matrixgraph/xy_vote_graph.h"
#include "support/action_cases.h"
#include "support/drawing.h"
#include "support/members.h"

namespace qrn {
namespace {

using test::Words;

class GraphKeys : public test::ActionCases, protected test::GraphExercise {
 protected:
  GraphKeys() {
    registerGraphForms();
    addItems(28);  // "A" to "Z", "A2", "B2"
    for (int a = 1; a <= 4; ++a) addScale(a, "Name" + std::to_string(a), 5);
    for (const auto& [item, votes] : {std::pair{0, "3;"}, {1, "2;"}, {2, "1;"}, {27, "5;"}})
      for (int a : {1, 2}) vote(item, a, votes);
    vote(0, 3, "4;");  // A alone stands in pair 2
    vote(0, 4, "4;");
    vote(3, 3, "2;");  // D stands in pair 2 only
    vote(3, 4, "4;");
    for (std::size_t item = 4; item < 27; ++item) glo.risks[item].voting = false;
    for (std::size_t item = 0; item < 28; ++item) glo.risks[item].ID = 140 - static_cast<int>(item);
    // draw [VERTICAL HORIZONTAL ...]
    on("draw", [this](const Words& words) {
      pairs_ = kNoPairs;
      for (std::size_t i = 0; i < words.size(); ++i) pairs_[i] = words.number(i);
      renew();
    });
    on("shown", [this](const Words&) { tell(state()["shown"]); });
    on("set", [](const Words& words) { test::setMember(words[0], words.rest(1)); });
    on("filtered", [this](const Words&) { graph().graphFilterActive = true; });
    on("groups", [](const Words& words) {
      DemographicInfo question;
      question.isDefault = true;
      for (const std::string& name : words) question.groups.push_back({1, name, false});
      glo.demographicQuestions = {question};
    });
    on("items", [](const Words& words) {
      for (std::size_t i = static_cast<std::size_t>(words.number(0)); i < 28; ++i)
        glo.risks[i].voting = false;
    });
    on("form", [this](const Words& words) {  // a plain one of that name
      world.forms.define(words[0], [name = words[0]] { return std::make_unique<host::Form>(name); });
    });
    on("load", [this](const Words& words) { world.forms.show(words[0]); });
    on("distribution",
       [this](const Words& words) { tellChange([&] { graph().PlotItemDistribution(words[0]); }); });
    world.forms.attach("xyVoteGraph", watching());
    on("unload", [this](const Words& words) { world.forms.unload(words[0]); });
    on("forms", [this](const Words&) {
      for (const std::string& name : world.forms.loadedNames()) tell(name);
    });
    on("at", [this](const Words& words) { world.at(std::stod(words[0]), later(words, 1)); });
    on("wait", [this](const Words& words) {
      tellChange([&] { host::waitUntil([] { return false; }, std::stod(words[0])); });
    });
    on("resize", [this](const Words& words) {
      graph().ScaleWidth = words.number(0);
      graph().ScaleHeight = words.number(1);
      tellChange([this] { graph().Form_Resize(); });
    });
    on("drawing", [this](const Words& words) { tell(test::drawingOf(graph().surface(), words)); });
    // view [covering] [shadows]
    on("view", [this](const Words& words) {
      graph().view.covering = words.has("covering");
      graph().view.shadows = words.has("shadows");
      graph().tmr_load_Timer();
    });
    // mouse left|right|move|up|double CAPTION [DX DY]: on what bears it, or so far from its middle
    on("mouse", [this](const Words& words) { tellChange([&] { mouse(words); }); });
    // rows select|open|menu N: of the list; -1 beside them
    on("list", [this](const Words& words) {
      host::Panel& list = graph().List1;
      const int row = words.number(1);
      tellChange([&] {
        words[0] == "select" ? list.select(row)
        : words[0] == "open" ? list.activated(row)
                             : list.menuWanted(row);
      });
    });
    // unlist KEY: its row goes
    on("unlist", [this](const Words& words) {
      std::vector<host::PanelRow> rows = graph().List1.rows();
      std::erase_if(rows,
                    [&](const host::PanelRow& row) { return row.cells[0].starts_with(words[0] + ":"); });
      graph().List1.setRows(std::move(rows));
    });
  }

  xyVoteGraph& graph() { return world.forms.as<xyVoteGraph>("xyVoteGraph"); }
  host::Form* form() override { return world.forms.find("xyVoteGraph"); }
  test::TestHost& testHost() override { return world; }
  void renew() override {
    world.forms.unload("xyVoteGraph");
    glo.demographicFilterOn = false;
    drawMatrixGraph(pairs_, 1024, 768);
    world.forms.show("xyVoteGraph");
    host::waitUntil([&] { return !graph().tmr_load.enabled(); });
    built_ = graph().surface().elementCount();
  }
  State state() override {
    const xyVoteGraph& now = graph();
    std::string shown;
    for (const char* array : {"labelRisk", "labelRiskRound2"})
      for (const std::string& text : captions(now.surface(), array)) shown += text + " ";
    const auto lines = all(now.surface(), "lineRound1ToRound2").size(),
               blobs = all(now.surface(), "endOfLine1to2Blob").size();
    std::string pairs;
    for (const int value : now.distributionPairs) pairs += std::to_string(value) + " ";
    return {{"shown", shown + (lines == 0 ? "" : "joined ") + (blobs == lines ? "" : "BLOBS")},
            {"title", now.graphTitle},
            {"row", rowOf(now.List1)},
            {"rows", std::to_string(now.List1.rows().size())},
            {"chosen", now.selectedRiskIndex < 0 ? "" : glo.item(now.selectedRiskIndex).identifier},
            {"suffix", now.itemKeySuffix},
            {"list", now.listVisible ? "beside it" : "away"},
            {"buttons", now.buttonsVisible ? "shown" : "hidden"},
            {"draws", now.tmr_load.enabled() ? "soon" : ""},
            {"diversity", now.showingDiversity ? "shown" : ""},
            {"filter", glo.demographicFilterOn ? glo.demographicFilterText : ""},
            {"distribution",
             now.distributionRisk < 0 ? "" : std::to_string(now.distributionRisk) + " of " + pairs},
            {"forms", std::to_string(world.forms.loadedNames().size())},
            {"key", now.keyHandled ? "handled" : ""},
            {"built", now.surface().elementCount() == built_ ? "" : "anew"}};
  }
  std::string picture() override { return test::drawingOf(graph().surface()); }
  void mouse(const Words& words) {
    double x = 10 + words.number(2), y = 10 + words.number(3);
    for (const host::ElementArray& array : graph().surface().arrays())
      for (const host::Element& one : array)
        if (one.visible && one.caption == words.word(1))
          x = one.left + one.width / 2 + words.number(2), y = one.top + one.height / 2 + words.number(3);
    if (words[0] == "move")
      graph().Form_MouseMove(x, y);
    else if (words[0] == "up")
      graph().Form_MouseUp(x, y);
    else if (words[0] == "double")
      graph().Form_DblClick(x, y);
    else
      graph().Form_MouseDown(words[0] == "right" ? host::mouse::right : host::mouse::left, x, y);
  }

  PlotRequest pairs_ = kNoPairs;
  std::size_t built_ = 0;
};

const bool kRegistered = test::registerCases<GraphKeys>("GraphKeys", QUORIN_CASES "/graph_keys.case");

}  // namespace
}  // namespace qrn
