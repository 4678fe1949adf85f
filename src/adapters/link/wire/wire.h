// What both ends of the program's link agree on besides the text protocol itself: where a controller
// announces itself, how the two recognise each other, and the few frames of their own that they exchange.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/controller.h"

namespace qrn::link {

inline constexpr const char* programPath = "/program";
inline constexpr const char* instanceHeader = "X-Quorin-Instance";  // one value for the life of a link object
inline constexpr const char* tokenVariable =
    "QUORIN_LINK_TOKEN";                                         // environment of a controller being started
inline constexpr std::size_t maxMessage = std::size_t{1} << 20;  // bytes of one frame, either way

// Frames of the link's own. The controller's first frame is the hello; "VoteOpened=" answers "StartVote" and
// carries the number that the presses of that vote bear in their brackets; "Room=" holds the state of the
// room. From the program's side "Received=" says how many frames since the hello have been dealt with,
// "Address=" where phones shall join, and "Scale=" on which scale the vote is that the next "StartVote"
// opens.
inline constexpr std::string_view helloWord =
    "Hello=quorin-controller,1,";  // then the open vote's number or 0
inline constexpr std::string_view openedWord = "VoteOpened=";
inline constexpr std::string_view roomWord = "Room=";
inline constexpr std::string_view receivedWord = "Received=";
inline constexpr std::string_view addressWord = "Address=";
inline constexpr std::string_view scaleWord = "Scale=";

struct Announcement {
  int port = 0;
  std::string token;
  long process = 0;
  int rehearse = 0;
  std::uint64_t seed = 0;
  std::string join;  // address of the page to project
};

// Lines KEY=VALUE. Reading gives nothing unless port and token are there and well formed.
std::string announcementText(const Announcement& announcement);
std::optional<Announcement> readAnnouncement(std::string_view text);
std::string announceFile(const std::string& folder);

// A frame "Room=" and what it holds: lines KEY=VALUE behind the word.
std::string roomText(const host::RoomState& room);
host::RoomState readRoom(std::string_view text);

// The whole number that `text` is, or nothing: no blanks, no sign, at most 18 digits.
std::optional<std::int64_t> wholeNumber(std::string_view text);
bool startsWith(std::string_view text, std::string_view head);

// 32 hexadecimal digits from the system's source of randomness.
std::string randomToken();
bool isToken(std::string_view text);
// Takes as long for a wrong token as for a right one.
bool sameToken(std::string_view left, std::string_view right);

}  // namespace qrn::link
