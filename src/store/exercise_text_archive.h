// The two ends of the comma-separated Write form: one puts values into a growing text, one takes them out of
// a text. Both offer the same operations, so that one walk over the lines of a format writes it and reads it.
//
//   template <class Archive> void walk(Archive& a, Exercise& x) { a.line(T(x.filterFile), I(x.onFinish)); }
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/errors.h"
#include "base/text.h"
#include "core/common.h"

namespace qrn::mtx {

// A member and the type that it has in the text. The members themselves may be wider.
template <class Member>
struct I {  // 16-bit integer
  explicit I(Member& member) : v(member) {}
  Member& v;
};
template <class Member>
struct L {  // 32-bit integer
  explicit L(Member& member) : v(member) {}
  Member& v;
};
template <class Member>
struct S {  // single
  explicit S(Member& member) : v(member) {}
  Member& v;
};
struct D {  // double
  explicit D(double& member) : v(member) {}
  double& v;
};
struct B {  // boolean
  explicit B(bool& member) : v(member) {}
  bool& v;
};
struct T {  // text as it stands
  explicit T(std::string& member) : v(member) {}
  std::string& v;
};
struct Q {  // text whose double quotes the writer makes single ones, in the member too
  explicit Q(std::string& member) : v(member) {}
  std::string& v;
};
struct T1 {  // text as it stands on a line that the reader takes whole: line ends become blanks
  explicit T1(std::string& member) : v(member) {}
  std::string& v;
};
struct Q1 {  // the same on a line that the reader takes whole: line ends become blanks
  explicit Q1(std::string& member) : v(member) {}
  std::string& v;
};
struct InLine {  // the same on a line that readers split at every comma: a comma stands there as U+FE50
  explicit InLine(std::string& member) : v(member) {}
  std::string& v;
};
struct Fraction {  // length on the screen, in the text a fraction of the screen's width or height
  Fraction(float& member, double wholeLength) : v(member), whole(wholeLength) {}
  float& v;
  double whole;
};

class TextWriter {
 public:
  static constexpr bool reading = false;

  template <class... Values>
  void values(Values... some) {
    (put(some), ...);
  }
  template <class... Values>
  void line(Values... some) {
    values(some...);
    endLine();
  }
  void put(T value);
  void put(Q value);
  void put(T1 value);
  void put(Q1 value);
  void put(InLine value);
  void put(B value) { item(value.v ? "#TRUE#" : "#FALSE#"); }
  void put(D value) { item(plainNumber(value.v)); }
  void put(Fraction value);
  template <class Member>
  void put(I<Member> value) {
    integer(value.v);
  }
  template <class Member>
  void put(L<Member> value) {
    integer(value.v);
  }
  template <class Member>
  void put(S<Member> value) {
    item(plainNumber(static_cast<float>(value.v)));
  }
  void endLine();
  void rawLine(std::string_view text);  // as it stands, with a line end

  // A line that the reader takes whole; values behind which a text may stop.
  template <class Walk>
  void wholeLine(Walk walk) {
    walk(*this);
  }
  template <class Walk>
  void untilEnd(Walk walk) {
    walk();
  }
  void list(std::vector<std::string>& texts);
  template <class Element, class Walk>
  void elements(std::vector<Element>& array, Walk walk) {
    const auto count = static_cast<std::size_t>(array.empty() ? 0 : array.size() - 1);
    integer(static_cast<std::int64_t>(count));
    endLine();
    for (std::size_t i = 0; i < count; ++i) walk(array[i]);
  }

  void reserve(std::size_t bytes) { text_.reserve(bytes); }
  std::string release() { return std::move(text_); }

 private:
  void item(std::string_view text);
  template <class Number>
  void integer(Number value) {
    if constexpr (std::is_floating_point_v<Number>)
      decimal(std::llround(value));
    else
      decimal(static_cast<std::int64_t>(value));
  }
  void decimal(std::int64_t value);

  std::string text_;
  bool lineBegun_ = false;
};

// The text has ended before the value asked for.
class InputPastEnd : public HostError {
 public:
  InputPastEnd() : HostError(Fault::badData, 62, "Input past end of file") {}
};

// Takes values by type. Between values blanks and line ends are skipped; a quoted text runs to the closing
// quote, anything else to the comma or line end. A value that is not of the asked type is dropped, counted,
// and leaves the member as it stood. Asking beyond the end throws InputPastEnd. The text must outlive the
// reader.
class TextReader {
 public:
  static constexpr bool reading = true;

  explicit TextReader(std::string_view text) : text_(text) {}

  template <class... Values>
  void values(Values... some) {
    (take(some), ...);
  }
  template <class... Values>
  void line(Values... some) {
    values(some...);
  }
  void endLine() {}  // values are taken wherever they stand
  void take(T value) { value.v = textValue(); }
  void take(Q value) { value.v = textValue(); }
  void take(T1 value) { value.v = textValue(); }
  void take(Q1 value) { value.v = textValue(); }
  void take(InLine value);
  void take(B value);
  void take(D value);
  void take(Fraction value);
  template <class Member>
  void take(I<Member> value) {
    integer(value.v, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max());
  }
  template <class Member>
  void take(L<Member> value) {
    integer(value.v, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::uint32_t>::max());
  }
  void take(S<float> value);
  void take(S<double> value);

  // A text in quotes that may hold more of them: `endOf` tells, from the place behind the first, where the
  // last stands, or nothing.
  template <class EndOf>
  void takeQuoted(T value, EndOf endOf) {
    skipToValue();
    const std::size_t open = at_ + 1;
    const auto end = text_[at_] == '"' ? endOf(open) : std::nullopt;
    if (!end)
      return take(value);
    value.v = text_.substr(open, *end - open);
    at_ = *end + 1;
    passSeparator();
  }
  // Count of a list, at most what the rest of the text can hold; a negative one is 0, a damaged one nothing.
  std::optional<std::size_t> count();
  std::string_view wholeLine();
  // Walks over the values of a whole line, its double quotes removed; missing values leave their members. Of
  // a line with more values than the walk takes: how many were of a wrong type. It is for the caller to say
  // whether that is damage.
  template <class Walk>
  std::optional<int> wholeLine(Walk walk) {
    stopAtSettings();
    const std::string fields = fieldsOf(wholeLine());
    TextReader inside(fields);
    inside.insideLine_ = true;
    try {
      walk(inside);
    } catch (const InputPastEnd&) {
      // a short line ends where it ends
    }
    if (!inside.atEnd())
      return inside.damaged_;
    damaged_ += inside.damaged_;
    return std::nullopt;
  }
  void list(std::vector<std::string>& texts);
  // A counted list; elements that the text does not hold whole are left out, the spare element stands after
  // the rest.
  template <class Element, class Walk>
  void elements(std::vector<Element>& array, Walk walk) {
    const auto told = count();
    if (!told)
      return;
    array.assign(1, Element{});
    for (std::size_t i = 0; i < *told; ++i) {
      Element element{};
      walk(element);
      array.back() = std::move(element);
      array.emplace_back();
    }
  }

  // Flags follow: what stands before them is what quotes inside the text before have left of it, and goes.
  // The next text in quotes is left alone.
  void passToFlags();
  bool atEnd();         // nothing but blanks and line ends is left
  bool nextIsQuoted();  // the next value is a text in quotes
  std::string_view text() const { return text_; }
  std::size_t remaining() const { return text_.size() - at_; }
  int damaged() const { return damaged_; }
  bool cutShort() const { return cutShort_; }  // the text ends inside quotes
  void countDamage() { ++damaged_; }
  // Walks over values behind which a text may stop: its end inside them is no error, nor is a value cut
  // there, nor the name of a setting in the place of a line.
  template <class Walk>
  void untilEnd(Walk walk) {
    const int before = damaged_;
    mayStop_ = true;
    try {
      walk();
    } catch (const InputPastEnd&) {
      damaged_ = before;
      cutShort_ = false;
    } catch (const SettingsBegin&) {
      // they are read next
    }
    mayStop_ = false;
  }

 private:
  struct Token {
    std::string_view text;
    bool quoted = false;
  };
  struct SettingsBegin {};
  void stopAtSettings();
  static std::string fieldsOf(std::string_view line);
  Token token();
  std::string textValue();
  void skipToValue();
  void passStrayText();
  void passSeparator();
  char here() const;                           // NUL behind the end
  std::size_t nextOf(const char* ends) const;  // of these characters, or the end
  void passLineEnd();
  std::optional<double> number();
  static std::optional<double> numberIn(const Token& value);
  template <class Member>
  void integer(Member& member, double low, double high) {
    if (const auto value = wholeNumber(low, high))
      member = static_cast<Member>(*value);
    else
      ++damaged_;
  }
  std::optional<std::int32_t> wholeNumber(double low, double high);

  std::string_view text_;
  std::size_t at_ = 0;
  bool afterComma_ = false;
  bool insideLine_ = false;
  bool cutShort_ = false;
  bool mayStop_ = false;
  int damaged_ = 0;
};

}  // namespace qrn::mtx
