#include "store/exercise_text_archive.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/text.h"
#include "store/named_settings.h"

namespace qrn::mtx {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}
bool isLineEnd(char c) {
  return c == '\r' || c == '\n';
}

// A fraction below 1 is a part of the screen; from 1 on a value is absolute, as in files from before the
// fractions.
float lengthOf(double stored, double whole) {
  return static_cast<float>(stored < 1.0 ? stored * whole : stored);
}

constexpr const char* kCommaInLine = "\xEF\xB9\x90";  // U+FE50

void makeOneLine(std::string& text) {
  text = replaceAll(std::move(text), "\r\n", " ");
  std::replace_if(text.begin(), text.end(), isLineEnd, ' ');
}

// Where the quotes that open there end: at one with a comma or the end of the line behind it. npos without.
std::size_t closingQuote(std::string_view line, std::size_t open) {
  constexpr std::size_t npos = std::string_view::npos;
  std::size_t close = open != npos && line[open] == '"' ? open : npos;
  while (close != npos) {
    close = line.find('"', close + 1);
    const std::size_t next = close == npos ? npos : line.find_first_not_of(" \t", close + 1);
    if (next == npos || line[next] == ',')
      break;
  }
  return close;
}

template <class Number>
bool takesWhole(std::string_view digits, Number& value) {
  Number read{};
  const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), read);
  if (end.ec != std::errc() || end.ptr != digits.data() + digits.size())
    return false;
  if constexpr (std::is_floating_point_v<Number>)
    if (!std::isfinite(read))
      return false;
  value = read;
  return true;
}

}  // namespace

// Writer ------------------------------------------------------------------------------------------

void TextWriter::item(std::string_view text) {
  if (lineBegun_)
    text_ += ',';
  text_ += text;
  lineBegun_ = true;
}

void TextWriter::put(T value) {
  if (lineBegun_)
    text_ += ',';
  text_.append(1, '"').append(value.v).append(1, '"');
  lineBegun_ = true;
}

void TextWriter::put(Q value) {
  std::replace(value.v.begin(), value.v.end(), '"', '\'');
  put(T(value.v));
}

void TextWriter::put(T1 value) {
  makeOneLine(value.v);
  put(T(value.v));
}

void TextWriter::put(Q1 value) {
  makeOneLine(value.v);
  put(Q(value.v));
}

void TextWriter::put(InLine value) {
  makeOneLine(value.v);
  std::replace(value.v.begin(), value.v.end(), '"', '\'');
  std::string inLine = replaceAll(value.v, ",", kCommaInLine);
  put(T(inLine));
}

// The fewest decimals that read back as the same length. The whole screen stays just below 1 and what is
// beyond it stands in full, since the reader takes 1 and more as absolute.
void TextWriter::put(Fraction value) {
  constexpr int kMostDecimals = 20;
  const double fraction = value.v / value.whole;
  if (fraction > 1)
    return item(plainNumber(value.v));
  if (fraction == 1)
    return item("0.99999999");
  std::array<char, 64> digits{};
  for (int decimals = 0; decimals <= kMostDecimals; ++decimals) {
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), fraction,
                                   std::chars_format::fixed, decimals);
    double reread = 0;
    std::from_chars(digits.data(), end.ptr, reread);
    if (end.ec == std::errc() && lengthOf(reread, value.whole) == value.v)
      return item(std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data())));
  }
  item(plainNumber(fraction));
}

void TextWriter::decimal(std::int64_t value) {
  std::array<char, 24> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  item(std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data())));
}

void TextWriter::endLine() {
  text_ += "\r\n";
  lineBegun_ = false;
}

void TextWriter::rawLine(std::string_view text) {
  text_ += text;
  endLine();
}

void TextWriter::list(std::vector<std::string>& texts) {
  elements(texts, [&](std::string& text) { line(Q(text)); });
}

// Reader ------------------------------------------------------------------------------------------

char TextReader::here() const {
  return at_ < text_.size() ? text_[at_] : '\0';
}

std::size_t TextReader::nextOf(const char* ends) const {
  return std::min(text_.find_first_of(ends, at_), text_.size());
}

void TextReader::skipToValue() {
  while (isBlank(here()) || (!afterComma_ && isLineEnd(here()))) ++at_;
  if (at_ >= text_.size())
    throw InputPastEnd();
}

void TextReader::passLineEnd() {
  if (here() == '\r')
    ++at_;
  if (here() == '\n')
    ++at_;
}

// A text. On a line taken whole, where no quotes are left to hold them, the blanks around it belong to it.
std::string TextReader::textValue() {
  if (!insideLine_)
    return std::string(token().text);
  if (at_ >= text_.size() && !afterComma_)
    throw InputPastEnd();
  const std::size_t from = at_;
  at_ = nextOf(",");
  const std::string_view text = text_.substr(from, at_ - from);
  passSeparator();
  return std::string(text);
}

void TextReader::passSeparator() {
  while (isBlank(here())) ++at_;
  afterComma_ = here() == ',';
  if (afterComma_)
    ++at_;
  else
    passLineEnd();
}

// A quote inside a text has ended it early: what is left of it goes, up to the next value.
void TextReader::passStrayText() {
  while (isBlank(here())) ++at_;
  const std::size_t end = nextOf(",\r\n");
  damaged_ += end == at_ ? 0 : 1;
  at_ = end;
}

void TextReader::passToFlags() {
  const auto isFlag = [](std::string_view value) {
    value = trimBlanks(value);
    return value.empty() || value.front() == '#' || isNumeric(value);
  };
  while (!atEnd()) {
    if (!afterComma_)
      skipToValue();
    if ((!afterComma_ && text_[at_] == '"') ||
        isFlag(text_.substr(at_, text_.find_first_of(",\r\n", at_) - at_)))
      return;
    ++damaged_;
    wholeLine();
  }
}

void TextReader::stopAtSettings() {
  if (!mayStop_ || afterComma_ || !nextIsQuoted())
    return;
  const std::size_t open = text_.find('"', at_), close = text_.find('"', open + 1);
  if (close != std::string_view::npos && isSettingName(text_.substr(open + 1, close - open - 1)))
    throw SettingsBegin();
}

// The fields of a line without their quotes; the commas of one that stands in quotes are its own, and stand
// as they are stored in such lines.
std::string TextReader::fieldsOf(std::string_view line) {
  std::string fields;
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t open = line.find_first_not_of(" \t", at), close = closingQuote(line, open);
    const bool quoted = close != std::string_view::npos;
    const std::size_t comma = std::min(line.find(',', quoted ? close : at), line.size());
    const std::string field(quoted ? line.substr(open, close - open) : line.substr(at, comma - at));
    fields += replaceAll(quoted ? replaceAll(field, ",", kCommaInLine) : field, "\"", "");
    fields += comma < line.size() ? "," : "";
    at = comma + 1;
  }
  return fields;
}

TextReader::Token TextReader::token() {
  stopAtSettings();
  skipToValue();
  Token result;
  if (text_[at_] == '"') {
    const std::size_t next = text_.find('"', at_ + 1), close = std::min(next, text_.size());
    cutShort_ = next == std::string_view::npos;
    result = {text_.substr(at_ + 1, close - at_ - 1), true};
    at_ = std::min(close + 1, text_.size());
    passStrayText();
  } else {
    const std::size_t from = at_;
    at_ = nextOf(",\r\n");
    std::size_t to = at_;
    while (to > from && isBlank(text_[to - 1])) --to;
    result = {text_.substr(from, to - from), false};
  }
  passSeparator();
  return result;
}

std::optional<double> TextReader::number() {
  return numberIn(token());
}

std::optional<double> TextReader::numberIn(const Token& value) {
  if (value.text.starts_with('#')) {
    const std::string word = upperCase(value.text);
    if (word == "#TRUE#")
      return -1.0;
    if (word == "#FALSE#")
      return 0.0;
  }
  return leadingNumber(value.text);
}

std::optional<std::int32_t> TextReader::wholeNumber(double low, double high) {
  const Token digits = token();
  std::int32_t plain = 0;  // by far the most values are plain digits
  const auto value = takesWhole(digits.text, plain) ? std::optional<double>(plain) : numberIn(digits);
  if (!value)
    return std::nullopt;
  const double rounded = std::nearbyint(*value);
  if (!(rounded >= low && rounded <= high))
    return std::nullopt;
  // Colours may stand as unsigned 32-bit values.
  return static_cast<std::int32_t>(static_cast<std::int64_t>(rounded));
}

void TextReader::take(InLine value) {
  value.v = replaceAll(textValue(), kCommaInLine, ",");
}

void TextReader::take(B value) {
  const Token word = token();
  const std::string upper = upperCase(word.text);
  if (upper == "TRUE" || upper == "#TRUE#")
    value.v = true;
  else if (upper == "FALSE" || upper == "#FALSE#")
    value.v = false;
  else if (const auto number = leadingNumber(word.text))
    value.v = *number != 0;
  else
    ++damaged_;
}

void TextReader::take(D value) {
  if (const auto read = number())
    value.v = *read;
  else
    ++damaged_;
}

// Not by way of a double, which could round twice.
void TextReader::take(S<float> value) {
  const Token digits = token();
  if (takesWhole(digits.text, value.v))
    return;
  const auto read = numberIn(digits);
  if (read && std::fabs(*read) <= std::numeric_limits<float>::max())
    value.v = static_cast<float>(*read);
  else
    ++damaged_;
}

void TextReader::take(S<double> value) {
  take(D(value.v));
}

void TextReader::take(Fraction value) {
  const auto read = number();
  if (read && std::fabs(*read) <= std::numeric_limits<float>::max())
    value.v = lengthOf(*read, value.whole);
  else
    ++damaged_;
}

std::optional<std::size_t> TextReader::count() {
  const auto told =
      wholeNumber(std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max());
  if (!told) {
    ++damaged_;
    return std::nullopt;
  }
  return std::min(static_cast<std::size_t>(std::max(*told, 0)), remaining());
}

std::string_view TextReader::wholeLine() {
  if (at_ >= text_.size())
    throw InputPastEnd();
  const std::size_t from = at_;
  at_ = nextOf("\r\n");
  const std::string_view whole = text_.substr(from, at_ - from);
  passLineEnd();
  afterComma_ = false;
  return whole;
}

void TextReader::list(std::vector<std::string>& texts) {
  elements(texts, [&](std::string& text) { take(Q(text)); });
}

bool TextReader::atEnd() {
  return text_.find_first_not_of(" \t\r\n", at_) == std::string_view::npos;
}

bool TextReader::nextIsQuoted() {
  const std::size_t next = text_.find_first_not_of(" \t\r\n", at_);
  return next != std::string_view::npos && text_[next] == '"';
}

}  // namespace qrn::mtx
