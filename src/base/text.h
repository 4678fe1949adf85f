// Text as bytes: splitting, trimming, replacing, and letters of ASCII without regard to their case. Letters
// of all scripts: base/letter_case.h; characters: base/utf8.h.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrn {

// Plain split: n separators give n + 1 fields, an empty text gives one empty field.
std::vector<std::string_view> splitFields(std::string_view text, char separator);
// Takes the piece before the first `separator` off the text, and the separator with it; all of it without
// one.
std::string_view takeField(std::string_view& text, char separator);
// The pieces, texts or whole numbers, with `between` between them.
template <class Pieces>
std::string joined(const Pieces& pieces, std::string_view between) {
  std::string text;
  bool first = true;
  for (const auto& piece : pieces) {
    if (!first)
      text += between;
    first = false;
    if constexpr (
        requires { text += piece; } && !requires { std::to_string(piece); })
      text += piece;
    else
      text += std::to_string(piece);
  }
  return text;
}
std::string_view trimBlanks(std::string_view text);
std::string replaceAll(std::string text, std::string_view what, std::string_view with);

// ASCII letters alone; other bytes stay.
constexpr char lowerLetter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char upperLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
std::string lowerCase(std::string_view text);
std::string upperCase(std::string_view text);
// Whether the texts differ at most in the case of ASCII letters.
bool sameWord(std::string_view a, std::string_view b);
bool beginsWithWord(std::string_view text, std::string_view start);
bool containsWord(std::string_view text, std::string_view word);

}  // namespace qrn
