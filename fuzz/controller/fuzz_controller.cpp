// Drives a room with any bytes: the first byte of each line says who speaks, a phone or the program. What
// must hold whatever they say: a press reaches the program only as one piece of a press block, and a phone
// only sees frames of which every line after the first is a key.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "adapters/link/wire/wire.h"
#include "controller/room/arguments.h"
#include "controller/room/room.h"

namespace {

using namespace qrn::controller;

void require(bool condition) {
  if (!condition)
    std::abort();
}

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// "[n],k;v],k;v": the shape that the program takes apart.
void checkPresses(std::string_view text) {
  const std::size_t first = text.find("],");
  require(first != std::string_view::npos && isNumber(text.substr(1, first - 1)));
  text.remove_prefix(first + 2);
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, text.find("],"));
    const std::size_t semicolon = piece.find(';');
    require(semicolon != std::string_view::npos && isNumber(piece.substr(0, semicolon)));
    require(piece.find_first_not_of("0123456789|X", semicolon + 1) == std::string_view::npos);
    text.remove_prefix(std::min(text.size(), piece.size() + 2));
  }
}

void checkPhoneFrame(std::string_view text) {
  std::size_t at = text.find('\n');
  while (at != std::string_view::npos) {
    const std::size_t end = text.find('\n', at + 1);
    const std::string_view line = text.substr(at + 1, end == std::string_view::npos ? end : end - at - 1);
    const std::size_t equals = line.find('=');
    require(equals != std::string_view::npos && equals > 0);
    require(line.substr(0, equals).find_first_not_of("abcdefghijklmnopqrstuvwxyz") == std::string_view::npos);
    at = end;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  readRange(input);
  readBase(input);
  readNames(input);
  qrn::link::readAnnouncement(input);

  std::unique_ptr<Room> room;
  std::uint64_t frames = 0;
  const auto fetch = [&] {
    while (const auto text = room->nextForProgram()) {
      ++frames;
      if (!text->empty() && text->front() == '[')
        checkPresses(*text);
    }
  };
  RoomPorts ports;
  ports.programWaiting = fetch;
  ports.toPhone = [](PhoneId, const SharedText& text) { checkPhoneFrame(*text); };
  ports.log = [](const std::string&) {};
  ports.keypadGiven = [](long, const std::string&) {};
  ports.newToken = [] { return std::string(32, 'b'); };
  ports.now = [] { return Moment{1000, 0}; };
  RoomOptions options;
  options.highest = 4;
  room = std::make_unique<Room>(options, ports);
  room->roster().readState(input, {});
  room->programArrived("a");
  room->phoneText(1, "join - 0");
  while (!input.empty()) {
    const std::string_view line = input.substr(0, input.find('\0'));
    input.remove_prefix(std::min(input.size(), line.size() + 1));
    const char who = line.empty() ? ' ' : line.front();
    const std::string_view text = line.empty() ? line : line.substr(1);
    if (who >= '1' && who <= '6') {
      room->phoneText(static_cast<PhoneId>(who - '0'), text);
    } else if (who == 'g') {
      room->phoneGone(1 + text.size() % 6);
    } else if (who == 'r') {
      room->programGone();
      frames = 0;
      room->programArrived(std::string(text));
      fetch();
    } else if (who == 'a') {
      room->fromProgram("Received=" + std::to_string(frames));
    } else {
      room->fromProgram(text);
    }
  }
  return 0;
}
