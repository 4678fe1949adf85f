#include "store/record_statistics.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "analysis/filter/filters.h"
#include "core/glo.h"
#include "store/counted_votes.h"
#include "store/postal_records.h"
#include "store/vote_line.h"
#include "store/vote_store.h"

namespace qrn {

namespace {

static_assert(std::endian::native == std::endian::little, "a token is read as one 16-bit number");

constexpr std::size_t kLanes = 8;    // records that are added up side by side
constexpr std::size_t kBlock = 400;  // tokens of which every sixteenth, at most ten each, make up a byte
constexpr std::size_t kExactSum =
    1'000'000;  // tokens whose sum, at most ten each, single precision holds exactly

struct Totals {
  std::uint32_t sum = 0, count = 0, abstains = 0;
};

// One record on its way: `tokens` characters, each with a ";" behind it.
struct Lane {
  RecordScore score;
  const char* tokens = nullptr;
  std::size_t size = 0;
  std::string buffer;         // tokens of a record that is not in that form, or not wholly counted
  std::vector<float> values;  // votes that the tokens cannot hold, added up one after the other
};

// Sixteen bytes: the characters of as many tokens, or what stands behind them.
using Sixteen [[gnu::vector_size(16)]] = std::uint8_t;
constexpr std::size_t kTogether = 16;

struct SixteenTotals {
  Sixteen sum{}, count{}, abstains{}, right = ~Sixteen{};
};

// A comparison gives all ones where it holds, so subtracting it counts.
void addSixteen(const char* text, SixteenTotals& totals) {
  Sixteen low, high;
  std::memcpy(&low, text, sizeof low);
  std::memcpy(&high, text + sizeof low, sizeof high);
  const Sixteen character =
      __builtin_shufflevector(low, high, 0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
  const Sixteen behind =
      __builtin_shufflevector(low, high, 1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
  const Sixteen digit = character - std::uint8_t{'0'};
  const Sixteen isDigit = reinterpret_cast<Sixteen>(digit < 10);
  const Sixteen isTen = reinterpret_cast<Sixteen>(character == 'A');
  const Sixteen isAbstain = reinterpret_cast<Sixteen>(character == 'X');
  const Sixteen isNone = reinterpret_cast<Sixteen>(character == '-');
  totals.sum += (digit & isDigit) | (isTen & kKeyZero);
  totals.count -= isDigit | isTen;
  totals.abstains -= isAbstain;
  totals.right &= (isDigit | isTen | isAbstain | isNone) & reinterpret_cast<Sixteen>(behind == ';');
}

// The bytes two by two, and so on, since taking them out one by one would cost more than all the rest.
std::uint32_t sumOf(Sixteen bytes) {
  std::array<std::uint64_t, 2> half;
  std::memcpy(&half, &bytes, sizeof half);
  constexpr std::uint64_t everySecond = 0x00FF00FF00FF00FF;
  std::uint64_t pairs = 0;
  for (const std::uint64_t eight : half) pairs += (eight & everySecond) + (eight >> 8 & everySecond);
  return static_cast<std::uint32_t>(pairs * 0x0001000100010001 >> 48);
}

void addTo(Totals& totals, const SixteenTotals& block) {
  totals.sum += sumOf(block.sum);
  totals.count += sumOf(block.count);
  totals.abstains += sumOf(block.abstains);
}

bool isRight(const SixteenTotals& block) {
  return sumOf(block.right) == kTogether * 0xFF;
}

// The last few tokens, with tokens of nobody behind them.
SixteenTotals addRest(const char* text, std::size_t size) {
  std::array<char, 2 * kTogether> padded;
  for (std::size_t k = 0; k < kTogether; ++k) padded[2 * k] = '-', padded[2 * k + 1] = ';';
  std::copy_n(text, 2 * size, padded.data());  // text may be null where nothing is left
  SixteenTotals rest;
  addSixteen(padded.data(), rest);
  return rest;
}

// Adds up `size` tokens; false when the text is anything but known tokens with a ";" behind each.
bool addTokens(const char* text, std::size_t size, Totals& totals) {
  std::size_t k = 0;
  while (k + kTogether <= size) {
    SixteenTotals block;
    for (const std::size_t end = std::min(size, k + kBlock); k + kTogether <= end; k += kTogether)
      addSixteen(text + 2 * k, block);
    addTo(totals, block);
    if (!isRight(block))
      return false;
  }
  const SixteenTotals rest = addRest(text + 2 * k, size - k);
  addTo(totals, rest);
  return isRight(rest);
}

CountedVotes countedOf(const std::vector<int>& live, const std::vector<int>& postal,
                       const std::vector<int>* mask) {
  CountedVotes counted;
  for (std::size_t k = 0; k < live.size(); ++k)
    if (mask == nullptr || keypadCounts(*mask, k))
      counted.addLive(live[k]);
  for (const int vote : postal) counted.addPostal(vote);
  return counted;
}

// The votes as tokens that all count, or as they are when tokens cannot hold them.
void rewrite(Lane& lane, std::vector<float> votes) {
  const bool fits = votes.size() <= kExactSum && std::all_of(votes.begin(), votes.end(), [](float vote) {
                      return vote <= static_cast<float>(kKeyZero);
                    });
  lane.buffer.clear();
  lane.values.clear();
  if (!fits)
    lane.values = std::move(votes);
  else
    for (const float vote : votes) {
      const int digit = static_cast<int>(vote);
      lane.buffer += {digit == kKeyZero ? 'A' : static_cast<char>('0' + digit), ';'};
    }
  lane.tokens = lane.buffer.data();
  lane.size = lane.buffer.size() / 2;
}

// Votes that the tokens cannot hold: sum and squares one after the other, as SetStats does it.
void scoreValues(Lane& lane) {
  float sum = 0;
  for (const float value : lane.values) sum += value;
  lane.score.participants = static_cast<int>(lane.values.size());
  lane.score.average = sum / static_cast<float>(lane.values.size());
  for (const float value : lane.values)
    lane.score.squares += (value - lane.score.average) * (value - lane.score.average);
}

void loadLane(Lane& lane, std::string_view line, const std::vector<int>& postalLine,
              const std::vector<int>* mask) {
  lane.score = RecordScore();
  const VoteLine record(line);
  const std::string_view votes = record.votes();
  lane.score.live = !votes.empty() || !record.postal().empty();
  lane.score.postal = !postalLine.empty();
  const bool hasPostal = countsPostal() && (lane.score.postal || !record.postal().empty());
  Totals totals;
  const std::size_t size = votes.size() / 2;
  if (votes.size() % 2 == 0 && record.votesArePlain() && size <= kExactSum && mask == nullptr && !hasPostal &&
      countsLive() && addTokens(votes.data(), size, totals)) {
    lane.tokens = votes.data();
    lane.size = size;
    lane.score.keypads = static_cast<int>(size);
    lane.score.abstains = glo.opt_abstain ? static_cast<int>(totals.abstains) : 0;
  } else {
    const std::vector<int> live = decodeVotes(votes);
    lane.score.keypads = static_cast<int>(live.size());
    CountedVotes counted =
        countedOf(live, lane.score.postal ? postalLine : decodePostal(record.postal()), mask);
    lane.score.abstains = counted.abstains;
    rewrite(lane, std::move(counted.values));
    totals = Totals();
    addTokens(lane.tokens, lane.size, totals);
  }
  lane.score.participants = static_cast<int>(totals.count);
  if (!lane.values.empty())
    scoreValues(lane);
  else if (totals.count != 0)
    lane.score.average = static_cast<float>(totals.sum) / static_cast<float>(totals.count);
  lane.values.clear();
}

// By record, the square of the difference from its average per token character; 0 for what is no vote, which
// leaves the sum as it is.
using SquareTables = std::array<std::array<float, 256>, kLanes>;

void fillTable(std::array<float, 256>& table, float average) {
  for (int value = 0; value <= kKeyZero; ++value) {
    const float difference = static_cast<float>(value) - average;
    table[static_cast<std::size_t>(value == kKeyZero ? 'A' : '0' + value)] = difference * difference;
  }
}

float square(const std::array<float, 256>& table, const char* tokens, std::size_t k) {
  return table[static_cast<unsigned char>(tokens[2 * k])];
}

// Four tokens are read as one number.
constexpr std::size_t kRead = 4;

float addFour(const std::array<float, 256>& table, const char* tokens, float sum) {
  std::uint64_t four;
  std::memcpy(&four, tokens, sizeof four);
  for (std::size_t k = 0; k < kRead; ++k) sum += table[(four >> 16 * k) & 0xFF];
  return sum;
}

void addSquares(std::array<Lane, kLanes>& lanes, SquareTables& tables) {
  // A lane without tokens walks along on another's, for nothing.
  const auto full = std::find_if(lanes.begin(), lanes.end(), [](const Lane& lane) { return lane.size != 0; });
  if (full == lanes.end())
    return;
  std::size_t common = full->size;
  std::array<const char*, kLanes> t{};
  for (std::size_t r = 0; r < kLanes; ++r) {
    fillTable(tables[r], lanes[r].score.average);
    t[r] = lanes[r].size != 0 ? lanes[r].tokens : full->tokens;
    common = lanes[r].size != 0 ? std::min(common, lanes[r].size) : common;
  }
  std::array<float, kLanes> sums{};
  const std::size_t read = common - common % kRead;
  for (std::size_t k = 0; k < read; k += kRead)
    for (std::size_t r = 0; r < kLanes; ++r) sums[r] = addFour(tables[r], t[r] + 2 * k, sums[r]);
  for (std::size_t r = 0; r < kLanes; ++r) {
    if (lanes[r].size == 0)
      continue;
    for (std::size_t k = read; k < lanes[r].size; ++k) sums[r] += square(tables[r], lanes[r].tokens, k);
    lanes[r].score.squares = sums[r];
  }
}

}  // namespace

std::vector<RecordScore> scoreRecords(int assessment, std::span<const int> items,
                                      const std::vector<int>* mask) {
  readVoteRecords();
  const PostalRecords postal;
  std::array<Lane, kLanes> lanes;
  SquareTables tables{};
  std::vector<RecordScore> scores;
  scores.reserve(items.size());
  for (std::size_t first = 0; first < items.size(); first += kLanes) {
    const std::size_t used = std::min(kLanes, items.size() - first);
    std::array<std::string, kLanes> keys;
    std::array<std::string_view, kLanes> lines;  // all looked up at once: the memory answers side by side
    for (std::size_t r = 0; r < kLanes; ++r) {
      const std::size_t i = first + std::min(r, used - 1);  // the last batch repeats its last record
      keys[r] = voteKey(items[i], assessment);
      lines[r] = glo.voteRecords.lastLine(keys[r]);
    }
    for (std::size_t r = 0; r < kLanes; ++r) {
      std::vector<int> postalLine;
      if (!postal.empty())
        postalLine = postal.votesOf(keys[r]);
      loadLane(lanes[r], lines[r], postalLine, mask);
      glo.maxKeypads = std::max(glo.maxKeypads, lanes[r].score.keypads);
    }
    addSquares(lanes, tables);
    for (std::size_t r = 0; r < used; ++r) scores.push_back(lanes[r].score);
  }
  return scores;
}

std::optional<std::vector<int>> currentMask() {
  if (!glo.demographicFilterOn)
    return std::nullopt;
  sizeVoteArrays();
  const std::size_t size = glo.keypadIncluded.size();
  std::size_t answers = size;
  for (const DemographicInfo& question : glo.demographicQuestions)
    answers = std::max(answers, roomForAnswers(question));
  glo.keypadIncluded.resize(answers);
  includeKeypads();
  std::vector<int> mask = glo.keypadIncluded;
  glo.keypadIncluded.resize(size);
  return mask;
}

}  // namespace qrn
