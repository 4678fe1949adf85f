// The vote records of one slide: one growing text of lines, scanned once and indexed by key.
//
// A record is a line "date,time,votes,key" ended by CR LF; the key is the item's sortKey, "C" and the
// assessment number. Lines of other kinds may stand between them and are kept as they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qrn {

// Key of the records of the item with `sortKey` on `assessment` (counted from 1): "7C2".
std::string recordKey(int sortKey, int assessment);

class VoteRecordText {
 public:
  // False until assign() or append() has been called: the classic "NULL", not yet read from the slide.
  bool known() const { return known_; }
  void forget();                  // back to not yet read
  void assign(std::string text);  // takes the whole text, makes its line ends CR LF and indexes it
  void append(
      std::string_view line);  // one whole record with its CR LF; costs nothing for the text before it
  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  // Whether the text ends inside a line (a cut-off record): what is appended then runs into that line.
  bool endsInsideLine() const { return !text_.empty() && text_.back() != '\n' && text_.back() != '\r'; }
  // The last line that contains "," followed by `key`, text compare (so key "1C1" is also found in a record
  // of "1C10"); a null view when there is none. Good until the next assign, append or forget.
  std::string_view lastLine(std::string_view key) const;
  // The rule itself, by walking all lines from the last to the first.
  static std::string_view lastLineByScan(std::string_view text, std::string_view key);
  std::size_t recordCount() const { return records_; }  // lines that have a key
  static bool hasKey(std::string_view line);

 private:
  // A key packed four bits a character; 0 is a free place.
  using PackedKey = std::uint64_t;
  struct Entry {
    PackedKey key = 0;
    std::size_t offset = 0, length = 0;
  };

  static PackedKey pack(std::string_view key);
  bool indexAnew();                    // as indexFrom() for the whole text
  bool indexFrom(std::size_t offset);  // false when a line ends in anything but CR LF
  bool indexLine(std::size_t offset, std::size_t length);
  void remember(PackedKey key, std::size_t offset, std::size_t length);
  void grow();
  std::string_view find(PackedKey key) const;

  std::string text_;
  bool known_ = false;
  std::size_t records_ = 0;
  std::vector<Entry> table_;  // open addressing, a power of two
  std::size_t used_ = 0;
};

}  // namespace qrn
