#include "store/postal_records.h"

#include "base/text.h"
#include "core/glo.h"
#include "store/vote_line.h"
#include "store/vote_store.h"

namespace qrn {

PostalRecords::PostalRecords() {
  readPostalRecords();
  std::string_view rest = glo.postalRecords.text();
  while (!rest.empty()) {
    const std::size_t end = rest.find_first_of("\r\n");
    const std::string_view line = rest.substr(0, end);
    if (const std::size_t mark = line.find(';'); mark != std::string_view::npos)
      lines_.try_emplace(upperCase(line.substr(0, mark)), line);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
}

std::vector<int> PostalRecords::votesOf(std::string_view key) const {
  const auto line = lines_.find(upperCase(key));
  return line == lines_.end() ? std::vector<int>() : decodePostalLine(line->second, key.size());
}

}  // namespace qrn
