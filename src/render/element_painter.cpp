#include "render/element_painter.h"

#include <QPainterPath>
#include <algorithm>
#include <array>
#include <cmath>

#include "render/colours.h"
#include "render/fonts.h"
#include "render/qr_code.h"
#include "render/text_block.h"

namespace qrn::render {

namespace {

using host::Element;

constexpr int kDotted = 3;  // Element::borderStyle

QColor fillOf(const Element& e, std::int32_t colour) {
  QColor fill = toColour(colour);
  fill.setAlphaF(static_cast<float>(e.opacity));
  return fill;
}

Qt::BrushStyle brushStyle(host::Fill fill) {
  static constexpr std::array<Qt::BrushStyle, 8> styles{
      Qt::SolidPattern, Qt::NoBrush,      Qt::HorPattern,   Qt::VerPattern,
      Qt::BDiagPattern, Qt::FDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
  return styles[static_cast<std::size_t>(fill)];
}

// At least one pixel of the target wide, so that fine lines survive a small picture.
QPen penOf(const Element& e, const Mapping& mapping) {
  QPen pen(toColour(e.colour), std::max(mapping.length(e.borderWidth), 1.0));
  pen.setStyle(e.borderStyle == kDotted ? Qt::DotLine : Qt::SolidLine);
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(Qt::MiterJoin);
  return pen;
}

bool isStraight(const Element& e) {
  return e.x1 == e.x2 || e.y1 == e.y2;
}

// Upright and level lines fill whole pixels of the target, so that equal lines look equal.
QRectF straightBar(const Element& e, const Mapping& mapping) {
  const QRectF span = QRectF(mapping.point(e.x1, e.y1), mapping.point(e.x2, e.y2)).normalized();
  const double thick = std::max(1.0, std::round(mapping.length(e.borderWidth)));
  return {std::round(span.left() - thick / 2), std::round(span.top() - thick / 2),
          std::round(span.width()) + thick, std::round(span.height()) + thick};
}

QPolygonF triangleIn(const QRectF& box, host::Toward toward) {
  const QPointF middle = box.center();
  switch (toward) {
    case host::Toward::right:
      return {{box.topLeft(), {box.right(), middle.y()}, box.bottomLeft()}};
    case host::Toward::left:
      return {{box.topRight(), {box.left(), middle.y()}, box.bottomRight()}};
    case host::Toward::down:
      return {{box.topLeft(), {middle.x(), box.bottom()}, box.topRight()}};
    case host::Toward::up:
      break;
  }
  return {{box.bottomLeft(), {middle.x(), box.top()}, box.bottomRight()}};
}

// On whole pixels, so that its long sides are sharp.
void drawRounded(QPainter& painter, const QRectF& box, const Element& e, double radius) {
  const QRectF whole(QPointF(std::round(box.left()), std::round(box.top())),
                     QPointF(std::round(box.right()), std::round(box.bottom())));
  const double most = std::min({radius, whole.width() / 2, whole.height() / 2});
  if (!e.roundOneSide) {
    painter.drawRoundedRect(whole, most, most);
    return;
  }
  QRectF square = whole;  // the half away from the round side
  const host::Toward side = e.toward;
  if (side == host::Toward::right || side == host::Toward::left)
    square.setWidth(whole.width() / 2);
  else
    square.setHeight(whole.height() / 2);
  if (side == host::Toward::left)
    square.moveRight(whole.right());
  if (side == host::Toward::up)
    square.moveBottom(whole.bottom());
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  path.addRoundedRect(whole, most, most);
  path.addRect(square);
  painter.drawPath(path);
}

QPoint placeOf(const Element& e, const Mapping& mapping, const KeptPicture& kept) {
  const bool text = e.kind == Element::Kind::label && !e.isBadge();
  const QPointF place = text ? anchorOf(e, mapping) : mapping.box(e).topLeft();
  return place.toPoint() + kept.offset;
}

}  // namespace

void drawShape(QPainter& painter, const Element& e, const Mapping& mapping) {
  const QRectF box = mapping.box(e);
  painter.setRenderHint(QPainter::Antialiasing, e.kind != Element::Kind::rectangle || e.cornerRadius > 0);
  painter.setPen(e.bordered ? penOf(e, mapping) : QPen(Qt::NoPen));
  if (e.gradient && e.fill == host::Fill::solid) {
    QLinearGradient run(box.topLeft(), box.bottomLeft());
    run.setColorAt(0, fillOf(e, e.backColour));
    run.setColorAt(1, fillOf(e, e.backColourEnd));
    painter.setBrush(run);
  } else {
    painter.setBrush(QBrush(fillOf(e, e.backColour), brushStyle(e.fill)));
  }
  if (e.kind == Element::Kind::ellipse)
    painter.drawEllipse(box);
  else if (e.kind == Element::Kind::triangle)
    painter.drawConvexPolygon(triangleIn(box, e.toward));
  else if (e.cornerRadius > 0)
    drawRounded(painter, box, e, mapping.length(e.cornerRadius));
  else
    painter.drawRect(box);
}

void drawBadge(QPainter& painter, const Element& e, const Mapping& mapping) {
  const QRectF box = mapping.box(e);
  const double ring = mapping.length(e.ringWidth);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const auto round = [&](const QRectF& around, std::int32_t colour, double wider) {
    const double radius =
        std::min({mapping.length(e.cornerRadius) + wider, around.width() / 2, around.height() / 2});
    painter.setBrush(fillOf(e, colour));
    painter.drawRoundedRect(around, radius, radius);
  };
  if (ring > 0)
    round(box.adjusted(-ring, -ring, ring, ring), e.ringColour, ring);
  round(box, e.backColour, 0);
  const host::SurfaceFont& font = e.font;
  const double capital = capHeight(font.name, font.size, font.bold, font.italic) * mapping.scale;
  const double up = ascent(font.name, font.size, font.bold, font.italic) * mapping.scale;
  QPointF anchor = anchorOf(e, mapping);
  anchor.setY(box.center().y() + capital / 2 - up);
  drawText(painter, setText(e, mapping.scale), e, mapping.scale, anchor);
}

// Whole pixels for each module, in the middle of its box.
static void drawCode(QPainter& painter, const Element& e, const Mapping& mapping) {
  const QRectF box = mapping.box(e);
  const QImage code = qrCode(toQt(e.caption), static_cast<int>(std::min(box.width(), box.height())));
  if (!code.isNull())
    painter.drawImage((box.center() - QRectF(code.rect()).center()).toPoint(), code);
}

void ElementPainter::paint(const Element& e, const KeptPicture* kept) {
  switch (e.kind) {
    case Element::Kind::label:
      label(e, kept);
      break;
    case Element::Kind::line:
      line(e);
      break;
    case Element::Kind::code:
      drawCode(painter_, e, mapping_);
      break;
    case Element::Kind::rectangle:
    case Element::Kind::ellipse:
    case Element::Kind::triangle:
      if (kept != nullptr)
        painter_.drawImage(placeOf(e, mapping_, *kept), kept->image);
      else
        drawShape(painter_, e, mapping_);
      break;
  }
}

void ElementPainter::label(const Element& e, const KeptPicture* kept) {
  if (e.isBadge()) {
    if (kept != nullptr)
      painter_.drawImage(placeOf(e, mapping_, *kept), kept->image);
    else
      drawBadge(painter_, e, mapping_);
    return;
  }
  if (e.opaque) {
    painter_.setRenderHint(QPainter::Antialiasing, false);
    painter_.fillRect(mapping_.box(e), fillOf(e, e.backColour));
  }
  if (kept != nullptr)
    painter_.drawImage(placeOf(e, mapping_, *kept), kept->image);
  else if (!e.caption.empty())
    drawText(painter_, setText(e, mapping_.scale), e, mapping_.scale, anchorOf(e, mapping_));
}

void ElementPainter::line(const Element& e) {
  if (isStraight(e)) {
    straightLine(e);
    return;
  }
  const QPointF from = mapping_.point(e.x1, e.y1), to = mapping_.point(e.x2, e.y2);
  if (pixels_.bits != nullptr && e.borderStyle != kDotted) {
    drawThickLine(pixels_, clip_, from, to, mapping_.length(e.borderWidth), toColour(e.colour).rgb());
    return;
  }
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(penOf(e, mapping_));
  painter_.drawLine(from, to);
}

void ElementPainter::straightLine(const Element& e) {
  const QRectF bar = straightBar(e, mapping_);
  painter_.setRenderHint(QPainter::Antialiasing, false);
  if (e.borderStyle != kDotted) {
    painter_.fillRect(bar, toColour(e.colour));
    return;
  }
  const double thick = std::min(bar.width(), bar.height());
  const QPointF half(thick / 2, thick / 2);
  painter_.setPen(QPen(toColour(e.colour), thick, Qt::DotLine, Qt::FlatCap));
  painter_.drawLine(bar.topLeft() + half, bar.bottomRight() - half);
}

QRect boundsOf(const Element& e, const Mapping& mapping, const KeptPicture* kept) {
  constexpr int kSpread = 2;  // of smooth edges and of rounding
  const double edge = mapping.length(e.isBadge() ? e.ringWidth : e.borderWidth / 2) + kSpread;
  const QMarginsF margins(edge, edge, edge, edge);
  const bool line = e.kind == Element::Kind::line;
  const QRectF box =
      line ? QRectF(mapping.point(e.x1, e.y1), mapping.point(e.x2, e.y2)).normalized() : mapping.box(e);
  const QRect all = box.marginsAdded(margins).toAlignedRect();
  if (kept == nullptr && (e.isBadge() || e.kind != Element::Kind::label || e.caption.empty()))
    return all;
  const QRect written = kept != nullptr
                            ? QRect(placeOf(e, mapping, *kept), kept->image.size())
                            : setText(e, mapping.scale).box.translated(anchorOf(e, mapping)).toAlignedRect();
  return e.opaque ? all | written : written;
}

}  // namespace qrn::render
