#include "cli/geometry.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "host/surface.h"

namespace qrn::cli {

namespace {

std::string colourText(std::int32_t colour) {
  char text[16];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", static_cast<unsigned>(colour & 0xff),
                static_cast<unsigned>((colour >> 8) & 0xff), static_cast<unsigned>((colour >> 16) & 0xff));
  return text;
}

nlohmann::ordered_json elementJson(const std::string& array, const host::Element& element) {
  nlohmann::ordered_json json;
  json["array"] = array;
  json["index"] = element.index;
  json["caption"] = element.caption;
  if (element.kind == host::Element::Kind::line) {
    json["x1"] = element.x1;
    json["y1"] = element.y1;
    json["x2"] = element.x2;
    json["y2"] = element.y2;
  } else {
    json["left"] = element.left;
    json["top"] = element.top;
    json["width"] = element.width;
    json["height"] = element.height;
  }
  json["visible"] = element.visible;
  const bool filledShape = element.kind != host::Element::Kind::label &&
                           element.kind != host::Element::Kind::line &&
                           element.fill != host::Fill::transparent;
  json["colour"] = colourText(filledShape ? element.backColour : element.colour);
  return json;
}

}  // namespace

std::string geometryJson(const host::Surface& surface) {
  nlohmann::ordered_json json;
  json["width"] = surface.width;
  json["height"] = surface.height;
  json["elements"] = nlohmann::ordered_json::array();
  for (const host::ElementArray& array : surface.arrays())
    for (const host::Element& element : array) json["elements"].push_back(elementJson(array.name(), element));
  return json.dump(1) + "\n";
}

}  // namespace qrn::cli
