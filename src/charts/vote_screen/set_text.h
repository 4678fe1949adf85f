// Text set in a box: balanced lines, then the next smaller size, and when the smallest does not help, an end
// at a whole word.
#pragma once

#include <string>
#include <vector>

#include "host/surface.h"

namespace qrn {

struct SetText {
  std::string caption;  // with its line ends
  host::SurfaceFont font;
  double width = 0, height = 0;  // twips
  int lines = 0;
  bool whole = true;
  bool rightToLeft = false;  // by its first letter that has a direction
};

// Tries each size, points, the largest first. `width` and `height` in twips.
SetText setText(const std::string& text, host::SurfaceFont font, const std::vector<double>& sizes,
                double width, double height);

// Several texts under each other in one box and at one size, `gap` twips between them.
std::vector<SetText> setTogether(const std::vector<std::string>& texts, host::SurfaceFont font,
                                 const std::vector<double>& sizes, double width, double height, double gap);

}  // namespace qrn
