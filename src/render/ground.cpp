#include "render/ground.h"

#include <QDateTime>
#include <QFileInfo>
#include <map>

#include "render/colours.h"
#include "render/fonts.h"

namespace qrn::render {

namespace {

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

}  // namespace

qint64 groundStamp(const host::Ground& ground) {
  if (ground.backgroundFile.empty())
    return 0;
  const QFileInfo info(toQt(ground.backgroundFile));
  return info.isFile() ? info.lastModified().toMSecsSinceEpoch() : 0;
}

void drawGround(const host::Ground& ground, QPainter& painter, QSize target) {
  const QRect all(QPoint(0, 0), target);
  if (!ground.backgroundFile.empty()) {
    const QImage image = backgroundImage(ground.backgroundFile, target);
    if (!image.isNull()) {
      painter.drawImage(all, image);
      return;
    }
  }
  if (ground.gradient) {
    QLinearGradient gradient(0, 0, 0, target.height());
    gradient.setColorAt(0, toColour(ground.background));
    gradient.setColorAt(1, toColour(ground.backgroundEnd));
    painter.fillRect(all, gradient);
    return;
  }
  painter.fillRect(all, toColour(ground.background));
}

}  // namespace qrn::render
