// Small pictures of captions and blobs, drawn once and kept for every painting that follows.
#pragma once

#include <QImage>
#include <QPoint>
#include <cstdint>
#include <memory>
#include <unordered_map>

#include "host/surface.h"

namespace qrn::render {

// A picture and where it stands from its place on the target.
struct KeptPicture {
  QImage image;
  QPoint offset;
};

class PictureStore {
 public:
  using Picture = std::shared_ptr<const KeptPicture>;
  // What a label writes, from its anchor, or an ellipse, from its upper left corner. Null for what is too
  // large to be kept and for all else.
  Picture pictureOf(const host::Element& element, double scale);

 private:
  std::unordered_map<std::uint64_t, Picture> pictures_;
  qsizetype bytes_ = 0;
};

// The one store of the program; all painting is done on one thread.
PictureStore& pictureStore();

}  // namespace qrn::render
