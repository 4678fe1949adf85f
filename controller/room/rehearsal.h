// Keypads that vote by themselves, so that a workshop can be walked through without people.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "controller/room/program_text.h"

namespace qrn::controller {

// Repeatable: a seed, the count of keypads and the number of the vote give the same presses with the same
// delays. Each vote has a centre and a spread of its own, each keypad a leaning that it keeps. Every keypad
// votes; some change their mind, never as the last press of a vote, so that closing on the last keypad loses
// nothing.
class Rehearsal {
 public:
  Rehearsal(long firstKeypad, long count, std::uint64_t seed, bool hurry);

  void startVote(long vote, const VoteSettings& settings, std::int64_t nowMs);
  void endVote() { plan_.clear(); }
  std::optional<std::int64_t> nextDue() const;
  std::vector<Press> due(std::int64_t nowMs);  // in order of their time

 private:
  struct Planned {
    double part = 0;  // of the time that the vote takes
    std::int64_t atMs = 0;
    Press press;
  };
  long first_;
  long count_;
  std::uint64_t seed_;
  bool hurry_;
  std::vector<double> leanings_;  // in parts of the scale's length
  std::deque<Planned> plan_;
};

}  // namespace qrn::controller
