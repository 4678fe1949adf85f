// The vote as the program has described it: its settings, what a keypad may press, and what a press means.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::controller {

// What is pressed in one vote. Scale votes (wire values 0, 9, 14 and any unknown one) take one value; the
// list kinds take numbers with "|" between:
//   rank (1) and order (5)  item numbers in the order of preference, rank all items, order up to `limits`
//   tag (3)                 1 or 0 for each item, at most `limits` ones
//   allocate (6)            points for each item, at most `points` each and `allocation` in all
enum class VoteKind { scale, rank, tag, order, allocate };

struct VoteSettings {
  long voteType = 9;
  std::string scale;  // its name; "" when it is not shown
  std::string preVoteText;
  std::string voteText;
  std::string postVotedText;
  long limits = 0;
  long allocation = 0;
  long points = 0;
  long options = 0;
  long startFrom = 1;
  std::vector<long> allowedVotes;  // of a balance vote; else empty
  bool abstain = false;
};

inline constexpr const char* abstainPress = "X";
inline constexpr long maxButtons = 25;  // a longer scale is typed in

VoteKind kindOf(const VoteSettings& settings);
// Captions of the options, without the empty piece before a leading "|" and after a trailing one. A text
// without "|" is a prompt and has none.
std::vector<std::string> captionsOf(const VoteSettings& settings);
// Bottom and top of the scale; a start of -1 stands for 1, a top below the bottom for the bottom.
long lowestVote(const VoteSettings& settings);
long highestVote(const VoteSettings& settings);
// Values of the buttons of a scale vote in order, empty when the value is typed in.
std::vector<long> buttonValues(const VoteSettings& settings);
// The caption that belongs to a value, without a number of its own in front ("3.  Likely" on the button 3).
std::string captionFor(const VoteSettings& settings, const std::vector<std::string>& captions, long value);

// The lists have no abstain: there, nothing sent says as much.
bool mayAbstain(const VoteSettings& settings);
// The press as it is passed to the program, or nothing when this vote does not take it.
std::optional<std::string> acceptedPress(const VoteSettings& settings, std::string_view press);

}  // namespace qrn::controller
