// The caption of a label as lines that stand relative to its anchor: the left edge, the middle or the right
// edge of its box, by its alignment.
#pragma once

#include <QPainter>
#include <QRect>
#include <QString>
#include <vector>

#include "host/surface.h"
#include "render/mapping.h"

namespace qrn::render {

struct TextBlock {
  struct Line {
    QString text;
    double left = 0, baseline = 0;  // pixels from the anchor and from the label's top
  };
  std::vector<Line> lines;
  QRectF box;  // pixels, with room for what letters put outside of their advance
};

// Broken into lines as host::wrapText says where the label wraps, so host().textMeasure must be set.
TextBlock setText(const host::Element& label, double scale);
QPointF anchorOf(const host::Element& label, const Mapping& mapping);
void drawText(QPainter& painter, const TextBlock& block, const host::Element& label, double scale,
              QPointF anchor);

}  // namespace qrn::render
