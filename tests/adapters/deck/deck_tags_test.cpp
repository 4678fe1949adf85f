// Tags come back exactly, and nothing else in the deck changes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <regex>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"

namespace qrn::test {
namespace {

using deck::Deck;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The part as it was, when all that was put into it is what a tag list needs.
std::string withoutOurs(const std::string& after, const std::string& before) {
  static const std::regex ours(
      R"re(<p:custDataLst><p:tags r:id="rId\d+"/></p:custDataLst>)re"
      R"re(|<Relationship Id="rId\d+" Type="[^"]*/tags" Target="[^"]*"/>)re"
      R"re(|<Override PartName="/ppt/tags/tag\d+.xml" ContentType="[^"]*tags\+xml"/>)re"
      R"re(|<p:tag name="(QRNMATRIX|ACTIVEKEYPADS)" val="[^"]*"/>)re");
  std::string text;
  auto at = after.begin();
  for (std::sregex_iterator it(after.begin(), after.end(), ours), end; it != end; ++it) {
    if (before.find(it->str()) != std::string::npos)
      continue;  // it was there
    text.append(at, (*it)[0].first);
    at = (*it)[0].second;
  }
  return text.append(at, after.end());
}

void expectForeignBytesKept(const DeckOptions& options) {
  const TempFolder folder;
  const std::string file = folder.deck(options);
  const PartList before = readZip(file), packedBefore = readZip(file, true);
  {
    const auto deck = Deck::open(file);
    deck->Slides(1).tags().Add("qrnMatrix", "text");
    deck->Slides(2).tags().Add("QRNVOTES", "v");
    deck->tags().Add("ActiveKeypads", "1,2");
    deck->Save();
  }
  const PartList after = readZip(file), packedAfter = readZip(file, true);
  const std::size_t added = options.tagged ? 1 : 3;  // tag lists
  ASSERT_EQ(after.size(), before.size() + added);
  for (std::size_t i = 0; i < before.size(); ++i) {
    ASSERT_EQ(after[i].first, before[i].first);
    EXPECT_EQ(packedAfter[i].second == packedBefore[i].second, after[i].second == before[i].second)
        << "packed anew: " << before[i].first;
    EXPECT_EQ(withoutOurs(after[i].second, before[i].second), before[i].second) << before[i].first;
    EXPECT_EQ(after[i].second.find("purl.oclc.org") != std::string::npos,
              before[i].second.find("purl.oclc.org") != std::string::npos)
        << "dialects mixed in " << before[i].first;
  }
  const auto deck = Deck::open(file);
  EXPECT_EQ(deck->Slides(1).tags().Item("QRNMatrix"), "text");
  EXPECT_EQ(deck->Slides(2).tags().Item("qrnvotes"), "v");
  EXPECT_EQ(deck->Slides(3).tags().Names().size(), 0U);
  EXPECT_EQ(deck->tags().Item("activekeypads"), "1,2");
  if (options.tagged) {
    EXPECT_THAT(deck->Slides(1).tags().Names(), ElementsAre("FOREIGN", "TIMING", "QRNVOTES", "QRNMATRIX"));
    EXPECT_EQ(deck->Slides(1).tags().Item("foreign"), "it's");
  }
}

TEST(DeckKinds, KeepEveryForeignByteAndOrder) {
  for (const DeckOptions& options : {DeckOptions{},
                                     {3, true, false, false, false},
                                     {3, false, true, false, false},
                                     {3, false, false, true, false},
                                     {3, false, false, false, true},
                                     {3, true, true, true, true}}) {
    SCOPED_TRACE(testing::Message() << (options.strict ? "strict " : "") << (options.bom ? "marked " : "")
                                    << (options.absolute ? "absolute " : "")
                                    << (options.tagged ? "tagged" : ""));
    expectForeignBytesKept(options);
  }
}

std::string wide(std::string_view text, bool bigFirst) {
  std::string units;
  for (const char c : text) {
    if (bigFirst)
      units += '\0';
    units += c;
    if (!bigFirst)
      units += '\0';
  }
  return units;
}

TEST(DeckTags, AListInAnotherEncodingStaysInIt) {
  const auto latin = [](const std::string& text) { return text; };
  const auto little = [](const std::string& text) { return wide(text, false); };
  const auto big = [](const std::string& text) { return wide(text, true); };
  const struct {
    const char* name;
    std::string mark;
    std::function<std::string(const std::string&)> encoded;  // of Latin-1
    std::string foreign, read, ours;                         // in the list, as a value, as ours is written
  } cases[] = {
      {"ISO-8859-1", "", latin, "caf\xE9", "caf\u00E9", "\xE9 &#x20AC; &#x1F600;"},
      {"windows-1252", "", latin, std::string(70000, 'x') + "\x80", std::string(70000, 'x') + "\u20AC",
       "\xE9 \x80 &#x1F600;"},
      {"us-ascii", "", latin, "&#xE9;", "\u00E9", "&#xE9; &#x20AC; &#x1F600;"},
      {"KOI8-R", "", latin, "\xC6", "\u0444", "&#xE9; &#x20AC; &#x1F600;"},
      {"UTF-16", "\xFF\xFE", little, "caf\xE9", "caf\u00E9",
       wide("\xE9 ", false) + "\xAC\x20" + wide(" ", false) + "\x3D\xD8" + std::string("\x00\xDE", 2)},
      {"UTF-16", "\xFE\xFF", big, "caf\xE9", "caf\u00E9",
       wide("\xE9 ", true) + "\x20\xAC" + wide(" ", true) + "\xD8\x3D" + std::string("\xDE\x00", 2)},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    const TempFolder folder;
    const std::string file = folder.file("talk.pptx");
    PartList parts = deckParts({3, false, false, false, true});
    std::string& list = part(parts, "ppt/tags/tag2.xml");
    list = one.mark + one.encoded(replaced(replaced(list, "UTF-8", one.name), "it&apos;s", one.foreign));
    const std::string before = list;
    writeZip(file, parts);
    {
      const auto deck = Deck::open(file);
      EXPECT_EQ(deck->Slides(1).tags().Item("FOREIGN"), one.read);
      deck->Slides(1).tags().Add("QRNMATRIX", "\u00E9 \u20AC \U0001F600");
      deck->Save();
    }
    parts = readZip(file);
    const std::string end = one.encoded("</p:tagLst>");
    std::string expected = before.substr(0, before.size() - end.size());
    expected += one.encoded("<p:tag name=\"QRNMATRIX\" val=\"") + one.ours + one.encoded("\"/>") + end;
    EXPECT_EQ(part(parts, "ppt/tags/tag2.xml"), expected);
    EXPECT_EQ(Deck::open(file)->Slides(1).tags().Item("QRNMATRIX"), "\u00E9 \u20AC \U0001F600");
  }
}

TEST(DeckTags, LongValuesAreKeptInPiecesThatReadersTake) {
  std::string value;
  while (value.size() < 2500000) value += "1;2;3;\r\n";  // 5.6 million escaped; twice that passes the limit
  const TempFolder folder;
  const std::string file = folder.deck();
  {
    const auto deck = Deck::open(file);
    deck->Slides(1).tags().Add("QRNVOTES", value);
    deck->Slides(1).tags().Append("QRNVOTES", value);
    deck->Slides(1).tags().Append("QRNVOTES", value);
    deck->Slides(1).tags().Add("X#2", "a name of its own");
    deck->Slides(1).tags().Add("X", "short");
    deck->Save();
  }
  PartList parts = readZip(file);
  const std::string& list = part(parts, "ppt/tags/tag2.xml");
  EXPECT_THAT(list.substr(list.size() - 200), HasSubstr("X#2"));
  ASSERT_NE(list.find("name=\"QRNVOTES#2\""), std::string::npos);
  for (std::size_t at = 0, next = 0; (next = list.find("<p:tag ", at + 1)) != std::string::npos; at = next)
    EXPECT_LT(next - at, 9500000U);
  const auto deck = Deck::open(file);
  EXPECT_THAT(deck->Slides(1).tags().Names(), ElementsAre("QRNVOTES", "X#2", "X"));
  EXPECT_TRUE(deck->Slides(1).tags().Item("QRNVOTES") == value + value + value);
  deck->Slides(1).tags().Add("QRNVOTES", "short again");
  deck->Save();
  EXPECT_THAT(Deck::open(file, {true, nullptr, "", {}})->Slides(1).tags().Names(),
              ElementsAre("QRNVOTES", "X#2", "X"));
}

TEST(DeckTags, AListIsPackedButNeverSoFarThatReadersTakeItForABomb) {
  const TempFolder folder;
  const std::string file = folder.deck();
  const auto deck = Deck::open(file);
  std::mt19937 random(1);
  std::string votes(200000, ';');
  for (std::size_t i = 0; i < votes.size(); i += 2) votes[i] = static_cast<char>('1' + random() % 5);
  deck->Slides(1).tags().Add("QRNVOTES", std::string(2000000, '1'));
  deck->Slides(2).tags().Add("QRNVOTES", votes);
  deck->Save();
  PartList packed = readZip(file, true);
  EXPECT_GT(part(packed, "ppt/tags/tag2.xml").size(), 20000U);
  EXPECT_LT(part(packed, "ppt/tags/tag3.xml").size(), votes.size() / 4);
}

// Larger than the pieces that are copied at a time; the second save changes nothing before the tags.
TEST(DeckTags, LargePartsOfOthersStayWhereverOursStand) {
  const TempFolder folder;
  std::mt19937 random(1);
  std::string film(3300007, '\0');
  for (char& byte : film) byte = static_cast<char>(random());
  PartList parts = deckParts();
  parts.insert(parts.begin() + 3, {"ppt/media/film1.mp4", film});
  parts.emplace_back("ppt/media/film2.mp4", film.substr(1));
  writeZip(folder.file("talk.pptx"), parts);
  const auto deck = Deck::open(folder.file("talk.pptx"));
  for (const char* votes : {"4;5;", "4;5;3;", "2;"}) {
    deck->Slides(1).tags().Add("QRNVOTES", votes + film.substr(0, 100000));
    deck->Save();
    PartList after = readZip(folder.file("talk.pptx"));
    ASSERT_EQ(after.size(), parts.size() + 1);
    EXPECT_EQ(after[3].first, "ppt/media/film1.mp4");
    EXPECT_TRUE(part(after, "ppt/media/film1.mp4") == film);
    EXPECT_TRUE(part(after, "ppt/media/film2.mp4") == film.substr(1));
    EXPECT_THAT(part(after, "ppt/tags/tag2.xml"), HasSubstr(votes));
  }
}

}  // namespace
}  // namespace qrn::test
