// The vote records of one slide: one growing text of lines, scanned once and indexed by key.
//
// A record is a line "date,time,votes,key" ended by CR LF; the key is the item's sortKey, "C" and the assessment
// number. Lines of other kinds may stand between them and are kept as they are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace qrn {

class VoteRecordText {
 public:
  // False until assign() or append() has been called: the classic "NULL", not yet read from the slide.
  bool known() const { return known_; }
  void forget();                       // back to not yet read
  void assign(std::string text);       // takes the whole text (line ends made CR LF by the caller) and indexes it
  void append(std::string_view line);  // one whole record with its CR LF
  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  // The last line that contains "," followed by `key`, text compare; a null view when there is none.
  std::string_view lastLine(std::string_view key) const;
  std::size_t recordCount() const { return records_; }  // lines that have a key

 private:
  void indexFrom(std::size_t offset);

  struct Span {
    std::size_t offset = 0, length = 0;
  };
  std::string text_;
  bool known_ = false;
  std::size_t records_ = 0;
  std::unordered_map<std::string, Span> last_;
};

}  // namespace qrn
