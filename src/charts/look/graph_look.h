// What every graph shares: the scale of its type, colours that can be read, text fitted to its slot, the
// background.
#pragma once

#include <cstdint>
#include <string>

#include "core/records.h"
#include "host/surface.h"
#include "look/colour.h"
#include "look/theme.h"

namespace qrn {

inline constexpr double kTwipsPerPixel = 15;
inline constexpr double kTwipsPerPoint = 20;
inline constexpr std::int32_t kUntouched = 0xffffff;  // a colour that nobody has chosen
using look::blend;
using look::contrastRatio;
using look::kShapeContrast;
using look::kTextContrast;

// Sizes in the exercise are told for a screen of 1024x768; a graph of `width` x `height` twips draws them
// larger or smaller by this factor: the smaller of both ratios, so that nothing outgrows its place.
double graphScale(double width, double height);

// How text stands out: light on dark or dark on light, with a panel of this opacity between background and
// graph where the background alone would not give the contrast of text.
struct GraphLook {
  bool lightText = true;
  std::int32_t panelColour = 0;
  double panelOpacity = 0;
  double darkest = 0, lightest = 0;  // luminance that can lie behind text, panel included
  look::Theme theme;                 // for what can lie behind, at its worst
  bool operator==(const GraphLook&) const = default;
};
GraphLook chooseLook(const host::Surface& background);

// `colour` itself when it has `ratio` against everything behind it, else the nearest tint towards white (dark
// looks) or black (light looks) that has.
std::int32_t readableColour(std::int32_t colour, const GraphLook& look, double ratio = kTextContrast);

// The colour of grid lines: half faded into what is behind, so that the data stands out.
std::int32_t softened(std::int32_t colour, const GraphLook& look);

// Black or white, whichever reads better on `colour`.
std::int32_t textOn(std::int32_t colour);

// Puts the background behind a graph: `file` when it exists, else the picture of the slide, the exercise's
// own picture, or one colour: that of the slides, else the exercise's two colours.
void setGraphBackground(host::Surface& surface, const std::string& file);

// A font that the exercise keeps: its family and style are obeyed; its size where it differs from the
// untouched one, never below the floor of what is projected, else the theme's for that height in twips.
host::SurfaceFont themedFont(const FontRecord& own, double untouched, look::Size size, double surfaceHeight,
                             bool bold);

// The panel of a look, "graphPanel": over the whole surface, or over the slide's picture inside the margins
// with soft edges, so that stripes and logos there stay clean. Nothing when the look needs none.
void addPanel(host::Surface& surface, const GraphLook& look);

double textWidth(const std::string& text, const host::SurfaceFont& font);
double lineHeight(const host::SurfaceFont& font);
// The top of a one-line label whose capitals have their middle at `y`, or whose baseline is there: texts of
// different sizes stand in one row.
double topForMiddle(double y, const host::SurfaceFont& font);
double topForBaseline(double y, const host::SurfaceFont& font);

// `text` on one line, cut to `width` twips with "..." at its end; "" when not even that fits.
std::string cutToWidth(const std::string& text, const host::SurfaceFont& font, double width);

// `text` broken into lines inside `width` x `height`: shrinks the font down to `smallest` points, then cuts
// by
// "...". The caption holds the line ends.
struct FittedText {
  std::string caption;
  host::SurfaceFont font;
  double width = 0, height = 0;  // of the text as set
};
FittedText fitText(const std::string& text, host::SurfaceFont font, double width, double height,
                   double smallest);

}  // namespace qrn
