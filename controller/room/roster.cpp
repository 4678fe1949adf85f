#include "controller/room/roster.h"

#include <algorithm>

#include "adapters/link/wire/wire.h"
#include "base/text.h"

namespace qrn::controller {

std::optional<Joined> Roster::join(const std::string& token, long wanted, Moment now) {
  std::optional<long> keypad;
  if (const auto known = byToken_.find(token); known != byToken_.end())
    keypad = known->second;
  else if (inRange(wanted) && entries_.count(wanted) == 0)
    keypad = wanted;
  else
    keypad = firstFree();
  if (!keypad)
    keypad = reclaim(now.ms);
  if (!keypad)
    return std::nullopt;
  Entry& entry = entries_[*keypad];
  const bool fresh = entry.token.empty();
  if (fresh)
    entry.sinceSeconds = now.seconds;
  entry.token = token;
  ++entry.connections;
  entry.here = true;
  byToken_[token] = *keypad;
  return Joined{*keypad, fresh};
}

void Roster::left(long keypad, Moment now) {
  Entry& entry = entries_.at(keypad);
  --entry.connections;
  entry.leftMs = now.ms;
}

void Roster::voted(long keypad) {
  if (const auto it = entries_.find(keypad); it != entries_.end())
    it->second.voted = true;
}

std::vector<long> Roster::present() const {
  std::vector<long> numbers;
  for (const auto& [keypad, entry] : entries_)
    if (entry.here)
      numbers.push_back(keypad);
  return numbers;
}

std::string Roster::stateText() const {
  std::string text;
  for (const auto& [keypad, entry] : entries_) text += stateLine(keypad, entry.token, entry.sinceSeconds);
  return text;
}

void Roster::readState(std::string_view text, Moment now) {
  while (!text.empty()) {
    std::string_view line = takeField(text, '\n');
    const auto keypad = link::wholeNumber(takeField(line, ' '));
    const std::string token(takeField(line, ' '));
    const auto since = link::wholeNumber(line);
    if (!keypad || !link::isToken(token) || !since || !inRange(static_cast<long>(*keypad)) ||
        now.seconds - *since > lifetimeSeconds || byToken_.count(token) != 0)
      continue;
    Entry& entry = entries_[static_cast<long>(*keypad)];
    byToken_.erase(entry.token);  // a number handed out again: the later line holds
    entry.token = token;
    entry.sinceSeconds = *since;
    entry.leftMs = now.ms;
    byToken_[token] = static_cast<long>(*keypad);
  }
}

std::string Roster::stateLine(long keypad, const std::string& token, std::int64_t seconds) {
  return std::to_string(keypad) + " " + token + " " + std::to_string(seconds) + "\n";
}

bool Roster::inRange(long keypad) const {
  return std::any_of(ranges_.begin(), ranges_.end(),
                     [&](const auto& range) { return keypad >= range.first && keypad <= range.second; });
}

std::optional<long> Roster::firstFree() const {
  for (const auto& [first, last] : ranges_)
    for (long keypad = first; keypad <= last; ++keypad)
      if (entries_.count(keypad) == 0)
        return keypad;
  return std::nullopt;
}

std::optional<long> Roster::reclaim(std::int64_t nowMs) {
  auto oldest = entries_.end();
  for (auto it = entries_.begin(); it != entries_.end(); ++it) {
    const Entry& entry = it->second;
    if (entry.connections > 0 || entry.voted || nowMs - entry.leftMs < reclaimAfterMs)
      continue;
    if (oldest == entries_.end() || entry.leftMs < oldest->second.leftMs)
      oldest = it;
  }
  if (oldest == entries_.end())
    return std::nullopt;
  const long keypad = oldest->first;
  byToken_.erase(oldest->second.token);
  entries_.erase(oldest);
  return keypad;
}

}  // namespace qrn::controller
