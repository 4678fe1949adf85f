#include "base/text.h"

#include <algorithm>

namespace qrn {

std::vector<std::string_view> splitFields(std::string_view text, char separator) {
  std::vector<std::string_view> fields;
  for (;;) {
    const std::size_t to = text.find(separator);
    fields.push_back(text.substr(0, to));
    if (to == std::string_view::npos)
      return fields;
    text.remove_prefix(to + 1);
  }
}

std::string_view takeField(std::string_view& text, char separator) {
  const std::string_view piece = text.substr(0, text.find(separator));
  text.remove_prefix(std::min(text.size(), piece.size() + 1));
  return piece;
}

std::string_view trimBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos)
    return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

std::string replaceAll(std::string text, std::string_view what, std::string_view with) {
  if (what.empty() || text.find(what) == std::string::npos)
    return text;
  std::string out;
  std::size_t from = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
    out.append(text, from, at - from).append(with);
    from = at + what.size();
  }
  return out.append(text, from);
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), lowerLetter);
  return lower;
}

std::string upperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), upperLetter);
  return upper;
}

namespace {

bool sameLetter(char a, char b) {
  return lowerLetter(a) == lowerLetter(b);
}

}  // namespace

bool sameWord(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameLetter);
}

bool beginsWithWord(std::string_view text, std::string_view start) {
  return sameWord(text.substr(0, start.size()), start);
}

bool containsWord(std::string_view text, std::string_view word) {
  return std::search(text.begin(), text.end(), word.begin(), word.end(), sameLetter) != text.end();
}

}  // namespace qrn
