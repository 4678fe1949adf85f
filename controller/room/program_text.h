// The controller text protocol: commands in, text blocks out.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "controller/room/vote_state.h"

namespace qrn::controller {

enum class Command {
  unknown,
  setting,  // one of the lines that describe the next vote; see applySetting
  clear,
  startVote,
  endVote,
  keyboardOn,
  keyboardOff,
  baseInfo,
  getNames,
  votesStored,
  // Nothing hangs on these here: no task list, no audio window, no wizard, and the deck is the program's.
  noted
};

Command commandOf(std::string_view text);
// Takes over a line such as "options=5" or "Abstain=True". False when it is not one of those. A number that
// cannot be read leaves the setting as it was.
bool applySetting(std::string_view text, VoteSettings& settings);

// One base station: keypad numbers from first + offset to last + offset.
struct Base {
  long number = 0;
  long offset = 0;
  long first = 1;
  long last = 0;
  bool used = true;
};

struct KeyBlock {
  std::string baseType;
  long lowest = 1;
  long highest = 650;
  long popupOn = 0;
  long howManyToShow = 0;
  int closePercent = 0;  // 0: votes do not close by themselves
  long keypads = 0;      // keypads there are now
  bool useOffsets = false;
  std::vector<long> present;  // the keypads that are in the room
  std::vector<long> joined;   // of these, the ones that the program has not been told of before
  std::vector<Base> bases;
};
std::string keyBlockText(const KeyBlock& block);
// The part of it that changes when keypads join: base type, number of keypads, and who has joined.
std::string joinedText(const KeyBlock& block);

// Lines of keypad, name and keypad between the two marks. Commas and line ends in a name become blanks.
std::string nameListText(const std::vector<std::pair<long, std::string>>& names);

struct Press {
  long keypad = 0;
  std::string vote;
};
// "[12],3;5],4;6": the number of the vote, then one piece for each press.
std::string pressText(long vote, const std::vector<Press>& presses);

}  // namespace qrn::controller
