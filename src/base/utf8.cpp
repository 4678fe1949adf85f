// UTF-8, and Windows-1252 for texts from before it.
#include "base/utf8.h"

#include <array>
#include <cstring>

namespace qrn {
namespace {

// What Windows-1252 holds at 0x80 to 0x9F; the five free places keep their own number.
constexpr std::array<std::uint16_t, 32> kWindows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isUtf8(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size()) {
    std::uint64_t eight = 0;
    if (i + sizeof eight <= text.size()) {
      std::memcpy(&eight, text.data() + i, sizeof eight);
      if ((eight & 0x8080808080808080ULL) == 0) {
        i += sizeof eight;
        continue;
      }
    }
    const std::size_t length = characterAt(text, i).length;
    if (length == 0)
      return false;
    i += length;
  }
  return true;
}

}  // namespace

Utf8Character characterAt(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at);
  if (lead < 0x80)
    return {lead, 1};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || at + length > text.size())
    return {lead, 0};
  std::uint32_t code = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0U) != 0x80U)
      return {lead, 0};
    code = (code << 6U) | (byte(at + i) & 0x3FU);
  }
  constexpr std::array<std::uint32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
  const bool good = code >= kSmallest[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
  return {code, good ? length : 0};
}

std::uint32_t fromWindows1252(unsigned char c) {
  return c >= 0x80 && c < 0xA0 ? kWindows1252[c - 0x80U] : c;
}

std::string validUtf8(std::string_view text) {
  std::string valid;
  valid.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t length = characterAt(text, i).length;
    if (length == 0)
      valid += "\xEF\xBF\xBD";
    else
      valid += text.substr(i, length);
    i += length > 0 ? length : 1;
  }
  return valid;
}

std::string toUtf8(std::string text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0)
    text.erase(0, kByteOrderMark.size());
  if (isUtf8(text))
    return text;
  std::string out;
  out.reserve(text.size() + text.size() / 8);
  for (const char c : text) appendCharacter(out, fromWindows1252(static_cast<unsigned char>(c)));
  return out;
}

std::vector<std::uint32_t> characters(std::string_view text) {
  std::vector<std::uint32_t> codes;
  for (std::size_t i = 0; i < text.size();) {
    const auto [code, length] = characterAt(text, i);
    codes.push_back(length > 0 ? code : fromWindows1252(static_cast<unsigned char>(text[i])));
    i += length > 0 ? length : 1;
  }
  return codes;
}

std::string firstCharacters(std::string_view text, int count) {
  std::string cut;
  for (const std::uint32_t code : characters(text)) {
    if (count-- <= 0)
      break;
    appendCharacter(cut, code);
  }
  return cut;
}

std::size_t characterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < text.size(); ++count) {
    const std::size_t length = characterAt(text, i).length;
    i += length > 0 ? length : 1;
  }
  return count;
}

void appendCharacter(std::string& text, std::uint32_t code) {
  if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
    code = '?';
  const auto put = [&](std::uint32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0U | (code >> 6U));
    put(0x80U | (code & 0x3FU));
  } else if (code < 0x10000) {
    put(0xE0U | (code >> 12U));
    put(0x80U | ((code >> 6U) & 0x3FU));
    put(0x80U | (code & 0x3FU));
  } else {
    put(0xF0U | (code >> 18U));
    put(0x80U | ((code >> 12U) & 0x3FU));
    put(0x80U | ((code >> 6U) & 0x3FU));
    put(0x80U | (code & 0x3FU));
  }
}

}  // namespace qrn
