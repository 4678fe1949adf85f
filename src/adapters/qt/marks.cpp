#include "adapters/qt/marks.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionButton>
#include <algorithm>

namespace qrn::qt {

namespace {

void drawLine(QPainter& painter, const QPolygonF& line, const QColor& colour, double width) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(line);
  painter.restore();
}

}  // namespace

void drawTick(QPainter& painter, const QRect& box, const QColor& colour) {
  const auto at = [&](double x, double y) {
    return QPointF(box.left() + x * box.width(), box.top() + y * box.height());
  };
  drawLine(painter, {at(0.24, 0.54), at(0.43, 0.72), at(0.77, 0.30)}, colour,
           std::max(2.0, box.width() / 8.0));
}

void TickBox::paintEvent(QPaintEvent* event) {
  QCheckBox::paintEvent(event);
  if (!isChecked())
    return;
  QStyleOptionButton option;
  initStyleOption(&option);
  QPainter painter(this);
  drawTick(painter, style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this), tick_);
}

void ChoiceBox::paintEvent(QPaintEvent* event) {
  QComboBox::paintEvent(event);
  const double half = fontMetrics().ascent() / 4.0;
  const QPointF middle(width() - 4 * half, height() / 2.0);
  QPainter painter(this);
  drawLine(
      painter,
      {middle + QPointF(-half, -half / 2), middle + QPointF(0, half / 2), middle + QPointF(half, -half / 2)},
      palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text),
      std::max(2.0, half / 2.5));
}

}  // namespace qrn::qt
