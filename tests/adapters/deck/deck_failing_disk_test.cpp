// A disk that fails now and then: what was told as stored is there after a power cut, and what was not can be
// stored again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "adapters/deck/deck.h"
#include "adapters/deck/deck_fixture.h"
#include "adapters/deck/journal.h"
#include "base/errors.h"
#include "base/failing_disk.h"

namespace qrn::test {
namespace {

using deck::Deck;

const std::vector<std::function<void(Deck&)>>& workshop() {
  static const std::vector<std::function<void(Deck&)>> steps = {
      [](Deck& deck) { deck.Slides(1).tags().Append("QRNVOTES", "1C0;1;2;\r\n"); },
      [](Deck& deck) { deck.tags().Add("QRNACTIVITY", std::string(60, 'x')); },
      [](Deck& deck) { deck.AddTitleOnlySlide(1); },
      [](Deck& deck) { deck.Slides(2).tags().Add("NEW", "n"); },
      [](Deck& deck) { deck.Save(); },
      [](Deck& deck) { deck.Slides(1).tags().Append("QRNVOTES", "2C0;1;2;\r\n"); },
      [](Deck& deck) { deck.tags().Add("QRNACTIVITY", std::string(60, 'x') + "y"); },
      [](Deck& deck) { deck.Slides(3).tags().Add("LAST", "l"); }};
  return steps;
}

constexpr std::size_t kSaving = 4;

// True when the step had to be told as failed at least once.
bool doUntilItWorks(Deck& deck, const std::function<void(Deck&)>& step) {
  const std::string journal = deck.FullName() + ".journal";
  for (int attempt = 0;; ++attempt) {
    const std::string before = stateOf(deck);
    try {
      step(deck);
      return attempt > 0;
    } catch (const HostError& error) {
      EXPECT_EQ(stateOf(deck), before) << error.what();
      if (&step == &workshop()[kSaving]) {
        EXPECT_THAT(error.what(), ::testing::EndsWith(". What was stored stays in " + journal + "."));
      }
      if (attempt == 20)
        throw;
    }
  }
}

// Each slide is named before its first change, so that it is found again in another state of the deck.
bool namesItsSlides(const std::string& journal) {
  std::set<std::uint32_t> named = {0};
  bool all = true;
  if (const auto content = deck::readJournal(journal))
    for (const deck::Change& change : content->changes) {
      if (change.kind == deck::Change::Kind::slide)
        named.insert(change.slide);
      else if (change.kind != deck::Change::Kind::newSlide)
        all = all && named.count(change.slide) != 0;
    }
  return all;
}

struct Outcome {
  std::string state, afterCrash;
  bool failed = false, stepFailed = false;  // the disk did; a step other than saving did
  int told = 0;
};

Outcome workshopOnADiskThatFails(int first, int count) {
  const TempFolder folder;
  const std::string file = folder.deck();
  Outcome outcome;
  FailingDisk disk;
  deck::OpenOptions options;
  options.tell = [&](const std::string&) { ++outcome.told; };
  {
    const auto deck = Deck::open(file, options);
    disk.fail(first, count);
    for (std::size_t i = 0; i < workshop().size(); ++i)
      if (doUntilItWorks(*deck, workshop()[i]) && i != kSaving)
        outcome.stepFailed = true;
    outcome.failed = disk.hasFailed();
    outcome.state = stateOf(*deck);
    disk.fail(0, 0);
  }
  disk.crash(file + ".journal");
  EXPECT_TRUE(namesItsSlides(file + ".journal"));
  outcome.afterCrash = stateOf(*Deck::open(file));
  return outcome;
}

TEST(DeckFailingDisk, WhatWasStoredSurvivesAFlushOrWriteThatFailed) {
  const std::string whole = workshopOnADiskThatFails(0, 0).state;
  EXPECT_THAT(whole, ::testing::HasSubstr("|NEW=n;|"));
  for (const int count : {1, 2, 3, 6}) {
    int first = 1;
    for (bool failed = true; failed; ++first) {
      const Outcome outcome = workshopOnADiskThatFails(first, count);
      failed = outcome.failed;
      ASSERT_EQ(outcome.state, whole) << count << " from call " << first;
      ASSERT_EQ(outcome.afterCrash, whole) << count << " from call " << first;
      EXPECT_FALSE(count == 1 && outcome.stepFailed) << "a new journal was not tried at call " << first;
      EXPECT_LE(outcome.told, failed ? 1 : 0);
    }
    EXPECT_GT(first, 20);
  }
}

TEST(DeckFailingDisk, ANewJournalIsToldOnce) {
  const TempFolder folder;
  std::vector<std::string> told;
  FailingDisk disk;
  deck::OpenOptions options;
  options.tell = [&](const std::string& text) { told.push_back(text); };
  const auto deck = Deck::open(folder.deck(), options);
  for (const char* value : {"1", "2", "3"}) {
    deck->tags().Add("A", value);
    disk.fail(2, 1);
  }
  ASSERT_EQ(told.size(), 1U);
  EXPECT_THAT(told[0], ::testing::HasSubstr("talk.pptx.journal: Input/output error"));
}

}  // namespace
}  // namespace qrn::test
