// Texts on their way into the deck: what XML 1.0 can hold, and how it is escaped.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qrn::deck {

// The text as the deck can keep it. A character that XML 1.0 forbids becomes U+FFFD; bytes that are not UTF-8
// are read as Windows-1252, as in old files. A text that is clean comes back as it is.
std::string storable(std::string_view text);
bool isStorable(std::string_view text);

// Escaped for an attribute in double quotes; CR, LF and TAB as character references so that they come back.
std::string escapeAttribute(std::string_view text);
// Escaped for element content.
std::string escapeText(std::string_view text);
std::size_t escapedLength(std::string_view text);  // of escapeAttribute, in bytes

}  // namespace qrn::deck
