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
  const std::vector<host::Element*>& elements = this->array(array);
  return index >= 0 && static_cast<std::size_t>(index) < elements.size()
             ? elements[static_cast<std::size_t>(index)]
             : nullptr;
}

const std::vector<host::Element*>& LayeredSurface::array(const std::string& name) const {
  static const std::vector<host::Element*> kNone;
  const auto it = index_.find(name);
  return it == index_.end() ? kNone : it->second;
}

int LayeredSurface::count(const std::string& array) const {
  return static_cast<int>(this->array(array).size());
}

}  // namespace qrn
