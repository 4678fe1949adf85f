#include "adapters/qt/info_window.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>

#include "adapters/qt/type_scale.h"
#include "host/wait.h"

namespace qrn::qt {

InfoWindow::InfoWindow()
    : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput),
      label_(new QLabel(this)) {
  setObjectName("infoForm");
  setAttribute(Qt::WA_ShowWithoutActivating);
  setFocusPolicy(Qt::NoFocus);
  label_->setAlignment(Qt::AlignCenter);
  label_->setTextFormat(Qt::PlainText);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(32, 20, 32, 20);
  layout->addWidget(label_);
  setStyleSheet("#infoForm { background: #12263a; border: 2px solid #5aa9e6; }");
}

void InfoWindow::showLine(const QString& line, const QWidget* over) {
  label_->setText(line);
  label_->setStyleSheet(
      QString("color: #ffffff; font-size: %1px;").arg(static_cast<int>(22 * typeScale(over))));
  adjustSize();
  const QRect place = over ? QRect(over->mapToGlobal(QPoint(0, 0)), over->size())
                           : QGuiApplication::primaryScreen()->geometry();
  move(place.center() - QPoint(width() / 2, height() / 2));
  show();
  raise();
  constexpr double kShortestSeconds = 0.1;
  host::waitUntil([] { return false; }, kShortestSeconds);
}

}  // namespace qrn::qt
