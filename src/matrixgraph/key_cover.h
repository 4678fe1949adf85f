// Which keys are seen where more stand than there is room for: no key covers another.
#pragma once

#include <string>
#include <vector>

#include "host/surface.h"
#include "matrixgraph/graph_parts.h"

namespace qrn {

// A key, and the captions of those that stand wholly behind it.
struct KeyInFront {
  const host::Element* key;
  std::vector<std::string> behind;
};

// Marks which items are covered in that view and gives the keys that hide others altogether. The selected
// item comes first, then top items, then later pairs before earlier ones, then the order of the list.
std::vector<KeyInFront> coverKeys(const host::Surface& surface, std::vector<PlottedItem>& plotted,
                                  const GraphView& view);

}  // namespace qrn
