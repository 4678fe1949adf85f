#include "store/full_exercise.h"

#include "core/item_label.h"
#include "store/exercise_text_lines.h"

namespace qrn::test {
namespace {

// A third end of the walk over the lines: puts a value into each member that comes by, numbers and texts that
// never come twice, and turns the flags round.
class Filler {
 public:
  static constexpr bool reading = false;

  template <class... Values>
  void values(Values... some) {
    (put(some), ...);
  }
  template <class... Values>
  void line(Values... some) {
    values(some...);
  }
  void endLine() {}
  void rawLine(std::string_view) {}
  template <class Walk>
  void wholeLine(Walk walk) {
    walk(*this);
  }
  template <class Walk>
  void untilEnd(Walk walk) {
    walk();
  }
  template <class Member>
  void put(mtx::I<Member> value) {
    value.v = static_cast<Member>(++last_ % 0x8000);  // as large as such a number may be
  }
  template <class Member>
  void put(mtx::L<Member> value) {
    value.v = static_cast<Member>(0x10000 + ++last_);
  }
  template <class Member>
  void put(mtx::S<Member> value) {
    value.v = static_cast<Member>(++last_) + Member{0.5};
  }
  void put(mtx::D value) { value.v = ++last_ + 0.5; }
  void put(mtx::Fraction value) { value.v = 15.0F * static_cast<float>(++last_); }  // whole pixels
  void put(mtx::B value) { value.v = !value.v; }
  void put(mtx::T value) { value.v = text("Text, with a comma; "); }
  void put(mtx::T1 value) { put(mtx::T(value.v)); }
  void put(mtx::Q value) { value.v = text("Words, "); }
  void put(mtx::Q1 value) { value.v = text("Name "); }
  void put(mtx::InLine value) { value.v = text("C:\\pictures\\one, two "); }
  void list(std::vector<std::string>& texts) {
    texts.assign(static_cast<std::size_t>(2 + ++lists_ % 8), "");
    for (std::size_t i = 0; i + 1 < texts.size(); ++i) texts[i] = text("Entry ");
  }
  template <class Element, class Walk>
  void elements(std::vector<Element>& array, Walk walk) {
    if (array.size() == 1)
      array.resize(3);
    for (std::size_t i = 0; i + 1 < array.size(); ++i) walk(array[i]);
  }

 private:
  std::string text(const char* words) { return words + std::to_string(++last_); }

  int last_ = 100, lists_ = 0;
};

void fillItems(Exercise& x) {
  for (int i = 0; i < x.itemCount(); ++i) {
    RiskRecord& risk = x.risks[static_cast<std::size_t>(i)];
    risk.ID = i;
    risk.sortKey = x.itemCount() - i;
    risk.notes += "\r\non two lines";
    risk.active.fill(true);
    risk.active[static_cast<std::size_t>(i % 9)] = false;
    for (std::size_t a = 0; a < kAssessments; ++a)
      risk.benchmark[a] = static_cast<float>(i % 7) + 0.25F * static_cast<float>(a) + 0.1F;
    risk.identifier = itemIdentifier(i);
  }
}

void fillCategories(Exercise& x) {
  x.categories[0].CategoryName = "unallocated";
  for (std::size_t c = 0; c < 3; ++c) {
    CategoryRecord& category = x.categories[c];
    category.Enabled = c != 1;
    category.CategoryID = 10 + static_cast<std::int32_t>(c);
    category.CategoryParent = static_cast<std::int32_t>(c);
    category.CategoryItems.clear();
    for (int id = static_cast<int>(c); id < x.itemCount(); id += 3) category.CategoryItems.push_back(id);
    category.CategoryItems.push_back(-1);
  }
  x.CategoryMode = 1;
}

// What is not told in a line of its own, and what takes some values only.
void fillAssessments(Exercise& x) {
  for (std::size_t a = 0; a + 1 < x.assessments.size(); ++a) {
    AssessmentRecord& s = x.assessments[a];
    s.startFrom = a % 2 == 0 ? 0 : 1;
    s.voteType = a % 2 == 0 ? 3 : 2;
    s.showTitleText = s.showScaleText = false;
    for (std::size_t point = 10; point < s.pointColours.size(); ++point)
      s.pointColours[point] = static_cast<std::int32_t>(1000 * a + point);
    if (a < kAssessments)
      s.scalePointCount = x.labelCount(static_cast<int>(a));
  }
  for (OverlayRecord& overlay : x.overlays) overlay.font = "Overlay face";
  for (MultiPlotRecord& plot : x.multiPlot) {
    plot = {true, {}, {}, 7, true};
    plot.Assessments.fill(true);
    plot.ToolTips.fill("Tip");
  }
  x.assessmentTitles[10] = "Second plot";
}

void fillSettings(Exercise& x) {
  x.templateFlag = true;
  x.usePPTBackground = x.barCountAuto = false;
  x.statsBoxX = 0.3F;
  x.statsBoxY = 0.6F;
  x.opt_StatsBoxPosition = "BR";
  x.CheckAverageScoreIndicator = 6;
  x.workshopNumber = 0;
  x.optionAveragePairing = 3;
  x.pairAssessments[1] = 4;
  x.textZoom = {1, 3, 2, 5, 6};
  x.voteWindow = x.listWindow = {0.01F, 0.123456789F, 1.0F / 3.0F, 0.7F};
  x.password = "Schl\xC3\xBCssel \xE2\x82\xAC";
  x.passwordSubgroup = "\xF0\x9F\x94\x91";
  x.opt_avbarstyle = 3;
  x.chk_avgradient = 1;
  x.GradientFillStartColour = 77;
  x.endOfVoteSoundOn = 1;
  x.endOfVoteSoundFile = "ping, pong.wav";
  x.ShowResultsTable.fill(true);
  x.MainVoteSettings.voteMode = 14;
  x.demographicLogicalOperator = 5;
  x.defaultUserSelectedPlotPairings = {4, 3, 2, 1};
  x.gridColWidths = {5, 6, 7};
  x.XYGridLinesAsQuarters = true;
  x.demographics = {{258, {{1, true, ""}, {3, true, ""}}, true}, {260, {{2, true, ""}}, false}};
  SifterSorterRecord& sifter = x.SifterSorterSettings;
  int value = 200;
  for (int* member : {&sifter.voteType, &sifter.calculateMode, &sifter.includeRatio,
                      &sifter.maxNumberOfItemsVotedOn, &sifter.allocateMaxPointsPerItem,
                      &sifter.allocateMaxPointsTotal, &sifter.orderCreateListFromTopXItems})
    *member = ++value;
}

}  // namespace

void fillExercise(Exercise& x, int items) {
  x.risks.assign(static_cast<std::size_t>(items) + 1, RiskRecord{});
  x.categories.assign(4, CategoryRecord{});
  Filler filler;
  mtx::bodyLines(filler, x);
  fillItems(x);
  fillCategories(x);
  fillAssessments(x);
  fillSettings(x);
}

Exercise afterReload(const Exercise& x) {
  Exercise y = x;
  // Written from one member, read into another; and the constant that stands at the second place.
  y.chartStyle = x.graphPropertyMode;
  y.graphPropertyMode = 0;
  y.voteDisplayMode = 5;
  for (RiskRecord& risk : y.risks)
    if (&risk != &y.risks.back())
      risk.active[9] = risk.active[10] = true;
  // The spare plots take the fonts and the scale of the first assessment.
  for (std::size_t spare : {std::size_t{9}, std::size_t{10}}) {
    y.assessments[spare].titleFont = x.assessments[0].titleFont;
    y.assessments[spare].font3 = x.assessments[0].font3;
    y.assessments[spare].scalePointCount = x.assessments[0].scalePointCount;
  }
  // The zoom of the scale text is spent on its fonts.
  for (FontRecord& font : y.scaleFonts)
    font.size *= static_cast<double>(kZoomFactors[static_cast<std::size_t>(x.textZoom[2])]);
  y.textZoom[2] = 0;
  return y;
}

}  // namespace qrn::test
