#pragma once

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace qrn::qt {

// How much larger type and distances are on the screen of `over` (null: the first screen) than on one of 1080
// rows, so that what stands over a projected picture stays as readable as the picture.
inline double typeScale(const QWidget* over) {
  const QScreen* screen = over ? over->screen() : QGuiApplication::primaryScreen();
  return std::max(1.0, screen->geometry().height() / 1080.0);
}

}  // namespace qrn::qt
