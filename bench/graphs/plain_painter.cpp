#include "graphs/plain_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QVector>

namespace qrn::bench {

namespace {

constexpr double kTwips = 15;

QColor colourOf(std::int32_t colour) {
  return QColor(colour & 0xff, (colour >> 8) & 0xff, (colour >> 16) & 0xff);
}

QFont fontOf(const host::SurfaceFont& font) {
  QFont made(QString::fromStdString(font.name));
  made.setPixelSize(static_cast<int>(font.size * 20 / kTwips));
  made.setBold(font.bold);
  return made;
}

}  // namespace

void PlainPainter::paint(const host::Surface& surface) {
  QPainter painter(&image_);
  QLinearGradient ground(0, 0, 0, image_.height());
  ground.setColorAt(0, colourOf(surface.background));
  ground.setColorAt(1, colourOf(surface.backgroundEnd));
  painter.fillRect(image_.rect(), ground);
  for (const host::ElementArray& array : surface.arrays()) {
    if (array.size() == 0)
      continue;
    if (array[0].kind == host::Element::Kind::line)
      paintLines(painter, array);
    else if (array[0].kind == host::Element::Kind::label)
      paintLabels(painter, array);
    for (const host::Element& e : array) {
      if (e.kind == host::Element::Kind::rectangle) {
        QColor fill = colourOf(e.backColour);
        fill.setAlphaF(static_cast<float>(e.opacity));
        painter.fillRect(QRectF(e.left / kTwips, e.top / kTwips, e.width / kTwips, e.height / kTwips), fill);
      }
      if (e.kind != host::Element::Kind::ellipse || !e.visible)
        continue;
      painter.setPen(Qt::NoPen);
      painter.setBrush(colourOf(e.backColour));
      painter.drawEllipse(QRectF(e.left / kTwips, e.top / kTwips, e.width / kTwips, e.height / kTwips));
    }
  }
}

void PlainPainter::paintLines(QPainter& painter, const host::ElementArray& array) const {
  QVector<QLineF> lines;
  for (const host::Element& e : array)
    if (e.visible)
      lines.push_back(QLineF(e.x1 / kTwips, e.y1 / kTwips, e.x2 / kTwips, e.y2 / kTwips));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colourOf(array[0].colour), array[0].borderWidth / kTwips, Qt::SolidLine, Qt::FlatCap));
  painter.drawLines(lines);
}

void PlainPainter::paintLabels(QPainter& painter, const host::ElementArray& array) {
  const QFont font = fontOf(array[0].font);
  painter.setFont(font);
  painter.setPen(colourOf(array[0].colour));
  for (const host::Element& e : array) {
    if (!e.visible || e.caption.empty())
      continue;
    QStaticText& text = texts_[e.caption + (e.font.bold ? "b" : "") + std::to_string(e.font.size)];
    if (text.text().isEmpty()) {
      text = QStaticText(QString::fromStdString(e.caption));
      text.setTextFormat(Qt::PlainText);
      text.prepare(QTransform(), font);
    }
    const double spare = e.align == host::Align::centre ? (e.width / kTwips - text.size().width()) / 2 : 0;
    painter.drawStaticText(QPointF(e.left / kTwips + spare, e.top / kTwips), text);
  }
}

}  // namespace qrn::bench
