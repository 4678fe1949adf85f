// The letters by which items are told apart on screens.
#pragma once

#include <string>

#include "core/records.h"

namespace qrn {

// One letter for an ID below 26 (0 is "A"), from 26 on the letter of ID mod 26 and the number ID div 26 + 1.
std::string itemIdentifier(int id);

// Identifier, ": " and the item's text; the identifier is stored in the record.
std::string GetItemLabel(RiskRecord& risk);

}  // namespace qrn
