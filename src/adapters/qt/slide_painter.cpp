#include "adapters/qt/slide_painter.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <algorithm>

#include "base/disk.h"
#include "render/fonts.h"
#include "render/render.h"

namespace qrn::qt {

namespace {

// Parts of the picture's height.
constexpr double kMargin = 0.07, kTitleType = 0.085, kBodyType = 0.052, kSmallestType = 0.022, kGap = 0.05;
constexpr double kShrink = 0.92;
constexpr int kWrapped = Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop;

QFont face(double pixels, bool bold) {
  render::addFallbacks("Arial");
  QFont font("Arial");
  font.setPixelSize(std::max(1, static_cast<int>(pixels)));
  font.setBold(bold);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

double heightOf(const QString& text, const QFont& font, double width) {
  return QFontMetricsF(font).boundingRect(QRectF(0, 0, width, 1e6), kWrapped, text).height();
}

// The largest font from `pixels` downwards in which the text stays inside the box.
QFont fittingFont(const QString& text, double pixels, double smallest, bool bold, QSizeF box) {
  while (pixels > smallest && heightOf(text, face(pixels, bold), box.width()) > box.height())
    pixels *= kShrink;
  return face(std::max(pixels, smallest), bold);
}

QString fittingText(QStringList lines, const QFont& font, QSizeF box) {
  while (lines.size() > 1 && heightOf(lines.join('\n'), font, box.width()) > box.height()) {
    lines.removeLast();
    lines.last() = "…";
  }
  return lines.join('\n');
}

}  // namespace

void drawPlainSlide(const PlainSlide& slide, QPainter& painter, QSize size) {
  const double height = size.height();
  const double margin = kMargin * height;
  const double width = size.width() - 2 * margin;
  painter.save();
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.fillRect(QRect(QPoint(0, 0), size), slide.background);
  painter.setPen(slide.textColour);
  double top = margin;
  if (!slide.title.isEmpty()) {
    const double room = slide.lines.isEmpty() ? height - 2 * margin : 0.3 * height;
    const QFont font =
        fittingFont(slide.title, kTitleType * height, kSmallestType * height, true, {width, room});
    const double taken = std::min(room, heightOf(slide.title, font, width));
    painter.setFont(font);
    painter.drawText(QRectF(margin, top, width, taken), kWrapped, slide.title);
    top += taken + kGap * height;
  }
  if (!slide.lines.isEmpty()) {
    const QSizeF box(width, height - margin - top);
    const QFont font =
        fittingFont(slide.lines.join('\n'), kBodyType * height, kSmallestType * height, false, box);
    painter.setFont(font);
    painter.drawText(QRectF(QPointF(margin, top), box), kWrapped, fittingText(slide.lines, font, box));
  }
  painter.restore();
}

void QtSlidePainter::paint(const deck::SlideDrawing& drawing, const std::string& file,
                           std::string_view format, int width, int height) {
  if (width <= 0 || height <= 0)
    throw HostError(Fault::badData, 0, "A slide picture needs a width and a height");
  PlainSlide slide;
  slide.background = render::toColour(drawing.background);
  slide.textColour = render::toColour(drawing.textColour);
  slide.title = render::toQt(drawing.title);
  for (const std::string& line : drawing.lines) slide.lines << render::toQt(line);
  QImage image(width, height, QImage::Format_RGB32);
  QPainter painter(&image);
  drawPlainSlide(slide, painter, image.size());
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, std::string(format).c_str()))
    throw HostError(Fault::program, 5, "A slide cannot be drawn as " + std::string(format));
  saveText(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace qrn::qt
