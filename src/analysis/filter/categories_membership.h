// Which categories an item is in. Membership in a subcategory counts for every category above it.
#pragma once

#include <vector>

#include "core/records.h"

namespace qrn {

// Whether `items[item]` is in `categories[category]` or below it. An array with an upper bound below 1 holds
// no categories at all, and every item counts as in every one.
bool IsInCategory(const std::vector<CategoryRecord>& categories, int item, int category,
                  const std::vector<RiskRecord>& items);

// Whether item `item` of glo is in any selected category of `categories`, or of glo.
bool IsInCategorySingle(const std::vector<CategoryRecord>& categories, int item);
bool IsInCategorySingle(int item);

}  // namespace qrn
