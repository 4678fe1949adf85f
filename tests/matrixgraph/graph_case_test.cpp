// The matrix graph told as conversations: its axes, where its items stand, what it leaves out and tells.
#include <cmath>

#include "charts/graph_fixture.h"
#include "core/common.h"
#include "matrixgraph/axis_plan.h"
#include "matrixgraph/plot_area.h"
#include "matrixgraph/xy_vote_graph.h"

namespace qrn::test {
namespace {

class MatrixGraphCase : public GraphCase {
 protected:
  MatrixGraphCase() {
    registerGraphForms();
    for (std::size_t a = 0; a < 9; ++a) glo.assessmentInfo[a].active = false;
    addItems(3);
    for (int a = 1; a <= 4; ++a) addScale(a, "Name" + std::to_string(a), 5, 1);
    exerciseCommands();
    drawCommands();
    surfaceCommands();
    planCommands();
    placeCommands();
    scoreCommands();
  }
  static PlotRequest request(const Words& words, std::size_t from) {
    PlotRequest pairs = kNoPairs;
    for (std::size_t i = from; i < words.size() && i - from < pairs.size(); ++i)
      pairs[i - from] = words.number(i);
    return pairs;
  }
  static std::string told(const PlotRequest& pairs) {
    std::string all;
    for (const int one : pairs)
      if (one != -1)
        all += (all.empty() ? "" : " ") + std::to_string(one);
      else
        all += " -";
    return all.substr(0, all.find_last_not_of(" -") + 1);
  }
  const host::Surface& surface() override { return form().surface(); }
  xyVoteGraph& form() { return world.forms.as<xyVoteGraph>("xyVoteGraph"); }
  void exerciseCommands() {
    // voted ITEM ASSESSMENT VOTES; "all" stands for every item and the four assessments
    on("voted", [](const Words& words) {
      if (words[0] == "none")
        glo.voteRecords.assign("");
      else if (words[0] == "all")
        for (int item = 0; item < glo.itemCount(); ++item)
          for (int a = 1; a <= 4; ++a) addVote(item, a, "3;");
      else
        addVote(words.number(0), words.number(1), words[2]);
    });
    on("unscored", [](const Words&) {
      for (RiskRecord& risk : glo.risks) static_cast<ItemScores&>(risk) = {};
    });
    on("category", [](const Words&) {
      glo.categories.assign(3, CategoryRecord{});
      glo.categories[0].CategoryName = "unallocated";
      glo.categories[0].Selected = false;
      glo.categories[1] = {7, "Plant & tools", {1, -1}, true, true, 0};
    });
  }
  void drawCommands() {
    on("draw", [this](const Words& words) { drawMatrixGraph(request(words, 0), 1024, 768); });
    on("again", [this](const Words&) { form().tmr_load_Timer(); });
    on("file", [this](const Words& words) { world.files.files[words[0]] = "x"; });
    on("perform", [this](const Words& words) { form().actions().perform(words[0]); });
    on("shadows", [this](const Words&) { form().view.shadows = true; });
    on("diversity", [this](const Words&) { form().menuDiversity(), form().tmr_load_Timer(); });
    on("info",
       [this](const Words&) { tell(form().cmd_info ? "offered" : "no info"), form().cmd_info_Click(); });
    on("window", [this](const Words&) { form().view.covering = true, form().tmr_load_Timer(); });
    on("select", [this](const Words& words) { form().List1_Click(words.number(0)); });
    on("press", [this](const Words& words) { form().Form_KeyPress(words[0][0]); });
    on("rows", [this](const Words&) { tellRows(form().List1); });
    on("load", [this](const Words&) {
      world.forms.load("xyVoteGraph");
      host::waitUntil([this] { return !form().List1.rows().empty(); });
      tell(told(glo.lastDrawnPairings) + (form().tmr_load.enabled() ? ", timer runs" : ""));
    });
    on("unload", [this](const Words&) { world.forms.unload("xyVoteGraph"); });
    on("loaded", [this](const Words&) { tell(world.forms.isLoaded("xyVoteGraph") ? "yes" : "no"); });
    // size WIDTH HEIGHT ITEMS OWN: the type of the keys, as a part of the height in pixels
    on("size", [this](const Words& words) {
      addItems(words.number(2));
      runLine("voted all");
      glo.itemPlotFont.size = words.number(3);
      drawMatrixGraph({1, 2, -1, -1, -1, -1, -1, -1}, words.number(0), words.number(1));
      tell(form().surface().find("labelRisk", 1)->font.size / 0.75 / words.number(1), ", to ",
           form().model().canvas.area.X2);
    });
  }
  void surfaceCommands() {
    // at ARRAY INDEX ...: the middle of an element, in twips; off the form, hidden, as it is
    on("place", [this](const Words& words) {
      for (std::size_t i = 0; i + 1 < words.size(); i += 2) {
        const host::Element* e = form().surface().find(words[i], words.number(i + 1));
        if (e == nullptr)
          return tell(words[i] + " is not there");
        const double x = e->left + e->width / 2, y = e->top + e->height / 2;
        std::ostringstream text;
        text.precision(7);
        text << words[i] << " " << words[i + 1] << " '" << e->caption << "' ";
        e->kind == host::Element::Kind::line
            ? text << e->x1 << " " << e->y1 << " to " << e->x2 << " " << e->y2
        : y > form().ScaleHeight ? text << "off the form"
                                 : text << x << " " << y;
        text << (e->borderStyle == 3 ? " dotted" : "") << (e->visible ? "" : " hidden");
        tell(text.str());
      }
    });
    on("standing", [this](const Words& words) {
      for (int a : {1, 2}) addVote(words.number(0), a, words[static_cast<std::size_t>(a)]);
      runLine("draw 1 2");
      runLine("outstanding");
    });
    on("outstanding", [this](const Words&) {
      std::string all = "stand out:";
      for (const PlottedItem& item : form().model().plotted)
        all += item.top ? " " + glo.risks[static_cast<std::size_t>(item.risk)].identifier : "";
      tell(all);
    });
    on("resize", [this](const Words& words) {
      form().ScaleWidth = words.number(0);
      form().ScaleHeight = words.number(1);
      form().Form_Resize();
      tell(form().tmr_load.enabled() ? "draws soon" : "");
    });
    // wider ARRAY INDEX OTHER: by how much it is wider than the other of its array
    on("wider", [this](const Words& words) {
      const auto width = [&](std::size_t n) {
        return form().surface().find(words[0], words.number(n))->width;
      };
      tell(width(1) / width(2));
    });
  }
  void scoreCommands() {
    // scores PAIR: those at the places of the items, upwards and across, and whether they lead back there
    on("scores", [this](const Words& words) {
      const int pair = words.number(0) - 1;
      const MatrixModel& model = form().model();
      for (const PlottedItem& item : model.plotted) {
        const PlotPoint place = item.centre[static_cast<std::size_t>(pair)];
        const PlotPoint scores = model.scoresAt(pair, place), back = model.placeOf(pair, scores);
        tell(glo.item(item.risk).identifier + " " + formatPlaces(scores.y, 2) + " " +
             formatPlaces(scores.x, 2) + (back.x == place.x && back.y == place.y ? "" : ", not back"));
      }
    });
    // watch KEY: the form is in sight and the key pressed; how the disc of the second item is seen to grow
    on("watch", [this](const Words& words) {
      world.forms.show("xyVoteGraph");
      const host::Element& key = *form().surface().find("labelRisk", 2);
      const double plain = key.width;
      const std::int64_t begin = world.clock.micros;
      bool even = true;
      form().Form_KeyPress(words[0][0]);
      for (double last = key.width; form().tmr_grow.enabled(); last = key.width)
        host::waitUntil([&] { return key.width != last || !form().tmr_grow.enabled(); }),
            even = even && key.width >= last;
      tell(formatPlaces(key.width / plain, 2) + " after " +
           formatPlaces(static_cast<double>(world.clock.micros - begin) / 1e6, 1) +
           (even ? " s, never back" : " s, and back"));
    });
  }
  void planCommands() {
    on("bounds", [this](const Words& words) {
      const auto regular = selectBoundsRegular(request(words, 0)), skew = selectBoundsSkew(request(words, 0));
      tell(regular.first, "x", regular.second, ", in cells ", skew.first, "x", skew.second);
    });
    on("axes", [this](const Words& words) {
      tell(axisAssessment(request(words, 0), true), " ", axisAssessment(request(words, 0), false));
    });
    on("sizes", [this](const Words&) {
      tell(form().model().scaleSizes.first, "x", form().model().scaleSizes.second);
    });
    // axis ASSESSMENT [skew] [percent]
    on("axis", [this](const Words& words) {
      const AxisPlan plan = planAxis(words.number(0), words.has("skew"), words.has("percent"));
      std::string all = std::to_string(plan.divisions) + (plan.lastHidden ? " and one hidden" : "") + ":";
      for (const std::string& caption : plan.captions) all += " " + (caption.empty() ? "." : caption);
      tell(all);
    });
    on("sum", [](const Words& words) {
      glo.multiPlot[0].Enabled = true;
      glo.multiPlot[0].Assessments[0] = glo.multiPlot[0].Assessments[1] = true;
      glo.risks[0].average[9] = static_cast<float>(words.number(0));
    });
    on("pairs", [this](const Words&) { tell("pairs: " + told(pairsOfExercise())); });
    // choose CURRENT / USER / ACTIVE [user]
    on("choose", [this](const Words& words) {
      std::array<std::vector<int>, 3> lists;
      std::size_t at = 0;
      for (const std::string& word : words)
        if (word == "/")
          ++at;
        else if (word != "user")
          lists.at(at).push_back(std::stoi(word));
      const auto padded = [](const std::vector<int>& some) {
        PlotRequest all = kNoPairs;
        std::copy(some.begin(), some.end(), all.begin());
        return all;
      };
      glo.currentPlotPairings = padded(lists[0]);
      glo.userSelectedPlotPairings = padded(lists[1]);
      std::copy(lists[2].begin(), lists[2].end(), glo.userPairActive.begin());
      glo.useUserPairings = words.back() == "user";
      tell(told(choosePairs()));
    });
  }
  void placeCommands() {
    // area WIDTH HEIGHT [numbered]: of a form of so many pixels, in twips
    on("area", [this](const Words& words) {
      const PlotArea area = placePlotArea(words.number(0) * 15, words.number(1) * 15, words.size() > 2);
      tell(area.X1, " ", area.Y1, " to ", area.X2, " ", area.Y2);
    });
    on("fraction", [this](const Words& words) {
      const double fraction = scoreFraction(std::stof(words[0]), std::stof(words[1]));
      std::ostringstream text;
      text << fraction;
      tell(fraction == kOffScale ? "off the scale" : text.str());
    });
    // point ACROSS UP [skew]: in the plot area of 1024 x 768 pixels, or in five by five cells of it
    on("point", [this](const Words& words) {
      PlotArea area = placePlotArea(15360, 11520, false);
      if (words.size() > 2)
        area.cellWidth = 2427, area.cellHeight = 1713;
      const PlotPoint point =
          pointOf(area, words[0] == "off" ? kOffScale : std::stod(words[0]), std::stod(words[1]));
      std::ostringstream text;
      text << point.x << " " << point.y;
      tell(point.x < -1e6 ? "far away" : text.str());
    });
  }
};

const bool kRegistered =
    registerCases<MatrixGraphCase>("MatrixGraphCase", QUORIN_CASES "/matrix_graph.case") &&
    registerCases<MatrixGraphCase>("GraphDrawings", QUORIN_CASES "/graph_drawings.case");

}  // namespace
}  // namespace qrn::test
