#include "core/item_label.h"

namespace qrn {

std::string itemIdentifier(int id) {
  constexpr int kLetters = 26;
  if (id < 0)
    return "";
  std::string identifier(1, static_cast<char>('A' + id % kLetters));
  if (id >= kLetters)
    identifier += std::to_string(id / kLetters + 1);
  return identifier;
}

std::string GetItemLabel(RiskRecord& risk) {
  risk.identifier = itemIdentifier(risk.ID);
  return risk.identifier + ": " + risk.text;
}

}  // namespace qrn
