#include "store/vote_line.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "core/common.h"

namespace qrn {

namespace {

constexpr int kVotesField = 2, kPostalField = 6;

std::string_view withoutQuotes(std::string_view field, std::string& buffer) {
  if (field.find('"') == std::string_view::npos)
    return field;
  buffer = field;
  std::erase(buffer, '"');
  return buffer;  // empty for a field of quotes alone, and then as good as the line itself
}

bool startsCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

std::vector<int> decodeCharacters(std::string_view text) {
  std::vector<int> values;
  values.reserve(text.size());
  for (const char c : text)
    if (startsCharacter(c))
      values.push_back(tokenValue(c));
  return values;
}

int postalValue(std::string_view token) {
  token = trimBlanks(token);
  if (token.empty() || token == "-")
    return kNotVoted;
  if (token == "X")
    return kAbstained;
  if (token == "A")
    return kKeyZero;
  return static_cast<int>(std::clamp(std::trunc(qrnVal(token)), -32768.0, 32767.0));
}

}  // namespace

int tokenValue(char first) {
  switch (first) {
    case 'X':
      return kAbstained;
    case '-':
      return kNotVoted;
    case 'A':
      return kKeyZero;
    default:
      return first >= '0' && first <= '9' ? first - '0' : 0;
  }
}

VoteLine::VoteLine(std::string_view line) {
  for (int field = 0; field <= kPostalField; ++field) {
    const std::size_t comma = line.find(',');
    const std::string_view text = line.substr(0, comma);
    if (field == kVotesField)
      votes_ = withoutQuotes(text, unquoted_[0]);
    else if (field == kPostalField)
      postal_ = withoutQuotes(text, unquoted_[1]);
    if (comma == std::string_view::npos)
      return;
    line.remove_prefix(comma + 1);
  }
}

std::vector<int> decodeVotes(std::string_view votes) {
  if (votes.find(';') == std::string_view::npos)
    return decodeCharacters(votes);
  std::vector<int> values;
  values.reserve(votes.size() / 2 + 1);
  while (!votes.empty()) {
    values.push_back(votes.front() == ';' ? kNotVoted : tokenValue(votes.front()));
    const std::size_t end = votes.find(';');
    votes.remove_prefix(end == std::string_view::npos ? votes.size() : end + 1);
  }
  return values;
}

std::vector<int> decodePostal(std::string_view postal) {
  return decodeCharacters(postal);
}

std::vector<int> decodePostalLine(std::string_view line, std::size_t keyLength) {
  std::vector<int> values;
  if (line.size() <= keyLength + 1)
    return values;
  std::vector<std::string_view> tokens = splitFields(line.substr(keyLength + 1), ';');
  if (tokens.size() > 1 && tokens.back().empty())
    tokens.pop_back();
  for (std::size_t i = tokens.front() == "P1" ? 1 : 0; i < tokens.size(); ++i)
    values.push_back(postalValue(tokens[i]));
  return values;
}

}  // namespace qrn
