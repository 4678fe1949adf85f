// UTF-8, and Windows-1252 for texts from before it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrn {

struct Utf8Character {
  std::uint32_t code;
  std::size_t length;  // bytes; 0 when no well-formed character stands there
};
Utf8Character characterAt(std::string_view text, std::size_t at);  // `at` lies inside the text

// Text that is valid UTF-8 comes back as it is (without a byte order mark); any other is taken as
// Windows-1252.
std::string toUtf8(std::string text);
std::uint32_t fromWindows1252(unsigned char c);
// The text itself when it is valid UTF-8, else with U+FFFD for each byte that is not.
std::string validUtf8(std::string_view text);

// Unicode characters of UTF-8 text and back. Broken bytes count as one character each; codes that are no
// character become "?".
std::vector<std::uint32_t> characters(std::string_view text);
void appendCharacter(std::string& text, std::uint32_t code);
std::string firstCharacters(std::string_view text, int count);
std::size_t characterCount(std::string_view text);

}  // namespace qrn
