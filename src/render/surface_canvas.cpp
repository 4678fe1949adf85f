#include "render/surface_canvas.h"

#include <QPainter>
#include <algorithm>
#include <cstring>
#include <future>
#include <utility>

#include "render/digest.h"
#include "render/element_painter.h"
#include "render/ground.h"

namespace qrn::render {

namespace {

// Layers below this one change rarely; a picture of them is kept by itself.
constexpr host::Layer kFirstOfData = host::Layer::circles;
constexpr std::size_t kMostRects = 200;  // beyond that the picture is painted whole
constexpr int kLargestShare = 3;         // a third of the picture, likewise
constexpr int kBands = 2;                // that a crowd is painted in
constexpr std::size_t kMuch = 500;       // elements of a picture that is worth keeping aside

bool isGround(host::Layer layer) {
  return layer < kFirstOfData;
}

Pixels pixelsOf(QImage& image) {
  return {reinterpret_cast<QRgb*>(image.bits()), image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb)),
          image.rect()};
}

void copyPixels(QImage& to, const QImage& from, const QRect& part) {
  const qsizetype offset = part.left() * static_cast<qsizetype>(sizeof(QRgb));
  const auto bytes = static_cast<std::size_t>(part.width()) * sizeof(QRgb);
  for (int y = part.top(); y <= part.bottom(); ++y)
    std::memcpy(to.scanLine(y) + offset, from.constScanLine(y) + offset, bytes);
}

QImage blank(QSize size) {
  QImage image(size, QImage::Format_RGB32);
  image.setDotsPerMeterX(kDotsPerMetre);
  image.setDotsPerMeterY(kDotsPerMetre);
  return image;
}

// Those that touch become one.
std::vector<QRect> united(std::vector<QRect> rects) {
  for (std::size_t i = 0; i < rects.size(); ++i)
    for (std::size_t j = i + 1; j < rects.size();) {
      if (!rects[i].intersects(rects[j])) {
        ++j;
        continue;
      }
      rects[i] |= rects[j];
      rects[j] = rects.back();
      rects.pop_back();
      j = i + 1;  // the larger one may touch what it did not
    }
  return rects;
}

std::vector<QRect> inside(const std::vector<QRect>& rects, const QRect& all) {
  std::vector<QRect> parts;
  for (const QRect& rect : rects)
    if (const QRect part = rect & all; !part.isEmpty())
      parts.push_back(part);
  return parts;
}

qsizetype areaOf(const std::vector<QRect>& rects) {
  qsizetype area = 0;
  for (const QRect& rect : rects) area += static_cast<qsizetype>(rect.width()) * rect.height();
  return area;
}

}  // namespace

QRegion SurfaceCanvas::update(const host::Surface& surface, QSize pixels, QSize whole) {
  const bool fresh = std::exchange(whole_, whole) != whole || !sameFrame(surface, pixels);
  if (fresh)
    begin(surface, pixels);
  Changes changes = trace(surface);
  changes.ground = inside(changes.ground, image_.rect());
  changes.data = inside(changes.data, image_.rect());
  changes.data.insert(changes.data.end(), changes.ground.begin(), changes.ground.end());
  if (!changes.all && !fresh && changes.data.size() <= kMostRects) {
    const std::vector<QRect> parts = united(changes.data);
    const qsizetype all = static_cast<qsizetype>(image_.width()) * image_.height();
    if (areaOf(parts) * kLargestShare <= all) {
      if (!changes.ground.empty())
        for (const QRect& part : parts) paintGround(surface, part);
      for (const QRect& part : parts) paintData(surface, part);
      groundLook_ = lookOf(true);
      look_ = lookOf(false);
      shown_ = shownElements();
      QRegion region;
      for (const QRect& part : parts) region |= part;
      return region;
    }
  }
  paintAll(surface);
  return image_.rect();
}

bool SurfaceCanvas::sameFrame(const host::Surface& surface, QSize pixels) const {
  return image_.size() == pixels && width_ == surface.width && height_ == surface.height &&
         frame_ == static_cast<const host::Ground&>(surface) && stamp_ == groundStamp(surface);
}

void SurfaceCanvas::begin(const host::Surface& surface, QSize pixels) {
  frame_ = surface;
  stamp_ = groundStamp(surface);
  width_ = surface.width;
  height_ = surface.height;
  mapping_ = Mapping::of(surface, pixels);
  if (image_.size() != pixels) {
    image_ = blank(pixels);
    ground_ = blank(pixels);
  }
  traces_.clear();
  look_ = groundLook_ = 0;
  aside_ = {};
}

// Arrays keep their order while they are there; another order is a change of everything.
SurfaceCanvas::Changes SurfaceCanvas::trace(const host::Surface& surface) {
  Changes changes;
  std::vector<ArrayTrace> now;
  now.reserve(surface.arrays().size());
  std::size_t next = 0;  // of the old arrays
  const auto gone = [&](const ArrayTrace& array) {
    for (const Trace& trace : array.elements)
      if (trace.look != 0)
        (isGround(array.layer) ? changes.ground : changes.data).push_back(trace.bounds);
  };
  for (const host::ElementArray& array : surface.arrays()) {
    const auto old = std::find_if(traces_.begin(), traces_.end(), [&](const ArrayTrace& one) {
      return one.name == array.name() && one.layer == array.layer();
    });
    const auto at = static_cast<std::size_t>(old - traces_.begin());
    if (old != traces_.end() && at < next)
      changes.all = true;
    for (; old != traces_.end() && next < at; ++next) gone(traces_[next]);
    now.push_back({array.name(), array.layer(), {}});
    if (old != traces_.end())
      now.back().elements = std::move(old->elements);
    traceArray(array, now.back().elements, isGround(array.layer()) ? changes.ground : changes.data);
    next = old == traces_.end() ? next : at + 1;
  }
  for (; next < traces_.size(); ++next) gone(traces_[next]);
  traces_ = std::move(now);
  return changes;
}

// Brings the traces of one array up to its elements.
void SurfaceCanvas::traceArray(const host::ElementArray& array, std::vector<Trace>& traces,
                               std::vector<QRect>& changed) const {
  for (std::size_t place = array.size(); place < traces.size(); ++place)
    if (traces[place].look != 0)
      changed.push_back(traces[place].bounds);
  traces.resize(array.size());
  auto trace = traces.begin();
  for (const host::Element& element : array) {
    Trace& last = *trace++;
    const std::uint64_t look = element.visible ? elementDigest(element) : 0;
    if (look == last.look)
      continue;
    if (last.look != 0)
      changed.push_back(last.bounds);
    if (look != 0 && look != last.made)
      last = traceOf(element, look);
    last.look = look;
    if (look != 0)
      changed.push_back(last.bounds);
  }
}

SurfaceCanvas::Trace SurfaceCanvas::traceOf(const host::Element& element, std::uint64_t look) const {
  PictureStore::Picture picture = pictureStore().pictureOf(element, mapping_.scale);
  const QRect bounds = boundsOf(element, mapping_, picture.get());
  return {look, look, bounds, std::move(picture)};
}

std::uint64_t SurfaceCanvas::lookOf(bool ground) const {
  Digest digest;
  for (const ArrayTrace& array : traces_) {
    if (ground && !isGround(array.layer))
      continue;
    for (const Trace& trace : array.elements)
      if (trace.look != 0)
        digest.add(trace.look);
  }
  return digest.value();
}

std::size_t SurfaceCanvas::shownElements() const {
  std::size_t shown = 0;
  for (const ArrayTrace& array : traces_)
    for (const Trace& trace : array.elements) shown += trace.look != 0 ? 1 : 0;
  return shown;
}

// A picture of much that gives way is kept aside: the next key may bring it back.
void SurfaceCanvas::paintAll(const host::Surface& surface) {
  const std::uint64_t look = lookOf(false);
  const std::size_t before = std::exchange(shown_, shownElements());
  if (look_ != 0 && look_ != look && (before > kMuch || aside_.look == look)) {
    std::swap(image_, aside_.image);
    std::swap(look_, aside_.look);
  }
  if (image_.size() != ground_.size())
    image_ = blank(ground_.size());
  if (look_ != look) {
    if (const std::uint64_t ground = lookOf(true); groundLook_ != ground) {
      paintGround(surface, ground_.rect());
      groundLook_ = ground;
    }
    paintData(surface, image_.rect());
  }
  look_ = look;
}

void SurfaceCanvas::paintGround(const host::Surface& surface, const QRect& clip) {
  QPainter painter(&ground_);
  painter.setClipRect(clip);
  drawGround(surface, painter, whole_.expandedTo(ground_.size()));
  painter.end();
  paintLayers(surface, ground_, clip, true);
}

// Setting text asks what is shared; pictures that are kept, lines and shapes touch nothing that is.
bool SurfaceCanvas::setsText(const host::Surface& surface) const {
  auto trace = traces_.begin();
  for (const host::ElementArray& array : surface.arrays()) {
    const std::vector<Trace>& traces = (trace++)->elements;
    for (std::size_t i = 0; i < traces.size(); ++i)
      if (traces[i].look != 0 && traces[i].picture == nullptr && !array[i].caption.empty())
        return true;
  }
  return false;
}

// A crowd is painted in bands side by side, each by a painter of its own over the same pixels.
void SurfaceCanvas::paintData(const host::Surface& surface, const QRect& clip) {
  const int bands = shown_ > kMuch && clip == image_.rect() && !setsText(surface) ? kBands : 1;
  uchar* const bits = image_.bits();
  const auto paint = [&](int band) {
    QImage view(bits, image_.width(), image_.height(), image_.bytesPerLine(), image_.format());
    QRect part = clip;
    part.setTop(clip.top() + clip.height() * band / bands);
    part.setBottom(clip.top() + clip.height() * (band + 1) / bands - 1);
    copyPixels(view, ground_, part);
    paintLayers(surface, view, part, false);
  };
  std::vector<std::future<void>> others;
  for (int band = 1; band < bands; ++band) others.push_back(std::async(std::launch::async, paint, band));
  paint(0);
  for (std::future<void>& other : others) other.get();
}

void SurfaceCanvas::paintLayers(const host::Surface& surface, QImage& image, const QRect& clip, bool ground) {
  const Pixels pixels = pixelsOf(image);
  QPainter painter(&image);
  painter.setClipRect(clip);
  ElementPainter elements(painter, mapping_, pixels, clip);
  auto trace = traces_.begin();
  for (const host::ElementArray& array : surface.arrays()) {
    const std::vector<Trace>& traces = (trace++)->elements;
    if (isGround(array.layer()) != ground)
      continue;
    for (std::size_t i = 0; i < traces.size(); ++i)
      if (traces[i].look != 0 && traces[i].bounds.intersects(clip))
        elements.paint(array[i], traces[i].picture.get());
  }
}

}  // namespace qrn::render
