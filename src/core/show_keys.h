// The keys that move a slide show on. While an exercise is displayed in a show, a graph hands over those of
// them that it has no use for itself: it closes, and the show goes on.
#pragma once

#include "core/glo.h"
#include "host/actions.h"
#include "host/forms.h"
#include "host/names.h"

namespace qrn {

inline bool displayedInShow() {
  return glo.cmdMode == runMode::display;
}

// Letters are left out: on a graph they stand for items.
inline std::vector<host::KeyStroke> showKeys() {
  namespace key = host::key;
  return {{key::pageDown, 0}, {key::right, 0}, {key::down, 0}, {key::enter, 0}};
}

}  // namespace qrn
