// Numbers in text.
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

#include "core/common.h"

namespace qrn {
namespace {

char g_decimalSeparator = '\0';

char decimalSeparator() {
  if (g_decimalSeparator == '\0') {
    std::array<char, 16> fixed{};
    std::snprintf(fixed.data(), fixed.size(), "%.2f", 0.1);
    g_decimalSeparator = fixed[1];
  }
  return g_decimalSeparator;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::size_t digitsFrom(std::string_view text, std::size_t at) {
  while (at < text.size() && isDigit(text[at])) ++at;
  return at;
}

// End of the number at the start of `text` (no sign), 0 when there is none.
std::size_t numberLength(std::string_view text) {
  std::size_t end = digitsFrom(text, 0);
  std::size_t digits = end;
  if (end < text.size() && text[end] == '.') {
    const std::size_t fraction = digitsFrom(text, end + 1);
    digits += fraction - (end + 1);
    end = fraction;
  }
  if (digits == 0)
    return 0;
  if (end < text.size() && std::string_view("eEdD").find(text[end]) != std::string_view::npos) {
    std::size_t from = end + 1;
    if (from < text.size() && (text[from] == '+' || text[from] == '-'))
      ++from;
    const std::size_t exponent = digitsFrom(text, from);
    if (exponent > from)
      end = exponent;
  }
  return end;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

// The number at the start of `text`; `rest` takes what follows it.
std::optional<double> takeNumber(std::string_view text, std::string_view& rest) {
  text = withoutLeadingBlanks(text);
  const bool negative = !text.empty() && text.front() == '-';
  if (negative || (!text.empty() && text.front() == '+'))
    text.remove_prefix(1);
  const std::size_t length = numberLength(text);
  if (length == 0)
    return std::nullopt;
  std::string_view number = text.substr(0, length);
  rest = text.substr(length);
  std::string withE;
  if (const std::size_t d = number.find_first_of("dD"); d != std::string_view::npos) {
    withE = std::string(number);
    withE[d] = 'e';
    number = withE;
  }
  double value = 0;
  const auto done = std::from_chars(number.data(), number.data() + number.size(), value);
  if (done.ec != std::errc())
    return std::nullopt;
  return negative ? -value : value;
}

template <class Number>
std::string plain(Number value) {
  if (!std::isfinite(value))
    return "0";
  if (value == 0)
    return "0";
  std::array<char, 64> out{};
  const Number size = std::fabs(value);
  const bool common = size >= Number(1e-9) && size < Number(1e15);
  const auto end = common
                       ? std::to_chars(out.data(), out.data() + out.size(), value, std::chars_format::fixed)
                       : std::to_chars(out.data(), out.data() + out.size(), value);
  return std::string(out.data(), end.ptr);
}

}  // namespace

double roundPlaces(double value, int places) {
  if (!std::isfinite(value))
    return 0;
  std::array<char, 64> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::general, 7);
  std::from_chars(digits.data(), end.ptr, value);
  const double scale = std::pow(10.0, places);
  const double rounded = std::floor(std::fabs(value) * scale + 0.5 + 1e-9) / scale;
  return rounded == 0 ? 0 : std::copysign(rounded, value);
}

std::string formatPlaces(double value, int places) {
  std::array<char, 400> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), roundPlaces(value, places),
                                 std::chars_format::fixed, places);
  return std::string(text.data(), end.ptr);
}

std::optional<double> leadingNumber(std::string_view text) {
  std::string_view rest;
  return takeNumber(text, rest);
}

double valueParse(std::string_view text) {
  return leadingNumber(text).value_or(0);
}

bool isNumeric(std::string_view text) {
  std::string_view rest;
  return takeNumber(text, rest).has_value() && withoutLeadingBlanks(rest).empty();
}

double qrnVal(std::string_view text) {
  const char separator = decimalSeparator();
  std::string number;
  number.reserve(text.size());
  for (const char c : text) {
    if (c == separator)
      number += '.';
    else if (c != ',' && c != ' ' && c != '_' && c != '#' && c != '%')
      number += c;
  }
  return valueParse(number);
}

void setDecimalSeparator(char separator) {
  g_decimalSeparator = separator;
}

std::int32_t RoundUp(double x) {
  const double whole = std::trunc(x);
  const double up = x != whole ? whole + 1 : x;
  if (!(up > std::numeric_limits<std::int32_t>::min()))
    return std::isnan(up) ? 0 : std::numeric_limits<std::int32_t>::min();
  if (up >= std::numeric_limits<std::int32_t>::max())
    return std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(up);
}

std::string plainNumber(double value) {
  return plain(value);
}

std::string plainNumber(float value) {
  return plain(value);
}

}  // namespace qrn
