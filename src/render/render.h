// The one painter: draws a surface of labels, lines and shapes for the window (see surface_canvas.h), the
// picture file and the tests.
#pragma once

#include <QImage>
#include <QSize>
#include <string>

#include "host/surface.h"
#include "render/colours.h"

namespace qrn::render {

// The background covers all of the picture; the elements keep their proportions and stand in the middle.
// Lines of wrapped labels break as host::wrapText says, so host().textMeasure must be set.
QImage surfaceImage(const host::Surface& surface, QSize target);

// Writes a picture; the ending of the name tells the format: .png, .jpg, .jpeg (quality 75) or .svg. Other
// endings and files that cannot be written throw HostError.
void saveSurface(const host::Surface& surface, const std::string& file, int widthPx, int heightPx);

}  // namespace qrn::render
