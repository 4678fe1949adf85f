#include "adapters/deck/text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace qrn::deck {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Windows-1252, 0x80 to 0x9F; the five unused places read as the replacement character.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

void putCharacter(std::string& out, char32_t c) {
  const auto put = [&out](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | (c >> 6));
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | (c >> 12));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | (c >> 18));
    put(0x80 | ((c >> 12) & 0x3F));
    put(0x80 | ((c >> 6) & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

struct Decoded {
  char32_t character;
  std::size_t length;  // bytes; 0 when these bytes are not UTF-8
};

Decoded decode(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(at);
  if (first < 0x80)
    return {first, 1};
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || at + length > text.size())
    return {0, 0};
  char32_t c = first & (length == 2 ? 0x1FU : length == 3 ? 0x0FU : 0x07U);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0U) != 0x80U)
      return {0, 0};
    c = (c << 6) | (byte(at + i) & 0x3FU);
  }
  const bool tooLong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
  return tooLong || c > 0x10FFFF ? Decoded{0, 0} : Decoded{c, length};
}

bool allowed(char32_t c) {
  if (c < 0x20)
    return c == '\t' || c == '\n' || c == '\r';
  return c < 0xD800 || (c > 0xDFFF && c != 0xFFFE && c != 0xFFFF);
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
    const Decoded one = decode(text, at);
    if (one.length == 0 || !allowed(one.character))
      break;
    at += one.length;
  }
  return at;
}

constexpr std::string_view escapeOf(char c, bool attribute) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\r':
      return "&#xD;";
    case '"':
      return attribute ? "&quot;" : "";
    case '\n':
      return attribute ? "&#xA;" : "";
    case '\t':
      return attribute ? "&#x9;" : "";
    default:
      return "";
  }
}

// Bytes that each character takes in an attribute.
constexpr std::array<unsigned char, 256> kEscapedLengths = [] {
  std::array<unsigned char, 256> lengths{};
  for (std::size_t c = 0; c < lengths.size(); ++c)
    lengths[c] =
        static_cast<unsigned char>(std::max<std::size_t>(1, escapeOf(static_cast<char>(c), true).size()));
  return lengths;
}();

std::size_t lengthOf(char c) {
  return kEscapedLengths[static_cast<unsigned char>(c)];
}

std::string escaped(std::string_view text, bool attribute) {
  std::string out;
  out.reserve(attribute ? escapedLength(text) : text.size());
  std::size_t plain = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view escape = lengthOf(text[at]) == 1 ? "" : escapeOf(text[at], attribute);
    if (escape.empty())
      continue;
    out.append(text.substr(plain, at - plain)).append(escape);
    plain = at + 1;
  }
  return out.append(text.substr(plain));
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
    const Decoded one = decode(text, 0);
    if (one.length == 0) {
      const auto byte = static_cast<unsigned char>(text[0]);
      putCharacter(out, byte < 0xA0 ? kWindows1252[byte - 0x80U] : byte);
    } else {
      putCharacter(out, kReplacement);
    }
    text.remove_prefix(one.length == 0 ? 1 : one.length);
  }
  return out;
}

bool isStorable(std::string_view text) {
  return cleanPrefix(text) == text.size();
}

std::string escapeAttribute(std::string_view text) {
  return escaped(text, true);
}

std::string escapeText(std::string_view text) {
  return escaped(text, false);
}

std::size_t escapedLength(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) length += lengthOf(c);
  return length;
}

std::string upperCase(std::string_view name) {
  std::string out(name);
  for (char& c : out)
    if (c >= 'a' && c <= 'z')
      c = static_cast<char>(c - 'a' + 'A');
  return out;
}

std::string lowerCase(std::string_view name) {
  std::string out(name);
  for (char& c : out)
    if (c >= 'A' && c <= 'Z')
      c = static_cast<char>(c - 'A' + 'a');
  return out;
}

}  // namespace qrn::deck
