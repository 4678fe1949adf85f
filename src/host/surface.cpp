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

namespace {

constexpr int kBalanceSteps = 7;  // halvings of the way from the narrowest to the given width

// What stays together on a line, and whether a blank goes before it when it follows another.
struct Piece {
  std::string text;
  bool blankBefore;
};

std::vector<Piece> piecesOf(const std::string& paragraph) {
  const TextMeasure& measure = *host().textMeasure;
  std::vector<Piece> pieces;
  std::istringstream words(paragraph);
  for (std::string word; words >> word;) {
    std::size_t from = 0;
    for (const std::size_t to : measure.breaksInside(word)) {
      pieces.push_back({word.substr(from, to - from), from == 0});
      from = to;
    }
    pieces.push_back({word.substr(from), from == 0});
  }
  return pieces;
}

double widthOf(const std::string& line, const SurfaceFont& font) {
  return host().textMeasure->TextWidth(line, font.name, font.size, font.bold, font.italic);
}

std::vector<std::string> filledLines(const std::vector<Piece>& pieces, const SurfaceFont& font,
                                     double width) {
  std::vector<std::string> lines(1);
  for (const Piece& piece : pieces) {
    std::string& line = lines.back();
    const std::string longer = line.empty() ? piece.text : line + (piece.blankBefore ? " " : "") + piece.text;
    if (line.empty() || widthOf(longer, font) <= width)
      line = longer;
    else
      lines.push_back(piece.text);
  }
  return lines;
}

// The same number of lines in the least width that gives it.
std::vector<std::string> evenLines(const std::vector<Piece>& pieces, const SurfaceFont& font, double width) {
  std::vector<std::string> best = filledLines(pieces, font, width);
  if (best.size() < 2)
    return best;
  double low = width / 2, high = width;
  for (int step = 0; step < kBalanceSteps; ++step) {
    const double middle = (low + high) / 2;
    std::vector<std::string> lines = filledLines(pieces, font, middle);
    if (lines.size() > best.size()) {
      low = middle;
    } else {
      best = std::move(lines);
      high = middle;
    }
  }
  return best;
}

template <class BreakParagraph>
std::vector<std::string> brokenText(const std::string& text, const BreakParagraph& broken) {
  std::vector<std::string> lines;
  std::istringstream paragraphs(text);
  for (std::string paragraph; std::getline(paragraphs, paragraph);) {
    if (!paragraph.empty() && paragraph.back() == '\r')
      paragraph.pop_back();
    for (std::string& line : broken(piecesOf(paragraph))) lines.push_back(std::move(line));
  }
  if (lines.empty())
    lines.emplace_back();
  return lines;
}

}  // namespace

std::vector<std::string> wrapText(const std::string& text, const SurfaceFont& font, double width) {
  return brokenText(text, [&](const auto& pieces) { return filledLines(pieces, font, width); });
}

std::vector<std::string> wrapBalanced(const std::string& text, const SurfaceFont& font, double width) {
  return brokenText(text, [&](const auto& pieces) { return evenLines(pieces, font, width); });
}

}  // namespace qrn::host
