// What a file keeps: the exercise as a plain value that can be copied and compared. Defaults are set by
// initXYVote.
//
// `risks`, `categories`, the label arrays, the look-up lists and their values, `lookUpCombos` and
// `overlayBoundaries` keep one spare element at the top: readers run from 0 to upper bound minus 1.
// `upperBound(v)` is the classic upper bound of such an array.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/records.h"
#include "host/names.h"

namespace qrn {

template <class T>
int upperBound(const std::vector<T>& array) {
  return static_cast<int>(array.size()) - 1;
}

struct MainVoteRecord {
  std::int32_t voteMode = 0;  // 9 or 14
  bool operator==(const MainVoteRecord&) const = default;
};

// Made, copied and compared in one place: a hundred units use it.
struct Exercise {
  Exercise();
  Exercise(const Exercise&);
  Exercise(Exercise&&) noexcept;
  Exercise& operator=(const Exercise&);
  Exercise& operator=(Exercise&&) noexcept;
  ~Exercise();
  bool operator==(const Exercise&) const;

  // The list
  std::vector<RiskRecord> risks = std::vector<RiskRecord>(1);
  std::string listTitle = "List Title", exerciseName;
  FontRecord xyVoteTitle{"Arial", 16};  // font of the list title; its colour is not stored
  FontRecord listCaption{"Arial", 12};  // font of the list caption
  std::int32_t listCaptionBackColour = 0, listCaptionForeColour = 0;
  int listOrder = 0;                       // listOrderCode of the list as stored
  std::vector<CategoryRecord> categories;  // index 0 is "unallocated"
  std::int32_t CategoryMode = 0;
  std::vector<LookUpList> ownerLists, rootCauseLists;
  int ownerListCurrent = 0, rootCauseListCurrent = 0;
  std::vector<LookUpCombo> lookUpCombos = std::vector<LookUpCombo>(1);
  std::array<std::string, 6> boxCaptions{"List display text:", "Notes/comments:", "3rd text box",
                                         "4th text box",       "5th text box",    "Short Description Text:"};
  std::array<int, 7> CheckUseBoxes{0, 0, 1, 0, 0, 0, 1};  // by box number 2 to 6
  int opt_short = 5;
  bool chk_shortTextAuto = false;
  int opt_zoom = 0;
  std::vector<std::int32_t> gridColWidths;

  // Assessments and their scales
  std::array<std::vector<std::string>, 10> scaleLabels;
  std::array<std::string, 11> assessmentTitles;  // 9 and 10 name the multi-plots
  std::array<AssessmentRecord, kSlots> assessments{};
  std::array<AssessmentInfoRecord, kAssessments> assessmentInfo{};
  std::array<FontRecord, 9> scaleFonts{};    // of the scale text in the wizard; not stored
  std::array<int, 3> defaultAlign{2, 2, 2};  // title, item, scale
  ScreenDimensions layoutScreen;             // what the lengths of the layouts are meant for; not stored
  bool templateFlag = false;
  bool opt_abstain = false;
  MainVoteRecord MainVoteSettings;

  // Derived plots, filters
  std::array<MultiPlotRecord, 2> multiPlot{};
  std::vector<DemographicQuestion> demographics;
  int demographicLogicalOperator = 0;  // 0 AND, otherwise OR
  bool CheckFilter = false;
  std::string filterFile;

  // Running order
  int runByOption = 0;  // 0 by item, 1 by assessment
  int runByShowBarGraph = 1, runByShowListBeforePolling = 1, runByShowAveragesEnd = 1;
  std::array<int, 10> runByShowAverages{}, runningOrderAverageGraph{};
  int averageDisplayOption = 0, graphPercentOrNumber = 0, runByShowListTitle = 0, runByShowScatter = 0,
      runByShowScatterOption = 0, OptionSave = 0, OptionButtons = 0, OptionListPopup = 0, blobShowHide = 0;
  int runningOrderTrapMouse = 1, onFinish = 1;
  int CheckrunByCategory = 0, runByShowSelectedBeforePolling = 0, runByVoteItemsLeft = 0;
  std::array<int, 4> runByCatPrefs{};
  int runByCat574e = 0;
  int comboSpellCheckLang = 3;
  std::array<int, 5> CheckAutoCapture{0, 0, 1, 0, 1};
  int CheckAutoSave = 1, CheckUseLivePostal = 0;
  bool CheckReOrder = true;
  int OptionReOrder = 2, ComboReOrder = 0, OptionMatrixItemNavigation = 0;
  int endOfVoteSoundOn = 0;
  std::string endOfVoteSoundFile;
  int workshopNumber = 0;
  int unnamedOption = 0;  // stored and given back, used by nothing

  // Average graph
  int runByAverageBarCount = 35;
  bool barCountAuto = true;
  std::int32_t runByAverageGraphBarColour = 0xffffff, GradientFillStartColour = 0xffffff;
  int opt_avbarstyle = 2, chk_avgradient = 0;
  std::int32_t theCutter = 65535, pointHighlightColour = 0xc0e0ff;
  std::array<std::int32_t, kPointColours> barColours1{}, barColours2{}, barColours3{};
  int chartPointCount = 0, graphPropertyMode = 0, chartStyle = 0, voteDisplayMode = 0, chartPercentMode = 0;

  // Matrix graph
  int optionAveragePairing = 0;
  std::array<int, 2> pairAssessments{9, 9}, matrixAxes{9, 9};
  std::array<int, 9> remainingAssessments{-1, -1, -1, -1, -1, -1, -1, -1, -1};
  std::array<int, 4> defaultUserSelectedPlotPairings{};
  std::array<int, 3> checkDrawLine{};
  std::array<std::int32_t, 3> checkDrawLineColor{};
  std::array<std::int32_t, 4> blobColours{0xffffff, 0x135e6a, 0x5b941d, 0x940a78};
  std::array<int, 3> blobSizes{108, 110, 116};  // not stored
  int blobSizeOption = 2, ComboBlob = 0;
  std::array<std::array<ScatterBand, 3>, 2> scatterBands{};
  std::int32_t runByGraphLabelColour = 0xffffff, runByGraphGridColour = 0xffffff,
               runByGraphMessageColour = 65535, gridColour2 = 0;
  FontRecord graphLabelFont{"Arial", 12, true}, itemPlotFont{"Arial", 12, true};
  FontRecord matrixTitleFont{"Arial", 18};  // name, size, bold, italic
  std::int32_t fontColour = 0xffffff, fontShadowColour = 0;
  int OptionScatterScale = 0, TextScatterScaleAbbreviate = 0;
  bool XYGridLinesAsQuarters = false;
  int optionPlottingAccuracy = 0, boundaryMode = 0, averageMatrixChoice = 0, matrixGraphDisplay = 0,
      checkOverrideRagging = 0, chk_OverlapLegend = 0, chk_OwnerEnabled = 0, chk_SublistEnabled = 0,
      ComboListPopup = 0;
  std::array<int, 9> ragGroup{};
  std::array<int, 2> coiEnabled{1, 1}, coiSizes{16, 50}, coiPairs{};
  std::string coiLegendTitle = "Circle of Influence Legend";
  std::array<std::string, 5> coiLegendLines{"None", "Pair 1", "Pair 2", "Pair 3", "Pair 4"};
  int overlaysOn = 0, boundariesOn = 0;
  std::array<int, 1> overlaysEnabled{};
  std::vector<OverlayBoundary> overlayBoundaries = std::vector<OverlayBoundary>(1);
  std::array<OverlayRecord, kOverlays> overlays{};
  int CheckDisplayBenchmarks = 0, CheckAverageScoreIndicator = 1;
  float statsBoxX = 0, statsBoxY = 0;
  std::string opt_StatsBoxPosition;  // "TL", "TR", "BL", "BR"
  int checkBenchmark = 0, checkBenchMarkTextColourDefault = 0;
  std::string textBenchmark = "Benchmark: ";
  std::int32_t frameBenchMarkTextColour = 0, frameBenchMarkDotColour = 0, frameBenchMarkLineColour = 0;
  std::string matrixBackgroundFile;
  bool matrixBackgroundFlag = true;

  // Screens
  PaneRect listWindow{0.1F, 0.6F, 0.8F, 0.4F}, voteWindow{0.1F, 0.0F, 0.8F, 0.5F};
  int backgroundMode = 0, backgroundGradient = 0, backgroundFlag = 0;
  std::array<int, 3> backgroundStart{128, 128, 255}, backgroundEnd{0, 0, 128};
  std::string backgroundFile;
  bool usePPTBackground = false;
  std::string sifterBackground;
  std::int32_t listBackColour = kSystemWindowColour;
  FontRecord listFont{"Arial", 12};  // name, size, bold, italic, colour
  std::array<int, 5> textZoom{4, 2, 0, 0, 0};
  bool CheckShowListItemIdentifier = false;
  std::array<bool, 4> ShowResultsTable{};  // shown, average, individual, colour cells

  SifterSorterRecord SifterSorterSettings;
  std::array<int, 2> lookUpEditorFlags{};
  std::string password = "quartz rain", passwordSubgroup = "QRZ";

  // The element itself, checked: item `i` of the list from 0 (the spare one at the top too), assessment `n`
  // from 1 and its place in the running order. Throw std::out_of_range.
  RiskRecord& item(int i) { return risks.at(static_cast<std::size_t>(i)); }
  const RiskRecord& item(int i) const { return risks.at(static_cast<std::size_t>(i)); }
  AssessmentRecord& assessment(int n) { return assessments.at(static_cast<std::size_t>(n - 1)); }
  const AssessmentRecord& assessment(int n) const { return assessments.at(static_cast<std::size_t>(n - 1)); }
  AssessmentInfoRecord& running(int n) { return assessmentInfo.at(static_cast<std::size_t>(n - 1)); }
  const AssessmentInfoRecord& running(int n) const {
    return assessmentInfo.at(static_cast<std::size_t>(n - 1));
  }

  int itemCount() const { return upperBound(risks); }
  // Number of scale labels of assessment `a` (0 to 9).
  int labelCount(int a) const { return upperBound(scaleLabels[static_cast<std::size_t>(a)]); }
  // Whether items get an average on `assessment` (1 to 9) in the running order, and how many such there are.
  bool isScored(int assessment) const {
    const std::size_t a = static_cast<std::size_t>(assessment - 1);
    return assessmentInfo[a].active && assessments[a].voteType == scaleKind::scalar;
  }
  int scoredCount() const {
    int count = 0;
    for (int assessment = 1; assessment <= kAssessments; ++assessment) count += isScored(assessment) ? 1 : 0;
    return count;
  }
};

inline constexpr std::array<float, kZoomSteps> kZoomFactors{1.0F, 1.25F, 1.5F, 1.75F, 2.0F, 2.25F, 2.5F};

}  // namespace qrn

extern template class std::vector<qrn::RiskRecord>;
extern template class std::vector<qrn::CategoryRecord>;
extern template class std::vector<qrn::LookUpList>;
extern template class std::vector<qrn::LookUpCombo>;
extern template class std::vector<qrn::DemographicQuestion>;
extern template class std::vector<qrn::OverlayBoundary>;
