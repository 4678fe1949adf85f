#include "render/mapping.h"

#include <algorithm>

#include "render/fonts.h"

namespace qrn::render {

Mapping Mapping::of(const host::Surface& surface, QSizeF target) {
  if (surface.width <= 0 || surface.height <= 0)
    return {1 / kTwipsPerPixel, 0, 0};
  const double scale = std::min(target.width() / surface.width, target.height() / surface.height);
  return {scale, (target.width() - surface.width * scale) / 2,
          (target.height() - surface.height * scale) / 2};
}

}  // namespace qrn::render
