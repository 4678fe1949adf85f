// Draws one element of a surface at a time.
#pragma once

#include <QPainter>
#include <QRect>

#include "host/surface.h"
#include "render/mapping.h"
#include "render/picture_store.h"
#include "render/thick_line.h"

namespace qrn::render {

// Dots of a picture's metre: 96 to an inch.
inline constexpr int kDotsPerInch = 96, kDotsPerMetre = 3780;

void drawShape(QPainter& painter, const host::Element& shape, const Mapping& mapping);

// A label with a round ground and a ring: see host::Element::isBadge.
void drawBadge(QPainter& painter, const host::Element& badge, const Mapping& mapping);

class ElementPainter {
 public:
  // Vector targets and whatever else a painter can draw on.
  ElementPainter(QPainter& painter, const Mapping& mapping) : painter_(painter), mapping_(mapping) {}
  // A picture of 32-bit opaque colours: slanting lines are drawn into its pixels, inside `clip` alone.
  ElementPainter(QPainter& painter, const Mapping& mapping, const Pixels& pixels, const QRect& clip)
      : painter_(painter), mapping_(mapping), pixels_(pixels), clip_(clip) {}

  // `kept`: what the store has of the element for this scale; it is put there rather than drawn.
  void paint(const host::Element& element, const KeptPicture* kept = nullptr);

 private:
  void label(const host::Element& e, const KeptPicture* kept);
  void line(const host::Element& e);
  void straightLine(const host::Element& e);

  QPainter& painter_;
  const Mapping& mapping_;
  Pixels pixels_;  // no bits: not known
  QRect clip_;
};

// The pixels of a picture that an element may change; those of a label hold its text wherever it ends.
QRect boundsOf(const host::Element& element, const Mapping& mapping, const KeptPicture* kept);

}  // namespace qrn::render
