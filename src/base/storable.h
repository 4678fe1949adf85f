// What XML 1.0, and so a deck, can hold of a text.
#pragma once

#include <string>
#include <string_view>

namespace qrn {

// The text as the deck can keep it. A character that XML 1.0 forbids becomes U+FFFD; bytes that are not UTF-8
// are read as Windows-1252, as in old files. A text that is clean comes back as it is.
std::string storable(std::string_view text);
bool isStorable(std::string_view text);

}  // namespace qrn
