#include "render/render.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPainter>
#include <QSvgGenerator>

#include "base/disk.h"
#include "render/element_painter.h"
#include "render/fonts.h"
#include "render/ground.h"
#include "render/surface_canvas.h"

namespace qrn::render {

namespace {

constexpr int kJpegQuality = 75;

// For targets that are no picture.
void drawSurface(const host::Surface& surface, QPainter& painter, QSize target) {
  drawGround(surface, painter, target);
  const Mapping mapping = Mapping::of(surface, target);
  ElementPainter elements(painter, mapping);
  for (const host::ElementArray& array : surface.arrays())
    for (const host::Element& element : array)
      if (element.visible)
        elements.paint(element);
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
  drawSurface(surface, painter, size);
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

QImage surfaceImage(const host::Surface& surface, QSize target) {
  SurfaceCanvas canvas;
  canvas.update(surface, target);
  return canvas.image();
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
  saveText(behindLinks(file), {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace qrn::render
