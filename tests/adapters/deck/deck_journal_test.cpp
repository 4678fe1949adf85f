// What was stored is there again, wherever the program or the disk was cut off.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"

namespace qrn::test {
namespace {

using deck::Deck;

std::string openedState(const std::string& file) {
  return stateOf(*Deck::open(file));
}

const std::string kLong(100, 'l');

// A few changes of every kind; tells of each when it is stored.
void workshop(Deck& deck, const std::function<void()>& stored) {
  host::Tags& votes = deck.Slides(1).tags();
  const std::vector<std::function<void()>> steps = {[&] { votes.Append("QRNVOTES", "1C0;1;2;\r\n"); },
                                                    [&] { deck.tags().Add("qrnActivity", "x<\"&\xC3\xA4"); },
                                                    [&] { votes.Append("QRNVOTES", "2C0;X;-;\r\n"); },
                                                    [&] { deck.AddTitleOnlySlide(1).tags().Add("NEW", "n"); },
                                                    [&] { votes.Add("QRNMATRIX", kLong); },
                                                    [&] { votes.Add("QRNMATRIX", "x" + kLong + "y"); },
                                                    [&] { votes.Delete("QRNMATRIX"); },
                                                    [&] { votes.Append("QRNVOTES", "3"); },
                                                    [&] { deck.Slides(3).tags().Add("EMPTY", ""); }};
  for (const auto& step : steps) {
    step();
    stored();
  }
}

TEST(DeckJournal, CutOffAtAnyByteKeepsWhatWasWholeBefore) {
  const TempFolder folder;
  const std::string file = folder.deck({3, false, false, false, true}), journal = file + ".journal";
  std::vector<std::pair<std::size_t, std::string>> stored = {{0, openedState(file)}};
  {
    const auto deck = Deck::open(file);
    workshop(*deck, [&] { stored.emplace_back(readFile(journal).size(), stateOf(*deck)); });
  }
  const std::string deckBytes = readFile(file), whole = readFile(journal);
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    writeFile(journal, std::string_view(whole).substr(0, length));
    std::size_t last = 0;
    while (last + 1 < stored.size() && stored[last + 1].first <= length) ++last;
    const auto deck = Deck::open(file);
    std::string state = stateOf(*deck);
    // The slide itself may have been stored without its tag.
    if (state != stored[last].second && last == 3 && deck->SlideCount() == 4)
      continue;
    ASSERT_EQ(state, stored[last].second) << "cut at " << length;
    deck->Slides(1).tags().Append("QRNVOTES", "after");
    state = stateOf(*deck);
    ASSERT_EQ(stateOf(*Deck::open(file, {true, nullptr, "", {}})), state) << "cut at " << length;
  }
  EXPECT_EQ(readFile(file), deckBytes) << "the deck is written at save points only";
}

TEST(DeckJournal, SavingCutOffAnywhereStoresNothingTwiceAndLosesNothing) {
  const TempFolder folder;
  const std::string file = folder.deck(), journal = file + ".journal";
  const std::string oldDeck = readFile(file);
  std::string state, plain, marked;
  {
    const auto deck = Deck::open(file);
    workshop(*deck, [] {});
    state = stateOf(*deck);
    plain = readFile(journal);
    std::filesystem::create_hard_link(journal, folder.file("kept"));  // what Save writes before it removes it
    deck->Save();
    marked = readFile(folder.file("kept"));
    std::filesystem::remove(folder.file("kept"));
    EXPECT_THAT(folder.names(), ::testing::ElementsAre("talk.pptx", "talk.pptx.backup", "talk.pptx.lock"));
  }
  const std::string newDeck = readFile(file);
  ASSERT_EQ(marked.substr(0, plain.size()), plain);
  const struct {
    const char* cutOff;
    const std::string &deckBytes, &journalBytes;
  } cases[] = {{"before the mark", oldDeck, plain},
               {"between mark and rename", oldDeck, marked},
               {"between rename and removal", newDeck, marked}};
  for (const auto& one : cases) {
    writeFile(file, one.deckBytes);
    writeFile(journal, one.journalBytes);
    EXPECT_EQ(openedState(file), state) << one.cutOff;
    EXPECT_EQ(std::filesystem::exists(journal), &one.deckBytes == &oldDeck) << one.cutOff;
    const auto deck = Deck::open(file);
    deck->Slides(1).tags().Append("QRNVOTES", "4");
    const std::string more = stateOf(*deck);
    EXPECT_EQ(stateOf(*Deck::open(file, {true, nullptr, "", {}})), more) << one.cutOff;
    deck->Save();
    EXPECT_EQ(stateOf(*Deck::open(file, {true, nullptr, "", {}})), more) << one.cutOff;
  }
}

// The child stores records and tells of each on the pipe, saving now and then, until it is killed.
[[noreturn]] void storeUntilKilled(const std::string& file, int out, int first) {
  const auto deck = Deck::open(file);
  for (int i = first;; ++i) {
    deck->Slides(1).tags().Append("QRNVOTES", std::to_string(i) + "\r\n");
    (void)!::write(out, &i, sizeof i);
    if (i % 7 == 0)
      deck->Save();
  }
}

TEST(DeckJournal, EveryRecordToldSurvivesAKill) {
  const TempFolder folder;
  const std::string file = folder.deck();
  std::mt19937 random(20260314);
  int told = -1;
  for (int round = 0; round < 25; ++round) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0)
      storeUntilKilled(file, ends[1], told + 1);
    ::close(ends[1]);
    ::usleep(static_cast<useconds_t>(random() % 120000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    for (int i = 0; ::read(ends[0], &i, sizeof i) == sizeof i;) told = i;
    ::close(ends[0]);
    readZip(file);  // fails the test when it is no whole zip file
    std::string expected;
    for (int i = 0; i <= told; ++i) expected += std::to_string(i) + "\r\n";
    const std::string got = Deck::open(file)->Slides(1).tags().Item("QRNVOTES");
    const std::string oneMore = expected + std::to_string(told + 1) + "\r\n";
    ASSERT_TRUE(got == expected || got == oneMore) << "round " << round << ": told " << told;
    told += got == oneMore ? 1 : 0;
  }
  EXPECT_GT(told, 25);
}

}  // namespace
}  // namespace qrn::test
