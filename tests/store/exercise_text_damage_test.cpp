// Reading: texts of other versions, damaged texts, and the rules by which the reader differs from the writer.
#include <gmock/gmock.h>

#include "core/common.h"
#include "store/exercise_fixture.h"

namespace qrn {
namespace {

using test::ExerciseTest;
using test::linesOf;
using ::testing::HasSubstr;

std::string joinedLines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

class DamagedText : public ExerciseTest {
 protected:
  // The text of four items with its first line of that content replaced (or left out for "\x01").
  std::string textWith(const std::string& line, const std::string& instead) {
    std::string text = fullText(4);
    const std::size_t at = text.find(line + "\r\n");
    EXPECT_NE(at, std::string::npos) << line;
    text.replace(at, line.size() + 2, instead == "\x01" ? "" : instead + "\r\n");
    return text;
  }
  std::string lineAt(const std::string& text, std::string_view part) {
    for (const std::string& line : linesOf(text))
      if (line.find(part) != std::string::npos)
        return line;
    ADD_FAILURE() << "no line with " << part;
    return "";
  }
};

TEST_F(DamagedText, cutAnywhereKeepsWhatStandsBefore) {
  const std::string text = fullText(3);
  const Exercise whole = glo;
  std::size_t itemsSoFar = 0;
  // At every byte of the items, the categories and the named settings, and at some between them.
  const std::size_t categories = text.find("\"unallocated\"");
  const auto near = [](std::size_t at, std::size_t place) { return at + 300 > place && at < place + 300; };
  for (std::size_t length = 1; length < text.size(); ++length) {
    if (length > 700 && !near(length, categories) && length + 1500 < text.size() && length % 37 != 0)
      continue;
    const Exercise& read = loaded(text.substr(0, length));
    const auto items = static_cast<std::size_t>(read.itemCount());
    ASSERT_GE(items, itemsSoFar) << "cut at " << length;
    itemsSoFar = items;
    for (std::size_t i = 0; i + 1 < items; ++i)
      ASSERT_EQ(read.risks[i].text, whole.risks[i].text) << "cut at " << length;
    // No item is without a category.
    ASSERT_GE(upperBound(read.categories), 1);
    std::size_t allocated = 0;
    for (const CategoryRecord& category : read.categories) allocated += category.CategoryItems.size() - 1;
    ASSERT_GE(allocated, items) << "cut at " << length;
  }
  EXPECT_EQ(itemsSoFar, 3U);
}

TEST_F(DamagedText, countsThatAreWrongLoadWhatThereIs) {
  const std::string text = fullText(4), notes = glo.risks[3].notes;
  const std::size_t at = text.find("\r\n4\r\n") + 2;
  for (const char* count : {"2147483647", "-5", "99999999999", "many", "", "5", "1000000"}) {
    std::string wrong = text;
    wrong.replace(at, 1, count);
    const Exercise& read = loaded(wrong);
    EXPECT_LT(read.risks.size(), text.size() / 4) << count;
    EXPECT_GE(read.risks.size(), 1U) << count;
    if (std::string(count) == "5" || std::string(count).size() == 7 || std::string(count).size() == 10) {
      EXPECT_EQ(read.risks[3].notes, notes) << count;
    }
  }
}

TEST_F(DamagedText, longListsLoadInOneGo) {
  const Exercise& read = loaded(fullText(10000));
  ASSERT_EQ(read.itemCount(), 10000);
  EXPECT_EQ(read.risks[9999].identifier, "P385");
  EXPECT_EQ(read.risks[9999].benchmark[8], static_cast<float>(9999 % 7) + 2.1F);
}

TEST_F(DamagedText, oneDamagedValueLeavesItsMemberAndIsCounted) {
  const std::string line = "\"Arial\",18,#FALSE#,#FALSE#";
  begin();
  std::string text = writeExercise(glo);
  text.replace(text.find(line), line.size(), "\"Arial\",large,#TRUE#,0");
  const Exercise& read = loaded(text);
  EXPECT_EQ(read.matrixTitleFont, (FontRecord{"Arial", 18, true}));
  EXPECT_EQ(reading.damagedValues, 1);
}

TEST_F(DamagedText, anEmptyValueAtTheEndOfALineStaysOnItsLine) {
  const std::string line = "\"Arial\",18,#FALSE#,#FALSE#";
  begin();
  std::string text = writeExercise(glo);
  text.replace(text.find(line), line.size(), "\"Arial\",,#TRUE#,");
  const Exercise& read = loaded(text);
  EXPECT_EQ(read.matrixTitleFont, (FontRecord{"Arial", 18, true}));
  EXPECT_EQ(read.barColours1[0], 65280);
  EXPECT_EQ(read.barColours2[0], 56320);
}

TEST_F(DamagedText, aQuoteInTheNotesIsWrittenAsItStandsAndCutsThem) {
  for (const char* notes :
       {"a \"b\" c", "a \"b, c\" d, e", "a \"b\", \"c", "a \"", "a \" b, 6\" c", "a \"b\"\r\nc \"d\""}) {
    begin();
    glo.risks.assign(3, RiskRecord{});
    glo.risks[0].text = "One";
    glo.risks[0].notes = notes;
    glo.risks[1].text = "Two";
    const std::string text = writeExercise(glo);
    EXPECT_NE(text.find(std::string("\"") + notes + "\""), std::string::npos);
    const Exercise& read = loaded(text);
    EXPECT_EQ(read.risks[0].notes, "a ");
    EXPECT_EQ(read.risks[1].text, "Two") << notes;
    EXPECT_EQ(read.opt_StatsBoxPosition, glo.opt_StatsBoxPosition);
    EXPECT_GT(reading.damagedValues, 0) << notes;
    EXPECT_TRUE(reading.complete);
  }
}

TEST_F(DamagedText, oldTextsAreWindows1252) {
  begin();
  glo.listTitle =
      "Gr\xFC\xDF"
      "e \x96 \x80";
  EXPECT_EQ(loaded(writeExercise(glo)).listTitle,
            "Gr\xC3\xBC\xC3\x9F"
            "e \xE2\x80\x93 \xE2\x82\xAC");
}

TEST_F(DamagedText, aByteOrderMarkIsPassedOver) {
  const std::string text = "\xEF\xBB\xBF" + fullText(2);
  EXPECT_TRUE(looksLikeExerciseText(text));
  EXPECT_EQ(loaded(text).itemCount(), 2);
}

TEST_F(DamagedText, fractionsOfTheScreenAreWrittenAsTheyWereRead) {
  begin();
  std::string text = writeExercise(glo);
  text.replace(text.rfind("\r\n0,0,0\r\n"), 9, "\r\n0.307,0.13,0.966\r\n");
  EXPECT_THAT(writeExercise(loaded(text)), HasSubstr("\r\n0.307,0.13,0.966\r\n"));
}

TEST_F(DamagedText, numbersDoNotDependOnTheLocale) {
  setDecimalSeparator(',');
  const std::string text = fullText(2);
  EXPECT_THAT(text, HasSubstr("\r\n0.01,0.12345679,0.33333334,0.7\r\n"));
  EXPECT_EQ(loaded(text).voteWindow.top, 0.123456789F);
  setDecimalSeparator('\0');
}

TEST_F(DamagedText, emptyTextLeavesAllAsItWas) {
  begin();
  glo.listTitle = "kept";
  for (const char* nothing : {"", "\r\n \r\n"}) {
    reading = readExercise(nothing, glo);
    EXPECT_FALSE(reading.complete);
    EXPECT_EQ(reading.exercise.listTitle, "kept");
  }
}

// Rules of single lines ---------------------------------------------------------------------------

TEST_F(DamagedText, valuesOutOfTheirRangeArePutRight) {
  begin();
  glo.chartPointCount = 1;
  glo.pairAssessments[1] = 5;
  glo.ComboListPopup = -3;
  glo.optionAveragePairing = 1;
  glo.remainingAssessments = {1, 0, 3, 4, 5, 6, 7, 8, 9};
  glo.endOfVoteSoundOn = 2;
  glo.endOfVoteSoundFile = "ping.wav";
  glo.SifterSorterSettings.includeRatio = 0;
  const Exercise& read = loaded(writeExercise(glo));
  EXPECT_EQ(read.chartPointCount, 2);
  EXPECT_FALSE(read.matrixBackgroundFlag) << "there is no file";
  EXPECT_EQ(read.pairAssessments[1], 9);
  EXPECT_EQ(read.ComboListPopup, 0);
  EXPECT_THAT(read.remainingAssessments, ::testing::ElementsAre(1, -1, 3, 4, -1, -1, -1, -1, 9));
  EXPECT_EQ(read.endOfVoteSoundOn, 0);
  EXPECT_EQ(read.endOfVoteSoundFile, "");
  const SifterSorterRecord& sifter = read.SifterSorterSettings;
  EXPECT_THAT(
      (std::vector<int>{sifter.includeRatio, sifter.maxNumberOfItemsVotedOn, sifter.allocateMaxPointsPerItem,
                        sifter.allocateMaxPointsTotal, sifter.orderCreateListFromTopXItems}),
      ::testing::ElementsAre(50, 10, 5, 25, 8));
}

TEST_F(DamagedText, fontsThatAreMissingBecomeArial) {
  begin();
  glo.assessments[0].titleFont = {"Missing Font", 30, true};
  glo.assessments[1].titleFont = {"Missing Font", 31};
  glo.assessments[2].titleFont = {"", 99, true};
  glo.assessments[0].font2 = {"Missing Font", 12};
  const Exercise& read = loaded(writeExercise(glo));
  EXPECT_EQ(read.assessments[0].titleFont, (FontRecord{"Arial", 30, true}));
  EXPECT_EQ(read.assessments[2].titleFont, (FontRecord{"Arial", 16}));
  EXPECT_EQ(read.assessments[0].font2, (FontRecord{"Arial", 12}));
  EXPECT_THAT(reading.missingFonts, ::testing::ElementsAre("Missing Font"));
}

TEST_F(DamagedText, benchmarkLinesGoByKeyOrByPosition) {
  const std::string text = fullText(4);
  const auto lines = linesOf(text);
  const std::string first = "0.1,0.35,0.6,0.85,1.1,1.35,1.6,1.85,2.1,4";  // sortKeys run 4, 3, 2, 1
  const auto at = std::find(lines.begin(), lines.end(), first) - lines.begin();
  ASSERT_LT(static_cast<std::size_t>(at), lines.size());
  const auto with = [&](std::initializer_list<const char*> four) {
    auto changed = lines;
    std::copy(four.begin(), four.end(), changed.begin() + at);
    const Exercise& read = loaded(joinedLines(changed));
    std::vector<float> values;
    for (std::size_t i = 0; i < 4; ++i)
      for (std::size_t a : {std::size_t{0}, std::size_t{7}, std::size_t{8}})
        values.push_back(read.risks[i].benchmark[a]);
    return values;
  };
  // By key, whatever the order of the lines; an unknown key is nobody's.
  EXPECT_THAT(
      with({"1,0,0,0,0,0,0,8,9,1", "2,0,0,0,0,0,0,8,9,2", " 3,0,0,0,0,0,0,8,9,3 ", "4,0,0,0,0,0,0,8,9,99"}),
      ::testing::ElementsAre(0, 0, 0, 3, 8, 9, 2, 8, 9, 1, 8, 9));
  // By position, without the ninth; lines of other lengths are passed over.
  EXPECT_THAT(with({"1,0,0,0,0,0,0,8,9", "2,0,0,0,0,0,0,8,9", "3,4", ""}),
              ::testing::ElementsAre(1, 8, 0, 2, 8, 0, 0, 0, 0, 0, 0, 0));
}

TEST_F(DamagedText, theSectionOfPicturesMayEndEarly) {
  const std::string text = fullText(1);
  const auto lines = linesOf(text);
  std::size_t at = 0;
  while (at < lines.size() && lines[at].rfind("#FALSE#,#FALSE#,\"C:\\pictures", 0) != 0) ++at;
  ASSERT_EQ(lines[at + 11], "#TRUE#");  // ten pictures, the option, then the abstain flag
  const auto with = [&](const std::vector<std::string>& section) {
    auto changed = lines;
    changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(at),
                  changed.begin() + static_cast<std::ptrdiff_t>(at) + 11);
    changed.insert(changed.begin() + static_cast<std::ptrdiff_t>(at), section.begin(), section.end());
    changed.resize(at + section.size() + 1);  // ends behind the abstain flag
    return loaded(joinedLines(changed));
  };
  const Exercise early = with({"#TRUE#,#FALSE#,\"a.wmf\"", "\"17\""});
  EXPECT_EQ(early.runByShowAverages[9], 17);
  EXPECT_EQ(early.assessments[0].imageFile, "a.wmf");
  EXPECT_FALSE(early.assessments[0].showScaleText);
  EXPECT_EQ(early.assessments[1].imageFile, "");
  EXPECT_TRUE(early.opt_abstain);
  const Exercise empty = with({"#TRUE#,#FALSE#,\"b.wmf\"", "", "18"});
  EXPECT_EQ(empty.runByShowAverages[9], 18);
  EXPECT_EQ(empty.assessments[0].imageFile, "b.wmf");
  EXPECT_TRUE(empty.opt_abstain);
}

TEST_F(DamagedText, textsOfNineAssessmentsReachTheirNamedSettings) {
  auto lines = linesOf(fullText(1));
  const auto named =
      std::find(lines.begin(), lines.end(),
                "\"runningOrderShowVoteAveragesEnd(9)\"," + std::to_string(glo.runByShowAverages[9]));
  ASSERT_NE(named, lines.end());
  lines.erase(named - 26, named);
  const Exercise& read = loaded(joinedLines(lines));
  EXPECT_EQ(read.MainVoteSettings.voteMode, 14);
  EXPECT_EQ(read.assessments[8].voteType, 3);
}

TEST_F(DamagedText, onlyComparingAssessmentsHaveAQuestion) {
  begin();
  glo.assessments[0].voteType = 1;
  glo.assessments[1].voteType = 3;
  glo.assessments[1].pcaQuestion = "  Better?";
  const Exercise& read = loaded(writeExercise(glo));
  EXPECT_EQ(read.assessments[0].pcaQuestion, "");
  EXPECT_EQ(read.assessments[1].pcaQuestion, "  Better?");
}

TEST_F(DamagedText, aCommaStaysInTheQuestionAndInThePicturesPath) {
  begin();
  AssessmentRecord& first = glo.assessments[0];
  first.voteType = 3;
  first.pcaQuestion = "Better, or worse, or the same?";
  first.imageFile = "/pictures/sea, low tide.png";
  first.lbl_Risk = {7680, 0, 1536, 1152};
  first.sifterCutoff = 61;
  const AssessmentRecord written = first;
  const std::string text = writeExercise(glo);
  EXPECT_TRUE(loaded(text).assessments[0] == written);
  EXPECT_EQ(reading.damagedValues, 0);
  // A reader that splits such lines at every comma finds each value in its place.
  const auto fields = splitFields(lineAt(text, "low tide.png\",3,"), ',');
  ASSERT_EQ(fields.size(), 44U);
  EXPECT_EQ(fields[42], "61");
}

TEST_F(DamagedText, aCommaThatSplitsAForeignLineShiftsItsValuesWithoutAlarm) {
  begin();
  glo.assessments[0].voteType = 3;
  std::string text = writeExercise(glo);
  const std::string question = "\"Which do you prefer?\"";
  text.replace(text.find(question), question.size(), "\"Better, or worse?\"");
  EXPECT_EQ(loaded(text).assessments[0].pcaQuestion, "Better");
  EXPECT_EQ(reading.damagedValues, 0);
}

// Older texts stop behind the option or the flag before the assessments' looks, or inside these.
TEST_F(DamagedText, aTextThatMayStopStopsWithoutAlarm) {
  const std::string text = fullText(2);
  const int kept = glo.runByShowAverages[9];
  const std::string option = "\r\n" + std::to_string(kept) + "\r\n#TRUE#\r\n";
  const std::size_t behindOption = text.find(option) + option.size() - 8, behindFlag = behindOption + 8;
  const std::size_t settings = text.find("\"runningOrderShowVoteAveragesEnd(9)\"");
  std::vector<std::size_t> ends{behindOption, behindOption - 2, behindFlag, behindFlag - 2};
  for (std::size_t at = behindFlag; at < settings; at += 13) ends.push_back(at);
  ends.push_back(settings);
  for (const std::size_t end : ends) {
    ASSERT_EQ(loaded(text.substr(0, end)).runByShowAverages[9], kept);
    ASSERT_TRUE(reading.complete && reading.damagedValues == 0) << text.substr(end - 30, 30);
  }
  loaded(text.substr(0, behindOption - 12));
  EXPECT_FALSE(reading.complete);
  loaded(text.substr(0, text.rfind(",")));
  EXPECT_FALSE(reading.complete);
}

// On lines that are read whole a line end would begin another line.
TEST_F(DamagedText, lineEndsInTextsOfWholeLinesBecomeBlanks) {
  begin();
  glo.assessments[0].voteType = 3;
  glo.assessments[0].pcaQuestion = "Better\r\nor\nworse?";
  glo.categories[0].CategoryName = "un\rallocated";
  const Exercise& read = loaded(writeExercise(glo));
  EXPECT_EQ(read.assessments[0].pcaQuestion, "Better or worse?");
  EXPECT_EQ(read.categories[0].CategoryName, "un allocated");
  EXPECT_EQ(read.assessments[0].sifterCutoff, 50);
}

TEST_F(DamagedText, theSlidesBackgroundIsChosenByTheFlagAlone) {
  begin();
  EXPECT_TRUE(loaded(writeExercise(glo)).usePPTBackground);
  EXPECT_EQ(reading.exercise.backgroundFile, "USEPPTBACKGROND");
  glo.usePPTBackground = false;
  EXPECT_FALSE(loaded(writeExercise(glo)).usePPTBackground);
}

TEST_F(DamagedText, unknownSettingsArePassedOver) {
  std::string text = fullText(1);
  text += "\"a later setting\",5,\"text\",#TRUE#\r\n\"CATEGORYmode\",6\r\n\"another\"\r\n";
  EXPECT_EQ(loaded(text).CategoryMode, 6);
  EXPECT_TRUE(reading.complete && reading.damagedValues == 0);
}

TEST_F(DamagedText, joinedSettingsTakeTheirNumericFieldsOnly) {
  std::string text = fullText(3);
  text +=
      "\"CategoryIDs\",2,\"41|x|43|44|45|46\"\r\n\"XY GRID COL WIDTHS\",9,\"5|y|7\"\r\n"
      "\"DISTRIBUTON BAR COLOUR\",\"1:77|5;2:x;99:4;:3;3\"\r\n\"XYGridLinesAsQuarters\",\"often\"\r\n"
      "\"MultiPlot\",7,\"PlotType\",3\r\n\"multiplot\",1,\"PLOTTYPE\",4\r\n";
  const std::int32_t unchanged = glo.assessments[2].pointColours[10];
  const std::int32_t second = glo.categories[1].CategoryID, width = 0;
  const Exercise& read = loaded(text);
  EXPECT_EQ(read.categories[0].CategoryID, 41);
  EXPECT_EQ(read.categories[1].CategoryID, second);
  EXPECT_EQ(read.categories[2].CategoryID, 43);
  EXPECT_EQ(read.gridColWidths.size(), 3U);
  EXPECT_EQ(read.gridColWidths[2], 7);
  EXPECT_NE(read.gridColWidths[1], width);
  EXPECT_EQ(read.assessments[1].pointColours[10], 77);
  EXPECT_EQ(read.assessments[2].pointColours[10], unchanged);
  EXPECT_FALSE(read.XYGridLinesAsQuarters);
  EXPECT_EQ(read.multiPlot[1].PlotType, 4);
}

// Categories --------------------------------------------------------------------------------------

class CategoryText : public DamagedText {
 protected:
  // The categories that the section gives in a text of four items. `section` begins with the count.
  std::vector<CategoryRecord> categories(const std::vector<std::string>& section,
                                         ReadFor purpose = ReadFor::run) {
    begin();
    glo.risks.assign(5, RiskRecord{});
    for (int i = 0; i < 4; ++i) glo.risks[static_cast<std::size_t>(i)].ID = i;
    auto lines = linesOf(writeExercise(glo));
    const auto at = std::find(lines.begin(), lines.end(), "\"unallocated\",#TRUE#,#TRUE#") - 1;
    const auto place = lines.erase(at, at + 3);  // count, name, no entries
    lines.insert(place, section.begin(), section.end());
    const Exercise& read = loaded(joinedLines(lines), purpose);
    EXPECT_EQ(read.SifterSorterSettings.option1, "Yes");  // what follows is in step
    return read.categories;
  }
  static std::vector<int> items(const CategoryRecord& category) {
    EXPECT_EQ(category.CategoryItems.back(), -1);
    return {category.CategoryItems.begin(), category.CategoryItems.end() - 1};
  }
};

TEST_F(CategoryText, namesKeepStandingWithCommasTakenOut) {
  const auto read =
      categories({"3", "\"unallocated\",#FALSE#,#TRUE#", "1", "3", "\"Red, green, blue\",#TRUE#,#FALSE#", "2",
                  "0", "1", "\"Plain\",-1,0", "1", "2"});
  ASSERT_EQ(read.size(), 4U);
  EXPECT_EQ(read[1].CategoryName, "Red green blue");
  EXPECT_TRUE(read[1].Selected);
  EXPECT_FALSE(read[1].Enabled);
  EXPECT_FALSE(read[0].Selected);
  EXPECT_TRUE(read[2].Selected);
  EXPECT_FALSE(read[2].Enabled);
  EXPECT_THAT(items(read[1]), ::testing::ElementsAre(0, 1));
}

TEST_F(CategoryText, entriesAreRepaired) {
  const auto read = categories(
      {"2", "\"unallocated\",#TRUE#,#TRUE#", "0", "\"A\",#TRUE#,#TRUE#", "5", "2", "2", "-1", "0", "2"});
  EXPECT_THAT(items(read[1]), ::testing::ElementsAre(2, 0));
  EXPECT_THAT(items(read[0]), ::testing::ElementsAre(1, 3));
}

TEST_F(CategoryText, noCategoriesPutEveryItemInUnallocated) {
  const auto read = categories({"0"});
  ASSERT_EQ(read.size(), 2U);
  EXPECT_EQ(read[0].CategoryName, "unallocated");
  EXPECT_THAT(items(read[0]), ::testing::ElementsAre(0, 1, 2, 3));
}

// In the older format names stand alone and entries have three values. The wizard takes it; any other run is
// told.
TEST_F(CategoryText, theOlderFormatIsReadByTheWizardAndResetElsewhere) {
  const std::vector<std::string> older{"2", "\"unallocated\"", "1",     "3,0,0", "\"Old\"",
                                       "3", "0,5,6",           "1,5,6", "2,5,6"};
  auto read = categories(older, ReadFor::wizard);
  ASSERT_EQ(read.size(), 3U);
  EXPECT_THAT(items(read[1]), ::testing::ElementsAre(0, 1, 2));
  EXPECT_TRUE(read[1].Selected && read[1].Enabled);
  EXPECT_TRUE(reading.messages.empty());
  read = categories(older);
  EXPECT_THAT(reading.messages, ::testing::ElementsAre(HasSubstr("Your categories are corrupt, please")));
  ASSERT_EQ(read.size(), 2U);
  EXPECT_THAT(items(read[0]), ::testing::ElementsAre(0, 1, 2, 3));
}

TEST_F(CategoryText, damageIsToldOnceAndTheLoadGoesOn) {
  const auto read =
      categories({"2", "\"unallocated\",#TRUE#,maybe", "1", "x", "\"A\",#TRUE#,#TRUE#", "1", "99999"});
  ASSERT_EQ(read.size(), 3U);
  EXPECT_THAT(items(read[0]), ::testing::ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(reading.messages,
              ::testing::ElementsAre("The categories are corrupt, load failed\r\nYou need to "
                                     "check all preferences and category settings"));
}

// After reading -----------------------------------------------------------------------------------

TEST_F(DamagedText, barCountFollowsTheListUnlessChosen) {
  struct Case {
    int count;
    bool before, after;
  };
  for (const Case& c : {Case{4, true, true}, {4, false, false}, {9, true, false}, {0, false, true}}) {
    fullText(4);
    glo.runByAverageBarCount = c.count;
    const std::string text = writeExercise(glo);
    glo.barCountAuto = c.before;
    EXPECT_EQ(readExercise(text, glo).exercise.barCountAuto, c.after) << c.count << " before " << c.before;
  }
  glo.runByAverageBarCount = 9;
  glo.barCountAuto = true;
  EXPECT_EQ(loaded(writeExercise(glo)).runByAverageBarCount, 4);
}

}  // namespace
}  // namespace qrn
