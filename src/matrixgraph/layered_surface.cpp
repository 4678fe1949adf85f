#include "matrixgraph/layered_surface.h"

namespace qrn {

void LayeredSurface::clear() {
  surface_.clear();
  index_.clear();
  for (auto& layer : layers_) layer.clear();
}

host::Element& LayeredSurface::add(Layer layer, host::Element element) {
  return layers_[static_cast<std::size_t>(layer)].emplace_back(std::move(element));
}

void LayeredSurface::finish() {
  for (auto& layer : layers_) {
    for (host::Element& element : layer) enter(surface_.add(std::move(element)));
    layer.clear();
  }
}

void LayeredSurface::enter(host::Element& element) {
  std::vector<host::Element*>& array = index_[element.array];
  const auto at = static_cast<std::size_t>(element.index);
  if (array.size() <= at)
    array.resize(at + 1);
  array[at] = &element;
}

host::Element* LayeredSurface::find(const std::string& array, int index) {
  const auto it = index_.find(array);
  if (it == index_.end() || index < 0 || static_cast<std::size_t>(index) >= it->second.size())
    return nullptr;
  return it->second[static_cast<std::size_t>(index)];
}

int LayeredSurface::count(const std::string& array) const {
  const auto it = index_.find(array);
  return it == index_.end() ? 0 : static_cast<int>(it->second.size());
}

}  // namespace qrn
