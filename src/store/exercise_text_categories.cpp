#include "store/exercise_text_categories.h"

#include <algorithm>
#include <unordered_set>

#include "base/text.h"

namespace qrn::mtx {
namespace {

// The line of a name; the number of fields on it. Commas before the last quote are taken out, so that a name
// that holds some stays one field.
std::size_t readNameLine(TextReader& a, CategoryRecord& category) {
  std::string line(a.wholeLine());
  const std::size_t lastQuote = line.rfind('"');
  if (lastQuote != std::string::npos)
    line.erase(std::remove(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(lastQuote), ','),
               line.begin() + static_cast<std::ptrdiff_t>(lastQuote));
  const auto fields = splitFields(line, ',');
  category.CategoryName = replaceAll(std::string(trimBlanks(fields[0])), "\"", "");
  if (fields.size() > 2) {
    TextReader flags(std::string_view(line).substr(fields[0].size() + 1));
    try {
      flags.line(B(category.Selected), B(category.Enabled));
    } catch (const InputPastEnd&) {
      // fields without anything in them stay true
    }
  }
  return line.empty() ? 0 : fields.size();
}

void readEntries(TextReader& a, CategoryRecord& category, bool olderFormat) {
  const std::size_t count = a.count().value_or(0);
  auto& entries = category.CategoryItems;
  for (std::size_t i = 0; i < count; ++i) {
    int entry = -1, unused = 0;
    a.take(I(entry));
    if (olderFormat)
      a.line(I(unused), I(unused));
    entries.back() = entry;
    entries.push_back(-1);
  }
}

// Fields on the last name line; 0 for a count of 0.
std::size_t readCategoryLines(TextReader& a, Exercise& x) {
  int count = 0;
  a.take(I(count));
  if (count < 0)
    a.countDamage();
  std::size_t fields = 0;
  x.categories.assign(1, CategoryRecord{});
  for (int i = 0; i < count; ++i) {
    CategoryRecord category;
    fields = readNameLine(a, category);
    x.categories.emplace_back();
    x.categories[static_cast<std::size_t>(i)] = category;
    readEntries(a, x.categories[static_cast<std::size_t>(i)], fields <= 1);
  }
  return fields;
}

}  // namespace

void readCategories(ExerciseReader& a, Exercise& x) {
  constexpr const char* kFailed =
      "The categories are corrupt, load failed\r\nYou need to check all preferences and category settings";
  constexpr const char* kCorrupt =
      "Your categories are corrupt, please right click your list and modify categories";
  const int damagedBefore = a.damaged();
  a.categoriesRead = true;
  try {
    const std::size_t fields = readCategoryLines(a, x);
    if (a.damaged() != damagedBefore)
      a.messages.emplace_back(kFailed);
    if (fields == 1 && !a.wizard) {
      a.resetCategories = true;
      a.messages.emplace_back(kCorrupt);
    }
  } catch (const InputPastEnd&) {
    a.messages.emplace_back(kFailed);
    throw;
  }
}

void resetCategories(Exercise& x) {
  CategoryRecord unallocated;
  unallocated.CategoryName = "unallocated";
  x.categories = {unallocated, CategoryRecord{}};
}

void repairCategories(Exercise& x) {
  if (upperBound(x.categories) < 1)
    resetCategories(x);
  std::unordered_set<int> allocated;
  for (int c = 0; c < upperBound(x.categories); ++c) {
    auto& entries = x.categories[static_cast<std::size_t>(c)].CategoryItems;
    std::unordered_set<int> here;
    for (int& entry : entries)
      if (!here.insert(entry).second)
        entry = -1;
    entries.erase(std::remove(entries.begin(), entries.end(), -1), entries.end());
    allocated.insert(entries.begin(), entries.end());
    entries.push_back(-1);
  }
  auto& unallocated = x.categories.front().CategoryItems;
  for (int i = 0; i < x.itemCount(); ++i) {
    const int id = x.risks[static_cast<std::size_t>(i)].ID;
    if (allocated.insert(id).second) {
      unallocated.back() = id;
      unallocated.push_back(-1);
    }
  }
}

}  // namespace qrn::mtx
