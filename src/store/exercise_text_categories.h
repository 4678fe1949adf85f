// Categories in the exercise text, and their repair after a load.
#pragma once

#include "core/exercise.h"
#include "store/exercise_text_reader.h"

namespace qrn::mtx {

// Reads in this format and in the older one, where a name stands alone on its line and each entry has three
// values.
void readCategories(ExerciseReader& a, Exercise& x);

template <class Archive>
void categoryLines(Archive& a, Exercise& x) {
  if constexpr (Archive::reading) {
    readCategories(a, x);
  } else {
    a.elements(x.categories, [&](CategoryRecord& category) {
      a.line(Q1(category.CategoryName), B(category.Selected), B(category.Enabled));
      a.elements(category.CategoryItems, [&](int& entry) { a.line(I(entry)); });
    });
  }
}

// One category "unallocated" that holds every item.
void resetCategories(Exercise& x);

// Every item stands somewhere, none twice in one category, no gaps; the spare elements are there.
void repairCategories(Exercise& x);

}  // namespace qrn::mtx
