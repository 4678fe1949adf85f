#include "store/votes_rec_conversion.h"

#include <vector>

#include "base/text.h"
#include "core/common.h"

namespace qrn {

namespace {

constexpr std::size_t kFields = 8;

std::string convertLine(std::string_view line, std::string_view mtxName) {
  const std::size_t name = upperCase(line).find(upperCase(mtxName));
  const std::vector<std::string_view> fields = splitFields(line, ',');
  if (name == std::string::npos || fields.size() != kFields)
    return "";
  const std::size_t nameInField = upperCase(fields[0]).find(upperCase(mtxName));
  const std::string_view rest =
      nameInField == std::string::npos ? fields[0] : fields[0].substr(nameInField + mtxName.size());
  std::string record(fields[5]);
  for (const std::string_view field : {fields[4], fields[3], rest}) record.append(",").append(field);
  return record + "\r\n";
}

}  // namespace

std::string convertVotesRec(std::string_view text, std::string_view mtxName) {
  std::vector<std::string> lines;
  SplitPPTTag(std::string(text), "\r\n", lines);
  std::string records;
  for (const std::string& line : lines) records += convertLine(line, mtxName);
  std::erase(records, '"');
  return records;
}

}  // namespace qrn
