// The postal store of the slide by key. A line is "key;P1;value;value"; of two lines with one key the first
// counts.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qrn {

class PostalRecords {
 public:
  PostalRecords();  // of glo.postalRecords, which are read from the slide unless they have been
  bool empty() const { return lines_.empty(); }
  // The votes under `key` (any case); none when it has no line. Good until glo.postalRecords change.
  std::vector<int> votesOf(std::string_view key) const;

 private:
  std::unordered_map<std::string, std::string_view> lines_;
};

}  // namespace qrn
