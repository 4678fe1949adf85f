// What turns one value of a tag into the next one when the two differ little: a few places where bytes go and
// others come. A change in the middle of a long value then costs the journal what it says, not the value.
//
//   u32 CRC-32 of the old value, then for each place, in order:
//   u32 offset in the old value, u32 bytes that go, u32 bytes that come, those
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qrn::deck {

// Both are texts that a deck can hold; so is what each place brings. The same two values always give the same
// splice. Nothing when it would not be shorter than `limit` bytes.
std::optional<std::string> spliceOf(std::string_view before, std::string_view after, std::size_t limit);

// Nothing when the splice was not made for this value, or says what cannot be.
std::optional<std::string> spliced(std::string_view before, std::string_view splice);

}  // namespace qrn::deck
