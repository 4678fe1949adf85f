#include "controller/room/rehearsal.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/text.h"

namespace qrn::controller {

namespace {

constexpr double leaningWidth = 0.12, changeShare = 0.08, abstainShare = 0.04;
constexpr double shortestMs = 30, longestMs = 400, hurryLongestMs = 5;
constexpr double lastChange = 0.6;  // changes of mind fall into this first part of the vote

// The standard distributions differ between libraries, and a seed shall mean the same everywhere.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}
  double unit() {  // 0 <= x < 1; splitmix64
    state_ += 0x9E3779B97F4A7C15ULL;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return static_cast<double>((z ^ (z >> 31)) >> 11) / 9007199254740992.0;
  }
  double between(double low, double high) { return low + (high - low) * unit(); }
  double bell() {  // mean 0, deviation 1: the sum of twelve uniforms less 6
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += unit();
    return sum;
  }
  std::size_t below(std::size_t count) {
    return static_cast<std::size_t>(unit() * static_cast<double>(count));
  }

 private:
  std::uint64_t state_;
};

// How this vote's people think: where on the scale, and for lists how much each item is liked.
struct Mood {
  double centre = 0.5, spread = 0.2;
  std::vector<double> liking;
};

Mood moodOf(Dice& dice, std::size_t items) {
  Mood mood;
  mood.centre = dice.between(0.05, 0.95);
  mood.spread = dice.between(0.08, 0.22);
  for (std::size_t i = 0; i < items; ++i) mood.liking.push_back(dice.unit());
  return mood;
}

std::string scalePress(const VoteSettings& settings, const Mood& mood, double leaning, Dice& dice) {
  const double place = std::clamp(mood.centre + leaning + mood.spread * dice.bell(), 0.0, 1.0);
  if (!settings.allowedVotes.empty()) {
    const auto last = static_cast<double>(settings.allowedVotes.size() - 1);
    return std::to_string(settings.allowedVotes[static_cast<std::size_t>(std::lround(place * last))]);
  }
  const auto low = static_cast<double>(lowestVote(settings)),
             high = static_cast<double>(highestVote(settings));
  return std::to_string(std::lround(low + place * (high - low)));
}

// Item indexes from the most liked to the least, as this keypad sees it.
std::vector<std::size_t> preference(const Mood& mood, Dice& dice) {
  std::vector<double> liking = mood.liking;
  for (double& each : liking) each += 0.25 * dice.bell();
  std::vector<std::size_t> order(liking.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return liking[a] > liking[b]; });
  return order;
}

std::string listPress(const VoteSettings& settings, const Mood& mood, Dice& dice) {
  const auto order = preference(mood, dice);
  const std::size_t items = order.size();
  const VoteKind kind = kindOf(settings);
  std::size_t picks =
      settings.limits > 0 ? std::min(items, static_cast<std::size_t>(settings.limits)) : items;
  std::vector<long> numbers;
  if (kind == VoteKind::rank || kind == VoteKind::order) {
    for (std::size_t i = 0; i < (kind == VoteKind::rank ? items : picks); ++i)
      numbers.push_back(static_cast<long>(order[i]) + 1);
    return joined(numbers, "|");
  }
  numbers.assign(items, 0);
  if (kind == VoteKind::tag) {
    picks = settings.limits > 0 ? picks : (items + 1) / 2;
    for (std::size_t i = 0; i < picks; ++i) numbers[order[i]] = 1;
    return joined(numbers, "|");
  }
  long left = settings.allocation > 0 ? settings.allocation : static_cast<long>(items);
  for (std::size_t i = 0; i < items && left > 0; ++i) {
    const long most = settings.points > 0 ? std::min(settings.points, left) : left;
    const long gives = std::max(1L, std::lround(static_cast<double>(most) * dice.between(0.3, 1.0)));
    numbers[order[i]] = gives;
    left -= gives;
  }
  return joined(numbers, "|");
}

std::string pressOf(const VoteSettings& settings, const Mood& mood, double leaning, Dice& dice) {
  if (kindOf(settings) != VoteKind::scale)
    return listPress(settings, mood, dice);
  const bool abstains = mayAbstain(settings) && dice.unit() < abstainShare;
  return abstains ? abstainPress : scalePress(settings, mood, leaning, dice);
}

}  // namespace

Rehearsal::Rehearsal(long firstKeypad, long count, std::uint64_t seed, bool hurry)
    : first_(firstKeypad), count_(count), seed_(seed), hurry_(hurry) {
  Dice dice(seed);
  for (long i = 0; i < count; ++i) leanings_.push_back(leaningWidth * dice.bell());
}

void Rehearsal::startVote(long vote, const VoteSettings& settings, std::int64_t nowMs) {
  plan_.clear();
  const std::size_t items = captionsOf(settings).size();
  if (kindOf(settings) != VoteKind::scale && items == 0)
    return;
  Dice dice(seed_ ^ (static_cast<std::uint64_t>(vote) * 0xD1B54A32D192ED03ULL));
  const Mood mood = moodOf(dice, items);
  const double longest = hurry_ ? hurryLongestMs : longestMs, shortest = hurry_ ? 0 : shortestMs;
  double latest = lastChange;
  for (long i = 0; i < count_; ++i) {
    const double leaning = leanings_[static_cast<std::size_t>(i)];
    const bool changes =
        i > 0 && dice.unit() < changeShare;  // keypad 1 keeps to its first press: it may be last
    const double part = changes ? dice.between(0, lastChange) : dice.unit();
    if (changes)
      plan_.push_back({dice.between(0, part), 0, {first_ + i, pressOf(settings, mood, leaning, dice)}});
    plan_.push_back({part, 0, {first_ + i, pressOf(settings, mood, leaning, dice)}});
    latest = std::max(latest, part);
  }
  for (Planned& each : plan_) {
    // Keypad 1 waits for any that changed their mind, when all others were done before.
    if (each.press.keypad == first_ && latest <= lastChange)
      each.part = 1;
    each.atMs = nowMs + static_cast<std::int64_t>(shortest + each.part * (longest - shortest));
  }
  std::stable_sort(plan_.begin(), plan_.end(),
                   [](const Planned& a, const Planned& b) { return a.part < b.part; });
}

std::optional<std::int64_t> Rehearsal::nextDue() const {
  return plan_.empty() ? std::nullopt : std::optional<std::int64_t>(plan_.front().atMs);
}

std::vector<Press> Rehearsal::due(std::int64_t nowMs) {
  std::vector<Press> presses;
  while (!plan_.empty() && plan_.front().atMs <= nowMs) {
    presses.push_back(std::move(plan_.front().press));
    plan_.pop_front();
  }
  return presses;
}

}  // namespace qrn::controller
