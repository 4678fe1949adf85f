#include "store/named_settings.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "base/text.h"
#include "store/exercise_text_notes.h"

namespace qrn::mtx {
namespace {

// Joined texts ------------------------------------------------------------------------------------

template <class Array, class Value>
std::string joined(const Array& array, std::size_t count, Value valueOf) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += (i > 0 ? "|" : "") + std::to_string(valueOf(array[i]));
  return text;
}

// Numeric fields of a joined text go to `store(position, value)`, all others are passed over.
template <class Store>
void eachNumber(std::string_view text, Store store) {
  const auto fields = splitFields(text, '|');
  for (std::size_t i = 0; i < fields.size(); ++i)
    if (isNumeric(fields[i])) {
      const double value = std::nearbyint(valueParse(fields[i]));
      if (std::fabs(value) < 4294967296.0)
        store(i, static_cast<std::int32_t>(static_cast<std::int64_t>(value)));
    }
}

std::size_t realCategories(const Exercise& x) {
  return static_cast<std::size_t>(std::max(upperBound(x.categories), 0));
}

// One setting: its values behind the key, the same way for writing and reading where `a` can be either. ---

template <class Archive>
void categoryNumbers(Archive& a, Exercise& x, std::int32_t CategoryRecord::*member) {
  std::int32_t count = upperBound(x.categories) - 1;
  std::string text =
      joined(x.categories, realCategories(x), [&](const CategoryRecord& c) { return c.*member; });
  a.line(L(count), T(text));
  if constexpr (Archive::reading)
    eachNumber(text, [&](std::size_t i, std::int32_t value) {
      if (i < realCategories(x))
        x.categories[i].*member = value;
    });
}

template <class Archive>
void plotPairings(Archive& a, Exercise& x) {
  auto& pairs = x.defaultUserSelectedPlotPairings;
  std::string text = joined(pairs, pairs.size(), [](int value) { return value; }) + "|";
  a.line(T(text));
  if constexpr (Archive::reading)
    eachNumber(text, [&](std::size_t i, std::int32_t value) {
      if (i < pairs.size())
        pairs[i] = value;
    });
}

template <class Archive>
void startFrom(Archive& a, Exercise& x) {
  auto& all = x.assessments;
  std::string text = joined(all, all.size(), [](const AssessmentRecord& s) { return s.startFrom; }) + "|";
  a.line(T(text));
  if constexpr (Archive::reading)
    eachNumber(text, [&](std::size_t i, std::int32_t value) {
      if (i < all.size() && (value == 0 || value == 1))
        all[i].startFrom = value;
    });
}

// Colours from the eleventh on, which have no line of their own: "assessment:colour|...;" for each
// assessment.
template <class Archive>
void barColours(Archive& a, Exercise& x) {
  constexpr std::size_t kFirst = 10;
  std::string text;
  for (std::size_t s = 0; s < x.assessments.size(); ++s) {
    const auto& colours = x.assessments[s].pointColours;
    text += std::to_string(s) + ":" +
            joined(colours.data() + kFirst, colours.size() - kFirst, [](std::int32_t c) { return c; }) + ";";
  }
  a.line(T(text));
  if constexpr (Archive::reading)
    for (const std::string_view entry : splitFields(text, ';')) {
      const std::size_t colon = entry.find(':');
      const double assessment = valueParse(entry.substr(0, colon));
      if (colon == std::string_view::npos || !isNumeric(entry.substr(0, colon)) ||
          !(assessment >= 0 && assessment < kSlots))
        continue;
      auto& colours = x.assessments[static_cast<std::size_t>(assessment)].pointColours;
      eachNumber(entry.substr(colon + 1), [&](std::size_t i, std::int32_t value) {
        if (kFirst + i < colours.size())
          colours[kFirst + i] = value;
      });
    }
}

template <class Archive>
void gridColWidths(Archive& a, Exercise& x) {
  auto& widths = x.gridColWidths;
  std::int32_t top = upperBound(widths);
  std::string text = joined(widths, widths.size(), [](std::int32_t width) { return width; });
  a.line(L(top), T(text));
  if constexpr (Archive::reading) {
    widths.resize(text.empty() ? 0 : splitFields(text, '|').size());
    eachNumber(text, [&](std::size_t i, std::int32_t value) { widths[i] = value; });
  }
}

// Written as a number, read as a text, since older versions have left other things here.
template <class Archive>
void quarters(Archive& a, Exercise& x) {
  if constexpr (Archive::reading) {
    std::string text;
    a.line(T(text));
    x.XYGridLinesAsQuarters = isNumeric(text) && valueParse(text) != 0;
  } else {
    int stored = x.XYGridLinesAsQuarters ? -1 : 0;
    a.line(I(stored));
  }
}

template <class Archive>
void endOfVoteSound(Archive& a, Exercise& x) {
  a.line(I(x.endOfVoteSoundOn), T(x.endOfVoteSoundFile));
  if constexpr (Archive::reading)
    if (x.endOfVoteSoundOn != 0 && x.endOfVoteSoundOn != 1) {
      x.endOfVoteSoundOn = 0;
      x.endOfVoteSoundFile.clear();
    }
}

// Settings whose key comes several times ----------------------------------------------------------

constexpr const char* kMultiPlot = "MultiPlot";
constexpr const char* kDefaultQuestion = "DemographicDefaultQuestionID";
constexpr const char* kSelectedGroup = "DemographicGroupsSelected";

template <class Archive>
void multiPlotPart(Archive& a, Exercise& x, std::size_t plot, std::string_view part) {
  MultiPlotRecord& record = x.multiPlot[plot];
  if (part == "ENABLED") {
    a.values(B(record.Enabled));
  } else if (part == "ASSESSMENTS") {
    for (bool& takesPart : record.Assessments) a.values(B(takesPart));
  } else if (part == "TOOLTIPS") {
    for (std::string& text : record.ToolTips) a.values(Q(text));
  } else if (part == "PLOTTYPE") {
    a.values(I(record.PlotType));
  } else if (part == "REVERSECALC") {
    a.values(B(record.ReverseCalc));
  } else if (part == "NAME") {
    a.values(T(x.assessmentTitles[kAssessments + plot]));
  }
  a.endLine();
}

void writeMultiPlots(TextWriter& a, Exercise& x) {
  std::string key = kMultiPlot;
  for (std::size_t plot = 0; plot < x.multiPlot.size(); ++plot)
    for (std::string part : {"Enabled", "Assessments", "ToolTips", "PlotType", "ReverseCalc", "Name"}) {
      auto number = static_cast<int>(plot);
      a.values(T(key), I(number), T(part));
      multiPlotPart(a, x, plot, upperCase(part));
    }
}

void readMultiPlot(TextReader& a, Exercise& x) {
  int number = -1;
  std::string part;
  a.line(I(number), T(part));
  if (number >= 0 && static_cast<std::size_t>(number) < x.multiPlot.size())
    multiPlotPart(a, x, static_cast<std::size_t>(number), upperCase(part));
}

// Only what is selected is told, so that a question that is gone leaves nothing behind.
void writeDemographics(TextWriter& a, Exercise& x) {
  std::string key = kDefaultQuestion;
  for (DemographicQuestion& question : x.demographics)
    if (question.selected)
      a.line(T(key), L(question.ID));
  key = kSelectedGroup;
  for (DemographicQuestion& question : x.demographics)
    for (DemographicGroup& group : question.groups)
      if (group.selected)
        a.line(T(key), L(question.ID), L(group.ID));
}

// The questions by ID, for one load.
class DemographicIndex {
 public:
  explicit DemographicIndex(Exercise& x) : questions_(x.demographics) { questions_.clear(); }
  DemographicQuestion& question(std::int32_t id) {
    const auto [place, isNew] = byId_.emplace(id, questions_.size());
    if (isNew) {
      questions_.emplace_back();
      questions_.back().ID = id;
    }
    return questions_[place->second];
  }
  void selectGroup(std::int32_t questionId, std::int32_t groupId) {
    const std::int64_t both = (std::int64_t{questionId} << 32) ^ static_cast<std::uint32_t>(groupId);
    if (groups_.emplace(both, true).second)
      question(questionId).groups.push_back({groupId, true, ""});
  }

 private:
  std::vector<DemographicQuestion>& questions_;
  std::unordered_map<std::int32_t, std::size_t> byId_;
  std::unordered_map<std::int64_t, bool> groups_;
};

// The table of the settings in the order of writing -----------------------------------------------

template <class Archive>
struct Setting {
  const char* key;
  void (*walk)(Archive&, Exercise&);
};

// In two parts, with the multi-plots and demographics between them.
template <class Archive>
const std::vector<Setting<Archive>>& settingsBefore() {
  using A = Archive;
  using X = Exercise;
  static const std::vector<Setting<A>> table{
      {"runningOrderShowVoteAveragesEnd(9)", [](A& a, X& x) { a.line(I(x.runByShowAverages[9])); }},
      {"runningOrderAverageGraph",
       [](A& a, X& x) { a.line(I(x.opt_avbarstyle), I(x.chk_avgradient), L(x.GradientFillStartColour)); }},
      {"ENDOFVOTESOUND", endOfVoteSound<A>},
      {"ShowResultsTable",
       [](A& a, X& x) {
         auto& show = x.ShowResultsTable;
         a.line(B(show[0]), B(show[1]), B(show[2]), B(show[3]));
       }},
      {"glo.MainVoteSettings.voteMode", [](A& a, X& x) { a.line(L(x.MainVoteSettings.voteMode)); }},
      {"glo.SifterSorterSettings.allocateMaxPointsTotal",
       [](A& a, X& x) { a.line(I(x.SifterSorterSettings.allocateMaxPointsTotal)); }},
      {"glo.SifterSorterSettings.allocateMaxPointsPerItem",
       [](A& a, X& x) { a.line(I(x.SifterSorterSettings.allocateMaxPointsPerItem)); }},
      {"glo.SifterSorterSettings.calculateMode",
       [](A& a, X& x) { a.line(L(x.SifterSorterSettings.calculateMode)); }},
      {"glo.SifterSorterSettings.includeRatio",
       [](A& a, X& x) { a.line(I(x.SifterSorterSettings.includeRatio)); }},
      {"glo.SifterSorterSettings.maxNumberOfItemsVotedOn",
       [](A& a, X& x) { a.line(I(x.SifterSorterSettings.maxNumberOfItemsVotedOn)); }},
      {"glo.SifterSorterSettings.orderCreateListFromTopXItems",
       [](A& a, X& x) { a.line(I(x.SifterSorterSettings.orderCreateListFromTopXItems)); }},
      {"glo.SifterSorterSettings.voteType", [](A& a, X& x) { a.line(L(x.SifterSorterSettings.voteType)); }},
      {"CategoryMode", [](A& a, X& x) { a.line(L(x.CategoryMode)); }},
      {"CategoryIDs", [](A& a, X& x) { categoryNumbers(a, x, &CategoryRecord::CategoryID); }},
      {"CategoryParents", [](A& a, X& x) { categoryNumbers(a, x, &CategoryRecord::CategoryParent); }}};
  return table;
}

template <class Archive>
const std::vector<Setting<Archive>>& settingsAfter() {
  using A = Archive;
  using X = Exercise;
  static const std::vector<Setting<A>> table{
      {"DemographicLogicalOperator", [](A& a, X& x) { a.line(I(x.demographicLogicalOperator)); }},
      {"defaultUserSelectedPlotPairings", plotPairings<A>},
      {"startFrom", startFrom<A>},
      {"DISTRIBUTON BAR COLOUR", barColours<A>},
      {"XY GRID COL WIDTHS", gridColWidths<A>},
      {"XYGridLinesAsQuarters", quarters<A>}};
  return table;
}

void writeTable(TextWriter& a, Exercise& x, const std::vector<Setting<TextWriter>>& table) {
  for (const auto& setting : table) {
    std::string key = setting.key;
    a.values(T(key));
    setting.walk(a, x);
  }
}

const std::unordered_map<std::string, void (*)(TextReader&, Exercise&)>& settingWalks() {
  static const auto known = [] {
    std::unordered_map<std::string, void (*)(TextReader&, Exercise&)> walks;
    for (const auto* table : {&settingsBefore<TextReader>(), &settingsAfter<TextReader>()})
      for (const auto& setting : *table) walks[upperCase(setting.key)] = setting.walk;
    walks[upperCase(kMultiPlot)] = readMultiPlot;
    return walks;
  }();
  return known;
}

}  // namespace

void writeNamedSettings(TextWriter& a, Exercise& x) {
  writeTable(a, x, settingsBefore<TextWriter>());
  writeMultiPlots(a, x);
  writeDemographics(a, x);
  writeTable(a, x, settingsAfter<TextWriter>());
  writeNotesLengths(a, x);
}

bool isSettingName(std::string_view name) {
  const std::string key = upperCase(name);
  return settingWalks().count(key) != 0 || key == upperCase(kDefaultQuestion) ||
         key == upperCase(kSelectedGroup) || key == upperCase(kNotesLengths);
}

void readNamedSettings(TextReader& a, Exercise& x) {
  const auto& known = settingWalks();
  const std::string defaultQuestion = upperCase(kDefaultQuestion), selectedGroup = upperCase(kSelectedGroup);
  DemographicIndex demographics(x);
  while (!a.atEnd()) {
    std::string key;
    a.take(T(key));
    key = upperCase(key);
    std::int32_t question = 0, group = 0;
    if (const auto found = known.find(key); found != known.end()) {
      found->second(a, x);
    } else if (key == defaultQuestion) {
      a.line(L(question));
      demographics.question(question).selected = true;
    } else if (key == selectedGroup) {
      a.line(L(question), L(group));
      demographics.selectGroup(question, group);
    }
  }
}

}  // namespace qrn::mtx
