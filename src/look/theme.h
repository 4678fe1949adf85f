// The one theme of everything that people see: colours, sizes and margins. It follows from the slide: whether
// the slide is dark or light chooses the palette, its own accent colour shows the data. No window, graph or
// page has a colour or a size of its own.
#pragma once

#include <cstdint>

namespace qrn::look {

// What the theme needs to know of the slide. -1: not known.
struct Slide {
  std::int32_t ground = -1;  // the colour that most of it has
  std::int32_t accent = -1;  // its own first accent colour
};

struct Theme {
  bool dark = true;
  std::int32_t ground = 0;
  std::int32_t text = 0, quiet = 0;     // quiet: captions, legends, what is said aside
  std::int32_t data = 0, dataRest = 0;  // the bar or key that matters, and the others
  std::int32_t highlight = 0, allWell = 0, alarm = 0;
  std::int32_t surface = 0, track = 0, grid = 0, axis = 0;  // opaque, as they look on the ground
  std::int32_t onData = 0, onHighlight = 0;                 // text on a key or bar of that colour
  bool operator==(const Theme&) const = default;
};

Theme themeFor(const Slide& slide);

// The ground of the theme where the slide tells none.
std::int32_t untoldGround(bool dark);

// Ink that reads on a key or a bar of any colour: the theme's light or dark one.
std::int32_t inkOn(std::int32_t colour);

// Sizes of projected text as parts of the screen's height: the em of the type.
enum class Size { item, word, label, floor };
double partOfHeight(Size size);
// The same in points of a surface of that height in twips, whole pixels upwards: type is drawn in whole
// pixels.
double points(Size size, double surfaceHeight);
// The next smaller size; the floor has none and stays.
Size smaller(Size size);

// What stays free at each side, as parts of width and height: stripes and logos of the slide stand there.
inline constexpr double kMarginX = 0.05, kMarginY = 0.04;

// Motion in milliseconds: bars and small things, items that travel.
inline constexpr int kQuick = 350, kTravel = 900;
// Slow in, slow out, of `part` 0 to 1.
double eased(double part);
// Fast in, slow out: for what only grows.
double easedOut(double part);

// A colour that the exercise keeps: obeyed where it differs from the untouched default, else the theme's.
inline std::int32_t chosenOr(std::int32_t stored, std::int32_t untouched, std::int32_t themes) {
  return stored == untouched ? themes : stored;
}

}  // namespace qrn::look
