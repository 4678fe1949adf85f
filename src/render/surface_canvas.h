// A surface as a picture that is kept: what has changed since the last time is painted again and nothing
// else.
#pragma once

#include <QImage>
#include <QRegion>
#include <QSize>
#include <cstdint>
#include <string>
#include <vector>

#include "host/surface.h"
#include "render/mapping.h"
#include "render/picture_store.h"

namespace qrn::render {

class SurfaceCanvas {
 public:
  // Brings the picture of that size, in pixels, up to the surface. Gives the part of it that has changed. The
  // ground is the upper left part of one of `whole` pixels, where that is larger.
  // Lines of wrapped labels break as host::wrapText says, so host().textMeasure must be set.
  QRegion update(const host::Surface& surface, QSize pixels, QSize whole = {});
  const QImage& image() const { return image_; }

 private:
  // What was painted of an element: the digest of its look, 0 while it is hidden, and its pixels, which are
  // kept for when it comes back as it was `made`.
  struct Trace {
    std::uint64_t look = 0, made = 0;
    QRect bounds;
    PictureStore::Picture picture;
  };
  struct ArrayTrace {
    std::string name;
    host::Layer layer;
    std::vector<Trace> elements;
  };
  struct Changes {
    std::vector<QRect> ground, data;  // pixels that change below and in the layers of the data
    bool all = false;
  };
  struct Kept {
    std::uint64_t look = 0;
    QImage image;
  };

  bool sameFrame(const host::Surface& surface, QSize pixels) const;
  void begin(const host::Surface& surface, QSize pixels);
  Changes trace(const host::Surface& surface);
  void traceArray(const host::ElementArray& array, std::vector<Trace>& traces,
                  std::vector<QRect>& changed) const;
  Trace traceOf(const host::Element& element, std::uint64_t look) const;
  std::uint64_t lookOf(bool ground) const;
  std::size_t shownElements() const;
  bool setsText(const host::Surface& surface) const;  // some element is not kept as a picture
  void paintAll(const host::Surface& surface);
  void paintGround(const host::Surface& surface, const QRect& clip);
  void paintData(const host::Surface& surface, const QRect& clip);
  void paintLayers(const host::Surface& surface, QImage& image, const QRect& clip, bool ground);

  host::Ground frame_;
  qint64 stamp_ = 0;  // of the ground's file
  double width_ = 0, height_ = 0;
  QSize whole_;  // pixels of the whole ground
  Mapping mapping_;
  std::vector<ArrayTrace> traces_;
  std::uint64_t look_ = 0;        // of all that the picture shows; 0: nothing yet
  std::size_t shown_ = 0;         // elements in it
  QImage image_, ground_;         // the picture, and what lies below the layers of the data
  std::uint64_t groundLook_ = 0;  // 0: not painted
  Kept aside_;                    // the last picture of much that gave way to another
};

}  // namespace qrn::render
