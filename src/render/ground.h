// What lies behind a surface: a picture, a colour or two.
#pragma once

#include <QPainter>
#include <QSize>

#include "host/surface.h"

namespace qrn::render {

// Fills the rectangle (0, 0, target).
void drawGround(const host::Ground& ground, QPainter& painter, QSize target);

// Another number whenever the picture's file is another one; 0 without a file.
qint64 groundStamp(const host::Ground& ground);

}  // namespace qrn::render
