// Who holds which keypad number. A phone proves itself by a token of its own and gets the same number again.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qrn::controller {

struct Moment {
  std::int64_t ms = 0;       // steady
  std::int64_t seconds = 0;  // of the calendar, since 1970
};

struct Joined {
  long keypad = 0;
  bool fresh = false;  // this phone did not have the number before
};

class Roster {
 public:
  // `ranges` are the numbers that phones may have, in the order in which they are handed out.
  explicit Roster(std::vector<std::pair<long, long>> ranges) : ranges_(std::move(ranges)) {}

  // The number of this phone: its own from before, else `wanted` when it is free, else the first free one.
  // When none is free, the one of the phone that left longest ago (a minute or more) without ever having
  // voted. Nothing when all are in use.
  std::optional<Joined> join(const std::string& token, long wanted, Moment now);
  void left(long keypad, Moment now);  // one connection of the phone has gone
  void voted(long keypad);
  // The numbers, in order, whose phones have been here since this controller started. Those that are only
  // known from before stand in the state and are kept for their phones.
  std::vector<long> present() const;

  // One line "keypad token seconds" for each phone, so that numbers survive a new controller. Lines that are
  // older than `lifetimeSeconds`, malformed or outside the ranges are passed over.
  std::string stateText() const;
  void readState(std::string_view text, Moment now);
  static std::string stateLine(long keypad, const std::string& token, std::int64_t seconds);

  static constexpr std::int64_t lifetimeSeconds = 12 * 3600;
  static constexpr std::int64_t reclaimAfterMs = 60'000;

 private:
  struct Entry {
    std::string token;
    int connections = 0;
    bool here = false;  // has joined since this controller started
    bool voted = false;
    std::int64_t leftMs = 0;
    std::int64_t sinceSeconds = 0;
  };
  bool inRange(long keypad) const;
  std::optional<long> firstFree() const;
  std::optional<long> reclaim(std::int64_t nowMs);

  std::vector<std::pair<long, long>> ranges_;
  std::map<long, Entry> entries_;
  std::map<std::string, long, std::less<>> byToken_;
};

}  // namespace qrn::controller
