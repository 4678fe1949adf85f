// Positioned text, lines and shapes: what every graph is made of. Graphs build a Surface once; the one
// renderer draws it for the window, for the picture file and for the picture test. All lengths are twips, 15
// to a pixel.
#pragma once

#include <cstdint>
#include <deque>
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

struct Element {
  enum class Kind { label, line, rectangle, ellipse };
  Kind kind = Kind::label;
  std::string array;  // name of the control array it belongs to
  int index = 0;      // place in that array
  bool visible = true;

  // label, rectangle, ellipse
  double left = 0, top = 0, width = 0, height = 0;
  // line
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;

  std::string caption;
  std::string toolTip;
  SurfaceFont font;
  Align align = Align::left;
  bool wordWrap = false;        // lines break at blanks to stay inside `width`
  bool opaque = false;          // labels: fill `backColour` behind the text
  std::int32_t colour = 0;      // text, line or border; red lowest
  std::int32_t backColour = 0;  // fill of shapes and opaque labels
  bool filled = true;           // shapes: filled with backColour
  bool gradient = false;        // shapes: the fill runs from backColour at the top to backColourEnd
  std::int32_t backColourEnd = 0;
  double opacity = 1.0;     // of the fill
  double borderWidth = 15;  // lines and shapes
  bool bordered = true;     // shapes: an outline in `colour`
  int borderStyle = 1;      // 1 solid, 3 dotted
};

// Elements in painting order, the first at the back. References stay good while elements are added.
class Surface {
 public:
  double width = 0, height = 0;   // twips
  std::int32_t background = 0;    // painted behind everything when no picture is set
  std::string backgroundFile;     // picture stretched over the surface; "" for none
  std::int32_t pictureTone = -1;  // colour that most of that picture has; -1 when not known
  bool gradient = false;          // from `background` at the top to `backgroundEnd` at the bottom
  std::int32_t backgroundEnd = 0;

  Element& add(Element element) { return elements_.emplace_back(std::move(element)); }
  std::deque<Element>& elements() { return elements_; }
  const std::deque<Element>& elements() const { return elements_; }
  Element* find(const std::string& array, int index);
  void clear() { elements_.clear(); }

 private:
  std::deque<Element> elements_;
};

// Colours are 32-bit values with red lowest.
constexpr std::int32_t RGB(int r, int g, int b) {
  return r | (g << 8) | (b << 16);
}

// Words of `text` broken into lines that fit `width` twips in that font; existing line ends stay.
std::vector<std::string> wrapText(const std::string& text, const SurfaceFont& font, double width);

}  // namespace qrn::host
