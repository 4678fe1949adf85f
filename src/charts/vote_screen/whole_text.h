// Text set in a box so that all of it shows: type shrinks step by step, lines break at blanks, and only when
// that is not enough inside words.
#pragma once

#include <string>
#include <vector>

#include "host/surface.h"

namespace qrn {

struct WholeText {
  std::string caption;  // with its line ends
  host::SurfaceFont font;
  double height = 0;  // twips
  int lines = 0;
};

// Starts at the size of `font`. `width` and `height` in twips.
WholeText setWhole(const std::string& text, const host::SurfaceFont& font, double width, double height);

// Several texts under each other in one box and at one size, `gap` line heights between them.
std::vector<WholeText> setWholeTogether(const std::vector<std::string>& texts, const host::SurfaceFont& font,
                                        double width, double height, double gap);

}  // namespace qrn
