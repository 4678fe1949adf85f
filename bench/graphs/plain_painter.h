// The reference: a matrix graph drawn by plain painter code that does what one would do by hand. Texts are
// laid out once and kept, lines of one pen go in one call, fonts and pens change only where they differ.
#pragma once

#include <QImage>
#include <QStaticText>
#include <string>
#include <unordered_map>

#include "host/surface.h"

namespace qrn::bench {

class PlainPainter {
 public:
  explicit PlainPainter(QSize size) : image_(size, QImage::Format_RGB32) {}
  void paint(const host::Surface& surface);  // 15 twips to a pixel
  const QImage& image() const { return image_; }

 private:
  void paintLines(QPainter& painter, const host::ElementArray& array) const;
  void paintLabels(QPainter& painter, const host::ElementArray& array);

  QImage image_;
  std::unordered_map<std::string, QStaticText> texts_;  // by caption, size and weight
};

}  // namespace qrn::bench
