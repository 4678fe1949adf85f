// Positioned text, lines and shapes: what every graph is made of. Graphs build a Surface once; the one
// renderer draws it for the window, for the picture file and for the picture test. All lengths are twips, 15
// to a pixel.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <string>
#include <vector>

namespace qrn::host {

struct SurfaceFont {
  std::string name = "Arial";
  double size = 12;  // points
  bool bold = false;
  bool italic = false;
  bool underline = false;
};

enum class Align { left = 0, right = 1, centre = 2 };

enum class Toward { right, down, left, up };  // where a triangle points

// How shapes are filled, by the numbers that exercises store.
enum class Fill {
  solid,
  transparent,
  horizontalLine,
  verticalLine,
  upwardDiagonal,
  downwardDiagonal,
  cross,
  diagonalCross
};

// Layers of a surface in painting order, the first at the back.
enum class Layer {
  background,
  overlays,
  boundaries,
  grid,
  bars,
  axes,
  circles,
  lines,
  blobs,
  shadows,
  ghosts,
  keys,
  captions,
  titles,
  panel,
  menus
};

inline constexpr int kNoItem = -1;

struct Element {
  enum class Kind { label, line, rectangle, ellipse, triangle, code };
  Kind kind = Kind::label;
  int index = 0;       // place in its array
  int item = kNoItem;  // ID of the item that it stands for
  bool visible = true;

  // all but lines
  double left = 0, top = 0, width = 0, height = 0;
  // line
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;

  std::string caption;  // of labels; what a code says to a camera
  std::string toolTip;
  SurfaceFont font;
  Align align = Align::left;
  bool wordWrap = false;        // lines break at blanks to stay inside `width`
  bool opaque = false;          // labels: fill `backColour` behind the text; round with `cornerRadius`
  std::int32_t colour = 0;      // text, line or border; red lowest
  std::int32_t backColour = 0;  // fill of shapes and opaque labels
  Fill fill = Fill::solid;      // shapes; patterns are drawn in backColour and let through what is behind
  bool gradient = false;        // shapes: the fill runs from backColour at the top to backColourEnd
  std::int32_t backColourEnd = 0;
  double opacity = 1.0;       // of the fill
  double borderWidth = 15;    // lines and shapes
  bool bordered = true;       // shapes: an outline in `colour`
  int borderStyle = 1;        // 1 solid, 3 dotted
  double cornerRadius = 0;    // of rectangles and opaque labels; at most half of the shorter side is taken
  bool roundOneSide = false;  // of rectangles: the corners towards `toward` alone are round
  double ringWidth = 0;       // a ring around a round opaque label, outside of its box
  std::int32_t ringColour = 0;
  Toward toward = Toward::right;  // triangles, rectangles round on one side

  // A key: an opaque label with round corners, its capitals in the middle of its box.
  bool isBadge() const { return kind == Kind::label && opaque && cornerRadius > 0; }
  double right() const { return left + width; }
  double bottom() const { return top + height; }
};

// The elements of one name, in painting order. References stay good while elements are added.
class ElementArray {
 public:
  ElementArray(std::string name, Layer layer) : name_(std::move(name)), layer_(layer) {}
  const std::string& name() const { return name_; }
  Layer layer() const { return layer_; }
  Element& add(int index, Element element);
  Element* find(int index);  // null when there is none
  const Element* find(int index) const { return const_cast<ElementArray*>(this)->find(index); }
  int count() const { return static_cast<int>(places_.size()); }  // highest index + 1

  auto begin() { return elements_.begin(); }
  auto end() { return elements_.end(); }
  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }
  std::size_t size() const { return elements_.size(); }
  const Element& operator[](std::size_t place) const { return elements_[place]; }

 private:
  std::string name_;
  Layer layer_;
  std::deque<Element> elements_;
  std::vector<int> places_;  // by index, -1 where there is none
};

// What stands behind every element.
struct Ground {
  std::int32_t background = 0;    // painted when no picture is set
  std::string backgroundFile;     // picture stretched over the surface; "" for none
  std::int32_t pictureTone = -1;  // colour that most of that picture has; -1 when not known
  bool gradient = false;          // from `background` at the top to `backgroundEnd` at the bottom
  std::int32_t backgroundEnd = 0;
  bool operator==(const Ground&) const = default;
};

class Surface : public Ground {
 public:
  double width = 0, height = 0;  // twips

  // The array of that name; made in `layer`, in front of those there already, when it is not there yet.
  ElementArray& array(const std::string& name, Layer layer);
  ElementArray* find(const std::string& name);  // null when there is none
  const ElementArray* find(const std::string& name) const { return const_cast<Surface*>(this)->find(name); }
  Element* find(const std::string& name, int index);
  const Element* find(const std::string& name, int index) const {
    return const_cast<Surface*>(this)->find(name, index);
  }
  Element& add(Layer layer, const std::string& name, int index, Element element) {
    return array(name, layer).add(index, std::move(element));
  }
  void remove(const std::string& name);
  void clear() { arrays_.clear(); }

  std::list<ElementArray>& arrays() { return arrays_; }  // in painting order
  const std::list<ElementArray>& arrays() const { return arrays_; }
  std::size_t elementCount() const;

 private:
  std::list<ElementArray> arrays_;
};

// The visible label or shape in front at a place, twips, among those that `counts` takes; lines are no
// target.
struct Hit {
  const ElementArray* array = nullptr;
  const Element* element = nullptr;
  explicit operator bool() const { return element != nullptr; }
};
using Counts = std::function<bool(const ElementArray&, const Element&)>;
Hit hitTest(const Surface& surface, double x, double y, const Counts& counts = {});

// Colours are 32-bit values with red lowest.
constexpr std::int32_t RGB(int r, int g, int b) {
  return r | (g << 8) | (b << 16);
}

// Words of `text` broken into lines that fit `width` twips in that font; existing line ends stay.
std::vector<std::string> wrapText(const std::string& text, const SurfaceFont& font, double width);
// As many lines as that, but each paragraph's lines as even in length as its words allow.
std::vector<std::string> wrapBalanced(const std::string& text, const SurfaceFont& font, double width);

}  // namespace qrn::host
