// The exercise text: what is written, and that the same comes back.
#include "store/exercise_text.h"

#include <gmock/gmock.h>

#include <fstream>

#include "core/common.h"
#include "core/edit.h"
#include "store/exercise_fixture.h"

namespace qrn {
namespace {

using test::ExerciseTest;
using test::linesOf;
using ::testing::HasSubstr;

class ExerciseText : public ExerciseTest {};

// First line in which two texts differ, for a message that says where.
std::string firstDifference(const std::string& left, const std::string& right) {
  const auto a = linesOf(left), b = linesOf(right);
  for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i)
    if (i >= a.size() || i >= b.size() || a[i] != b[i])
      return "line " + std::to_string(i + 1) + ": " + (i < a.size() ? a[i] : "-") + " <> " +
             (i < b.size() ? b[i] : "-");
  return "";
}

TEST_F(ExerciseText, everyStoredMemberComesBack) {
  const std::string text = fullText(12);
  const Exercise expected = test::afterReload(glo);
  const Exercise& read = loaded(text);
  EXPECT_EQ(firstDifference(writeExercise(read), writeExercise(expected)), "");
  EXPECT_TRUE(read == expected);
}

// A stored exercise that is loaded and stored again does not drift, whatever the screen. Labels may fill the
// screen or stand beyond it.
TEST_F(ExerciseText, layoutComesBackExactlyOnAnyScreen) {
  for (const auto& [width, height] : {std::pair{15360.0, 11520.0}, {19200.0, 10800.0}, {20490.0, 11520.0}}) {
    setScreenDimensions(width, height);
    begin();
    auto& labels = glo.assessments[0].lbl_Criteria;
    for (std::size_t i = 0; i < 10; ++i)
      labels[i] = {static_cast<float>(width), 0, 1937.3F * static_cast<float>(i),
                   10777.25F / static_cast<float>(i + 1)};
    const auto before = labels;
    EXPECT_TRUE(loaded(writeExercise(glo)).assessments[0].lbl_Criteria == before) << width << "x" << height;
  }
  setScreenDimensions(15360, 11520);
}

// A small exercise, as it stands line by line in small_exercise.mtx ------------------------------

void makeSmallExercise() {
  glo.exerciseName = "Risks \"A\"";
  glo.risks.assign(3, RiskRecord{});
  RiskRecord& fire = glo.risks[0];
  fire.text = "Fire\"s risk";
  fire.sortKey = 1;
  fire.voting = fire.newItem = true;
  fire.notes = "hot";
  std::fill_n(fire.active.begin(), 9, true);
  fire.owners = {"Ann", ""};
  fire.text3 = "three";
  fire.text5 = "five";
  fire.shortText = "short";
  fire.benchmark[1] = 0.25F;
  RiskRecord& flood = glo.risks[1];
  flood.text = "Flood";
  flood.ID = 1;
  flood.sortKey = 2;
  glo.categories[0].CategoryItems = {0, 1, -1};
  glo.categories[0].CategoryID = 7;
  glo.rootCauseLists = {{"When", {"Now", "4y+", ""}}, LookUpList{}};
  glo.opt_StatsBoxPosition = "TL";
  glo.assessments[0].lbl_Risk = {1920, 0, 7680, 2880};
  glo.demographics = {{260, {{2, false, "no"}, {3, true, "yes"}}, true}, {261, {}, false}};
  glo.gridColWidths = {500, 0};
  glo.XYGridLinesAsQuarters = true;
  // Values that tell the places apart where members stand in an order of their own.
  glo.overlayBoundaries = {{4, 1, 2, 99}, OverlayBoundary{}};
  glo.assessments[2].font3.size = 17;
  glo.assessments[3].font3.size = 18;
  glo.assessmentInfo[0].bands[1] = {33023, 1.5F, 2.5F, "warm"};
  glo.SifterSorterSettings.pair1 = {1, 2};
  glo.SifterSorterSettings.pair2 = {3, 4};
  glo.runByCat574e = 1;
  glo.lookUpEditorFlags = {3, 4};
  glo.ComboListPopup = 5;
  glo.statsBoxX = 0.25F;
  glo.statsBoxY = 0.5F;
  glo.OptionListPopup = 1;
  glo.averageMatrixChoice = 2;
  glo.listOrder = 1;
  glo.ComboReOrder = 3;
  glo.OptionMatrixItemNavigation = 4;
  glo.OptionScatterScale = 5;
  glo.TextScatterScaleAbbreviate = 6;
  glo.chk_OwnerEnabled = 1;
  glo.chk_SublistEnabled = 2;
  glo.matrixGraphDisplay = 3;
  glo.checkOverrideRagging = 4;
  glo.defaultAlign = {0, 1, 2};
  glo.assessments[0].img_chart = {7680, 1440, 3840, 4320};
  glo.assessments[0].Img_VC = {0, 0, 1536, 2304};
}

TEST_F(ExerciseText, isWrittenLineByLine) {
  makeSmallExercise();
  std::ifstream file(QUORIN_SMALL_EXERCISE, std::ios::binary);
  const std::string expected{std::istreambuf_iterator<char>(file), {}};
  ASSERT_GT(expected.size(), 10000U);
  EXPECT_EQ(firstDifference(writeExercise(glo), expected), "");
  EXPECT_EQ(glo.risks[0].text, "Fire\"s risk") << "writing leaves the exercise alone";
}

// Which texts lose their double quotes at writing, in the exercise too. The others stand as they are.
TEST_F(ExerciseText, quotesBecomeSingleWhereTheFormatSaysSo) {
  const auto pointers = [](auto*... texts) { return std::vector<std::string*>{texts...}; };
  begin();
  glo.risks.assign(2, RiskRecord{});
  RiskRecord& risk = glo.risks[0];
  risk.owners = risk.rootCauses = {"", ""};
  glo.lookUpCombos = std::vector<LookUpCombo>(2);
  SifterSorterRecord& sifter = glo.SifterSorterSettings;
  const std::vector<std::string*> changed = pointers(
      &risk.text, &risk.text3, &risk.text4, &risk.text5, &risk.shortText, &risk.owners[0],
      &risk.rootCauses[0], &glo.scaleLabels[8][0], &glo.exerciseName, &glo.assessmentTitles[0],
      &glo.assessmentTitles[9], &glo.listTitle, &glo.overlays[99].text, &glo.categories[0].CategoryName,
      &sifter.title, &sifter.option1, &sifter.option2, &glo.ownerLists[0].name,
      &glo.rootCauseLists[0].values[0], &glo.boxCaptions[0], &glo.boxCaptions[1], &glo.boxCaptions[2],
      &glo.boxCaptions[3], &glo.boxCaptions[4], &glo.boxCaptions[5], &glo.multiPlot[0].ToolTips[0],
      &glo.multiPlot[1].ToolTips[9], &glo.textBenchmark, &glo.assessmentInfo[8].bands[3].label,
      &glo.lookUpCombos[0].name, &glo.lookUpCombos[0].text, &glo.coiLegendTitle, &glo.coiLegendLines[4],
      &glo.assessments[0].imageFile, &glo.assessments[0].pcaQuestion);
  const std::vector<std::string*> kept = pointers(
      &risk.notes, &glo.assessmentInfo[0].endMessage, &glo.filterFile, &glo.sifterBackground,
      &glo.matrixBackgroundFile, &glo.endOfVoteSoundFile, &glo.assessmentTitles[10], &glo.listFont.name);
  for (const auto* texts : {&changed, &kept})
    for (std::string* text : *texts) *text = "a\"b\"";
  saveXY();
  for (std::size_t i = 0; i < changed.size(); ++i) EXPECT_EQ(*changed[i], "a'b'") << i;
  for (std::size_t i = 0; i < kept.size(); ++i) EXPECT_EQ(*kept[i], "a\"b\"") << i;
}

// Through the slide -------------------------------------------------------------------------------

TEST_F(ExerciseText, savesToTheSlideAndLoadsFromIt) {
  makeSmallExercise();
  ASSERT_TRUE(saveXY());
  EXPECT_EQ(tags().Item("qrnMatrix"), writeExercise(glo));
  EXPECT_TRUE(world.files.files.empty());
  begin();
  EXPECT_TRUE(LoadXY(""));
  EXPECT_EQ(glo.risks[1].text, "Flood");
  EXPECT_EQ(glo.risks[0].identifier, "A");
  EXPECT_FALSE(exerciseHistory().modified());
  Edit edit("Title");
  glo.listTitle = "Other";
  edit.commit();
  EXPECT_TRUE(exerciseHistory().modified());
  saveXY();
  EXPECT_FALSE(exerciseHistory().modified());
  EXPECT_TRUE(world.files.files.empty());
}

// The lengths of a layout follow the screen of the load; the fractions in the text are not touched by it.
TEST_F(ExerciseText, aLayoutFitsTheScreenOfTheLoadAndKeepsItsFractions) {
  makeSmallExercise();
  const std::string text = writeExercise(loaded(writeExercise(glo)));
  tags().Add("qrnMatrix", text);
  for (const auto& [width, height] : {std::pair{28800.0, 16200.0}, {15360.0, 8640.0}}) {
    setScreenDimensions(width, height);
    ASSERT_TRUE(LoadXY(""));
    const LayoutRect& label = glo.assessments[0].lbl_Risk;
    EXPECT_DOUBLE_EQ(label.left / width, 0.5);
    EXPECT_DOUBLE_EQ(label.width / width, 0.125);
    EXPECT_DOUBLE_EQ(label.top / height, 0.25);
    setScreenDimensions(20490, 11520);
    saveXY();
    EXPECT_EQ(firstDifference(tags().Item("qrnMatrix"), text), "") << width;
  }
}

TEST_F(ExerciseText, aLoadTellsAndLogsWhatTheReadingFound) {
  makeSmallExercise();
  glo.assessments[0].titleFont.name = "Missing Font";
  glo.categories[0].CategoryItems = {-1};
  glo.workshopNumber = 2;
  const std::string text = replaceAll(writeExercise(glo), "\"unallocated\",#TRUE#,#TRUE#", "\"unallocated\"");
  tags().Add("qrnMatrix", replaceAll(text, "\r\n9,9\r\n", "\r\n9,?\r\n"));
  world.expectMsgBox("Your categories are corrupt");
  world.expectMsgBox("Warning:  Data has been cleared after Next Workshop was used,\r\nplease check active");
  world.expectMsgBox("damaged or cut short: 2 items could be read, 1 values could not");
  ASSERT_TRUE(LoadXY(""));
  EXPECT_THAT(world.dialogs.infos,
              ::testing::ElementsAre("Font Missing Font is not installed\r\nDefaulting to Arial"));
  EXPECT_EQ(glo.workshopNumber, 0);
  EXPECT_THAT(world.files.files["/appdata/quorin/Err.log"],
              HasSubstr("Description: 1 values could not be read\r\nModule: exercise_text\r\n"
                        "Procedure: LoadXY\r\nLine: 0\r\nMessage Supressed: True\r\n"));
  tags().Add("qrnMatrix", text);
  tags().Add("QRNVOTES", "01/02/2026,10:00:00,1;2;,1C1\r\n");
  world.expectMsgBox("Your categories are corrupt");
  ASSERT_TRUE(LoadXY(""));
  EXPECT_EQ(glo.workshopNumber, 2) << "no warning while the votes are there";
}

TEST_F(ExerciseText, savesAndLoadsAFileWithoutTouchingTheSlide) {
  makeSmallExercise();
  ASSERT_TRUE(saveXY("/work/one.mtt"));
  EXPECT_EQ(tags().Item("qrnMatrix"), "");
  begin();
  EXPECT_TRUE(LoadXY("/work/one.mtt"));
  EXPECT_TRUE(exerciseHistory().modified()) << "the slide does not hold it";
  EXPECT_EQ(glo.itemCount(), 2);
  EXPECT_TRUE(world.files.fileExists("/work/one.mtt"));
}

TEST_F(ExerciseText, aFileThatCannotBeReadIsReportedAndChangesNothing) {
  makeSmallExercise();
  world.expectMsgBox("An error has occurred: File not found: /work/none.mtt");
  EXPECT_TRUE(LoadXY("/work/none.mtt"));
  EXPECT_EQ(glo.itemCount(), 2);
}

// The disk that fails at each write in turn never costs the exercise.
TEST_F(ExerciseText, aFullDiskLosesNothing) {
  makeSmallExercise();
  const std::string text = writeExercise(glo);
  for (int nth = 1; nth <= 3; ++nth) {
    begin();
    makeSmallExercise();
    tags().Add("qrnMatrix", "the old text");
    world.files.failAtWrite = nth;
    EXPECT_TRUE(saveXY());
    EXPECT_EQ(tags().Item("qrnMatrix"), text) << "write " << nth;
    world.files.failAtWrite = nth;
    begin();
    EXPECT_TRUE(LoadXY(""));
    EXPECT_EQ(glo.itemCount(), 2) << "write " << nth;
    world.files.failAtWrite = 0;
  }
  world.files.failAtWrite = 1;
  world.expectMsgBox("An error has occurred: The disk is full");
  EXPECT_FALSE(saveXY("/work/one.mtt"));
}

TEST_F(ExerciseText, anEmptyTagSaysSoAndEndsADisplayRun) {
  int ended = 0;
  endProgramHook = [&] { ++ended; };
  world.expectMsgBox("quorin matrix: Could not find Matrix vote on slide.");
  EXPECT_FALSE(LoadXY(""));
  EXPECT_EQ(ended, 0);
  glo.cmdMode = "DISPLAY";
  world.expectMsgBox("Could not find Matrix vote on slide.");
  EXPECT_FALSE(LoadXY(""));
  EXPECT_EQ(ended, 1);
  endProgramHook = nullptr;
}

TEST_F(ExerciseText, aDamagedTagIsToldAndKeptBesideTheNextSave) {
  makeSmallExercise();
  const std::string whole = writeExercise(glo), cut = whole.substr(0, whole.size() / 2);
  tags().Add("qrnMatrix", cut);
  begin();
  world.expectMsgBox("damaged or cut short: 2 items could be read");
  EXPECT_TRUE(LoadXY(""));
  ASSERT_TRUE(saveXY());
  EXPECT_NE(tags().Item("qrnMatrix"), cut);
  EXPECT_EQ(tags().Item("qrnMatrixDamaged"), cut);
  ASSERT_TRUE(saveXY());
  EXPECT_EQ(tags().Item("qrnMatrixDamaged"), cut) << "a later save leaves it alone";
}

TEST_F(ExerciseText, aTagWithLoneLineFeedsLoads) {
  makeSmallExercise();
  std::string text = replaceAll(writeExercise(glo), "\r\n", "\n");
  tags().Add("qrnMatrix", replaceAll(text, "Flood", "Flood\nplain"));
  begin();
  EXPECT_TRUE(LoadXY(""));
  EXPECT_EQ(glo.risks[1].text, "Flood\r\nplain");
  EXPECT_EQ(glo.runByCatPrefs[0], 0);
}

TEST_F(ExerciseText, marksTheNotesPageOnce) {
  auto& notes = world.presentation.slide(1).notes;
  notes.emplace_back("picture");
  notes.back().hasText = false;
  notes.emplace_back("notes", "See Old.mtx here. ");
  glo.cmdFile = "OLD.MTX";
  for (int i = 0; i < 2; ++i) SaveXMLtoPPTSlide();
  EXPECT_EQ(notes[1].text, "See  here. This slide is a quorin Matrix exercise\r\n");
}

TEST_F(ExerciseText, namesANewExerciseByTheMinute) {
  EXPECT_EQ(newExerciseName(), "New-2026-03-14-0900.mtx");
}

}  // namespace
}  // namespace qrn
