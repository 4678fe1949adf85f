#include "adapters/link/wire/wire.h"

#include <algorithm>
#include <random>

namespace qrn::link {

namespace {

// Calls `tell` with key and value of each line KEY=VALUE.
template <class Tell>
void forEachLine(std::string_view text, const Tell& tell) {
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    const std::size_t equals = line.find('=');
    if (equals != std::string_view::npos)
      tell(line.substr(0, equals), line.substr(equals + 1));
  }
}

void take(Announcement& announcement, std::string_view key, std::string_view value) {
  const std::int64_t number = wholeNumber(value).value_or(0);
  if (key == "port" && number <= 65535)
    announcement.port = static_cast<int>(number);
  else if (key == "token" && isToken(value))
    announcement.token = value;
  else if (key == "process")
    announcement.process = static_cast<long>(number);
  else if (key == "rehearse" && number <= 65535)
    announcement.rehearse = static_cast<int>(number);
  else if (key == "seed")
    announcement.seed = static_cast<std::uint64_t>(number);
  else if (key == "join")
    announcement.join = value;
}

}  // namespace

std::string announcementText(const Announcement& a) {
  return "port=" + std::to_string(a.port) + "\ntoken=" + a.token + "\nprocess=" + std::to_string(a.process) +
         "\nrehearse=" + std::to_string(a.rehearse) + "\nseed=" + std::to_string(a.seed) +
         "\njoin=" + a.join + "\n";
}

std::optional<Announcement> readAnnouncement(std::string_view text) {
  Announcement announcement;
  forEachLine(text, [&](std::string_view key, std::string_view value) { take(announcement, key, value); });
  if (announcement.port < 1 || announcement.token.empty())
    return std::nullopt;
  return announcement;
}

std::string roomText(const host::RoomState& room) {
  std::string text = std::string(roomWord) + "\naddress=" + room.address + "\npage=" + room.page +
                     "\nphones=" + std::to_string(room.phones) +
                     "\nrehearse=" + std::to_string(room.rehearse) +
                     "\ntakesPhones=" + (room.takesPhones ? "1" : "0") + "\n";
  for (const host::JoinAddress& each : room.candidates)
    text += std::string(each.likely ? "likely=" : "unlikely=") + each.host + " " + each.card + "\n";
  return text;
}

host::RoomState readRoom(std::string_view text) {
  host::RoomState room;
  forEachLine(text, [&](std::string_view key, std::string_view value) {
    const long number = static_cast<long>(wholeNumber(value).value_or(0));
    if (key == "address")
      room.address = value;
    else if (key == "page")
      room.page = value;
    else if (key == "phones")
      room.phones = number;
    else if (key == "rehearse")
      room.rehearse = number;
    else if (key == "takesPhones")
      room.takesPhones = number != 0;
    else if (const std::size_t blank = value.find(' ');
             blank != std::string_view::npos && (key == "likely" || key == "unlikely"))
      room.candidates.push_back(
          {std::string(value.substr(0, blank)), std::string(value.substr(blank + 1)), key == "likely"});
  });
  return room;
}

std::string announceFile(const std::string& folder) {
  return folder + "/controller.announce";
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
  if (text.empty() || text.size() > 18)
    return std::nullopt;
  std::int64_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9')
      return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return number;
}

bool startsWith(std::string_view text, std::string_view head) {
  return text.substr(0, head.size()) == head;
}

std::string randomToken() {
  static constexpr char digits[] = "0123456789abcdef";
  std::random_device source;
  std::string token;
  while (token.size() < 32) {
    const unsigned int bits = source();
    for (unsigned int shift = 0; shift < 32; shift += 4) token += digits[(bits >> shift) & 15U];
  }
  return token;
}

bool isToken(std::string_view text) {
  return text.size() == 32 && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool sameToken(std::string_view left, std::string_view right) {
  unsigned int difference = left.size() == right.size() ? 0U : 1U;
  for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
    difference |=
        static_cast<unsigned int>(static_cast<unsigned char>(left[i]) ^ static_cast<unsigned char>(right[i]));
  return difference == 0;
}

}  // namespace qrn::link
