// Where a surface stands on its target: its proportions are kept and it stands in the middle.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSize>

#include "host/surface.h"

namespace qrn::render {

struct Mapping {
  double scale = 1;  // pixels of the target for a twip
  double left = 0, top = 0;

  // A surface without a size stands at 15 twips to a pixel.
  static Mapping of(const host::Surface& surface, QSizeF target);

  double x(double twips) const { return left + twips * scale; }
  double y(double twips) const { return top + twips * scale; }
  double length(double twips) const { return twips * scale; }
  QPointF point(double twipsX, double twipsY) const { return {x(twipsX), y(twipsY)}; }
  QRectF box(const host::Element& e) const {
    return {x(e.left), y(e.top), length(e.width), length(e.height)};
  }
  QPointF toTwips(QPointF pixels) const { return {(pixels.x() - left) / scale, (pixels.y() - top) / scale}; }
};

}  // namespace qrn::render
