// The exercise text: what is written, and that the same comes back.
#include "store/exercise_text.h"

#include <gmock/gmock.h>

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

// Lines of a small exercise, worked out by hand ---------------------------------------------------

using Lines = std::vector<std::string>;

void add(Lines& lines, const Lines& more, int times = 1) {
  for (int i = 0; i < times; ++i) lines.insert(lines.end(), more.begin(), more.end());
}

Lines labelLines() {
  return {"1", "\"Type low performance/low value scale here\""};
}

const Lines kArial16{"\"Arial\",16,#FALSE#,#FALSE#,#FALSE#,#FALSE#,0"};

std::string manyTimes(const std::string& value, int times) {
  std::string line = value;
  for (int i = 1; i < times; ++i) line += "," + value;
  return line;
}

Lines untilOverlays() {
  Lines lines{"\"\",0,0,0.1,0.6,0.8,0.4,5,0",       "2",
              "\"Fire's risk\",0,1,#TRUE#,\"hot\"", manyTimes("#TRUE#", 9) + ",#FALSE#,#FALSE#",
              "\"Flood\",1,2,#FALSE#,\"\"",         manyTimes("#FALSE#", 11)};
  add(lines, labelLines(), 2);
  add(lines, {"\"Risks 'A'\",\"1st assessment\",\"2nd assessment\"", "\"List Title\"",
              "\"Arial\",16,#FALSE#,#FALSE#,#FALSE#,#FALSE#",
              "\"Arial\",12,#FALSE#,#FALSE#,#FALSE#,#FALSE#,0", "0", "0"});
  add(lines, {"0", "1", "0", "0", "1", "1", "0", "16", "0", "0", "128,128,255,0,0,128,0"});
  add(lines, {"\"Overlay text\",8421631,#TRUE#,7", "0,\"Arial\",#FALSE#,#FALSE#,16"}, 100);
  return lines;
}

Lines untilCategories() {
  Lines lines;
  add(lines, kArial16, 4);
  add(lines, {"0", "0", "0", "\"USEPPTBACKGROND\"", "0.1,0,0.8,0.5"});
  add(lines, labelLines());
  add(lines, {"\"3rd assessment\""});
  add(lines, {"\"Arial\",17,#FALSE#,#FALSE#,#FALSE#,#FALSE#,0"});
  add(lines, kArial16);
  add(lines, {"16777215,16777215", "#TRUE#," + manyTimes("#FALSE#", 8), manyTimes("#FALSE#", 9),
              "\"End of 1st assessment\",\"End of 2nd assessment\",\"End of 3rd assessment\",\"End of 4th "
              "assessment\","
              "\"End of 5th assessment\",\"End of 6th assessment\",\"End of 7th assessment\",\"End of 8th "
              "assessment\","
              "\"End of 9th assessment\"",
              "16777215,1,2,2,12640511", "16777215,0", "\"Arial\",18,#FALSE#,#FALSE#"});
  add(lines, {"65280,56320,47360", "65535,56540,47545", "255,220,185", "16711680,14417920,12124160",
              "2002430,27355,18360", "416152,13941,4946", "6002254,3699499,1396744",
              "16466910,14164155,11862168", "14474460,12171705,9868950", "7172873,4870144,2567424"});
  add(lines, labelLines(), 2);
  add(lines, {"\"4th assessment\"", "\"5th assessment\""});
  add(lines, kArial16, 2);
  add(lines, {"\"Arial\",18,#FALSE#,#FALSE#,#FALSE#,#FALSE#,0"});
  add(lines, kArial16);
  add(lines, {"65280,0,0", "33023,0,0", "255,0,0", "50", "0,1,2,3,4,5,6,7,8,9"});
  add(lines, labelLines());
  add(lines, {"\"6th assessment\""});
  add(lines, kArial16, 2);
  add(lines, {"9,0"});
  add(lines, {"65280,1,1", "33023,1.5,2.5", "255,1,1", "0,1,1"});
  add(lines, {"65280,1,1", "33023,1,1", "255,1,1", "0,1,1"}, 8);
  add(lines, {"0,0,0,0,0,16777215,1269354,6001693"});
  add(lines, {"0"}, 18);
  add(lines, {"1", "99,1,4,2", "65535,0,0,0,0"});
  add(lines, labelLines(), 3);
  add(lines, {"\"7th assessment\"", "\"8th assessment\"", "\"9th assessment\""});
  add(lines, kArial16, 6);
  add(lines, {"0,-2147483643", "#FALSE#,#FALSE#,\"Arial\",12,0", "0,1"});
  return lines;
}

Lines untilBenchmarks() {
  Lines lines{"1", "\"unallocated\",#TRUE#,#TRUE#", "2", "0", "1"};
  add(lines, {"9,9", "9702008,0,0", "0,0,0", "#FALSE#,\"\",#FALSE#"});
  add(lines, {"\"Include this item?\",\"Yes\",\"No\"", "#FALSE#,#FALSE#,\"Arial\",26,#FALSE#,#FALSE#,0"});
  add(lines, {"#FALSE#,#FALSE#,\"Arial\",18,#FALSE#,#FALSE#,0"}, 2);
  add(lines, {"0,#FALSE#,#FALSE#", "1,2,3,4", "0,0,0,0,0,0,\"\",0,3"});
  add(lines, {"5", "\"Risk\"", "0", "\"Project\"", "0", "\"Process\"", "0", "\"Program\"", "0",
              "\"Initiative\"", "0"});
  add(lines, {"1", "\"When\"", "2", "\"Now\"", "\"4y+\"", "4"});
  add(lines, {"2", "1", "\"Ann\"", "0", "0", "0"});
  add(lines, {"1,3,4,2,0,5", manyTimes("0", 9) + ",0,0"});
  add(lines, {"1"}, 9);
  add(lines,
      {"0", "\"3rd text box\",\"4th text box\",0,0", "\"three\",\"\"", "\"\",\"\"", manyTimes("#FALSE#", 9)});
  add(lines, {"0,0.25,0,0,0,0,0,0,0,1", "0,0,0,0,0,0,0,0,0,2", "0", "1;0.25;0.5;TL"});
  return lines;
}

Lines untilLooks() {
  Lines lines{"65535,1,2," + manyTimes("-1", 9), "\"MultiPlot 1\"",
              "#FALSE#," + manyTimes("#FALSE#", 9) + "," + manyTimes("\"\"", 9) + ",0",
              "0,\"Benchmark: \",0,0,0,0"};
  add(lines, {"11", "113", "117", "97", "114", "116", "122", "32", "114", "97", "105", "110"});
  add(lines, {"\"5th text box\",0,\"Short Description Text:\",1", "\"five\",\"short\"", "\"\",\"\""});
  add(lines, {"0", "#TRUE#,#FALSE#,\"Arial\",12,#FALSE#,#FALSE#,0", "0,1,0,1,0"});
  add(lines, {"\"\"", "\"warm\""});
  add(lines, {"\"\""}, 34);
  add(lines, {"1,1,1,\"List display text:\",\"Notes/comments:\",1,16777215,0", "#TRUE#", "#FALSE#", "0"});
  add(lines, {"1,#TRUE#,2,3,4,5,6", "3", "81", "82", "90", "\"\",#TRUE#,0,0,0", "1,2,3,4"});
  add(lines,
      {"#TRUE#,#FALSE#,\"Arial\",12", "5,#FALSE#,0",
       "\"Circle of Influence Legend\",\"None\",\"Pair 1\",\"Pair 2\",\"Pair 3\",\"Pair 4\"", "0,1,2"});
  add(lines, {"#TRUE#,#TRUE#,\"\""}, 10);
  add(lines, {"0", "#FALSE#"});
  return lines;
}

Lines looks() {
  Lines one{"2", "2", "2", "\"Arial\",18,#FALSE#,#FALSE#,#FALSE#,#FALSE#,0",
            "\"Arial\",20,#FALSE#,#FALSE#,#FALSE#,#FALSE#,0,0,#FALSE#"};
  add(one, {"65280", "65535", "255", "16711680", "2002430", "416152", "6002254", "16466910", "14474460",
            "7172873"});
  add(one, {"#TRUE#,#TRUE#,\"\",1,3,#TRUE#,#FALSE#," + manyTimes("0", 24) +
            ",1,3,1,4,6,2,7,9,3,1,\"Which do you prefer?\",50,#FALSE#"});
  add(one, {"0,0,0"}, 10);
  Lines all;
  add(all, one, 10);
  all[15] = "#TRUE#,#TRUE#,\"\",1,3,#TRUE#,#FALSE#,0.5,0.25,0.125,0,0,0,0.125,0.25,0.375,0.5,0.1,0.2," +
            manyTimes("0", 12) + ",1,3,1,4,6,2,7,9,3,1,\"Which do you prefer?\",50,#FALSE#";
  return all;
}

Lines named() {
  Lines lines{"\"runningOrderShowVoteAveragesEnd(9)\",0", "\"runningOrderAverageGraph\",2,0,16777215",
              "\"ENDOFVOTESOUND\",0,\"\"", "\"ShowResultsTable\",#FALSE#,#FALSE#,#FALSE#,#FALSE#",
              "\"glo.MainVoteSettings.voteMode\",0"};
  for (const char* key :
       {"allocateMaxPointsTotal", "allocateMaxPointsPerItem", "calculateMode", "includeRatio",
        "maxNumberOfItemsVotedOn", "orderCreateListFromTopXItems", "voteType"})
    lines.push_back(std::string("\"glo.SifterSorterSettings.") + key + "\",0");
  add(lines, {"\"CategoryMode\",0", "\"CategoryIDs\",0,\"7\"", "\"CategoryParents\",0,\"0\""});
  for (const std::string plot : {"0", "1"}) {
    const std::string start = "\"MultiPlot\"," + plot + ",";
    add(lines, {start + "\"Enabled\",#FALSE#", start + "\"Assessments\"," + manyTimes("#FALSE#", 11),
                start + "\"ToolTips\"," + manyTimes("\"\"", 10), start + "\"PlotType\",0",
                start + "\"ReverseCalc\",#FALSE#",
                start + "\"Name\",\"MultiPlot " + (plot == "0" ? "1" : "2") + "\""});
  }
  add(lines, {"\"DemographicDefaultQuestionID\",260", "\"DemographicGroupsSelected\",260,3",
              "\"DemographicLogicalOperator\",0", "\"defaultUserSelectedPlotPairings\",\"0|0|0|0|\"",
              "\"startFrom\",\"1|1|1|1|1|1|1|1|1|1|1|\""});
  std::string colours;
  for (int a = 0; a <= 10; ++a) colours += std::to_string(a) + ":16777215;";
  add(lines, {"\"DISTRIBUTON BAR COLOUR\",\"" + colours + "\"", "\"XY GRID COL WIDTHS\",1,\"500|0\"",
              "\"XYGridLinesAsQuarters\",-1"});
  return lines;
}

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
  Lines expected;
  for (const Lines& part :
       {untilOverlays(), untilCategories(), untilBenchmarks(), untilLooks(), looks(), named()})
    add(expected, part);
  const Lines written = linesOf(writeExercise(glo));
  EXPECT_EQ(glo.risks[0].text, "Fire\"s risk") << "writing leaves the exercise alone";
  ASSERT_EQ(written.size(), expected.size());
  for (std::size_t i = 0; i < written.size(); ++i) ASSERT_EQ(written[i], expected[i]) << "line " << i + 1;
}

// Which texts lose their double quotes at writing, in the exercise too. The others stand as they are.
TEST_F(ExerciseText, quotesBecomeSingleWhereTheFormatSaysSo) {
  begin();
  glo.risks.assign(2, RiskRecord{});
  RiskRecord& risk = glo.risks[0];
  risk.owners = risk.rootCauses = {"", ""};
  glo.lookUpCombos = std::vector<LookUpCombo>(2);
  SifterSorterRecord& sifter = glo.SifterSorterSettings;
  const std::vector<std::string*> changed{&risk.text,
                                          &risk.text3,
                                          &risk.text4,
                                          &risk.text5,
                                          &risk.shortText,
                                          &risk.owners[0],
                                          &risk.rootCauses[0],
                                          &glo.scaleLabels[8][0],
                                          &glo.exerciseName,
                                          &glo.assessmentTitles[0],
                                          &glo.assessmentTitles[9],
                                          &glo.listTitle,
                                          &glo.overlays[99].text,
                                          &glo.categories[0].CategoryName,
                                          &sifter.title,
                                          &sifter.option1,
                                          &sifter.option2,
                                          &glo.ownerLists[0].name,
                                          &glo.rootCauseLists[0].values[0],
                                          &glo.boxCaptions[0],
                                          &glo.boxCaptions[1],
                                          &glo.boxCaptions[2],
                                          &glo.boxCaptions[3],
                                          &glo.boxCaptions[4],
                                          &glo.boxCaptions[5],
                                          &glo.multiPlot[0].ToolTips[0],
                                          &glo.multiPlot[1].ToolTips[9],
                                          &glo.textBenchmark,
                                          &glo.assessmentInfo[8].bands[3].label,
                                          &glo.lookUpCombos[0].name,
                                          &glo.lookUpCombos[0].text,
                                          &glo.coiLegendTitle,
                                          &glo.coiLegendLines[4],
                                          &glo.assessments[0].imageFile,
                                          &glo.assessments[0].pcaQuestion};
  const std::vector<std::string*> kept{&risk.notes,
                                       &glo.assessmentInfo[0].endMessage,
                                       &glo.filterFile,
                                       &glo.sifterBackground,
                                       &glo.matrixBackgroundFile,
                                       &glo.endOfVoteSoundFile,
                                       &glo.assessmentTitles[10],
                                       &glo.listFont.name};
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
