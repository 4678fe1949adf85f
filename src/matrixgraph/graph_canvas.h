// What one drawing pass of the matrix graph works on: the surface, the plot area and the fonts at the form's
// scale.
#pragma once

#include <string>

#include "charts/look/graph_look.h"
#include "host/surface.h"
#include "matrixgraph/plot_area.h"

namespace qrn {

// Superscripts behind the keys of pairs 2, 3 and 4 (Chr 185, 178 and 179 of the classic code page), "" for
// pair 1.
inline constexpr const char* kPairMarks[] = {"", "\u00b9", "\u00b2", "\u00b3"};

struct GraphCanvas {
  host::Surface surface;
  PlotArea area;
  GraphLook look;
  double scale = 1;  // of type and line widths, 1 at 1024x768
  host::SurfaceFont labelFont, captionFont, titleFont, axisTitleFont;
  double keyWidth = 0;   // of the text of the widest key that is expected, twips
  double keyHeight = 0;  // of the disc that a key stands on, and its least width

  double width() const { return surface.width; }
  double height() const { return surface.height; }
  const look::Theme& theme() const { return look.theme; }
  double px(double pixels) const { return pixels * kTwipsPerPixel * scale; }

  // Empties the surface for a form of that size and sets fonts, background, look and plot area. `keys`: how
  // many are expected on the plot.
  void begin(double formWidth, double formHeight, int keys);
};

host::Element makeLabel(const std::string& caption, const host::SurfaceFont& font);
host::Element makeLine(double x1, double y1, double x2, double y2);

}  // namespace qrn
