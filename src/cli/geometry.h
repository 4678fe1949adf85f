// The place of every element of a graph, for whoever checks or re-draws it.
#pragma once

#include <string>

namespace qrn::host {
class Surface;
}

namespace qrn::cli {

// JSON: {"width","height","elements":[{"array","index","caption","visible","colour", and left, top, width,
// height or x1, y1, x2, y2}]}, all lengths in twips, 15 to a pixel; colours "#rrggbb".
std::string geometryJson(const host::Surface& surface);

}  // namespace qrn::cli
