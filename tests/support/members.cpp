#include "support/members.h"

#include <sstream>
#include <stdexcept>
#include <type_traits>

#include "core/glo.h"
#include "support/cases.h"

namespace qrn::test {
namespace {

// Goes down a path to a member, which it shows and sets.
class Walk {
 public:
  Walk(std::string_view path, const std::string* value) : rest_(path), value_(value) {}
  std::string shown;

  void at(Glo& g);

 private:
  std::string next() {
    const std::size_t end = std::min(rest_.find('.'), rest_.size());
    std::string name(rest_.substr(0, end));
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return name;
  }
  void at(std::string& member) {
    if (value_ != nullptr)
      member = *value_;
    shown = escaped(member);
  }
  void at(bool& member) {
    if (value_ != nullptr)
      member = *value_ == "yes";
    shown = member ? "yes" : "no";
  }
  template <class Number>
  requires std::is_arithmetic_v<Number>
  void at(Number& member) {
    if (value_ != nullptr)
      member = static_cast<Number>(std::stod(*value_));
    std::ostringstream text;
    text << member;
    shown = text.str();
  }
  template <class List>
  requires requires(List& list) { list.begin(), list.size(); }
  void at(List& list) {
    if (!rest_.empty())
      return at(list.at(std::stoul(next())));
    if (value_ != nullptr)
      fill(list, Words(*value_));
    std::string all;
    for (auto& element : list) {
      Walk inside("", nullptr);
      inside.at(element);
      const bool quoted = inside.shown.empty() || inside.shown.find(' ') != std::string::npos;
      all += (all.empty() ? "" : " ") + (quoted ? '"' + inside.shown + '"' : inside.shown);
    }
    shown = all;
  }
  template <class List>
  static void fill(List& list, const Words& words) {
    if constexpr (requires { list.resize(1); })
      list.assign(words.size(), {});
    std::size_t i = 0;
    for (auto& element : list) {
      const std::string word = words.word(i++);
      Walk("", &word).at(element);
    }
  }
  void at(LayoutRect& r) { plain(r.left, r.top, r.width, r.height); }
  void at(OverlayBoundary& r) { plain(r.first, r.second, r.third, r.fourth); }
  template <class... Members>
  void plain(Members&... members) {
    const Words words(value_ == nullptr ? "" : *value_);
    std::size_t next = 0;
    std::ostringstream text;
    const auto each = [&](auto& member) {
      const std::string word = words.word(next++);
      Walk("", value_ == nullptr ? nullptr : &word).at(member);
      text << member << ' ';
    };
    (each(members), ...);
    shown = text.str().substr(0, text.str().size() - 1);
  }
  void at(FontRecord& r);
  void at(RiskRecord& r);
  void at(AssessmentRecord& r);
  void at(AssessmentInfoRecord& r);
  void at(BandRecord& r);
  void at(CategoryRecord& r);
  void at(MultiPlotRecord& r);
  void at(SifterSorterRecord& r);
  void at(MainVoteRecord& r) { at(r.voteMode); }

  std::string_view rest_;
  const std::string* value_;
};

#define MEMBER(name)   \
  if (wanted == #name) \
    return at(r.name);
#define AGAIN() NEXT
#define BRACKETS ()
#define NEXT(name, ...) MEMBER(name) __VA_OPT__(AGAIN BRACKETS(__VA_ARGS__))
#define FOUR(...) THREE(THREE(THREE(THREE(__VA_ARGS__))))
#define THREE(...) TWO(TWO(TWO(TWO(__VA_ARGS__))))
#define TWO(...) ONE(ONE(ONE(ONE(__VA_ARGS__))))
#define ONE(...) __VA_ARGS__
// Goes on with the member of `r` that comes next in the path, one of these names.
#define PICK(...)                    \
  const std::string wanted = next(); \
  FOUR(FOUR(NEXT(__VA_ARGS__)))      \
  throw std::runtime_error("there is no member " + wanted)

void Walk::at(FontRecord& r) {
  if (!rest_.empty()) {
    PICK(name, size, bold, italic, underline, colour);
  }
  shown = r.name + " " + std::to_string(static_cast<int>(r.size)) + (r.bold ? " bold" : "");
}
void Walk::at(RiskRecord& r) {
  PICK(text, ID, benchmark, active, sortKey, voting, notes, owners, rootCauses, text3, text5, shortText,
       newItem, sifterScore, average, counted, standardDeviation, diversity, cumulative, weightedCumulative,
       voted, plotText, postalData, identifier);
}
void Walk::at(AssessmentRecord& r) {
  PICK(voteType, titleFont, font2, font3, font4, font4Flag, font4Colour, titleAlign, itemAlign, scaleAlign,
       imageFile, lbl_Risk, lbl_Assessment, lbl_Criteria, img_chart, Img_VC, pcaQuestion, sifterCutoff,
       pointColours, showTitleText, showScaleText, scalePointCount, startFrom);
}
void Walk::at(AssessmentInfoRecord& r) {
  PICK(active, votingOrder, showEndMessage, weight, weightingOn, bands);
}
void Walk::at(BandRecord& r) {
  PICK(colour, low, high, label);
}
void Walk::at(CategoryRecord& r) {
  PICK(CategoryID, CategoryName, CategoryItems, Selected, Enabled, CategoryParent);
}
void Walk::at(MultiPlotRecord& r) {
  PICK(Enabled, Assessments, PlotType, ReverseCalc);
}
void Walk::at(SifterSorterRecord& r) {
  PICK(includeRatio, maxNumberOfItemsVotedOn, allocateMaxPointsPerItem, allocateMaxPointsTotal,
       orderCreateListFromTopXItems, option1, pair1, pair2);
}
void Walk::at(Glo& r) {
  PICK(MatrixGraphPlotting, currentPlotPairings, textZoom, scaleFonts, GradientFillStartColour,
       chk_avgradient, pointHighlightColour, graphLabelFont, averageDisplayKind, showCumulative,
       showWeightedCumulative, runningOrderAverageGraph, voteStep, matrixAxes, risks, listTitle, exerciseName,
       listOrder, categories, CategoryMode, gridColWidths, scaleLabels, assessmentTitles, assessments,
       assessmentInfo, defaultAlign, opt_abstain, multiPlot, demographicLogicalOperator, runByOption,
       runByGraphLabelColour, runByShowBarGraph, runByShowAverages, runByShowAveragesEnd, runByShowScatter,
       OptionListPopup, runByCat574e, runByCatPrefs, CheckAutoSave, CheckUseLivePostal, ComboReOrder,
       OptionMatrixItemNavigation, endOfVoteSoundOn, endOfVoteSoundFile, workshopNumber, runByAverageBarCount,
       barCountAuto, barColours1, barColours2, chartPointCount, optionAveragePairing, pairAssessments,
       remainingAssessments, matrixTitleFont, OptionScatterScale, TextScatterScaleAbbreviate,
       XYGridLinesAsQuarters, averageMatrixChoice, matrixGraphDisplay, checkOverrideRagging, chk_OwnerEnabled,
       chk_SublistEnabled, ComboListPopup, CheckAverageScoreIndicator, statsBoxX, statsBoxY,
       opt_StatsBoxPosition, matrixBackgroundFlag, matrixBackgroundFile, backgroundFile, usePPTBackground,
       SifterSorterSettings, MainVoteSettings, lookUpEditorFlags, overlayBoundaries, resumePending,
       runFinished, logCategory, logPairCount, logAssessments, currentRisk, currentItem, currentAssessment,
       voteAssessmentNumber, singleVoteRun, jumpItem, jumpAssessment, quitRequested, liveVotes, postalVotes,
       keypadIncluded, keypadCounted, abstainCount, voteType, limits, points, allocation, preVoteText,
       voteText, voteTitle, options, startFrom, voteTextOptionCount, votesCast, voteComplete, voteAbandoned,
       abstainEnabled, allowedVotes, voteOpen, baseType, keyboardFlag, maxKeypads, keypadsNotVotedPopupOn,
       keypadsNotVotedHowManyToShow, keypadsNotVotedLo, keypadsNotVotedHi, keypadsNotVotedClose,
       keypadsNotVotedClosePercent, numKeypads, useOffsets, baseOffsets, keypadPortInfo, activeKeypads,
       roomRehearsed, activeKeypadList, scanMarked, demographicFilterOn, demographicFilterText,
       runByGraphGridColour, checkDrawLineColor, graphPercentOrNumber, backgroundStart, backgroundEnd,
       itemPlotFont, CheckShowListItemIdentifier, listOrderCode, dataMessage, returnToEditor, closing,
       cmdFile, cmdMode, cmdSlide, cmdField4, cmdField5, currentSlide, currentSlideID, appTitle, tempPath,
       matrixPath, appPath, exerciseLoaded, sifterLines, hasSifterData, revotePending, keyboardTurnedOn,
       nextRounds, assessmentVotePlan, ShowResultsTable);
}

#undef PICK
#undef MEMBER

}  // namespace

std::string memberText(std::string_view path) {
  Walk walk(path, nullptr);
  walk.at(glo);
  return walk.shown;
}

void setMember(std::string_view path, const std::string& text) {
  Walk(path, &text).at(glo);
}

}  // namespace qrn::test
