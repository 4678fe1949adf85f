#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "base/text.h"
#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "host/host.h"
#include "host/names.h"
#include "host/system.h"
#include "vote/count_up_vote.h"

namespace qrn {

namespace {

int randomBelow(int limit) {
  return static_cast<int>(std::floor(host::host().random->Rnd() * std::max(0, limit)));
}

std::vector<int> shuffled(int count) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), 1);
  for (int i = count - 1; i > 0; --i)
    std::swap(numbers[static_cast<std::size_t>(i)], numbers[static_cast<std::size_t>(randomBelow(i + 1))]);
  return numbers;
}

// One keypad's answer to a vote on a list of `captions`: numbers with "|" between.
std::string randomListVote(int captions) {
  const int picks = std::clamp(static_cast<int>(glo.limits), 0, captions);
  std::vector<int> order = shuffled(captions);
  if (glo.voteType == voteKind::rank)
    return joined(order, "|");
  if (glo.voteType == voteKind::order) {
    order.resize(static_cast<std::size_t>(picks));
    return joined(order, "|");
  }
  std::vector<int> marks(static_cast<std::size_t>(captions), 0);
  const auto mark = [&](int pick) -> int& {
    return marks[static_cast<std::size_t>(order[static_cast<std::size_t>(pick)] - 1)];
  };
  if (glo.voteType == voteKind::tag) {
    for (int i = 0, wanted = randomBelow(picks) + 1; i < std::min(wanted, picks); ++i) mark(i) = 1;
  } else if (picks > 0) {
    for (int i = 0; i < glo.allocation; ++i) ++mark(randomBelow(picks));
  }
  return joined(marks, "|");
}

void randomAllowedVotes() {
  std::vector<std::string> allowed;
  for (const std::string_view vote : splitFields(glo.allowedVotes, ',')) allowed.emplace_back(vote);
  const int choices = std::max(1, upperBound(allowed));
  for (int i = glo.votesCast; i < upperBound(glo.liveVotes); ++i)
    glo.liveVotes[static_cast<std::size_t>(i)] = allowed[static_cast<std::size_t>(randomBelow(choices))];
}

// Runs of equal votes, so that the result clusters.
void randomScaleVotes() {
  const int keypads = upperBound(glo.liveVotes);
  const int count = glo.options - glo.startFrom + 1;
  for (int i = 0; i < keypads;) {
    const int run = static_cast<int>(std::nearbyint(randomBelow(keypads) / 2.0));
    const int vote = randomBelow(count + glo.startFrom - 1) + 1;
    for (const int end = std::min(keypads, i + run + 1); i < end; ++i)
      glo.liveVotes[static_cast<std::size_t>(i)] = std::to_string(vote);
  }
}

bool listKind() {
  return glo.voteType == voteKind::rank || glo.voteType == voteKind::tag || glo.voteType == voteKind::order ||
         glo.voteType == voteKind::allocate;
}

int captionCount() {
  const auto bars = std::count(glo.voteText.begin(), glo.voteText.end(), '|');
  return static_cast<int>(glo.voteText.empty() || glo.voteText[0] == '|' ? bars : bars + 1);
}

// Number of the keypad that the next simulated press stands for, 0 for none.
int nextSimulatedKeypad() {
  int left = glo.votesCast;
  bool listed = false;
  for (const std::string& keypad : glo.activeKeypads) {
    if (keypad.empty())
      continue;
    listed = true;
    if (left-- == 0)
      return static_cast<int>(qrnVal(keypad));
  }
  return listed ? 0 : glo.votesCast + 1;
}

}  // namespace

bool SimulatePress(int value) {
  const int keypad = nextSimulatedKeypad();
  if (keypad < 1 || keypad > std::min(glo.keypadsNotVotedHi, upperBound(glo.liveVotes)))
    return false;
  const bool onScale = value >= glo.startFrom && value <= glo.options;
  if (!onScale && !(value == -2 && glo.abstainEnabled))
    return false;
  glo.liveVotes[static_cast<std::size_t>(keypad - 1)] = std::to_string(value);
  ShowVotesCast(glo.options);
  return true;
}

void GenerateRandomVotes(std::int32_t kind) {
  trapErrors("count_up_vote", "GenerateRandomVotes", [&] {
    host::host().random->Randomize(static_cast<std::uint64_t>(host::host().clock->microseconds()));
    if (kind == 4)
      randomAllowedVotes();
    else if (glo.voteType == voteKind::singleDigit || glo.voteType == voteKind::singleItemSelect)
      randomScaleVotes();
    else if (listKind())
      for (int i = 0, captions = captionCount(); i < upperBound(glo.liveVotes); ++i)
        glo.liveVotes[static_cast<std::size_t>(i)] = randomListVote(captions);
    ShowVotesCast(glo.options);
  });
  glo.voteComplete = 1;
}

void WriteKBOARDFile() {
  trapErrors("count_up_vote", "WriteKBOARDFile", [] {
    host::host().files->makeFolder(glo.appPath);
    host::host().files->write(glo.appPath + markerFile::keyboard, "");
  });
}

void DeleteKBOARDFile() {
  trapErrors("count_up_vote", "DeleteKBOARDFile",
             [] { host::host().files->Kill(glo.appPath + markerFile::keyboard); });
}

}  // namespace qrn
