#include "support/drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "support/cases.h"

namespace qrn::test {

namespace {

std::string twips(double length) {
  return std::to_string(std::lround(length));
}

std::string hex(std::int32_t colour) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(colour) & 0xffU,
                (static_cast<unsigned>(colour) >> 8U) & 0xffU,
                (static_cast<unsigned>(colour) >> 16U) & 0xffU);
  return text;
}

std::string share(double number) {
  char text[16];
  std::snprintf(text, sizeof text, "%.4g", number);
  return text;
}

const char* layerName(host::Layer layer) {
  static const char* const names[] = {"background", "overlays", "boundaries", "grid",    "bars",   "axes",
                                      "circles",    "lines",    "blobs",      "shadows", "ghosts", "keys",
                                      "captions",   "titles",   "panel",      "menus"};
  return names[static_cast<std::size_t>(layer)];
}

std::string typeOf(const host::Element& e) {
  static const char* const aligned[] = {"", " right", " centred"};
  return " " + e.font.name + " " + share(e.font.size) + (e.font.bold ? " bold" : "") +
         (e.font.italic ? " italic" : "") + (e.font.underline ? " underlined" : "") +
         aligned[static_cast<int>(e.align)] + (e.wordWrap ? " wrapped" : "");
}

std::string fillOf(const host::Element& e) {
  return " on " + hex(e.backColour) + (e.gradient ? " to " + hex(e.backColourEnd) : "") +
         (e.opacity < 1 ? " at " + share(e.opacity) : "") +
         (e.fill == host::Fill::solid ? "" : " fill " + std::to_string(static_cast<int>(e.fill)));
}

std::string edgeOf(const host::Element& e) {
  const std::string round =
      e.cornerRadius > 0 ? " round " + twips(e.cornerRadius) +
                               (e.roundOneSide ? " at " + std::to_string(static_cast<int>(e.toward)) : "")
                         : "";
  const std::string ring = e.ringWidth > 0 ? " ring " + twips(e.ringWidth) + " " + hex(e.ringColour) : "";
  return round + ring + (e.borderStyle == 3 ? " dotted" : "");
}

// What the elements of an array mostly have in common.
std::string lookOf(const host::Element& e) {
  using Kind = host::Element::Kind;
  if (e.kind == Kind::label)
    return " " + hex(e.colour) + typeOf(e) + (e.opaque ? fillOf(e) + edgeOf(e) : "");
  if (e.kind == Kind::line)
    return " line " + hex(e.colour) + " wide " + twips(e.borderWidth) + edgeOf(e);
  static const char* const kinds[] = {"", "", " rectangle", " ellipse", " triangle", " code"};
  const std::string outline = e.bordered ? " in " + hex(e.colour) + " wide " + twips(e.borderWidth) : "";
  const std::string toward = e.kind == Kind::triangle ? " " + std::to_string(static_cast<int>(e.toward)) : "";
  return kinds[static_cast<int>(e.kind)] + toward + fillOf(e) + outline + edgeOf(e);
}

std::string placeOf(const host::Element& e) {
  if (e.kind == host::Element::Kind::line)
    return twips(e.x1) + "," + twips(e.y1) + " " + twips(e.x2) + "," + twips(e.y2);
  return twips(e.left) + "," + twips(e.top) + " " + twips(e.width) + "x" + twips(e.height);
}

std::string groundOf(const host::Surface& surface) {
  const std::string colours =
      hex(surface.background) + (surface.gradient ? " to " + hex(surface.backgroundEnd) : "");
  return "ground " + twips(surface.width) + "x" + twips(surface.height) + " " +
         (surface.backgroundFile.empty() ? colours : surface.backgroundFile);
}

void tellArray(const host::ElementArray& array, std::string& all) {
  all += array.name() + " " + layerName(array.layer()) + "\n";
  std::string last;
  int hidden = 0;
  for (const host::Element& e : array) {
    if (!e.visible) {
      ++hidden;
      continue;
    }
    const std::string look = lookOf(e);
    all += "  " + std::to_string(e.index) + (e.item == host::kNoItem ? "" : "=" + std::to_string(e.item)) +
           " " + placeOf(e) + (e.caption.empty() ? "" : " \"" + escaped(e.caption) + "\"") +
           (e.toolTip.empty() || e.toolTip == e.caption ? "" : " tip \"" + escaped(e.toolTip) + "\"") +
           (look == last ? "" : look) + "\n";
    last = look;
  }
  if (hidden > 0)
    all += "  " + std::to_string(hidden) + " hidden\n";
}

}  // namespace

std::string drawingOf(const host::Surface& surface, const std::vector<std::string>& arrays) {
  std::string all = arrays.empty() ? groundOf(surface) + "\n" : "";
  for (const host::ElementArray& array : surface.arrays())
    if (array.size() > 0 &&
        (arrays.empty() || std::find(arrays.begin(), arrays.end(), array.name()) != arrays.end()))
      tellArray(array, all);
  return all;
}

}  // namespace qrn::test
