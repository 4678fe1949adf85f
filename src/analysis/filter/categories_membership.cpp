#include "analysis/filter/categories_membership.h"

#include <algorithm>
#include <cstddef>

#include "core/glo.h"

namespace qrn {

namespace {

bool holds(const CategoryRecord& category, int id) {
  const std::vector<int>& ids = category.CategoryItems;
  return !ids.empty() && std::find(ids.begin(), ids.end() - 1, id) != ids.end() - 1;
}

// A damaged file can make a circle of parents, so each record is looked at once.
bool isIn(const std::vector<CategoryRecord>& categories, int id, std::size_t category,
          std::vector<bool>& seen) {
  const CategoryRecord& record = categories[category];
  if (holds(record, id))
    return true;
  if (record.CategoryID < 1)
    return false;
  seen.resize(categories.size());
  seen[category] = true;
  for (std::size_t j = 0; j + 1 < categories.size(); ++j)
    if (!seen[j] && categories[j].CategoryParent == record.CategoryID && isIn(categories, id, j, seen))
      return true;
  return false;
}

}  // namespace

bool IsInCategory(const std::vector<CategoryRecord>& categories, int item, int category,
                  const std::vector<RiskRecord>& items) {
  if (upperBound(categories) < 1)
    return true;
  if (item < 0 || item > upperBound(items) || category < 0 || category > upperBound(categories))
    return false;
  std::vector<bool> seen;
  return isIn(categories, items[static_cast<std::size_t>(item)].ID, static_cast<std::size_t>(category), seen);
}

bool IsInCategorySingle(const std::vector<CategoryRecord>& categories, int item) {
  if (upperBound(categories) < 1)
    return true;
  for (int c = 0; c < upperBound(categories); ++c)
    if (categories[static_cast<std::size_t>(c)].Selected && IsInCategory(categories, item, c, glo.risks))
      return true;
  return false;
}

bool IsInCategorySingle(int item) {
  return IsInCategorySingle(glo.categories, item);
}

}  // namespace qrn
