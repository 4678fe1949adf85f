// The keys that move a slide show on. While an exercise is displayed in a show, a graph hands over those of
// them that it has no use for itself: it closes, and the show goes on.
#pragma once

#include "core/glo.h"
#include "host/forms.h"

namespace qrn {

inline bool displayedInShow() {
  return glo.cmdMode == "DISPLAY";
}

// Letters are left out: on a graph they stand for items.
inline bool movesShowOn(int keyCode, int shift) {
  namespace key = host::key;
  return shift == 0 &&
         (keyCode == key::pageDown || keyCode == key::right || keyCode == key::down || keyCode == key::enter);
}

}  // namespace qrn
