// A surface that is filled in any order and painted in layers, with its elements found by array and index at
// once.
#pragma once

#include <array>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/surface.h"

namespace qrn {

enum class Layer { panel, overlays, grid, captions, lines, shapes, shadows, labels, titles, count };

class LayeredSurface {
 public:
  void clear();
  host::Surface& frame() { return surface_; }  // size and background
  const host::Surface& surface() const { return surface_; }
  // Elements go to their layer; the reference stays good until finish().
  host::Element& add(Layer layer, host::Element element);
  // Moves what was added since the last call into the surface, the lowest layer first.
  void finish();
  host::Element* find(const std::string& array, int index);  // null when there is none
  // All elements of an array by index; null where there is none. Good until the next finish() or clear().
  const std::vector<host::Element*>& array(const std::string& name) const;
  int count(const std::string& array) const;  // highest index + 1, 0 for an unknown array

 private:
  void enter(host::Element& element);

  host::Surface surface_;
  std::array<std::deque<host::Element>, static_cast<std::size_t>(Layer::count)> layers_;
  std::unordered_map<std::string, std::vector<host::Element*>> index_;
};

}  // namespace qrn
