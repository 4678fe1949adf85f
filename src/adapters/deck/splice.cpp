#include "adapters/deck/splice.h"

#include <algorithm>
#include <vector>

#include "adapters/deck/bytes.h"
#include "base/storable.h"

namespace qrn::deck {

namespace {

constexpr std::size_t kPlaceHead = 12, kShortest = 4 + kPlaceHead;
// Beyond these the search for the fewest bytes gives up and the whole stretch that differs is one place.
constexpr std::size_t kLongestSearched = std::size_t{256} << 10;
constexpr int kMostSteps = 64;

// A stretch of the old value and what stands in its place in the new one.
struct Place {
  std::size_t begin, end, newBegin, newEnd;
};

std::size_t commonFront(std::string_view a, std::string_view b) {
  const auto [end, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  return static_cast<std::size_t>(end - a.begin());
}

std::size_t commonBack(std::string_view a, std::string_view b) {
  const auto [end, other] = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend());
  return static_cast<std::size_t>(end - a.rbegin());
}

// The shortest way of taking and putting single bytes (Myers' greedy search): for each number of steps the
// furthest place on every diagonal (bytes taken less bytes put).
class ShortestWay {
 public:
  ShortestWay(std::string_view before, std::string_view after) : a_(before), b_(after) {}

  // Places in order; empty when the way is longer than kMostSteps.
  std::vector<Place> find() {
    for (int steps = 0; steps <= kMostSteps; ++steps) {
      reached_.emplace_back(static_cast<std::size_t>(2 * steps + 1));
      for (int diagonal = -steps; diagonal <= steps; diagonal += 2)
        if (advance(steps, diagonal))
          return placesBack(steps, diagonal);
    }
    return {};
  }

 private:
  using Offset = std::ptrdiff_t;

  Offset& at(int steps, int diagonal) {
    return reached_[static_cast<std::size_t>(steps)][static_cast<std::size_t>(diagonal + steps)];
  }
  // Whether the best way onto this diagonal is by putting a byte, from the diagonal above.
  bool byPutting(int steps, int diagonal) {
    return diagonal == -steps ||
           (diagonal != steps && at(steps - 1, diagonal - 1) < at(steps - 1, diagonal + 1));
  }
  Offset startOf(int steps, int diagonal) {
    if (steps == 0)
      return 0;
    return byPutting(steps, diagonal) ? at(steps - 1, diagonal + 1) : at(steps - 1, diagonal - 1) + 1;
  }
  // True at the end of both.
  bool advance(int steps, int diagonal) {
    const Offset sizeA = std::ssize(a_), sizeB = std::ssize(b_);
    Offset x = startOf(steps, diagonal);
    const Offset y = x - diagonal;
    if (x <= sizeA && y >= 0 && y <= sizeB)
      x += static_cast<Offset>(
          commonFront(a_.substr(static_cast<std::size_t>(x)), b_.substr(static_cast<std::size_t>(y))));
    at(steps, diagonal) = x;
    return x == sizeA && x - diagonal == sizeB;
  }
  std::vector<Place> placesBack(int steps, int diagonal) {
    std::vector<Place> places;
    for (; steps > 0; --steps) {
      const bool put = byPutting(steps, diagonal);
      const int from = put ? diagonal + 1 : diagonal - 1;
      const auto x = static_cast<std::size_t>(at(steps - 1, from)),
                 y = static_cast<std::size_t>(at(steps - 1, from) - from);
      places.push_back({x, put ? x : x + 1, y, put ? y + 1 : y});
      diagonal = from;
    }
    std::reverse(places.begin(), places.end());
    return places;
  }

  std::string_view a_, b_;
  std::vector<std::vector<Offset>> reached_;
};

// Places that stand so close that what is between them costs less than a place of its own become one.
std::vector<Place> joined(const std::vector<Place>& places) {
  std::vector<Place> all;
  for (const Place& place : places) {
    if (!all.empty() && place.begin - all.back().end <= kPlaceHead) {
      all.back().end = place.end;
      all.back().newEnd = place.newEnd;
    } else {
      all.push_back(place);
    }
  }
  return all;
}

bool isInside(std::string_view text, std::size_t at) {
  return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U;
}

// No place begins or ends inside a character. What stands between two places is longer than a character.
void widenToCharacters(Place& place, std::string_view before, std::string_view after) {
  while (isInside(before, place.begin) || isInside(after, place.newBegin)) {
    --place.begin;
    --place.newBegin;
  }
  while (isInside(before, place.end)) {  // what follows is the same in both
    ++place.end;
    ++place.newEnd;
  }
}

std::vector<Place> placesOf(std::string_view before, std::string_view after) {
  const std::size_t front = commonFront(before, after);
  const std::size_t back = commonBack(before.substr(front), after.substr(front));
  const std::string_view a = before.substr(front, before.size() - front - back),
                         b = after.substr(front, after.size() - front - back);
  std::vector<Place> places;
  if (!a.empty() && !b.empty() && a.size() + b.size() <= kLongestSearched)
    places = joined(ShortestWay(a, b).find());
  if (places.empty())
    places = {{0, a.size(), 0, b.size()}};
  for (Place& place : places) {
    place = {place.begin + front, place.end + front, place.newBegin + front, place.newEnd + front};
    widenToCharacters(place, before, after);
  }
  return places;
}

}  // namespace

std::optional<std::string> spliceOf(std::string_view before, std::string_view after, std::size_t limit) {
  if (limit <= kShortest || before.empty() || std::max(before.size(), after.size()) > 0x7FFFFFFF)
    return std::nullopt;
  std::string splice;
  put(splice, checksum(before));
  for (const Place& place : placesOf(before, after)) {
    put(splice, static_cast<std::uint32_t>(place.begin));
    put(splice, static_cast<std::uint32_t>(place.end - place.begin));
    put(splice, static_cast<std::uint32_t>(place.newEnd - place.newBegin));
    splice += after.substr(place.newBegin, place.newEnd - place.newBegin);
  }
  if (splice.size() >= limit)
    return std::nullopt;
  return splice;
}

std::optional<std::string> spliced(std::string_view before, std::string_view splice) {
  if (splice.size() < 4 || get<std::uint32_t>(splice, 0) != checksum(before))
    return std::nullopt;
  std::string value;
  std::size_t done = 0;
  for (splice.remove_prefix(4); !splice.empty();) {
    if (splice.size() < kPlaceHead)
      return std::nullopt;
    const std::size_t begin = get<std::uint32_t>(splice, 0), goes = get<std::uint32_t>(splice, 4),
                      comes = get<std::uint32_t>(splice, 8);
    splice.remove_prefix(kPlaceHead);
    if (begin < done || begin > before.size() || goes > before.size() - begin || comes > splice.size())
      return std::nullopt;
    const std::string_view text = splice.substr(0, comes);
    if (!isStorable(text) || isInside(before, begin) || isInside(before, begin + goes))
      return std::nullopt;
    value.append(before.substr(done, begin - done)).append(text);
    done = begin + goes;
    splice.remove_prefix(comes);
  }
  return value.append(before.substr(done));
}

}  // namespace qrn::deck
