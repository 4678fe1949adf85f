#include "adapters/deck/text.h"

#include <algorithm>
#include <array>

namespace qrn::deck {

namespace {

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

}  // namespace qrn::deck
