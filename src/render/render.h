// The one painter: draws a surface of labels, lines and shapes for the window, the picture file and the
// tests.
#pragma once

#include <QImage>
#include <QPainter>
#include <QSize>
#include <string>

#include "host/surface.h"

namespace qrn::render {

// Draws the surface into the rectangle (0, 0, target) of the painter, in logical pixels. The background
// covers all of it; the elements keep their proportions and stand in the middle. Lines of wrapped labels
// break as host::wrapText says, so host().textMeasure must be set.
void renderSurface(const host::Surface& surface, QPainter& painter, QSize target);

QImage surfaceImage(const host::Surface& surface, QSize target);

// Writes a picture; the ending of the name tells the format: .png, .jpg, .jpeg (quality 75) or .svg. Other
// endings and files that cannot be written throw HostError.
void saveSurface(const host::Surface& surface, const std::string& file, int widthPx, int heightPx);

// A colour of the surface, red lowest; values with the top bit set name the classic system colours.
QColor toColour(std::int32_t colour);

}  // namespace qrn::render
