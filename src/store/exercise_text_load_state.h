// What one load of an exercise text remembers between its lines.
#pragma once

#include <set>
#include <string>

namespace qrn::mtx {

struct LoadState {
  bool wizard = false;  // the run makes a new exercise: its categories cannot be corrupt
  bool categoriesRead = false;
  bool resetCategories = false;  // the categories are to be made anew once all is read
  bool corruptTold = false, failureTold = false;
  std::set<std::string> missingFonts;  // told about, each once
};
LoadState& loadState();

}  // namespace qrn::mtx
