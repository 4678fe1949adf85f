// Text, numbers and files.
#include "core/common.h"

#include <gmock/gmock.h>

#include "core/item_label.h"
#include "support/test_host.h"

namespace qrn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> split(const std::string& text, std::string_view separator) {
  std::vector<std::string> result{"left over"};
  SplitPPTTag(text, separator, result);
  return result;
}

TEST(TagText, splitsAtTheLineEndsThatTheTextHas) {
  for (const std::string_view asked : {"\r\n", "\r", "\n"})
    for (const std::string used : {"\r\n", "\r", "\n"})
      EXPECT_THAT(split("a" + used + used + "b" + used + "\n\r\n\r", asked), ElementsAre("a", "", "b"));
  // CR LF wins, then CR; what is left over stays in the pieces.
  EXPECT_THAT(split("a\nb\r\nc", "\n"), ElementsAre("a\nb", "c"));
  EXPECT_THAT(split("a\nb\rc", "\n"), ElementsAre("a\nb", "c"));
  EXPECT_THAT(split("a|b||\r\n", "|"), ElementsAre("a", "b", "", ""));
  EXPECT_THAT(split("a\r\nb", ";"), ElementsAre("a\r\nb"));
  EXPECT_THAT(split("\r\n\r\n", "\r\n"), IsEmpty());
}

TEST(TagText, lineEndsAreMadeUniform) {
  for (const auto& [from, to] : {std::pair{"a\rb\nc\r\nd", "a\r\nb\r\nc\r\nd"},
                                 {"\n\r", "\r\n\r\n"},
                                 {"a^|^b", "a\r\nb"},
                                 {"^|", "^|"},
                                 {"", ""}}) {
    std::string text = from;
    HomogoniseLineFeeds(text);
    EXPECT_EQ(text, to);
  }
}

TEST(TagText, fieldsCountFromOne) {
  const std::string line = "1,\"two\",,\"f\"\"our\"";
  EXPECT_EQ(getField(line, 1), "1");
  EXPECT_EQ(getField(line, 2), "two");
  EXPECT_EQ(getField(line, 3), "");
  EXPECT_EQ(getField(line, 4), "four");
  EXPECT_EQ(getField(line, 5), "");
  EXPECT_EQ(getField(line, 0), "");
}

TEST(Numbers, areReadByTheDecimalSeparatorOfTheLocale) {
  struct Case {
    const char* text;
    double point, comma;
  };
  for (const Case& c : {Case{"1,234.5%", 1234.5, 1.234},
                        {"3,5", 35, 3.5},
                        {" -1_0 0#", -100, -100},
                        {"7 votes", 7, 7},
                        {"votes", 0, 0},
                        {"", 0, 0},
                        {".5", 0.5, 0.5},
                        {"2e3", 2000, 2000},
                        {"1D2x", 100, 100},
                        {"+4", 4, 4},
                        {"--4", 0, 0},
                        {"5e", 5, 5},
                        {"1.2.3", 1.2, 1.2}}) {
    setDecimalSeparator('.');
    EXPECT_DOUBLE_EQ(qrnVal(c.text), c.point) << c.text;
    setDecimalSeparator(',');
    EXPECT_DOUBLE_EQ(qrnVal(c.text), c.comma) << c.text;
  }
  setDecimalSeparator('\0');
  EXPECT_DOUBLE_EQ(qrnVal("0.25"), 0.25);
}

TEST(Numbers, areNumericOnlyAsAWhole) {
  for (const char* text : {"1", " -2.5 ", "1e3", ".5"}) EXPECT_TRUE(isNumeric(text)) << text;
  for (const char* text : {"", " ", "1x", "x1", "1 2", "-", "."}) EXPECT_FALSE(isNumeric(text)) << text;
}

TEST(Numbers, roundUpTowardsPlusForPositiveValues) {
  for (const auto& [x, up] : {std::pair{2.0, 2},
                              {2.1, 3},
                              {-1.5, 0},
                              {-2.0, -2},
                              {0.0, 0},
                              {1e12, 2147483647},
                              {-1e12, -2147483647 - 1}})
    EXPECT_EQ(RoundUp(x), up) << x;
}

TEST(Numbers, areWrittenPlainAndReadBackExactly) {
  for (const auto& [value, text] : {std::pair{0.1F, "0.1"},
                                    {100000.0F, "100000"},
                                    {-0.0F, "0"},
                                    {1e-5F, "0.00001"},
                                    {16777216.0F, "16777216"},
                                    {0.33333334F, "0.33333334"}})
    EXPECT_EQ(plainNumber(value), text);
  for (const double value : {1.0 / 3, 12345678.9, 1e-7, 1e20, -2.5e-300})
    EXPECT_EQ(valueParse(plainNumber(value)), value);
}

TEST(Numbers, showDecimalsWithHalvesAwayFromZero) {
  for (const auto& [value, places, text] : {std::tuple{1.625, 2, "1.63"},
                                            {2.125, 2, "2.13"},
                                            {static_cast<double>(2.675F), 2, "2.68"},
                                            {-1.005, 2, "-1.01"},
                                            {-0.001, 2, "0.00"},
                                            {2.5, 0, "3"},
                                            {3.14159, 6, "3.141590"},
                                            {std::nan(""), 2, "0.00"}})
    EXPECT_EQ(formatPlaces(value, places), text);
}

TEST(Characters, oldTextsBecomeUnicode) {
  EXPECT_EQ(toUtf8("plain"), "plain");
  EXPECT_EQ(toUtf8("\xEF\xBB\xBFZ\xC3\xBCrich and more text"), "Z\xC3\xBCrich and more text");
  EXPECT_EQ(toUtf8("Z\xFCrich \x80"), "Z\xC3\xBCrich \xE2\x82\xAC");
  for (const char* broken : {"\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"})
    EXPECT_NE(toUtf8(broken), broken);
  EXPECT_THAT(characters("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x94\x91\xFF"),
              ElementsAre('a', 0xFC, 0x20AC, 0x1F511, 0xFF));
  EXPECT_EQ(characterCount("a\xC3\xBC\xE2\x82\xAC"), 3U);
}

TEST(Paths, joinWithOneSeparator) {
  const std::string s(1, kPathSeparator);
  EXPECT_EQ(joinPath("/a", "b\\c"), "/a" + s + "b" + s + "c");
  EXPECT_EQ(joinPath("/a/", "\\b"), "/a/b");
  EXPECT_EQ(joinPath("", "b"), "b");
}

TEST(Neighbours, areAskedByName) {
  test::TestHost world;
  EXPECT_EQ(readTextFile("/none"), "");
  world.files.files["/one"] = "text";
  EXPECT_EQ(readTextFile("/one"), "text");
  EXPECT_TRUE(Check4App("powerpnt.exe"));
  world.program.running = false;
  EXPECT_FALSE(Check4App("POWERPNT.EXE"));
  EXPECT_FALSE(Check4App("other.exe"));
  world.forms.define("xyVote", [] { return std::make_unique<host::Form>("xyVote"); });
  EXPECT_FALSE(Check4Form("xyVote", "comms"));
  world.forms.load("xyVote");
  EXPECT_TRUE(Check4Form("comms", "", "xyVote"));
}

TEST(ItemLabels, aLetterThenALetterAndANumber) {
  RiskRecord risk;
  risk.text = "Fire";
  for (const auto& [id, label] :
       {std::pair{0, "A: Fire"}, {25, "Z: Fire"}, {26, "A2: Fire"}, {53, "B3: Fire"}}) {
    risk.ID = id;
    EXPECT_EQ(GetItemLabel(risk), label);
    EXPECT_EQ(risk.identifier + ": Fire", label);
  }
}

}  // namespace
}  // namespace qrn
