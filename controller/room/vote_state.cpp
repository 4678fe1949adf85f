#include "controller/room/vote_state.h"

#include <algorithm>

#include "adapters/link/wire/wire.h"
#include "base/text.h"
#include "host/names.h"

namespace qrn::controller {

namespace {

std::optional<std::vector<long>> numbersOf(std::string_view press) {
  std::vector<long> numbers;
  for (const std::string_view piece : splitFields(press, '|')) {
    const auto number = link::wholeNumber(piece);
    if (!number || *number > 100000)
      return std::nullopt;
    numbers.push_back(static_cast<long>(*number));
  }
  return numbers;
}

bool scaleTakes(const VoteSettings& settings, long value) {
  if (!settings.allowedVotes.empty())
    return std::count(settings.allowedVotes.begin(), settings.allowedVotes.end(), value) != 0;
  return value >= lowestVote(settings) && value <= highestVote(settings);
}

// Item numbers from 1 to `items`, each at most once.
bool isSelection(std::vector<long> numbers, long items) {
  std::sort(numbers.begin(), numbers.end());
  return numbers.front() >= 1 && numbers.back() <= items &&
         std::adjacent_find(numbers.begin(), numbers.end()) == numbers.end();
}

bool sumWithin(const std::vector<long>& numbers, long most, long total) {
  long sum = 0;
  for (const long number : numbers) {
    sum += number;
    if (most > 0 && number > most)
      return false;
  }
  return sum > 0 && (total < 1 || sum <= total);
}

bool listTakes(const VoteSettings& settings, const std::vector<long>& numbers) {
  const auto items = static_cast<long>(captionsOf(settings).size());
  const auto count = static_cast<long>(numbers.size());
  switch (kindOf(settings)) {
    case VoteKind::rank:
      return count == items && isSelection(numbers, items);
    case VoteKind::order:
      return (settings.limits < 1 || count <= settings.limits) && isSelection(numbers, items);
    case VoteKind::tag:
      return count == items && sumWithin(numbers, 1, settings.limits);
    case VoteKind::allocate:
      return count == items && sumWithin(numbers, settings.points, settings.allocation);
    case VoteKind::scale:
      break;
  }
  return false;
}

}  // namespace

VoteKind kindOf(const VoteSettings& settings) {
  switch (settings.voteType) {
    case voteKind::rank:
      return VoteKind::rank;
    case voteKind::tag:
      return VoteKind::tag;
    case voteKind::order:
      return VoteKind::order;
    case voteKind::allocate:
      return VoteKind::allocate;
    default:
      return VoteKind::scale;
  }
}

std::vector<std::string> captionsOf(const VoteSettings& settings) {
  const std::vector<std::string_view> fields = splitFields(settings.voteText, '|');
  std::vector<std::string> pieces(fields.begin(), fields.end());
  if (pieces.size() < 2)
    return {};
  if (pieces.front().empty())
    pieces.erase(pieces.begin());
  if (pieces.back().empty())
    pieces.pop_back();
  return pieces;
}

long lowestVote(const VoteSettings& settings) {
  return settings.startFrom < 0 ? 1 : settings.startFrom;
}

long highestVote(const VoteSettings& settings) {
  return std::max(settings.options, lowestVote(settings));
}

std::vector<long> buttonValues(const VoteSettings& settings) {
  if (!settings.allowedVotes.empty())
    return settings.allowedVotes;
  const long low = lowestVote(settings), high = highestVote(settings);
  std::vector<long> values;
  if (high - low < maxButtons)
    for (long value = low; value <= high; ++value) values.push_back(value);
  return values;
}

std::string captionFor(const VoteSettings& settings, const std::vector<std::string>& captions, long value) {
  const long place = value - lowestVote(settings);
  if (!settings.allowedVotes.empty() || place < 0 || place >= static_cast<long>(captions.size()))
    return "";
  std::string caption = captions[static_cast<std::size_t>(place)];
  const std::string number = std::to_string(value) + ". ";
  if (link::startsWith(caption, number))
    caption.erase(0, caption.find_first_not_of(' ', number.size()));
  return caption;
}

bool mayAbstain(const VoteSettings& settings) {
  return settings.abstain && kindOf(settings) == VoteKind::scale;
}

std::optional<std::string> acceptedPress(const VoteSettings& settings, std::string_view press) {
  if (press == abstainPress)
    return mayAbstain(settings) ? std::optional<std::string>(abstainPress) : std::nullopt;
  const auto numbers = numbersOf(press);
  if (!numbers)
    return std::nullopt;
  const bool takes = kindOf(settings) == VoteKind::scale
                         ? numbers->size() == 1 && scaleTakes(settings, numbers->front())
                         : listTakes(settings, *numbers);
  return takes ? std::optional<std::string>(joined(*numbers, "|")) : std::nullopt;
}

}  // namespace qrn::controller
