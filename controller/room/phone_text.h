// The small language between the phone page and the controller: one text frame is one message.
//
// From the phone     join TOKEN NUMBER     TOKEN "-" the first time; NUMBER the keypad it had, 0 for none
//                    press VOTE TEXT       VOTE is the number of the vote on the page
// To the phone       a word, then lines KEY=VALUE with "\\" and "\n" written for a backslash and a line end
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "controller/room/vote_state.h"

namespace qrn::controller {

inline constexpr std::size_t maxPhoneFrame = 2048;  // bytes

struct PhoneFrame {
  enum class Kind { join, press } kind = Kind::join;
  std::string token;  // join: "" the first time
  long keypad = 0;    // join: the keypad asked for, 0 for any
  long vote = 0;      // press
  std::string text;   // press: digits, "|" and "X" only
};
// Nothing when the frame is not one of the two, to the letter.
std::optional<PhoneFrame> readPhoneFrame(std::string_view frame);

enum class WaitReason { idle, ended, keyboard, interrupted };
enum class Result { none, counted, late };

// `run` differs from controller to controller: vote numbers begin again with each.
std::string welcomeFrame(long keypad, const std::string& token, const std::string& run);
std::string fullFrame();
std::string rehearsalFrame(long keypads);  // this room has no phones; so many keypads vote by themselves
std::string voteFrame(long vote, const VoteSettings& settings);
// What this keypad has pressed in the open vote: `counted` false while it is under way.
std::string yoursFrame(long vote, const std::string& press, bool counted, bool programLinked);
std::string waitFrame(WaitReason reason, Result result, const std::string& press);
std::string refusedFrame(const std::string& reason);  // "closed", "not possible", "too fast"
std::string storedFrame();

}  // namespace qrn::controller
