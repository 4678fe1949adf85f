// One record line taken apart, and what its vote tokens mean.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrn {

// Votes as numbers: 0 to 10 a vote, the rest is none.
inline constexpr int kAbstained = -2, kNoVote = -1, kNotVoted = -100, kKeyZero = 10;

// Value of a token by its first byte: "X" abstained, "-" not voted, "A" ten, a digit itself; any other
// character reads as 0, like a text that is no number.
int tokenValue(char first);

// Fields of "date,time,votes,key,...,postal" (0, 1, 2 and 6 without double quotes); absent ones are empty.
// Views into the line, or into `unquoted` where quotes had to go.
class VoteLine {
 public:
  explicit VoteLine(std::string_view line);
  VoteLine(const VoteLine&) = delete;
  VoteLine& operator=(const VoteLine&) = delete;
  std::string_view votes() const { return votes_; }
  bool votesArePlain() const { return unquoted_[0].empty(); }  // the view is one into the line itself
  std::string_view postal() const { return postal_; }

 private:
  std::string_view votes_, postal_;
  std::array<std::string, 2> unquoted_;
};

// The votes of field 2, one per keypad: tokens ended by ";" (an empty one is not voted), or in the older form
// without any ";" one character each.
std::vector<int> decodeVotes(std::string_view votes);

// The postal votes of field 6, one character each.
std::vector<int> decodePostal(std::string_view postal);

// The postal votes of a line of the postal store, "key;P1;value;value" (the mark "P1" may be missing).
std::vector<int> decodePostalLine(std::string_view line, std::size_t keyLength);

}  // namespace qrn
