// Filters, orders of the list and multi-plots, told as conversations.
#include "adapters/system/xml_query.h"
#include "analysis/filter/categories_membership.h"
#include "analysis/filter/filters.h"
#include "analysis/multiplot.h"
#include "analysis/orders.h"
#include "base/text.h"
#include "store/scores/all_scores.h"
#include "support/run_case.h"

namespace qrn::test {
namespace {

class AnalysisCase : public RunCase {
 protected:
  struct ListForm : host::Form, ItemListForm {
    explicit ListForm(AnalysisCase& told) : host::Form("xyVote"), told_(told) {}
    void renumber() override { told_.tell("renumbered"); }
    void rebuildList() override { told_.tell("list built anew"); }
    void showDataMessage(const std::string& message) override { told_.tell(escaped(message)); }

   private:
    AnalysisCase& told_;
  };
  AnalysisCase() {
    host::host().xmlQuery = &xml;
    glo.keypadIncluded.assign(4, 1);
    glo.postalRecords.assign("");
    glo.voteRecords.assign("");
    for (std::size_t a = 0; a < 9; ++a) glo.assessmentInfo[a].active = a == 0;
    world.forms.define("xyVote", [this] { return std::make_unique<ListForm>(*this); });
    world.forms.load("xyVote");
    filterCommands();
    categoryCommands();
    orderCommands();
    plotCommands();
  }
  ~AnalysisCase() override {
    world.forms.unload("xyVote");
    host::host().xmlQuery = nullptr;
  }
  void filterCommands() {
    on("filter", [this](const Words&) {
      createFilter();
      std::string flags;
      for (const int flag : glo.keypadIncluded) flags += std::to_string(flag) + " ";
      tell(flags + glo.demographicFilterText);
    });
    on("digit", [this](const Words& words) {
      std::string caption = "before";
      tell(std::string(SetDemographicFilter(words.number(0), caption) ? "on " : "off ") + caption);
      tellGroups();
    });
    on("slide", [this](const Words& words) {
      MemorySlide& slide = world.presentation.slide(words.number(0));
      slide.tagStore.Add(words[1], words.rest(2));
      if (slide.shapes.empty())
        slide.shapes.emplace_back("qrn_question", "Your department?");
    });
    on("kept", [](const Words&) { glo.demographics = {{257, {{1, false, ""}, {3, true, ""}}, true}, {999, {{4, true, ""}}, false}}; });
    on("read", [this](const Words&) {
      GetDemographicVoteInfo();
      for (const DemographicInfo& info : glo.demographicQuestions)
        tell(info.slideIndex, "/", info.slideID, " ", info.QID, " '", info.questionText, "' ",
             escaped(info.votes), " ", info.groupCount, " groups", (info.isDefault ? ", default" : ""));
      tellGroups();
    });
    on("choose", [](const Words& words) {
      glo.demographicQuestions.at(0).groups.at(static_cast<std::size_t>(words.number(0))).selected = true;
    });
    on("keep", [this](const Words&) {
      keepDemographicChoices();
      for (const DemographicQuestion& kept : glo.demographics)
        for (const DemographicGroup& group : kept.groups)
          tell(kept.ID, (kept.selected ? " default " : " "), group.ID, (group.selected ? " chosen" : ""));
    });
    on("line", [this](const Words& words) {
      glo.opt_StatsBoxPosition = words.word(0);
      const FilterLine line = showFilter(1000, 500, 8000, 3000, 3000, 100);
      std::ostringstream text;
      text << line.caption << " at " << line.left << " " << line.top
           << (line.align == host::Align::right ? " right" : " left") << ", colour " << line.colour;
      tell(line.visible ? text.str() : "no line");
      tell(filterCaption(true));
    });
  }
  void tellGroups() {
    std::string all;
    for (const DemographicInfo& info : glo.demographicQuestions)
      for (const DemographicInfoGroup& group : info.groups)
        all += std::to_string(group.optionNumber) + "=" + group.groupName + (group.selected ? "* " : " ");
    tell(all + (glo.demographicFilterOn ? "on" : "off"));
  }
  void categoryCommands() {
    // category ID PARENT SELECTED ITEM ...: one more, before the spare element
    on("category", [](const Words& words) {
      CategoryRecord record;
      record.CategoryID = words.number(0);
      record.CategoryParent = words.number(1);
      record.Selected = words[2] == "yes";
      record.CategoryItems.clear();
      for (std::size_t i = 3; i < words.size(); ++i) record.CategoryItems.push_back(words.number(i));
      glo.categories.insert(glo.categories.end() - 1, record);
    });
    on("nocategories", [](const Words&) { glo.categories.assign(1, CategoryRecord()); });
    on("in", [this](const Words& words) {
      tell(IsInCategory(glo.categories, words.number(0), words.number(1), glo.risks) ? "yes" : "no");
    });
    on("selected", [this](const Words& words) { tell(IsInCategorySingle(words.number(0)) ? "yes" : "no"); });
  }
  void orderCommands() {
    // voted ASSESSMENT VOTE ...: one voter's for each item of the list, - for none
    on("voted", [](const Words& words) {
      glo.assessmentInfo[static_cast<std::size_t>(words.number(0) - 1)].active = true;
      for (std::size_t i = 1; i < words.size(); ++i)
        if (words[i] != "-")
          glo.voteRecords.append("d,t," + words[i] + ";," + std::to_string(glo.risks[i - 1].sortKey) + "C" +
                                 words[0] + "\r\n");
    });
    // order HOW [ASSESSMENT] [down]: the list is put into that order
    on("order", [this](const Words& words) {
      const std::string& how = words[0];
      const bool down = words.word(words.size() - 1) == "down";
      if (how == "assessment")
        reorderList(words.number(1), down);
      else if (how == "menu")
        MenuReorderList(words.number(1), down, words.word(2) == "silent");
      else if (how == "cumulative")
        down ? reorderListCumulativeDecreasing() : reorderListCumulativeIncreasing();
      else if (how == "weighted")
        tell((down ? reorderListWeightedCumulativeDecreasing() : reorderListWeightedCumulativeIncreasing())
                 ? ""
                 : "refused");
      else if (how == "alpha")
        reorderListAlpha(words.word(1) == "scores");
      else if (how == "sifter")
        reorderListBySifterSorter(down);
      else if (how == "refresh")
        GetAllScores();
      else
        restore(std::stoi(how));
      tellOrder();
    });
  }
  // From the order that the items have by their names.
  void restore(int code) {
    reorderListAlpha(false);
    take();
    glo.listOrder = code;
    setReorderList();
  }
  static int typeOf(const std::string& name) {
    static const std::vector<std::string> names{"cumulative", "highest", "lowest",
                                                "product",    "average", "quotient"};
    return static_cast<int>(std::find(names.begin(), names.end(), name) - names.begin());
  }
  void tellOrder() {
    std::string keys;
    for (int i = 0; i < glo.itemCount(); ++i)
      keys += std::to_string(glo.risks[static_cast<std::size_t>(i)].sortKey) + " ";
    tell(replaceAll(take(), "renumbered\n", "renumbered, "), keys, "code ", glo.listOrderCode);
  }
  void plotCommands() {
    // value TYPE [reverse] [other=N] AVERAGE ...: what multi-plot 2 makes of these; other is handed on by
    // multi-plot 1
    on("value", [this](const Words& words) {
      glo.multiPlot = {};
      MultiPlotRecord& plot = glo.multiPlot[1];
      RiskRecord& item = glo.risks[0];
      plot.PlotType = typeOf(words[0]);
      glo.multiPlot[0].Assessments[8] = true;
      std::size_t a = 0;
      for (std::size_t i = 1; i < words.size(); ++i)
        if (words[i] == "reverse") {
          plot.ReverseCalc = true;
        } else if (words[i].starts_with("other=")) {
          plot.Assessments[9] = true;
          item.average[8] = std::stof(words[i].substr(6));
        } else {
          plot.Assessments[a] = true;
          item.average[a++] = std::stof(words[i]);
        }
      item.plotText[10].clear();
      GetMultiPlotValues(1);
      tell(item.average[10], " '", item.plotText[10], "'", (item.active[10] ? "" : " not active"));
    });
    on("plots", [this](const Words& words) {
      GetMultiPlotValues(words.number(0));
      for (const std::size_t slot : {std::size_t{9}, std::size_t{10}}) {
        tell("plot ", slot, ": ", glo.risks[0].average[slot], (glo.risks[0].hasScore(slot) ? " scored" : ""));
      }
    });
    on("setup", [this](const Words& words) { tell(multiPlotSetUp(words.number(0)) ? "yes" : "no"); });
    on("step",
       [this](const Words& words) { tell(std::to_string(GetMultiPlotAxisScaleStep(words.number(0)))); });
    // top TYPE VALUE [round] [data]
    on("top", [this](const Words& words) {
      glo.multiPlot[0].PlotType = typeOf(words[0]);
      glo.risks[0].average[9] = std::stof(words[1]);
      tell(std::to_string(GetMultiPlotMaxScale(0, words.has("round"), words.has("data"))));
    });
  }

  system::XmlQueries xml;
};

const bool kRegistered = registerCases<AnalysisCase>("AnalysisCase", QUORIN_CASES);

}  // namespace
}  // namespace qrn::test
