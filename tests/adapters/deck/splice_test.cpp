// Changes of long values that cost what they say.
#include "adapters/deck/splice.h"

#include <gtest/gtest.h>

#include <random>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "base/storable.h"

namespace qrn::test {
namespace {

using deck::spliced;
using deck::spliceOf;

std::string textOf(std::mt19937& random, std::size_t characters) {
  static const std::vector<std::string> all = {
      "a", "0", "1", "\n", "\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x97\xB3"};
  std::string text;
  for (; characters > 0; --characters) text += all[random() % all.size()];
  return text;
}

// Start of a character at or behind a random place.
std::size_t placeIn(std::mt19937& random, const std::string& text) {
  std::size_t at = random() % (text.size() + 1);
  while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) ++at;
  return at;
}

TEST(Splice, MakesTheNewValueOfTheOldOneAndOfNoOther) {
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    const std::string before = textOf(random, 1 + random() % 200);
    std::string after = before;
    for (std::size_t places = 1 + random() % 4; places > 0; --places) {
      const std::size_t from = placeIn(random, after), to = placeIn(random, after);
      after.replace(std::min(from, to), std::min<std::size_t>(to > from ? to - from : 0, random() % 9),
                    textOf(random, random() % 9));
    }
    after = storable(after);
    const auto splice = spliceOf(before, after, 100000);
    ASSERT_TRUE(splice) << round;
    ASSERT_EQ(spliced(before, *splice), after) << round;
    ASSERT_EQ(spliceOf(before, after, 100000), splice) << "the same again";
    ASSERT_EQ(spliced(before + "a", *splice), std::nullopt);
    ASSERT_EQ(spliced(before, splice->substr(0, splice->size() - 1)), std::nullopt);
  }
}

TEST(Splice, SaysWhatDiffersAndLittleMore) {
  std::string lines;
  for (int i = 0; i < 2000; ++i) lines += std::to_string(i) + ",False,000000000\r\n";
  const std::string before = "risk = 9\r\nrecords = 99\r\n" + lines;
  std::string after = "risk = 10\r\nrecords = 100\r\n" + lines;
  after[after.size() / 2] = '1';
  EXPECT_LT(spliceOf(before, after, before.size())->size(), 60U) << "three places far apart";
  EXPECT_EQ(spliceOf(before, before + "x", before.size())->size(), 17U);
  EXPECT_EQ(spliceOf(before, before + "x", 17), std::nullopt);
  EXPECT_EQ(spliceOf(std::string(100, 'a'), std::string(100, 'b'), 100), std::nullopt)
      << "longer than the value";
}

TEST(Splice, KeepsTheJournalSmall) {
  const TempFolder folder;
  const std::string file = folder.deck();
  std::string log(20000, 'l');
  {
    const auto deck = deck::Deck::open(file);
    deck->tags().Add("LOG", log);
    const std::size_t size = readFile(file + ".journal").size();
    log[100] = log[10000] = 'x';
    deck->tags().Add("LOG", log);
    EXPECT_LT(readFile(file + ".journal").size() - size, 100U);
  }
  EXPECT_EQ(deck::Deck::open(file)->tags().Item("LOG"), log);
}

}  // namespace
}  // namespace qrn::test
