// The body of the exercise text, line by line: one walk that writes it and reads it. The order is the
// format's; it has grown with the versions, which is why things that belong together stand far apart.
//
// Where writer and reader differ, `Archive::reading` tells them apart and a word says why.
#pragma once

#include <algorithm>

#include "base/text.h"
#include "base/utf8.h"
#include "store/exercise_text_categories.h"
#include "store/exercise_text_fonts.h"
#include "store/exercise_text_items.h"
#include "store/exercise_text_layout.h"

namespace qrn::mtx {

template <class Archive>
void labels(Archive& a, Exercise& x, std::size_t assessment) {
  a.list(x.scaleLabels[assessment]);
  if constexpr (Archive::reading)
    x.assessments[assessment].scalePointCount = x.labelCount(static_cast<int>(assessment));
}

template <class Archive>
void title(Archive& a, Exercise& x, std::size_t assessment) {
  a.line(Q(x.assessmentTitles[assessment]));
}

template <class Archive>
void password(Archive& a, std::string& word) {
  if constexpr (Archive::reading) {
    const std::size_t count = a.count().value_or(0);
    word.clear();
    for (std::size_t i = 0; i < count; ++i) {
      std::int32_t code = '?';
      a.line(L(code));
      if (code >= 0x80 && code < 0xA0)  // written before the texts were Unicode
        word += toUtf8(std::string(1, static_cast<char>(code)));
      else
        appendCharacter(word, static_cast<std::uint32_t>(code < 0 ? code + 0x10000 : code));
    }
  } else {
    const auto codes = characters(word);
    auto count = static_cast<std::int32_t>(codes.size());
    a.line(L(count));
    for (std::uint32_t code : codes) a.line(L(code));
  }
}

// Chart, list pane, items, first titles -----------------------------------------------------------

// What is written at the places of the chart style and of the vote display mode is not what they are read
// into: the property mode, which so never comes back, and a constant.
template <class Archive>
void firstLine(Archive& a, Exercise& x) {
  std::string always;
  int displayMode = 5;
  auto& style = Archive::reading ? x.chartStyle : x.graphPropertyMode;
  auto& mode = Archive::reading ? x.voteDisplayMode : displayMode;
  PaneRect& pane = x.listWindow;
  a.line(T(always), I(x.chartPointCount), I(style), S(pane.left), S(pane.top), S(pane.width), S(pane.height),
         I(mode), I(x.chartPercentMode));
  if constexpr (Archive::reading)
    if (x.chartPointCount <= 1)
      x.chartPointCount = 2;
}

template <class Archive>
void listLines(Archive& a, Exercise& x) {
  firstLine(a, x);
  itemLines(a, x);
  labels(a, x, 0);
  labels(a, x, 1);
  a.line(Q(x.exerciseName), Q(x.assessmentTitles[0]), Q(x.assessmentTitles[1]));
  a.line(Q(x.listTitle));
  fontLine(a, x.xyVoteTitle, [&](FontRecord& f) {
    a.line(T(f.name), S(f.size), B(f.bold), B(f.italic), B(f.underline), B(f.strikethrough));
  });
  fontLine(a, x.listCaption, [&](FontRecord& f) {
    a.line(T(f.name), S(f.size), B(f.bold), B(f.italic), B(f.underline), B(f.strikethrough), L(f.colour));
  });
  a.line(L(x.listCaptionBackColour));
  a.line(L(x.listCaptionForeColour));
}

template <class Archive>
void runLines(Archive& a, Exercise& x) {
  for (int* option : {&x.runByOption, &x.runByShowBarGraph, &x.averageDisplayOption, &x.runByShowAverages[0],
                      &x.runByShowAveragesEnd, &x.runByShowListBeforePolling, &x.runByShowScatter,
                      &x.coiSizes[0], &x.backgroundMode, &x.backgroundGradient})
    a.line(I(*option));
  auto& from = x.backgroundStart;
  auto& to = x.backgroundEnd;
  a.line(I(from[0]), I(from[1]), I(from[2]), I(to[0]), I(to[1]), I(to[2]), I(x.backgroundFlag));
  for (OverlayRecord& overlay : x.overlays) {
    a.line(Q(overlay.text), L(overlay.backColour), B(overlay.visible), I(overlay.style));
    std::string face = overlay.font;
    a.line(L(overlay.colour), T(face), B(overlay.bold), B(overlay.italic), I(overlay.size));
    if constexpr (Archive::reading)
      if (!face.empty())
        overlay.font = installedFont(a, face, false);
  }
}

// First titles' fonts, window, third assessment ---------------------------------------------------

template <class Archive>
void firstFontLines(Archive& a, Exercise& x) {
  font(a, x.assessments[0].titleFont);
  font(a, x.assessments[1].titleFont);
  font(a, x.assessments[0].font3);
  // The spare plots follow the first assessment as it is known up to here.
  if constexpr (Archive::reading)
    x.assessments[9] = x.assessments[10] = x.assessments[0];
  font(a, x.assessments[1].font3);
  a.line(I(x.runByShowListTitle));
  a.line(I(x.unnamedOption));
  a.line(I(x.graphPercentOrNumber));
}

// The file name stands for the choice of the slide's own background.
template <class Archive>
void backgroundLine(Archive& a, Exercise& x) {
  constexpr const char* kSlideBackground = "USEPPTBACKGROND";
  if constexpr (Archive::reading) {
    a.line(T(x.backgroundFile));
    x.usePPTBackground = x.backgroundFile == kSlideBackground;
  } else {
    std::string file = x.backgroundFile == kSlideBackground ? "" : x.backgroundFile;
    if (x.usePPTBackground)
      file = kSlideBackground;
    a.line(T(file));
  }
}

template <class Archive>
void votingScreenLines(Archive& a, Exercise& x) {
  backgroundLine(a, x);
  a.line(S(x.voteWindow.left), S(x.voteWindow.top), S(x.voteWindow.width), S(x.voteWindow.height));
  labels(a, x, 2);
  title(a, x, 2);
  font(a, x.assessments[2].font3);
  font(a, x.assessments[2].titleFont);
  a.line(L(x.runByGraphLabelColour), L(x.blobColours[0]));
  for (AssessmentInfoRecord& info : x.assessmentInfo) a.values(B(info.active));
  a.endLine();
  for (AssessmentInfoRecord& info : x.assessmentInfo) a.values(B(info.showEndMessage));
  a.endLine();
  for (AssessmentInfoRecord& info : x.assessmentInfo) a.values(T(info.endMessage));
  a.endLine();
  a.line(L(x.runByAverageGraphBarColour), I(x.onFinish), I(x.runByAverageBarCount), I(x.blobSizeOption),
         L(x.pointHighlightColour));
}

// Colours, further assessments --------------------------------------------------------------------

template <class Archive>
void colourLines(Archive& a, Exercise& x) {
  a.line(L(x.fontColour), L(x.fontShadowColour));
  fontLine(a, x.matrixTitleFont,
           [&](FontRecord& f) { a.line(T(f.name), I(f.size), B(f.bold), B(f.italic)); });
  for (std::size_t i = 0; i < 10; ++i) {
    a.line(L(x.barColours1[i]), L(x.barColours2[i]), L(x.barColours3[i]));
    // Files that end before the colours of each assessment show all of them in these.
    if constexpr (Archive::reading)
      for (std::size_t s = 0; s < 10; ++s) x.assessments[s].pointColours[i] = x.barColours1[i];
  }
  labels(a, x, 3);
  labels(a, x, 4);
  title(a, x, 3);
  title(a, x, 4);
  for (FontRecord* f : {&x.assessments[3].titleFont, &x.assessments[4].titleFont, &x.assessments[3].font3,
                        &x.assessments[4].font3})
    font(a, *f);
  for (ScatterBand& band : x.scatterBands[0]) a.line(L(band.colour), S(band.low), S(band.high));
  a.line(I(x.coiSizes[1]));
  for (AssessmentInfoRecord& info : x.assessmentInfo) a.values(I(info.votingOrder));
  a.line(I(x.matrixAxes[0]));
  labels(a, x, 5);
  title(a, x, 5);
  font(a, x.assessments[5].titleFont);
  font(a, x.assessments[5].font3);
}

template <class Archive>
void matrixLines(Archive& a, Exercise& x) {
  a.line(I(x.pairAssessments[0]), I(x.boundaryMode));
  for (AssessmentInfoRecord& info : x.assessmentInfo)
    for (BandRecord& band : info.bands) a.line(L(band.colour), S(band.low), S(band.high));
  a.line(I(x.optionAveragePairing), I(x.checkDrawLine[0]), I(x.checkDrawLine[1]), L(x.checkDrawLineColor[0]),
         L(x.checkDrawLineColor[1]), L(x.blobColours[0]), L(x.blobColours[1]), L(x.blobColours[2]));
  for (std::size_t i = 1; i <= 8; ++i) a.line(I(x.runByShowAverages[i]));
  for (int& option : x.runningOrderAverageGraph) a.line(I(option));
  a.elements(x.overlayBoundaries, [&](OverlayBoundary& piece) {
    a.line(L(piece.fourth), I(piece.second), I(piece.first), I(piece.third));
  });
  a.line(L(x.theCutter), I(x.overlaysOn), I(x.overlaysEnabled[0]), I(x.boundariesOn),
         I(x.optionPlottingAccuracy));
  for (std::size_t s = 6; s <= 8; ++s) labels(a, x, s);
  for (std::size_t s = 6; s <= 8; ++s) title(a, x, s);
  for (std::size_t s = 6; s <= 8; ++s) font(a, x.assessments[s].titleFont);
  for (std::size_t s = 6; s <= 8; ++s) font(a, x.assessments[s].font3);
}

// List, categories, pairs -------------------------------------------------------------------------

template <class Archive>
void listOptionLines(Archive& a, Exercise& x) {
  a.line(I(x.OptionSave), L(x.listBackColour));
  fontLine(a, x.listFont,
           [&](FontRecord& f) { a.line(B(f.bold), B(f.italic), T(f.name), D(f.size), L(f.colour)); });
  a.line(I(x.OptionButtons), I(x.runningOrderTrapMouse));
  categoryLines(a, x);
  a.line(I(x.pairAssessments[1]), I(x.matrixAxes[1]));
  if constexpr (Archive::reading)
    if (x.pairAssessments[1] < 0 || x.pairAssessments[1] > 4)
      x.pairAssessments[1] = 9;
  a.line(L(x.blobColours[3]), I(x.checkDrawLine[2]), L(x.checkDrawLineColor[2]));
  a.line(I(x.runByShowScatterOption), I(x.coiPairs[0]), I(x.coiPairs[1]));
  a.line(B(x.CheckFilter), T(x.filterFile), B(x.CheckShowListItemIdentifier));
}

template <class Archive>
void sifterLines(Archive& a, Exercise& x) {
  SifterSorterRecord& s = x.SifterSorterSettings;
  a.line(Q(s.title), Q(s.option1), Q(s.option2));
  for (FontRecord* record : {&s.titleFont, &s.option1Font, &s.option2Font})
    fontLine(a, *record, [&](FontRecord& f) {
      a.line(B(f.bold), B(f.italic), T(f.name), D(f.size), B(f.underline), B(f.strikethrough), L(f.colour));
    });
  int always = 0;  // no longer means anything
  a.line(I(always), B(s.flag1), B(s.flag2));
  a.line(I(s.pair1[0]), I(s.pair1[1]), I(s.pair2[0]), I(s.pair2[1]));
}

template <class Archive>
void lookUpLists(Archive& a, std::vector<LookUpList>& lists) {
  a.elements(lists, [&](LookUpList& list) {
    a.line(Q(list.name));
    a.list(list.values);
  });
}

template <class Archive>
void lookUpLines(Archive& a, Exercise& x) {
  auto& behaviours = x.runByCatPrefs;
  a.line(I(x.CheckrunByCategory), I(behaviours[0]), I(behaviours[1]), I(behaviours[2]), I(behaviours[3]),
         I(x.runByShowSelectedBeforePolling), T(x.sifterBackground), I(x.runByVoteItemsLeft),
         I(x.comboSpellCheckLang));
  lookUpLists(a, x.ownerLists);
  lookUpLists(a, x.rootCauseLists);
  a.line(I(x.textZoom[0]));
  itemLookUps(a, x);
  const auto atLeastNone = [&] { x.ComboListPopup = std::max(x.ComboListPopup, 0); };
  atLeastNone();
  a.line(I(x.runByCat574e), I(x.lookUpEditorFlags[0]), I(x.lookUpEditorFlags[1]), I(x.textZoom[1]),
         I(x.textZoom[2]), I(x.ComboListPopup));
  atLeastNone();
}

// Ragging groups, text boxes, benchmarks ----------------------------------------------------------

template <class Archive>
void statsBoxLine(Archive& a, Exercise& x) {
  if constexpr (Archive::reading) {
    const auto fields = splitFields(a.wholeLine(), ';');
    const auto field = [&](std::size_t n, auto value) {
      if (n < fields.size() && !trimBlanks(fields[n]).empty())
        TextReader(fields[n]).take(value);
    };
    field(0, I(x.CheckAverageScoreIndicator));
    field(1, S(x.statsBoxX));
    field(2, S(x.statsBoxY));
    if (fields.size() > 3)
      x.opt_StatsBoxPosition = std::string(trimBlanks(fields[3]));
  } else {
    a.rawLine(std::to_string(x.CheckAverageScoreIndicator) + ";" + plainNumber(x.statsBoxX) + ";" +
              plainNumber(x.statsBoxY) + ";" + x.opt_StatsBoxPosition);
  }
}

// Assessments left over for further pairs; those of pairs that are not shown are dropped, as is number 0.
template <class Archive>
void remainingLine(Archive& a, Exercise& x) {
  auto& rest = x.remainingAssessments;
  a.values(L(x.runByGraphMessageColour), I(x.OptionListPopup), I(x.averageMatrixChoice));
  for (int& number : rest) a.values(I(number));
  a.endLine();
  if constexpr (Archive::reading) {
    std::replace(rest.begin(), rest.end(), 0, -1);
    for (std::size_t pair = 1; pair <= 3; ++pair)
      if (x.optionAveragePairing < static_cast<int>(pair))
        rest[2 * pair] = rest[2 * pair + 1] = -1;
  }
}

template <class Archive>
void itemTextLines(Archive& a, Exercise& x) {
  for (int& group : x.ragGroup) a.values(I(group));
  a.line(I(x.textZoom[3]), I(x.textZoom[4]));
  for (AssessmentInfoRecord& info : x.assessmentInfo) a.line(I(info.weight));
  a.line(I(x.blobShowHide));
  a.line(Q(x.boxCaptions[2]), Q(x.boxCaptions[3]), I(x.CheckUseBoxes[3]), I(x.CheckUseBoxes[4]));
  eachItem(x, [&](RiskRecord& risk) { a.line(Q(risk.text3), Q(risk.text4)); });
  for (AssessmentInfoRecord& info : x.assessmentInfo) a.values(B(info.weightingOn));
  a.endLine();
  itemBenchmarks(a, x);
  a.line(I(x.CheckDisplayBenchmarks));
  statsBoxLine(a, x);
  remainingLine(a, x);
}

// The first derived plot; the named settings tell it and the second in full.
template <class Archive>
void multiPlotLines(Archive& a, Exercise& x) {
  MultiPlotRecord& plot = x.multiPlot[0];
  title(a, x, 9);
  a.values(B(plot.Enabled));
  for (std::size_t i = 0; i < kAssessments; ++i) a.values(B(plot.Assessments[i]));
  for (std::size_t i = 0; i < kAssessments; ++i) a.values(Q(plot.ToolTips[i]));
  a.line(I(plot.PlotType));
}

template <class Archive>
void benchmarkLookLines(Archive& a, Exercise& x) {
  a.line(I(x.checkBenchmark), Q(x.textBenchmark), L(x.frameBenchMarkTextColour), L(x.frameBenchMarkDotColour),
         L(x.frameBenchMarkLineColour), I(x.checkBenchMarkTextColourDefault));
  password(a, x.password);
  a.line(Q(x.boxCaptions[4]), I(x.CheckUseBoxes[5]), Q(x.boxCaptions[5]), I(x.CheckUseBoxes[6]));
  eachItem(x, [&](RiskRecord& risk) { a.line(Q(risk.text5), Q(risk.shortText)); });
}

// Captures, captions, options of the later versions -----------------------------------------------

template <class Archive>
void captureLines(Archive& a, Exercise& x) {
  auto& capture = x.CheckAutoCapture;
  a.line(I(capture[0]));
  fontLine(a, x.graphLabelFont, [&](FontRecord& f) {
    a.line(B(f.bold), B(f.italic), T(f.name), D(f.size), B(f.underline), B(f.strikethrough), L(f.colour));
  });
  a.line(I(capture[1]), I(capture[2]), I(capture[3]), I(capture[4]), L(x.gridColour2));
  for (AssessmentInfoRecord& info : x.assessmentInfo)
    for (BandRecord& band : info.bands) a.line(Q(band.label));
  a.line(I(x.coiEnabled[0]), I(x.coiEnabled[1]), I(x.CheckAutoSave), Q(x.boxCaptions[0]), Q(x.boxCaptions[1]),
         I(x.CheckUseBoxes[2]), L(x.runByGraphGridColour), I(x.ComboBlob));
  eachItem(x, [&](RiskRecord& risk) { a.line(B(risk.newItem)); });
  a.elements(x.lookUpCombos, [&](LookUpCombo& combo) { a.line(Q(combo.name), Q(combo.text)); });
}

template <class Archive>
void laterLines(Archive& a, Exercise& x) {
  a.line(I(x.listOrder), B(x.CheckReOrder), I(x.OptionReOrder), I(x.ComboReOrder),
         I(x.OptionMatrixItemNavigation), I(x.OptionScatterScale), I(x.TextScatterScaleAbbreviate));
  password(a, x.passwordSubgroup);
  a.line(T(x.matrixBackgroundFile), B(x.matrixBackgroundFlag), I(x.CheckUseLivePostal),
         I(x.chk_OverlapLegend), I(x.workshopNumber));
  a.line(I(x.chk_OwnerEnabled), I(x.chk_SublistEnabled), I(x.matrixGraphDisplay), I(x.checkOverrideRagging));
  fontLine(a, x.itemPlotFont, [&](FontRecord& f) { a.line(B(f.bold), B(f.italic), T(f.name), D(f.size)); });
  a.wholeLine([&](auto& line) { line.line(I(x.opt_short), B(x.chk_shortTextAuto), I(x.opt_zoom)); });
  a.values(Q(x.coiLegendTitle));
  for (std::string& text : x.coiLegendLines) a.values(Q(text));
  a.endLine();
  a.line(I(x.defaultAlign[0]), I(x.defaultAlign[1]), I(x.defaultAlign[2]));
  if constexpr (Archive::reading)
    for (std::size_t s = 0; s < kAssessments; ++s) {
      x.assessments[s].titleAlign = x.defaultAlign[0];
      x.assessments[s].itemAlign = x.defaultAlign[1];
      x.assessments[s].scaleAlign = x.defaultAlign[2];
    }
  pictureLines(a, x);
}

template <class Archive>
void bodyLines(Archive& a, Exercise& x) {
  listLines(a, x);
  runLines(a, x);
  firstFontLines(a, x);
  votingScreenLines(a, x);
  colourLines(a, x);
  matrixLines(a, x);
  listOptionLines(a, x);
  sifterLines(a, x);
  lookUpLines(a, x);
  itemTextLines(a, x);
  multiPlotLines(a, x);
  benchmarkLookLines(a, x);
  captureLines(a, x);
  laterLines(a, x);
  lastLines(a, x);
}

}  // namespace qrn::mtx
