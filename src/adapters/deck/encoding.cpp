#include "adapters/deck/encoding.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <cstdio>

#include "adapters/deck/text.h"
#include "base/disk.h"
#include "base/text.h"
#include "base/utf8.h"

namespace qrn::deck {

namespace {

// Value of `encoding` in the XML declaration, in small letters; "" without one.
std::string declaredIn(std::string_view text) {
  if (text.rfind("<?xml", 0) != 0)
    return "";
  const std::string_view declaration = text.substr(0, text.find("?>"));
  const std::size_t name = declaration.find("encoding");
  const std::size_t begin = declaration.find_first_of("\"'", name);
  if (name == std::string_view::npos || begin == std::string_view::npos)
    return "";
  return lowerCase(
      declaration.substr(begin + 1, declaration.find(declaration[begin], begin + 1) - begin - 1));
}

// One byte follows the other as in UTF-8, so a declaration that says UTF-16 or the like is not true.
bool isBytewise(const std::string& declared) {
  constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyz0123456789._-:";
  const bool wide = declared.rfind("utf", 0) == 0 || declared.rfind("ucs", 0) == 0 ||
                    declared.rfind("unicode", 0) == 0 || declared.find("10646") != std::string::npos;
  return !wide && !declared.empty() && declared.find_first_not_of(kAllowed) == std::string::npos;
}

class Converter {
 public:
  Converter(const std::string& to, const std::string& from, const std::string& where)
      : handle_(::iconv_open(to.c_str(), from.c_str())) {
    if (handle_ == reinterpret_cast<iconv_t>(-1))
      throwBad(where,
               "is written in an encoding that cannot be read here (" + (from == "UTF-8" ? to : from) + ").");
  }
  ~Converter() { ::iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Takes away from `rest` what it has converted. False when it stands before what it cannot convert.
  bool convert(std::string_view& rest, std::string& out) {
    std::array<char, 65536> block;
    char* in = const_cast<char*>(rest.data());
    std::size_t left = rest.size();
    std::size_t result = 0;
    do {
      char* place = block.data();
      std::size_t room = block.size();
      result = ::iconv(handle_, &in, &left, &place, &room);
      out.append(block.data(), block.size() - room);
    } while (result == static_cast<std::size_t>(-1) && errno == E2BIG);
    rest.remove_prefix(rest.size() - left);
    return left == 0;
  }

 private:
  iconv_t handle_;
};

}  // namespace

Encoding Encoding::of(std::string_view bytes) {
  Encoding encoding;
  const std::string_view start = bytes.substr(0, 2);
  if (start == "\xFF\xFE" || start == std::string_view("<\0", 2))
    encoding.name_ = "UTF-16LE";
  else if (start == "\xFE\xFF" || start == std::string_view("\0<", 2))
    encoding.name_ = "UTF-16BE";
  else if (const std::string declared = declaredIn(bytes); isBytewise(declared))
    encoding.name_ = declared;
  return encoding;
}

std::string Encoding::decode(std::string bytes, const std::string& where) const {
  if (name_.empty())
    return bytes;
  std::string text;
  std::string_view rest = bytes;
  if (!Converter("UTF-8", name_, where).convert(rest, text))
    throwBad(where, "is broken XML (at byte " + std::to_string(bytes.size() - rest.size()) +
                        " stands no character of its encoding).");
  return text;
}

std::string Encoding::encode(std::string text, const std::string& where) const {
  if (name_.empty())
    return text;
  std::string bytes;
  std::string_view rest = text;
  Converter converter(name_, "UTF-8", where);
  while (!converter.convert(rest, bytes)) {
    std::size_t length = 1;
    while (length < rest.size() && (static_cast<unsigned char>(rest[length]) & 0xC0U) == 0x80U) ++length;
    std::array<char, 16> reference{};
    std::snprintf(reference.data(), reference.size(), "&#x%X;", characters(rest.substr(0, length)).front());
    bytes += reference.data();
    rest.remove_prefix(length);
  }
  return bytes;
}

}  // namespace qrn::deck
