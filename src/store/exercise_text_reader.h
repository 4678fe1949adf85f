// The reader of an exercise text, with what it finds on its way besides values.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/exercise_text_archive.h"

namespace qrn::mtx {

class ExerciseReader : public TextReader {
 public:
  ExerciseReader(std::string_view text, bool forWizard) : TextReader(text), wizard(forWizard) {}

  const bool wizard;        // a new exercise is being made: its categories cannot be corrupt
  bool itemsWhole = false;  // all items stood there, and what comes behind them followed
  bool categoriesRead = false;
  bool resetCategories = false;  // the categories are to be made anew once all is read
  std::set<std::string> missingFonts;
  std::vector<std::string> messages;
};

}  // namespace qrn::mtx
