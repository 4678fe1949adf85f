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
    // right KEY: a right click on the label with that key; without one: beside the labels
    on("right", [this](const Words& words) { tellChange([&] { rightClick(words.word(0)); }); });
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
  void rightClick(const std::string& key) {
    double x = 10, y = 10;
    for (const host::Element* label : all(graph().surface(), "labelRisk"))
      if (label->caption == key)
        x = label->left + label->width / 2, y = label->top + label->height / 2;
    graph().Form_MouseDown(host::mouse::right, x, y);
  }

  PlotRequest pairs_ = kNoPairs;
  std::size_t built_ = 0;
};

const bool kRegistered = test::registerCases<GraphKeys>("GraphKeys", QUORIN_CASES "/graph_keys.case");

}  // namespace
}  // namespace qrn
