// The plain drawing of a slide: its background, its title and its lines of text, fitted into the picture.
#pragma once

#include <QColor>
#include <QPainter>
#include <QSize>
#include <QString>
#include <QStringList>

#include "adapters/deck/deck.h"

namespace qrn::qt {

struct PlainSlide {
  QColor background = Qt::white;
  QColor textColour = Qt::black;
  QString title;
  QStringList lines;
};

// Draws into (0, 0, size). Type shrinks until everything fits; below a readable size the last lines give way
// to "…".
void drawPlainSlide(const PlainSlide& slide, QPainter& painter, QSize size);

class QtSlidePainter : public deck::SlidePainter {
 public:
  void paint(const deck::SlideDrawing& drawing, const std::string& file, std::string_view format, int width,
             int height) override;
};

}  // namespace qrn::qt
