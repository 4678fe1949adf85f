#include "controller/room/rehearsal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace qrn::controller {
namespace {

constexpr long keypads = 200;

VoteSettings settingsFrom(const std::vector<std::string>& lines) {
  VoteSettings settings;
  for (const std::string& line : lines) applySetting(line, settings);
  return settings;
}

std::vector<Press> pressesOf(long vote, const VoteSettings& settings, std::uint64_t seed = 1,
                             bool hurry = false) {
  Rehearsal rehearsal(1, keypads, seed, hurry);
  rehearsal.startVote(vote, settings, 0);
  std::vector<Press> all;
  std::int64_t time = 0;
  while (const auto due = rehearsal.nextDue()) {
    EXPECT_GE(*due, time);
    time = *due;
    EXPECT_LE(time, 400);
    for (Press& press : rehearsal.due(time)) all.push_back(std::move(press));
  }
  return all;
}

std::string textOf(const std::vector<Press>& presses) {
  return pressText(0, presses);
}

TEST(Rehearsal, EveryKeypadVotesWithinTheVote) {
  const std::vector<std::vector<std::string>> votes{
      {"options=5", "StartFrom=1"},
      {"options=10", "StartFrom=0", "Abstain=True"},
      {"options=9", "StartFrom=-1", "PCAOptions=1,2,4,5,7,8,"},
      {"voteType=1", "voteText=|a|b|c|d"},
      {"voteType=3", "voteText=|a|b|c|d", "limits=2"},
      {"voteType=5", "voteText=|a|b|c|d", "limits=3"},
      {"voteType=6", "voteText=|a|b|c|d", "points=5", "allocation=12"},
      {"options=0"}};
  for (std::size_t i = 0; i < votes.size(); ++i)
    for (long vote = 1; vote <= 5; ++vote) {
      const VoteSettings settings = settingsFrom(votes[i]);
      std::set<long> voted;
      for (const Press& press : pressesOf(vote, settings)) {
        voted.insert(press.keypad);
        EXPECT_EQ(acceptedPress(settings, press.vote), press.vote) << "settings " << i;
      }
      EXPECT_EQ(voted.size(), static_cast<std::size_t>(keypads)) << "settings " << i;
    }
}

TEST(Rehearsal, ASeedRepeatsAndAnotherDiffers) {
  const VoteSettings settings = settingsFrom({"options=10"});
  const std::string first = textOf(pressesOf(3, settings));
  EXPECT_EQ(textOf(pressesOf(3, settings)), first);
  EXPECT_EQ(textOf(pressesOf(3, settings, 1, true)), first) << "hurry changes the time, not the votes";
  EXPECT_NE(textOf(pressesOf(3, settings, 2)), first);
  EXPECT_NE(textOf(pressesOf(4, settings)), first);
}

// An even spread over five values has a deviation of 1.41; people agree more than that, and not on one value.
TEST(Rehearsal, VotesGatherAroundACentreOfTheirVote) {
  const VoteSettings settings = settingsFrom({"options=5"});
  double deviations = 0;
  double lowest = 5, highest = 1;
  constexpr int votes = 40;
  for (long vote = 1; vote <= votes; ++vote) {
    double sum = 0, squares = 0, count = 0;
    for (const Press& press : pressesOf(vote, settings)) {
      const double value = std::stod(press.vote);
      sum += value;
      squares += value * value;
      ++count;
    }
    deviations += std::sqrt(squares / count - sum / count * (sum / count));
    lowest = std::min(lowest, sum / count);
    highest = std::max(highest, sum / count);
  }
  EXPECT_LT(deviations / votes, 1.2);
  EXPECT_GT(deviations / votes, 0.5);
  EXPECT_LT(lowest, 2);
  EXPECT_GT(highest, 4);
}

TEST(Rehearsal, ChangesOfMindComeBeforeTheVoteIsFull) {
  const VoteSettings settings = settingsFrom({"options=5", "Abstain=True"});
  std::size_t changes = 0, abstains = 0;
  for (const bool hurry : {false, true})
    for (long vote = 1; vote <= 20; ++vote) {
      std::set<long> voted;
      for (const Press& press : pressesOf(vote, settings, 5, hurry)) {
        EXPECT_LT(voted.size(), static_cast<std::size_t>(keypads))
            << "a press after the last keypad had voted";
        changes += voted.insert(press.keypad).second ? 0U : 1U;
        abstains += press.vote == "X" ? 1U : 0U;
      }
    }
  EXPECT_GT(changes, 100U);
  EXPECT_GT(abstains, 100U);
  EXPECT_LT(abstains, 800U);
}

}  // namespace
}  // namespace qrn::controller
