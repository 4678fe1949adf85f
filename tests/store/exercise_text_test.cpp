// The exercise text: what is written comes back; what is foreign, older or damaged gives what it can.
#include "store/exercise_text.h"
#include "base/text.h"

#include <fstream>
#include <random>

#include "core/common.h"
#include "core/edit.h"
#include "core/model.h"
#include "store/full_exercise.h"
#include "support/run_case.h"

namespace qrn::test {
namespace {

// The line in which two texts differ first.
std::string firstDifference(const std::string& left, const std::string& right) {
  const auto a = splitFields(left, '\n'), b = splitFields(right, '\n');
  for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i)
    if (i >= a.size() || i >= b.size() || a[i] != b[i])
      return "line " + std::to_string(i + 1) + ": " + escaped(i < a.size() ? a[i] : "-") + " <> " +
             escaped(i < b.size() ? b[i] : "-");
  return "";
}

class TextCase : public RunCase {
 protected:
  TextCase() {
    plain();
    on("plain", [this](const Words&) { plain(); });
    on("fill", [this](const Words& words) { fill(words.number(0)); });
    on("write", [this](const Words&) { text = writeExercise(glo); });
    on("load", [this](const Words& words) { load(words.word(0) == "wizard"); });
    textCommands();
    slideCommands();
  }
  ~TextCase() override {
    setDecimalSeparator('\0');
    host::host().run = nullptr;
  }
  static void plain() {
    static_cast<Exercise&>(glo) = Exercise{};
    initXYVote();
  }
  void fill(int items) {
    plain();
    fillExercise(glo, items);
    text = writeExercise(glo);
  }
  // The exercise that the text gives in a fresh run.
  const Exercise& load(bool wizard = false) {
    plain();
    reading = readExercise(text, glo, wizard ? ReadFor::wizard : ReadFor::run);
    static_cast<Exercise&>(glo) = reading.exercise;
    if (!reading.complete)
      tell("incomplete");
    if (!reading.itemsWhole)
      tell("items missing");
    if (reading.damagedValues > 0)
      tell(reading.damagedValues, " damaged");
    for (const std::string& font : reading.missingFonts) tell("no font " + font);
    for (const std::string& message : reading.messages) tell(escaped(message));
    return reading.exercise;
  }
  void put(std::size_t at, std::size_t length, const std::string& instead) {
    if (at == std::string::npos)
      tell("not there");
    else
      text.replace(at, length, instead);
  }
  void textCommands() {
    // put WHAT INSTEAD; lines BEGIN COUNT LINE ...: instead of so many from, or before, the one that begins
    // so
    on("put", [this](const Words& words) { put(text.find(words[0]), words[0].size(), words.word(1)); });
    on("putlast", [this](const Words& words) { put(text.rfind(words[0]), words[0].size(), words.word(1)); });
    on("lines", [this](const Words& words) {
      const std::size_t before = text.find("\r\n" + words[0]);
      std::size_t at = before + 2, end = before == std::string::npos ? before : at;
      for (int i = words.number(1); i < 0; ++i) at = text.rfind("\r\n", at - 3) + 2;
      for (int i = words.number(1); i > 0 && end != std::string::npos; --i) end = text.find("\r\n", end) + 2;
      std::string lines;
      for (std::size_t i = 2; i < words.size(); ++i) lines += words[i] + "\r\n";
      put(end == std::string::npos ? end : at, end - at, lines);
    });
    on("more", [this](const Words& words) { text += words.rest(0); });
    on("upto", [this](const Words& words) { text.resize(text.rfind(words[0]) + words[0].size()); });
    on("text", [this](const Words& words) { text = words.rest(0); });
    on("holds", [this](const Words& words) {
      if (text.find(words.rest(0)) == std::string::npos)
        tell("not there");
    });
    on("like", [this](const Words&) {
      std::ifstream file(QUORIN_SMALL_EXERCISE, std::ios::binary);
      const std::string whole{std::istreambuf_iterator<char>(file), {}};
      tell(firstDifference(text, whole));
    });
    on("lonefeeds", [this](const Words&) { text = replaceAll(text, "\r\n", "\n"); });
    on("auto", [this](const Words& words) {
      plain();
      items({"1", "2", "3", "4"});
      glo.runByAverageBarCount = words.number(0);
      glo.barCountAuto = false;
      text = writeExercise(glo);
      glo.barCountAuto = words[1] == "yes";
      tell(readExercise(text, glo).exercise.barCountAuto ? "follows" : "chosen");
    });
    on("count", [this](const Words& words) {
      fill(4);
      const std::string notes = glo.risks[3].notes;
      put(text.find("\r\n4\r\n") + 2, 1, words.word(0));
      const Exercise& read = load();
      const std::string found = replaceAll(take(), "\n", ", ");
      tell(found, read.itemCount(), " items",
           read.itemCount() > 3 && read.risks[3].notes == notes ? ", all four" : "");
    });
    // sorted LINE ...: four items, with these lines of the categories
    on("sorted", [this](const Words& words) {
      plain();
      items({"0", "1", "2", "3"});
      text = writeExercise(glo);
      runLine("lines \"1\\r\\n\\\"unallocated\\\"\" 3 " + words.as(0));
    });
    // the categories with their items, and whether what stands behind them has been read
    on("sorting", [this](const Words&) {
      for (std::size_t c = 0; c + 1 < glo.categories.size(); ++c) {
        const CategoryRecord& one = glo.categories[c];
        std::string ids;
        for (const std::int32_t id : one.CategoryItems) ids += " " + std::to_string(id);
        tell("'", one.CategoryName, "'", one.Selected ? " selected" : "", one.Enabled ? " enabled:" : ":",
             ids);
      }
      if (glo.SifterSorterSettings.option1 != "Yes")
        tell("the rest is lost");
    });
    on("known", [this](const Words&) { tell(looksLikeExerciseText(text) ? "an exercise" : "no exercise"); });
    on("comma", [](const Words&) { setDecimalSeparator(','); });
    on("newname", [this](const Words&) { tell(newExerciseName()); });
  }
  static void addLists() {
    glo.rootCauseLists = {{"When", {"Now", "4y+", ""}}, LookUpList{}};
    glo.demographics = {{260, {{2, false, "no"}, {3, true, "yes"}}, true}, {261, {}, false}};
    glo.overlayBoundaries = {{4, 1, 2, 99}, OverlayBoundary{}};
    glo.assessments[0].lbl_Risk = {1920, 0, 7680, 2880};
    glo.assessments[0].img_chart = {7680, 1440, 3840, 4320};
    glo.assessments[0].Img_VC = {0, 0, 1536, 2304};
  }
  void slideCommands() {
    on("lists", [](const Words&) { addLists(); });
    on("screen", [](const Words& words) { setScreenDimensions(words.number(0), words.number(1)); });
    on("save", [this](const Words& words) { tell(saveXY(words.word(0)) ? "" : "not saved"); });
    on("get", [this](const Words& words) { tell(LoadXY(words.word(0)) ? "" : "no exercise"); });
    on("onslide", [this](const Words&) { tell(firstDifference(slideTags().Item("qrnMatrix"), text)); });
    on("toslide", [this](const Words&) { slideTags().Add("qrnMatrix", text); });
    on("keptdamaged", [this](const Words&) {
      tell(slideTags().Item("qrnMatrixDamaged") == text ? "as it was" : "another");
    });
    on("modified", [this](const Words&) { tell(exerciseHistory().modified() ? "yes" : "no"); });
    on("edit", [](const Words& words) {
      Edit edit("Title");
      glo.listTitle = words.rest(0);
      edit.commit();
    });
    on("files", [this](const Words&) {
      for (const auto& [name, there] : world.files.folders) tell(name);
      for (const auto& [name, content] : world.files.files) tell(name);
    });
    on("damaged", [this](const Words&) {
      for (const auto& [tag, content] : slideTags().values)
        if (tag.find("DAMAGED") != std::string::npos)
          tell(tag, " ", content.size());
    });
    on("note", [this](const Words& words) {
      auto& notes = world.presentation.slide(1).notes;
      notes = {MemoryShape("picture"), MemoryShape("notes", words.rest(0))};
      notes[0].hasText = false;
      for (int i = 0; i < 2; ++i) SaveXMLtoPPTSlide();
      tell(escaped(notes[1].text));
    });
  }

  std::string text;
  ExerciseReading reading;
};

const bool kRegistered = registerCases<TextCase>("ExerciseTextCase", QUORIN_CASES "/exercise_text.case");

using ExerciseText = TextCase;

TEST_F(ExerciseText, everyStoredMemberComesBack) {
  fill(12);
  const Exercise expected = afterReload(glo);
  const Exercise read = load();
  EXPECT_EQ(firstDifference(writeExercise(read), writeExercise(expected)), "");
  EXPECT_TRUE(read == expected);
}

// A stored exercise that is loaded and stored again does not drift, whatever the screen. Labels may fill the
// screen or stand beyond it.
TEST_F(ExerciseText, layoutComesBackExactlyOnAnyScreen) {
  for (const auto& [width, height] : {std::pair{15360.0, 11520.0}, {19200.0, 10800.0}, {20490.0, 11520.0}}) {
    setScreenDimensions(width, height);
    plain();
    auto& labels = glo.assessments[0].lbl_Criteria;
    for (std::size_t i = 0; i < 10; ++i)
      labels[i] = {static_cast<float>(width), 0, 1937.3F * static_cast<float>(i),
                   10777.25F / static_cast<float>(i + 1)};
    const auto before = labels;
    text = writeExercise(glo);
    EXPECT_TRUE(load().assessments[0].lbl_Criteria == before) << width << "x" << height;
  }
}

// Which texts lose their double quotes at writing, in the exercise too. The others stand as they are.
TEST_F(ExerciseText, quotesBecomeSingleWhereTheFormatSaysSo) {
  const auto pointers = [](auto*... texts) { return std::vector<std::string*>{texts...}; };
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
    for (std::string* one : *texts) *one = "a\"b\"";
  saveXY();
  for (std::size_t i = 0; i < changed.size(); ++i) EXPECT_EQ(*changed[i], "a'b'") << i;
  for (std::size_t i = 0; i < kept.size(); ++i) EXPECT_EQ(*kept[i], "a\"b\"") << i;
}

// Whatever the notes hold, and also without our own word on how long they are, all that follows stays in
// step.
TEST_F(ExerciseText, notesOfAnyKindComeBackAndMoveNothing) {
  const std::string flags = "#TRUE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#,#TRUE#";
  const std::vector<std::string> plainParts{"\"", ",", "\r\n", "\n", "#TRUE#", "7", "-1", "word", " ", "'"};
  std::vector<std::string> parts = plainParts;
  parts.insert(parts.end(),
               {"\"\r\n" + flags + "\r\n", "\"next\",1,2,#TRUE#,\"", "\"NotesLengths\",\"0:1|\""});
  std::minstd_rand random(5);
  for (int round = 0; round < 40; ++round) {
    const bool foreign = round % 2 == 1;
    const auto& from = foreign ? plainParts : parts;
    fill(100);
    for (int i = 0; i < glo.itemCount(); ++i) {
      std::string& notes = glo.risks[static_cast<std::size_t>(i)].notes = "";
      for (auto n = random() % 9; n > 0; --n) notes += from[random() % from.size()];
    }
    text = writeExercise(glo);
    const Exercise expected = afterReload(glo);
    if (foreign)
      put(text.rfind("\"NotesLengths"), std::string::npos, "");
    ASSERT_TRUE(load() == expected && reading.complete && reading.damagedValues == 0) << "round " << round;
  }
}

TEST_F(ExerciseText, cutAnywhereKeepsWhatStandsBefore) {
  fill(3);
  const std::string all = text;
  const Exercise whole = glo;
  std::size_t itemsSoFar = 0;
  // At every byte of the items, the categories and the named settings, and at some between them.
  const std::size_t behindItems = all.find("#\r\n", all.find(whole.risks[2].text)) + 3;
  const std::size_t categories = all.find("\"unallocated\"");
  const auto near = [](std::size_t at, std::size_t place) { return at + 300 > place && at < place + 300; };
  for (std::size_t length = 1; length < all.size(); ++length) {
    if (length > 700 && !near(length, categories) && length + 1500 < all.size() && length % 37 != 0)
      continue;
    text = all.substr(0, length);
    const Exercise& read = load();
    const auto items = static_cast<std::size_t>(read.itemCount());
    ASSERT_EQ(reading.itemsWhole, length > behindItems) << "cut at " << length;
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

// Older texts stop behind the option or the flag before the assessments' looks, or inside these.
TEST_F(ExerciseText, aTextThatMayStopStopsWithoutAlarm) {
  fill(2);
  const std::string all = text;
  const int kept = glo.runByShowAverages[9];
  const std::string option = "\r\n" + std::to_string(kept) + "\r\n#TRUE#\r\n";
  const std::size_t behindOption = all.find(option) + option.size() - 8, behindFlag = behindOption + 8;
  const std::size_t settings = all.find("\"runningOrderShowVoteAveragesEnd(9)\"");
  std::vector<std::size_t> ends{behindOption, behindOption - 2, behindFlag, behindFlag - 2};
  for (std::size_t at = behindFlag; at < settings; at += 13) ends.push_back(at);
  ends.push_back(settings);
  for (const std::size_t end : ends) {
    text = all.substr(0, end);
    ASSERT_EQ(load().runByShowAverages[9], kept);
    ASSERT_TRUE(reading.complete && reading.damagedValues == 0) << text.substr(end - 30, 30);
  }
  for (const std::size_t end : {behindOption - 12, all.rfind(',')}) {
    text = all.substr(0, end);
    load();
    EXPECT_FALSE(reading.complete);
  }
}

TEST_F(ExerciseText, longListsLoadInOneGo) {
  fill(10000);
  ASSERT_EQ(load().itemCount(), 10000);
  EXPECT_EQ(glo.risks[9999].identifier, "P385");
  EXPECT_EQ(glo.risks[9999].benchmark[8], static_cast<float>(9999 % 7) + 2.1F);
}

}  // namespace
}  // namespace qrn::test
