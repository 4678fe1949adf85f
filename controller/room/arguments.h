// The texts of the command line and of the list of names.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "controller/room/program_text.h"

namespace qrn::controller {

inline constexpr long highestKeypad = 9999;

// "1-650": two keypad numbers, the first not above the second.
std::optional<std::pair<long, long>> readRange(std::string_view text);
// "BASE:OFFSET:FIRST-LAST", and ":off" behind it for a base that is not in use.
std::optional<Base> readBase(std::string_view text);
// Lines "number,name"; lines of another shape are passed over.
std::map<long, std::string> readNames(std::string_view text);

}  // namespace qrn::controller
