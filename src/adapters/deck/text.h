// Texts on their way into the deck: how they are escaped.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qrn::deck {

// Escaped for an attribute in double quotes; CR, LF and TAB as character references so that they come back.
std::string escapeAttribute(std::string_view text);
// Escaped for element content.
std::string escapeText(std::string_view text);
std::size_t escapedLength(std::string_view text);  // of escapeAttribute, in bytes

}  // namespace qrn::deck
