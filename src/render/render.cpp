#include "render/render.h"

#include <QBuffer>
#include <QDateTime>
#include <QFileInfo>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

#include "host/errors.h"
#include "render/fonts.h"

namespace qrn::render {

namespace {

constexpr int kJpegQuality = 75;
constexpr int kDotted = 3;  // Element::borderStyle
constexpr int kDotsPerInch = 96;
constexpr double kDotsPerMetre = kDotsPerInch / 0.0254;

// The classic system colours by their place, as they look on a plain desktop.
QColor systemColour(std::int32_t place) {
  static const std::map<int, QColor> colours{
      {0x00, QColor(0xc8, 0xc8, 0xc8)}, {0x01, QColor(0x00, 0x00, 0x00)}, {0x05, QColor(0xff, 0xff, 0xff)},
      {0x06, QColor(0x64, 0x64, 0x64)}, {0x08, QColor(0x00, 0x00, 0x00)}, {0x0d, QColor(0x00, 0x5f, 0xb8)},
      {0x0e, QColor(0xff, 0xff, 0xff)}, {0x0f, QColor(0xf0, 0xf0, 0xf0)}, {0x10, QColor(0xa0, 0xa0, 0xa0)},
      {0x11, QColor(0x6d, 0x6d, 0x6d)}, {0x12, QColor(0x00, 0x00, 0x00)}, {0x14, QColor(0xff, 0xff, 0xff)},
      {0x17, QColor(0x00, 0x00, 0x00)}, {0x18, QColor(0xff, 0xff, 0xe1)}};
  const auto found = colours.find(place);
  return found == colours.end() ? QColor(0xff, 0xff, 0xff) : found->second;
}

// A background picture stretched to `size`. The last ones are kept, so that a repaint neither reads the file
// nor stretches it again. Null when there is no such picture.
QImage backgroundImage(const std::string& file, QSize size) {
  struct Kept {
    QDateTime changed;
    QImage image;
  };
  static std::map<std::string, Kept> kept;
  const QFileInfo info(toQt(file));
  if (!info.isFile())
    return {};
  Kept& entry = kept[file];
  if (entry.changed != info.lastModified() || entry.image.size() != size) {
    constexpr std::size_t kMostKept = 8;
    if (kept.size() > kMostKept)
      std::erase_if(kept, [&](const auto& one) { return one.first != file; });
    entry.changed = info.lastModified();
    entry.image = QImage(info.filePath()).scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  return entry.image;
}

void paintBackground(const host::Surface& surface, QPainter& painter, QSize target) {
  const QRect all(QPoint(0, 0), target);
  if (!surface.backgroundFile.empty()) {
    const QSize pixels = (QSizeF(target) * painter.device()->devicePixelRatioF()).toSize();
    const QImage image = backgroundImage(surface.backgroundFile, pixels);
    if (!image.isNull()) {
      painter.drawImage(all, image);
      return;
    }
  }
  if (surface.gradient) {
    QLinearGradient gradient(0, 0, 0, target.height());
    gradient.setColorAt(0, toColour(surface.background));
    gradient.setColorAt(1, toColour(surface.backgroundEnd));
    painter.fillRect(all, gradient);
    return;
  }
  painter.fillRect(all, toColour(surface.background));
}

Qt::BrushStyle brushStyle(host::Fill fill) {
  static constexpr std::array<Qt::BrushStyle, 8> styles{
      Qt::SolidPattern, Qt::NoBrush,      Qt::HorPattern,   Qt::VerPattern,
      Qt::BDiagPattern, Qt::FDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
  return styles[static_cast<std::size_t>(fill)];
}

// Draws the elements in pixels of the surface's own scale, with the painter transformed to the target.
class ElementPainter {
 public:
  ElementPainter(QPainter& painter, double scale)
      : painter_(painter), scale_(scale), dotsPerInch_(painter.device()->logicalDpiY()) {}

  void paint(const host::Element& element) {
    switch (element.kind) {
      case host::Element::Kind::label:
        label(element);
        break;
      case host::Element::Kind::line:
        line(element);
        break;
      case host::Element::Kind::rectangle:
      case host::Element::Kind::ellipse:
        shape(element);
        break;
    }
  }

 private:
  static double px(double twips) { return twips / kTwipsPerPixel; }
  static QRectF box(const host::Element& e) { return {px(e.left), px(e.top), px(e.width), px(e.height)}; }

  // At least one pixel of the target wide, so that fine lines survive a small picture.
  QPen pen(const host::Element& e) const {
    QPen result(toColour(e.colour), std::max(px(e.borderWidth), 1.0 / scale_));
    result.setStyle(e.borderStyle == kDotted ? Qt::DotLine : Qt::SolidLine);
    result.setCapStyle(Qt::FlatCap);
    result.setJoinStyle(Qt::MiterJoin);
    return result;
  }

  const QFont& font(const host::SurfaceFont& wanted) {
    if (!lastFont_ || lastFont_->name != wanted.name || lastFont_->size != wanted.size ||
        lastFont_->bold != wanted.bold || lastFont_->italic != wanted.italic ||
        lastFont_->underline != wanted.underline) {
      font_ = deviceFont(wanted, dotsPerInch_);
      lastFont_ = wanted;
    }
    return font_;
  }

  void label(const host::Element& e) {
    if (e.opaque) {
      QColor fill = toColour(e.backColour);
      fill.setAlphaF(static_cast<float>(e.opacity));
      painter_.fillRect(box(e), fill);
    }
    if (e.caption.empty())
      return;
    painter_.setFont(font(e.font));
    painter_.setPen(toColour(e.colour));
    const double step = lineHeight(e.font.name, e.font.size);
    double baseline = e.top + ascent(e.font.name, e.font.size, e.font.bold, e.font.italic);
    for (const std::string& text : linesOf(e)) {
      double left = e.left;
      if (e.align != host::Align::left) {
        const double spare = e.width - textWidth(text, e.font.name, e.font.size, e.font.bold, e.font.italic);
        left += e.align == host::Align::right ? spare : spare / 2;
      }
      painter_.drawText(QPointF(px(left), px(baseline)), toQt(text));
      baseline += step;
    }
  }

  static std::vector<std::string> linesOf(const host::Element& e) {
    QString text = toQt(e.caption);
    text.replace("\r\n", "\n").replace('\r', '\n').replace("&&", "&");
    if (e.wordWrap && e.width > 0)
      return host::wrapText(fromQt(text), e.font, e.width);
    std::vector<std::string> lines;
    for (const QString& one : text.split('\n')) lines.push_back(fromQt(one));
    return lines;
  }

  void line(const host::Element& e) {
    if (e.x1 == e.x2 || e.y1 == e.y2) {
      straightLine(e);
      return;
    }
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(pen(e));
    painter_.drawLine(QPointF(px(e.x1), px(e.y1)), QPointF(px(e.x2), px(e.y2)));
  }

  // Upright and level lines fill whole pixels of the target, so that equal lines look equal.
  void straightLine(const host::Element& e) {
    const QTransform world = painter_.worldTransform();
    const QRectF span =
        world.mapRect(QRectF(QPointF(px(e.x1), px(e.y1)), QPointF(px(e.x2), px(e.y2))).normalized());
    const double thick = std::max(1.0, std::round(px(e.borderWidth) * world.m11()));
    const QPointF begin(std::round(span.left() - thick / 2), std::round(span.top() - thick / 2));
    const QRectF bar(begin, QSizeF(std::round(span.width()) + thick, std::round(span.height()) + thick));
    painter_.save();
    painter_.resetTransform();
    painter_.setRenderHint(QPainter::Antialiasing, false);
    if (e.borderStyle == kDotted) {
      painter_.setPen(QPen(toColour(e.colour), thick, Qt::DotLine, Qt::FlatCap));
      const QPointF half(thick / 2, thick / 2);
      painter_.drawLine(bar.topLeft() + half, bar.bottomRight() - half);
    } else {
      painter_.fillRect(bar, toColour(e.colour));
    }
    painter_.restore();
  }

  void shape(const host::Element& e) {
    const bool round = e.kind == host::Element::Kind::ellipse;
    painter_.setRenderHint(QPainter::Antialiasing, round);
    QColor fill = toColour(e.backColour);
    fill.setAlphaF(static_cast<float>(e.opacity));
    painter_.setBrush(QBrush(fill, brushStyle(e.fill)));
    if (e.fill == host::Fill::solid && e.gradient) {
      QLinearGradient run(box(e).topLeft(), box(e).bottomLeft());
      QColor end = toColour(e.backColourEnd);
      end.setAlphaF(static_cast<float>(e.opacity));
      run.setColorAt(0, fill);
      run.setColorAt(1, end);
      painter_.setBrush(run);
    }
    painter_.setPen(e.bordered ? pen(e) : QPen(Qt::NoPen));
    if (round)
      painter_.drawEllipse(box(e));
    else
      painter_.drawRect(box(e));
  }

  QPainter& painter_;
  double scale_;
  int dotsPerInch_;
  std::optional<host::SurfaceFont> lastFont_;
  QFont font_;
};

QImage blankImage(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.setDotsPerMeterX(static_cast<int>(std::lround(kDotsPerMetre)));
  image.setDotsPerMeterY(static_cast<int>(std::lround(kDotsPerMetre)));
  return image;
}

QByteArray svgBytes(const host::Surface& surface, QSize size) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator generator;
  generator.setOutputDevice(&buffer);
  generator.setSize(size);
  generator.setViewBox(QRect(QPoint(0, 0), size));
  generator.setResolution(kDotsPerInch);
  QPainter painter(&generator);
  renderSurface(surface, painter, size);
  painter.end();
  return bytes;
}

QByteArray imageBytes(const host::Surface& surface, QSize size, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!surfaceImage(surface, size).save(&buffer, format, format[0] == 'J' ? kJpegQuality : -1))
    throw HostError(Fault::world, 0, std::string("The picture could not be made as ") + format);
  return bytes;
}

}  // namespace

QColor toColour(std::int32_t colour) {
  if (colour < 0)
    return systemColour(colour & 0xff);
  return QColor(colour & 0xff, (colour >> 8) & 0xff, (colour >> 16) & 0xff);
}

void renderSurface(const host::Surface& surface, QPainter& painter, QSize target) {
  painter.save();
  paintBackground(surface, painter, target);
  const double width = surface.width > 0 ? surface.width / kTwipsPerPixel : target.width();
  const double height = surface.height > 0 ? surface.height / kTwipsPerPixel : target.height();
  const double scale = std::min(target.width() / width, target.height() / height);
  painter.translate((target.width() - width * scale) / 2, (target.height() - height * scale) / 2);
  painter.scale(scale, scale);
  painter.setRenderHint(QPainter::TextAntialiasing);
  ElementPainter elements(painter, scale);
  for (const host::ElementArray& array : surface.arrays())
    for (const host::Element& element : array)
      if (element.visible)
        elements.paint(element);
  painter.restore();
}

QImage surfaceImage(const host::Surface& surface, QSize target) {
  QImage image = blankImage(target);
  QPainter painter(&image);
  renderSurface(surface, painter, target);
  return image;
}

void saveSurface(const host::Surface& surface, const std::string& file, int widthPx, int heightPx) {
  if (widthPx <= 0 || heightPx <= 0)
    throw HostError(Fault::badData, 0, "A picture needs a width and a height");
  const QSize size(widthPx, heightPx);
  const QString ending = QFileInfo(toQt(file)).suffix().toLower();
  QByteArray bytes;
  if (ending == "png")
    bytes = imageBytes(surface, size, "PNG");
  else if (ending == "jpg" || ending == "jpeg")
    bytes = imageBytes(surface, size, "JPG");
  else if (ending == "svg")
    bytes = svgBytes(surface, size);
  else
    throw HostError(Fault::badData, 0, "Pictures end in .png, .jpg or .svg: " + file);
  QSaveFile out(toQt(file));
  if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size() || !out.commit())
    throw HostError(Fault::world, 75, "The picture could not be written: " + file);
}

}  // namespace qrn::render
