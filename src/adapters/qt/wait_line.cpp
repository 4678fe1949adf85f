#include "adapters/qt/wait_line.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "adapters/qt/themed.h"
#include "core/windows/slide_theme.h"
#include "render/render.h"

namespace qrn::qt {

WaitLine::WaitLine()
    : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput),
      tmrPatience_(kPatienceMs, [this] { appear(); }) {
  setObjectName("waitLine");
  setAttribute(Qt::WA_ShowWithoutActivating);
  setFocusPolicy(Qt::NoFocus);
  setAutoFillBackground(true);
}

void WaitLine::begin(QWidget* over) {
  over_ = over;
  if (!isVisible())
    tmrPatience_.setEnabled(true);
}

void WaitLine::end() {
  tmrPatience_.setEnabled(false);
  hide();
}

void WaitLine::appear() {
  tmrPatience_.setEnabled(false);
  const QRect place = over_ ? placeOf(*over_) : QGuiApplication::primaryScreen()->geometry();
  const int thickness = std::max(3, place.height() / 200);
  setPalette(render::toColour(slideTheme().data));
  setGeometry(place.left(), place.bottom() + 1 - thickness, place.width(), thickness);
  show();
  raise();
  repaint();  // the step may not let another event through
}

}  // namespace qrn::qt
