// Slanting lines with smooth edges. The toolkit needs some 45 microseconds for one across the screen, and a
// graph may hold thousands.
#pragma once

#include <QPointF>
#include <QRect>
#include <QRgb>

namespace qrn::render {

// The pixels of an image of 32-bit opaque colours.
struct Pixels {
  QRgb* bits = nullptr;
  qsizetype stride = 0;  // pixels from one row to the next
  QRect all;
};

// A line of `width` pixels, at least one, inside `clip`. Its edges are blended by the part of each pixel that
// the line covers across its way; its ends are level with the pixel grid.
void drawThickLine(const Pixels& pixels, const QRect& clip, QPointF from, QPointF to, double width,
                   QRgb colour);

}  // namespace qrn::render
