// The encodings that XML parts are written in. Inside, all is UTF-8; a part that is changed stays in its own.
#pragma once

#include <string>
#include <string_view>

namespace qrn::deck {

class Encoding {
 public:
  // Told by the byte-order mark, else by the zeros of UTF-16, else by the XML declaration, else UTF-8.
  static Encoding of(std::string_view bytes);
  // Both throw HostError(badData) naming `where`. A byte-order mark is part of the text.
  std::string decode(std::string bytes, const std::string& where) const;
  // A character that the encoding does not have becomes a character reference.
  std::string encode(std::string text, const std::string& where) const;

 private:
  std::string name_;  // as iconv knows it; "" for UTF-8
};

}  // namespace qrn::deck
