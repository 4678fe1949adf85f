#include "controller/room/arguments.h"

#include <algorithm>

#include "adapters/link/wire/wire.h"
#include "base/text.h"
#include "base/utf8.h"

namespace qrn::controller {

namespace {

std::optional<long> keypadNumber(std::string_view text) {
  const auto number = link::wholeNumber(text);
  if (!number || *number > highestKeypad)
    return std::nullopt;
  return static_cast<long>(*number);
}

}  // namespace

std::optional<std::pair<long, long>> readRange(std::string_view text) {
  const auto first = keypadNumber(takeField(text, '-'));
  const auto last = keypadNumber(text);
  if (!first || !last || *first < 1 || *first > *last)
    return std::nullopt;
  return std::make_pair(*first, *last);
}

std::optional<Base> readBase(std::string_view text) {
  const auto number = keypadNumber(takeField(text, ':'));
  const auto offset = keypadNumber(takeField(text, ':'));
  const auto range = readRange(takeField(text, ':'));
  if (!number || !offset || !range || range->second + *offset > highestKeypad ||
      (!text.empty() && text != "off"))
    return std::nullopt;
  return Base{*number, *offset, range->first, range->second, text.empty()};
}

std::map<long, std::string> readNames(std::string_view text) {
  std::map<long, std::string> names;
  while (!text.empty()) {
    std::string_view line = takeField(text, '\n');
    if (!line.empty() && line.back() == '\r')
      line.remove_suffix(1);
    const auto keypad = keypadNumber(takeField(line, ','));
    if (keypad && !line.empty())
      names[*keypad] = validUtf8(line);
  }
  return names;
}

}  // namespace qrn::controller
