#include "support/members.h"

#include <functional>
#include <initializer_list>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <utility>

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
  using Fields = std::initializer_list<std::pair<const char*, std::function<void()>>>;

  std::string next() {
    const std::size_t end = std::min(rest_.find('.'), rest_.size());
    std::string name(rest_.substr(0, end));
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return name;
  }
  void pick(const Fields& fields) {
    const std::string name = next();
    for (const auto& [known, go] : fields)
      if (name == known)
        return go();
    throw std::runtime_error("there is no member " + name);
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
    std::ostringstream text;
    ((text << members << ' '), ...);
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

#define MEMBER(name)           \
  {                            \
#name, [&] { at(r.name); } \
  }

void Walk::at(FontRecord& r) {
  if (!rest_.empty())
    return pick({MEMBER(name), MEMBER(size), MEMBER(bold)});
  shown = r.name + " " + std::to_string(static_cast<int>(r.size)) + (r.bold ? " bold" : "");
}
void Walk::at(RiskRecord& r) {
  pick({MEMBER(text),
        MEMBER(ID),
        MEMBER(benchmark),
        MEMBER(active),
        MEMBER(sortKey),
        MEMBER(voting),
        MEMBER(notes),
        MEMBER(owners),
        MEMBER(rootCauses),
        MEMBER(text3),
        MEMBER(text5),
        MEMBER(shortText),
        MEMBER(newItem),
        MEMBER(sifterScore),
        MEMBER(average),
        MEMBER(counted),
        MEMBER(standardDeviation),
        MEMBER(diversity),
        MEMBER(cumulative),
        MEMBER(weightedCumulative),
        MEMBER(voted),
        MEMBER(plotText),
        MEMBER(postalData),
        MEMBER(identifier)});
}
void Walk::at(AssessmentRecord& r) {
  pick({MEMBER(voteType), MEMBER(titleFont), MEMBER(font2), MEMBER(font3), MEMBER(imageFile),
        MEMBER(lbl_Risk), MEMBER(img_chart), MEMBER(Img_VC), MEMBER(pcaQuestion), MEMBER(sifterCutoff),
        MEMBER(pointColours), MEMBER(showScaleText), MEMBER(scalePointCount)});
}
void Walk::at(AssessmentInfoRecord& r) {
  pick({MEMBER(active), MEMBER(votingOrder), MEMBER(showEndMessage), MEMBER(weight), MEMBER(weightingOn),
        MEMBER(bands)});
}
void Walk::at(BandRecord& r) {
  pick({MEMBER(colour), MEMBER(low), MEMBER(high), MEMBER(label)});
}
void Walk::at(CategoryRecord& r) {
  pick({MEMBER(CategoryID), MEMBER(CategoryName), MEMBER(CategoryItems), MEMBER(Selected), MEMBER(Enabled),
        MEMBER(CategoryParent)});
}
void Walk::at(MultiPlotRecord& r) {
  pick({MEMBER(Enabled), MEMBER(Assessments), MEMBER(PlotType), MEMBER(ReverseCalc)});
}
void Walk::at(SifterSorterRecord& r) {
  pick({MEMBER(includeRatio), MEMBER(maxNumberOfItemsVotedOn), MEMBER(allocateMaxPointsPerItem),
        MEMBER(allocateMaxPointsTotal), MEMBER(orderCreateListFromTopXItems), MEMBER(option1), MEMBER(pair1),
        MEMBER(pair2)});
}
void Walk::at(Glo& r) {
  pick({MEMBER(risks),
        MEMBER(listTitle),
        MEMBER(exerciseName),
        MEMBER(listOrder),
        MEMBER(categories),
        MEMBER(CategoryMode),
        MEMBER(gridColWidths),
        MEMBER(scaleLabels),
        MEMBER(assessmentTitles),
        MEMBER(assessments),
        MEMBER(assessmentInfo),
        MEMBER(defaultAlign),
        MEMBER(opt_abstain),
        MEMBER(multiPlot),
        MEMBER(demographicLogicalOperator),
        MEMBER(runByOption),
        MEMBER(runByGraphLabelColour),
        MEMBER(runByShowBarGraph),
        MEMBER(runByShowAverages),
        MEMBER(runByShowAveragesEnd),
        MEMBER(runByShowScatter),
        MEMBER(OptionListPopup),
        MEMBER(runByCat574e),
        MEMBER(runByCatPrefs),
        MEMBER(CheckAutoSave),
        MEMBER(CheckUseLivePostal),
        MEMBER(ComboReOrder),
        MEMBER(OptionMatrixItemNavigation),
        MEMBER(endOfVoteSoundOn),
        MEMBER(endOfVoteSoundFile),
        MEMBER(workshopNumber),
        MEMBER(runByAverageBarCount),
        MEMBER(barCountAuto),
        MEMBER(barColours1),
        MEMBER(barColours2),
        MEMBER(chartPointCount),
        MEMBER(optionAveragePairing),
        MEMBER(pairAssessments),
        MEMBER(remainingAssessments),
        MEMBER(matrixTitleFont),
        MEMBER(OptionScatterScale),
        MEMBER(TextScatterScaleAbbreviate),
        MEMBER(XYGridLinesAsQuarters),
        MEMBER(averageMatrixChoice),
        MEMBER(matrixGraphDisplay),
        MEMBER(checkOverrideRagging),
        MEMBER(chk_OwnerEnabled),
        MEMBER(chk_SublistEnabled),
        MEMBER(ComboListPopup),
        MEMBER(CheckAverageScoreIndicator),
        MEMBER(statsBoxX),
        MEMBER(statsBoxY),
        MEMBER(opt_StatsBoxPosition),
        MEMBER(matrixBackgroundFlag),
        MEMBER(backgroundFile),
        MEMBER(usePPTBackground),
        MEMBER(SifterSorterSettings),
        MEMBER(MainVoteSettings),
        MEMBER(lookUpEditorFlags),
        MEMBER(overlayBoundaries),
        MEMBER(resumePending),
        MEMBER(runFinished),
        MEMBER(logCategory),
        MEMBER(logPairCount),
        MEMBER(logAssessments),
        MEMBER(currentRisk),
        MEMBER(currentItem),
        MEMBER(currentAssessment),
        MEMBER(voteAssessmentNumber),
        MEMBER(singleVoteRun),
        MEMBER(jumpItem),
        MEMBER(jumpAssessment),
        MEMBER(quitRequested),
        MEMBER(liveVotes),
        MEMBER(postalVotes),
        MEMBER(keypadIncluded),
        MEMBER(abstainCount),
        MEMBER(voteType),
        MEMBER(limits),
        MEMBER(points),
        MEMBER(allocation),
        MEMBER(preVoteText),
        MEMBER(voteText),
        MEMBER(voteTitle),
        MEMBER(options),
        MEMBER(startFrom),
        MEMBER(voteTextOptionCount),
        MEMBER(votesCast),
        MEMBER(voteComplete),
        MEMBER(voteAbandoned),
        MEMBER(abstainEnabled),
        MEMBER(allowedVotes),
        MEMBER(voteOpen),
        MEMBER(baseType),
        MEMBER(keyboardFlag),
        MEMBER(maxKeypads),
        MEMBER(keypadsNotVotedPopupOn),
        MEMBER(keypadsNotVotedHowManyToShow),
        MEMBER(keypadsNotVotedLo),
        MEMBER(keypadsNotVotedHi),
        MEMBER(keypadsNotVotedClose),
        MEMBER(keypadsNotVotedClosePercent),
        MEMBER(numKeypads),
        MEMBER(useOffsets),
        MEMBER(baseOffsets),
        MEMBER(keypadPortInfo),
        MEMBER(activeKeypads),
        MEMBER(roomRehearsed),
        MEMBER(activeKeypadList),
        MEMBER(scanMarked),
        MEMBER(demographicFilterOn),
        MEMBER(demographicFilterText),
        MEMBER(listOrderCode),
        MEMBER(dataMessage),
        MEMBER(returnToEditor),
        MEMBER(closing),
        MEMBER(cmdFile),
        MEMBER(cmdMode),
        MEMBER(cmdSlide),
        MEMBER(cmdField4),
        MEMBER(cmdField5),
        MEMBER(currentSlide),
        MEMBER(currentSlideID),
        MEMBER(appTitle),
        MEMBER(tempPath),
        MEMBER(matrixPath),
        MEMBER(appPath),
        MEMBER(exerciseLoaded),
        MEMBER(sifterLines),
        MEMBER(hasSifterData)});
}

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
