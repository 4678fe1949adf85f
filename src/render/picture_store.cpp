#include "render/picture_store.h"

#include <QPainter>
#include <cmath>

#include "render/digest.h"
#include "render/element_painter.h"
#include "render/text_block.h"

namespace qrn::render {

namespace {

constexpr qsizetype kMostBytes = 64 << 20;     // of all pictures together
constexpr double kLargestText = 256.0 * 1024;  // pixels; a larger one is drawn anew each time
constexpr double kLargestEllipse = 64.0 * 64;  // pixels

QImage transparent(QSize size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.setDotsPerMeterX(kDotsPerMetre);
  image.setDotsPerMeterY(kDotsPerMetre);
  image.fill(Qt::transparent);
  return image;
}

// The part that is not empty; most of a text's box is.
QRect inkOf(const QImage& image) {
  QRect ink;
  for (int y = 0; y < image.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    int first = 0, last = image.width() - 1;
    while (first <= last && row[first] == 0) ++first;
    while (last > first && row[last] == 0) --last;
    if (first <= last)
      ink |= QRect(QPoint(first, y), QPoint(last, y));
  }
  return ink;
}

KeptPicture textPicture(const host::Element& label, double scale) {
  const TextBlock block = setText(label, scale);
  const QRect box = block.box.toAlignedRect();
  if (box.isEmpty() || block.box.width() * block.box.height() > kLargestText)
    return {};
  QImage image = transparent(box.size());
  QPainter painter(&image);
  drawText(painter, block, label, scale, -QPointF(box.topLeft()));
  painter.end();
  const QRect ink = inkOf(image);
  if (ink.isEmpty())
    return {image.copy(0, 0, 1, 1), box.topLeft()};  // nothing but blanks
  return {image.copy(ink), box.topLeft() + ink.topLeft()};
}

KeptPicture ellipsePicture(const host::Element& shape, double scale) {
  host::Element alone = shape;
  const double edge = shape.bordered ? shape.borderWidth / 2 : 0;
  alone.left = alone.top = edge;
  const QSizeF size((shape.width + 2 * edge) * scale + 1, (shape.height + 2 * edge) * scale + 1);
  if (size.width() * size.height() > kLargestEllipse)
    return {};
  QImage image = transparent(
      QSize(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))));
  QPainter painter(&image);
  drawShape(painter, alone, Mapping{scale, 0, 0});
  const int back = -static_cast<int>(std::lround(edge * scale));
  return {image, {back, back}};
}

KeptPicture badgePicture(const host::Element& badge, double scale) {
  host::Element alone = badge;
  const int edge = static_cast<int>(std::ceil(badge.ringWidth * scale));
  alone.left = alone.top = edge / scale;
  QImage image = transparent(QSize(static_cast<int>(std::ceil(badge.width * scale)) + 2 * edge + 1,
                                   static_cast<int>(std::ceil(badge.height * scale)) + 2 * edge + 1));
  QPainter painter(&image);
  drawBadge(painter, alone, Mapping{scale, 0, 0});
  return {image, {-edge, -edge}};
}

KeptPicture pictureFor(const host::Element& element, double scale) {
  if (element.isBadge())
    return badgePicture(element, scale);
  return element.kind == host::Element::Kind::label ? textPicture(element, scale)
                                                    : ellipsePicture(element, scale);
}

}  // namespace

PictureStore& pictureStore() {
  static PictureStore store;
  return store;
}

PictureStore::Picture PictureStore::pictureOf(const host::Element& element, double scale) {
  const bool text = element.kind == host::Element::Kind::label && !element.caption.empty();
  const bool ellipse =
      element.kind == host::Element::Kind::ellipse && element.fill <= host::Fill::transparent;
  if (!text && !ellipse)
    return nullptr;
  Digest digest;
  if (text)
    digest.add(textDigest(element));
  if (!text || element.isBadge())
    digest.add(shapeDigest(element));
  const std::uint64_t key = digest.add(scale).value();
  const auto found = pictures_.find(key);
  if (found != pictures_.end())
    return found->second;
  if (bytes_ > kMostBytes) {
    pictures_.clear();
    bytes_ = 0;
  }
  KeptPicture drawn = pictureFor(element, scale);
  bytes_ += drawn.image.sizeInBytes();
  return pictures_[key] =
             drawn.image.isNull() ? nullptr : std::make_shared<const KeptPicture>(std::move(drawn));
}

}  // namespace qrn::render
