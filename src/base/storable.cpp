#include "base/storable.h"

#include <algorithm>
#include <cstdint>

#include "base/utf8.h"

namespace qrn {

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool allowed(std::uint32_t c) {
  if (c < 0x20)
    return c == '\t' || c == '\n' || c == '\r';
  return c != 0xFFFE && c != 0xFFFF;
}

// One half of a pair of UTF-16, written as if it were a character.
bool isHalfCharacter(std::string_view text) {
  const auto masked = [&](std::size_t i, unsigned mask) {
    return static_cast<unsigned char>(text[i]) & mask;
  };
  return text.size() >= 3 && masked(0, 0xFF) == 0xED && masked(1, 0xE0) == 0xA0 && masked(2, 0xC0) == 0x80;
}

// Length of the clean beginning of the text.
std::size_t cleanPrefix(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    const auto c = static_cast<unsigned char>(text[at]);
    if (c >= 0x20 && c < 0x80) {
      ++at;
      continue;
    }
    const Utf8Character one = characterAt(text, at);
    if (one.length == 0 || !allowed(one.code))
      break;
    at += one.length;
  }
  return at;
}

}  // namespace

std::string storable(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::size_t clean = cleanPrefix(text);
    out.append(text.substr(0, clean));
    text.remove_prefix(clean);
    if (text.empty())
      break;
    const std::size_t length = isHalfCharacter(text) ? 3 : characterAt(text, 0).length;
    appendCharacter(out, length == 0 ? fromWindows1252(static_cast<unsigned char>(text[0])) : kReplacement);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

bool isStorable(std::string_view text) {
  return cleanPrefix(text) == text.size();
}

}  // namespace qrn
