#include "render/qr_code.h"

#include <qrencode.h>

#include <QPainter>
#include <algorithm>
#include <memory>

namespace qrn::render {

QImage qrCode(const QString& text, int pixels) {
  constexpr int kQuietModules = 4;
  if (text.isEmpty())
    return {};
  const std::unique_ptr<QRcode, void (*)(QRcode*)> code(
      QRcode_encodeString(text.toUtf8().constData(), 0, QR_ECLEVEL_M, QR_MODE_8, 1), QRcode_free);
  if (!code)
    return {};
  const int modules = code->width + 2 * kQuietModules;
  const int module = std::max(1, pixels / modules);
  QImage image(modules * module, modules * module, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  for (int y = 0; y < code->width; ++y)
    for (int x = 0; x < code->width; ++x)
      if (code->data[y * code->width + x] & 1)
        painter.fillRect((x + kQuietModules) * module, (y + kQuietModules) * module, module, module,
                         Qt::black);
  return image;
}

}  // namespace qrn::render
