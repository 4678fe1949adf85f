#include "host/surface.h"

#include <algorithm>
#include <sstream>

#include "host/host.h"
#include "host/system.h"

namespace qrn::host {

Element& ElementArray::add(int index, Element element) {
  const auto at = static_cast<std::size_t>(index);
  if (places_.size() <= at)
    places_.resize(at + 1, -1);
  places_[at] = static_cast<int>(elements_.size());
  element.index = index;
  return elements_.emplace_back(std::move(element));
}

Element* ElementArray::find(int index) {
  if (index < 0 || index >= count() || places_[static_cast<std::size_t>(index)] < 0)
    return nullptr;
  return &elements_[static_cast<std::size_t>(places_[static_cast<std::size_t>(index)])];
}

ElementArray* Surface::find(const std::string& name) {
  const auto found = std::find_if(arrays_.begin(), arrays_.end(),
                                  [&](const ElementArray& array) { return array.name() == name; });
  return found == arrays_.end() ? nullptr : &*found;
}

Element* Surface::find(const std::string& name, int index) {
  ElementArray* array = find(name);
  return array ? array->find(index) : nullptr;
}

ElementArray& Surface::array(const std::string& name, Layer layer) {
  if (ElementArray* there = find(name))
    return *there;
  const auto inFront = std::find_if(arrays_.begin(), arrays_.end(),
                                    [&](const ElementArray& array) { return array.layer() > layer; });
  return *arrays_.emplace(inFront, name, layer);
}

void Surface::remove(const std::string& name) {
  arrays_.remove_if([&](const ElementArray& array) { return array.name() == name; });
}

std::size_t Surface::elementCount() const {
  std::size_t count = 0;
  for (const ElementArray& array : arrays_) count += array.size();
  return count;
}

static bool covers(const Element& e, double x, double y) {
  if (!e.visible || e.kind == Element::Kind::line || x < e.left || x > e.right() || y < e.top ||
      y > e.bottom())
    return false;
  if (e.kind != Element::Kind::ellipse || e.width <= 0 || e.height <= 0)
    return true;
  const double across = (x - e.left) / e.width * 2 - 1, up = (y - e.top) / e.height * 2 - 1;
  return across * across + up * up <= 1;
}

Hit hitTest(const Surface& surface, double x, double y, const Counts& counts) {
  for (auto array = surface.arrays().rbegin(); array != surface.arrays().rend(); ++array)
    for (std::size_t i = array->size(); i-- > 0;)
      if (const Element& element = (*array)[i]; covers(element, x, y) && (!counts || counts(*array, element)))
        return {&*array, &element};
  return {};
}

std::vector<std::string> wrapText(const std::string& text, const SurfaceFont& font, double width) {
  const TextMeasure& measure = *host().textMeasure;
  const auto fits = [&](const std::string& line) {
    return measure.TextWidth(line, font.name, font.size, font.bold, font.italic) <= width;
  };
  std::vector<std::string> lines;
  std::istringstream paragraphs(text);
  for (std::string paragraph; std::getline(paragraphs, paragraph);) {
    if (!paragraph.empty() && paragraph.back() == '\r')
      paragraph.pop_back();
    std::istringstream words(paragraph);
    std::string line;
    const auto add = [&](const char* blank, const std::string& piece) {
      const std::string longer = line.empty() ? piece : line + blank + piece;
      if (line.empty() || fits(longer)) {
        line = longer;
      } else {
        lines.push_back(line);
        line = piece;
      }
    };
    for (std::string word; words >> word;) {
      std::size_t from = 0;
      for (const std::size_t to : measure.breaksInside(word)) {
        add(from == 0 ? " " : "", word.substr(from, to - from));
        from = to;
      }
      add(from == 0 ? " " : "", word.substr(from));
    }
    lines.push_back(line);
  }
  if (lines.empty())
    lines.emplace_back();
  return lines;
}

}  // namespace qrn::host
