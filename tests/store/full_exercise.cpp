#include "store/full_exercise.h"

#include "core/item_label.h"

namespace qrn::test {
namespace {

// Numbers, texts and fonts that never come twice.
class Distinct {
 public:
  int number() { return ++last_; }
  std::int32_t colour() { return 0x10000 + number(); }
  float single() { return static_cast<float>(number()) + 0.1F; }
  std::string text(const char* word) { return word + (" " + std::to_string(number())); }
  FontRecord font() {
    FontRecord f{text("Font"), 10.5 + number(), true, true, true, true, 0};
    f.colour = colour();
    return f;
  }
  LayoutRect box() {
    // twips at whole pixels of the default screen
    return {15.0F * static_cast<float>(number()), 0, 15.0F * static_cast<float>(number()),
            15.0F * static_cast<float>(number())};
  }
  std::vector<std::string> list(const char* word, int count) {
    std::vector<std::string> values;
    for (int i = 0; i < count; ++i) values.push_back(text(word));
    values.emplace_back();
    return values;
  }
  template <class Members>
  void fill(Members& members) {
    for (auto& member : members) member = number();
  }
  void each(std::initializer_list<int*> members) {
    for (int* member : members) *member = number();
  }

 private:
  int last_ = 100;
};

void fillItems(Exercise& x, Distinct& next, int items) {
  x.risks.assign(static_cast<std::size_t>(items) + 1, RiskRecord{});
  for (int i = 0; i < items; ++i) {
    RiskRecord& risk = x.risks[static_cast<std::size_t>(i)];
    risk.text = next.text("An item, with a comma,");
    risk.ID = i;
    risk.sortKey = items - i;
    risk.voting = true;
    risk.notes = next.text("Notes\r\non two lines");
    risk.active.fill(true);
    risk.active[static_cast<std::size_t>(i % 9)] = false;
    for (std::size_t a = 0; a < kAssessments; ++a)
      risk.benchmark[a] = static_cast<float>(i % 7) + 0.25F * static_cast<float>(a) + 0.1F;
    risk.owners = next.list("Owner", 1);
    risk.rootCauses = next.list("Cause", i % 2);
    for (std::string* text : {&risk.text3, &risk.text4, &risk.text5, &risk.shortText})
      *text = next.text("Box");
    risk.newItem = i % 2 == 0;
    risk.identifier = itemIdentifier(i);
  }
}

void fillCategories(Exercise& x, Distinct& next, int items) {
  x.categories.assign(4, CategoryRecord{});
  x.categories[0].CategoryName = "unallocated";
  for (std::size_t c = 0; c < 3; ++c) {
    CategoryRecord& category = x.categories[c];
    if (c > 0)
      category.CategoryName = next.text("Category");
    category.Selected = c == 1;
    category.Enabled = c != 1;
    category.CategoryID = 10 + static_cast<std::int32_t>(c);
    category.CategoryParent = static_cast<std::int32_t>(c);
    category.CategoryItems.clear();
    for (int id = static_cast<int>(c); id < items; id += 3) category.CategoryItems.push_back(id);
    category.CategoryItems.push_back(-1);
  }
  x.CategoryMode = 1;
}

void fillAssessments(Exercise& x, Distinct& next) {
  for (std::size_t a = 0; a + 1 < x.assessments.size(); ++a) {
    AssessmentRecord& s = x.assessments[a];
    s.startFrom = a % 2 == 0 ? 0 : 1;
    s.font2 = next.font();
    s.font4 = next.font();
    s.font4Colour = next.colour();
    s.font4Flag = true;
    next.each({&s.titleAlign, &s.itemAlign, &s.scaleAlign, &s.graphType, &s.pcaScaleRow});
    s.imageFile = next.text("C:\\pictures\\image");
    s.voteType = a % 2 == 0 ? 3 : 2;
    s.showTitleText = s.showScaleText = s.chartOutline = false;
    s.chartAxis = true;
    for (LayoutRect* box : {&s.img_chart, &s.lbl_PCAPrompt, &s.lbl_PCAItem0, &s.lbl_PCAItem1}) {
      *box = next.box();
      box->height = 15.0F * static_cast<float>(next.number());
    }
    next.fill(s.pcaScale);
    for (LayoutRect* label : {&s.lbl_Risk, &s.lbl_Assessment}) {
      *label = next.box();
      label->height = 0;
      label->width = 15.0F * static_cast<float>(next.number());
    }
    s.Img_VC = {0, 0, 15.0F * static_cast<float>(next.number()), 15.0F * static_cast<float>(next.number())};
    for (std::size_t c = 0; c < 10; ++c)
      s.lbl_Criteria[c] = {15.0F * static_cast<float>(next.number()), 0, 15.0F * static_cast<float>(c + 1),
                           30.0F};
    s.pcaQuestion = next.text("Which one");
    s.sifterCutoff = next.single();
    for (std::int32_t& colour : s.pointColours) colour = next.colour();
  }
  for (std::size_t a = 0; a < kAssessments; ++a) {
    x.scaleLabels[a] = next.list("Label", 2 + static_cast<int>(a));
    x.assessments[a].scalePointCount = 2 + static_cast<int>(a);
    x.assessments[a].titleFont = next.font();
    x.assessments[a].font3 = next.font();
    AssessmentInfoRecord& info = x.assessmentInfo[a];
    info.active = a != 0;
    next.each({&info.votingOrder, &info.weight});
    info.endMessage = next.text("End");
    info.showEndMessage = info.weightingOn = true;
    for (BandRecord& band : info.bands)
      band = {next.colour(), next.single(), next.single(), next.text("Band")};
  }
  for (std::string& title : x.assessmentTitles) title = next.text("Title");
}

void fillLists(Exercise& x, Distinct& next) {
  for (auto* lists : {&x.ownerLists, &x.rootCauseLists})
    *lists = {
        {next.text("List"), next.list("Value", 2)}, {next.text("List"), next.list("Value", 0)}, LookUpList{}};
  x.lookUpCombos = {{next.text("Combo"), next.text("Text")}, LookUpCombo{}};
  x.overlayBoundaries = {{next.number(), next.number(), next.number(), next.colour()}, OverlayBoundary{}};
  for (OverlayRecord& o : x.overlays)
    o = {next.text("Overlay"), next.colour(), next.text("Font"), true,         true,
         next.number(),        false,         next.colour(),     next.number()};
  for (MultiPlotRecord& plot : x.multiPlot) {
    plot.Enabled = plot.ReverseCalc = true;
    plot.Assessments.fill(true);
    for (std::string& tip : plot.ToolTips) tip = next.text("Tip");
    plot.PlotType = next.number();
  }
  x.demographics = {{258, {{1, true, ""}, {3, true, ""}}, true}, {260, {{2, true, ""}}, false}};
  x.gridColWidths = {next.number(), next.number(), next.number()};
  next.fill(x.ragGroup);
  for (std::string& caption : x.boxCaptions) caption = next.text("Caption");
  for (std::string& line : x.coiLegendLines) line = next.text("Legend");
}

void fillNumbers(Exercise& x, Distinct& next) {
  next.each({&x.listOrder,
             &x.opt_short,
             &x.opt_zoom,
             &x.demographicLogicalOperator,
             &x.runByOption,
             &x.runByShowBarGraph,
             &x.runByShowListBeforePolling,
             &x.runByShowAveragesEnd,
             &x.averageDisplayOption,
             &x.graphPercentOrNumber,
             &x.runByShowListTitle,
             &x.runByShowScatter,
             &x.runByShowScatterOption,
             &x.OptionSave,
             &x.OptionButtons,
             &x.OptionListPopup,
             &x.blobShowHide,
             &x.runningOrderTrapMouse,
             &x.onFinish,
             &x.CheckrunByCategory,
             &x.runByShowSelectedBeforePolling,
             &x.runByVoteItemsLeft,
             &x.runByCat574e,
             &x.comboSpellCheckLang,
             &x.CheckAutoSave,
             &x.CheckUseLivePostal,
             &x.OptionReOrder,
             &x.ComboReOrder,
             &x.OptionMatrixItemNavigation,
             &x.unnamedOption,
             &x.runByAverageBarCount,
             &x.opt_avbarstyle,
             &x.chk_avgradient,
             &x.chartPointCount,
             &x.graphPropertyMode,
             &x.chartPercentMode,
             &x.matrixAxes[0],
             &x.matrixAxes[1],
             &x.pairAssessments[0],
             &x.blobSizeOption,
             &x.ComboBlob,
             &x.OptionScatterScale,
             &x.TextScatterScaleAbbreviate,
             &x.optionPlottingAccuracy,
             &x.boundaryMode,
             &x.averageMatrixChoice,
             &x.matrixGraphDisplay,
             &x.checkOverrideRagging,
             &x.chk_OverlapLegend,
             &x.chk_OwnerEnabled,
             &x.chk_SublistEnabled,
             &x.ComboListPopup,
             &x.overlaysOn,
             &x.boundariesOn,
             &x.CheckDisplayBenchmarks,
             &x.CheckAverageScoreIndicator,
             &x.checkBenchmark,
             &x.checkBenchMarkTextColourDefault,
             &x.backgroundMode,
             &x.backgroundGradient,
             &x.backgroundFlag});
  x.workshopNumber = 0;
  x.optionAveragePairing = 3;
  x.pairAssessments[1] = 4;
  x.endOfVoteSoundOn = 1;
  x.textZoom = {1, 3, 2, 5, 6};
  next.fill(x.runByShowAverages);
  next.fill(x.runningOrderAverageGraph);
  next.fill(x.runByCatPrefs);
  next.fill(x.CheckAutoCapture);
  next.fill(x.remainingAssessments);
  next.fill(x.defaultUserSelectedPlotPairings);
  next.fill(x.checkDrawLine);
  next.fill(x.defaultAlign);
  next.fill(x.coiEnabled);
  next.fill(x.coiSizes);
  next.fill(x.coiPairs);
  next.fill(x.overlaysEnabled);
  next.fill(x.lookUpEditorFlags);
  next.fill(x.backgroundStart);
  next.fill(x.backgroundEnd);
  for (std::size_t box = 2; box <= 6; ++box) x.CheckUseBoxes[box] = next.number();
}

void fillLook(Exercise& x, Distinct& next) {
  for (std::int32_t* colour :
       {&x.listCaptionBackColour, &x.listCaptionForeColour, &x.runByAverageGraphBarColour,
        &x.GradientFillStartColour, &x.theCutter, &x.pointHighlightColour, &x.runByGraphLabelColour,
        &x.runByGraphGridColour, &x.runByGraphMessageColour, &x.gridColour2, &x.fontColour,
        &x.fontShadowColour, &x.frameBenchMarkTextColour, &x.frameBenchMarkDotColour,
        &x.frameBenchMarkLineColour, &x.listBackColour})
    *colour = next.colour();
  for (auto* colours : {&x.barColours1, &x.barColours2, &x.barColours3})
    for (std::size_t i = 0; i < 10; ++i) (*colours)[i] = next.colour();
  next.fill(x.checkDrawLineColor);
  next.fill(x.blobColours);
  for (FontRecord* font : {&x.xyVoteTitle, &x.listCaption, &x.graphLabelFont, &x.itemPlotFont,
                           &x.matrixTitleFont, &x.listFont, &x.SifterSorterSettings.titleFont,
                           &x.SifterSorterSettings.option1Font, &x.SifterSorterSettings.option2Font})
    *font = next.font();
  x.matrixTitleFont.size = next.number();
  for (ScatterBand& band : x.scatterBands[0]) band = {next.colour(), next.single(), next.single()};
  for (PaneRect* pane : {&x.listWindow, &x.voteWindow}) *pane = {0.01F, 0.123456789F, 1.0F / 3.0F, 0.7F};
  x.statsBoxX = next.single();
  x.statsBoxY = next.single();
  x.opt_StatsBoxPosition = "BR";
}

void fillTextsAndFlags(Exercise& x, Distinct& next) {
  for (std::string* text :
       {&x.listTitle, &x.exerciseName, &x.filterFile, &x.endOfVoteSoundFile, &x.coiLegendTitle,
        &x.textBenchmark, &x.matrixBackgroundFile, &x.backgroundFile, &x.sifterBackground})
    *text = next.text("Text, with a comma;");
  x.password = "Schl\xC3\xBCssel \xE2\x82\xAC";
  x.passwordSubgroup = "\xF0\x9F\x94\x91";
  x.chk_shortTextAuto = x.templateFlag = x.opt_abstain = x.CheckFilter = true;
  x.XYGridLinesAsQuarters = x.CheckShowListItemIdentifier = true;
  x.matrixBackgroundFlag = x.CheckReOrder = x.barCountAuto = x.usePPTBackground = false;
  x.ShowResultsTable.fill(true);
  x.MainVoteSettings.voteMode = 14;
  SifterSorterRecord& sifter = x.SifterSorterSettings;
  for (std::string* text : {&sifter.title, &sifter.option1, &sifter.option2}) *text = next.text("Sifter");
  sifter.flag1 = sifter.flag2 = true;
  next.fill(sifter.pair1);
  next.fill(sifter.pair2);
  next.each({&sifter.voteType, &sifter.calculateMode, &sifter.includeRatio, &sifter.maxNumberOfItemsVotedOn,
             &sifter.allocateMaxPointsPerItem, &sifter.allocateMaxPointsTotal,
             &sifter.orderCreateListFromTopXItems});
}

}  // namespace

void fillExercise(Exercise& x, int items) {
  Distinct next, nextOfItems;
  fillItems(x, nextOfItems, items);
  fillCategories(x, next, items);
  fillAssessments(x, next);
  fillLists(x, next);
  fillNumbers(x, next);
  fillLook(x, next);
  fillTextsAndFlags(x, next);
}

Exercise afterReload(const Exercise& x) {
  Exercise y = x;
  // Written from one member, read into another; and the constant that stands at the second place.
  y.chartStyle = x.graphPropertyMode;
  y.graphPropertyMode = 0;
  y.voteDisplayMode = 5;
  y.xyVoteTitle.colour = 0;
  y.matrixTitleFont.underline = y.matrixTitleFont.strikethrough = false;
  y.matrixTitleFont.colour = 0;
  y.listFont.underline = y.listFont.strikethrough = false;
  y.itemPlotFont.underline = y.itemPlotFont.strikethrough = false;
  y.itemPlotFont.colour = 0;
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
