#include "matrixgraph/graph_parts.h"

#include <algorithm>

namespace qrn {

namespace {

bool standsInPair(const PlottedItem& item, int pair, const GraphView& view) {
  const auto p = static_cast<std::size_t>(pair);
  return item.n[p] != 0 && view.roundVisible[p];
}

bool isGhost(const PlottedItem& item, const GraphView& view) {
  return view.zoomedItem != host::kNoItem && view.zoomedItem != item.id;
}

}  // namespace

const GraphArray* graphArray(const std::string& name) {
  const auto found = std::find_if(kGraphArrays.begin(), kGraphArrays.end(),
                                  [&](const GraphArray& array) { return name == array.name; });
  return found == kGraphArrays.end() ? nullptr : &*found;
}

const GraphArray& graphArray(Part part, int pair) {
  return *std::find_if(kGraphArrays.begin(), kGraphArrays.end(),
                       [&](const GraphArray& array) { return array.part == part && array.pair == pair; });
}

host::ElementArray& arrayOf(host::Surface& surface, Part part, int pair) {
  const GraphArray& array = graphArray(part, pair);
  return surface.array(array.name, array.layer);
}

// A zoomed item shows its own label, even where another key covers it.
bool isShown(const GraphArray& array, const PlottedItem& item, const GraphView& view) {
  if (!standsInPair(item, array.pair, view))
    return false;
  const auto p = static_cast<std::size_t>(array.pair);
  const bool ghost = isGhost(item, view);
  switch (array.part) {
    case Part::key:
      return !ghost && (!item.covered[p] || view.zoomedItem == item.id);
    case Part::ghost:
      return ghost && !item.covered[p];
    case Part::dot:
      return item.covered[p] && view.zoomedItem != item.id;
    case Part::shadow:
      return view.shadows && isShown(graphArray(Part::key, array.pair), item, view);
    case Part::line:
    case Part::blob:
      return !ghost && view.pairLines && item.joined[p] && standsInPair(item, array.pair - 1, view);
  }
  return false;
}

}  // namespace qrn
