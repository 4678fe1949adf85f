#include "desktop/slide_pictures.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "adapters/qt/slide_painter.h"
#include "base/errors.h"
#include "host/names.h"
#include "render/fonts.h"
#include "render/render.h"

namespace qrn::desktop {

namespace {

constexpr int kLargeKept = 6, kThumbnailsKept = 300;  // held in memory
constexpr int kThumbnailsAtOnce = 20;
constexpr int kSmallestWidth = 1280, kLargestWidth = 3840;

QColor schemeColour(host::Presentation& deck, int entry, const QColor& otherwise) {
  const std::int32_t colour = deck.SchemeColour(entry);
  return colour < 0 ? otherwise : render::toColour(colour);
}

qt::PlainSlide plainSlide(host::Presentation& deck, host::Slide& slide) {
  qt::PlainSlide plain;
  plain.background = schemeColour(deck, 1, Qt::white);
  plain.textColour = schemeColour(deck, 2, Qt::black);
  plain.title = render::toQt(slide.Title()).replace('\r', '\n').replace('\v', '\n');
  for (const host::Shape* shape : slide.Shapes()) {
    if (!shape->HasTextFrame() || !shape->Visible() || shape->Placeholder() == host::PlaceholderType::title)
      continue;
    const QString text = render::toQt(shape->Text()).replace('\v', '\r').replace('\n', '\r');
    for (const QString& line : text.split('\r', Qt::SkipEmptyParts)) plain.lines << line;
  }
  return plain;
}

}  // namespace

bool holdsExercise(host::Slide& slide) {
  return !slide.tags().Item(tagName::exercise).empty();
}

SlidePictures::SlidePictures() : thumbnails_(kThumbnailsKept), large_(kLargeKept) {}

void SlidePictures::setDeck(host::Presentation* deck) {
  run_.reset();
  deck_ = deck;
  runWanted_ = waits_ = failureSaid_ = false;
  queue_.clear();
  small_.clear();
  for (const int slide : made_) QFile::remove(fileOf(slide, "slide"));
  made_.clear();
  failed_.clear();
  thumbnailFiles_.clear();
  thumbnails_.clear();
  large_.clear();
}

QImage SlidePictures::thumbnail(int slide) {
  lastAsked_ = slide;
  if (const QImage* kept = thumbnails_.object(slide))
    return *kept;
  QImage image;
  if (const auto made = thumbnailFiles_.find(slide);
      made != thumbnailFiles_.end() && !image.load(made->second))
    thumbnailFiles_.erase(made);
  if (image.isNull()) {
    if (failed_.count(slide) == 0)
      small_.insert(slide);
    image = drawing(slide, sized(kThumbnailWidth));
  }
  thumbnails_.insert(slide, new QImage(image));
  return image;
}

QImage SlidePictures::picture(int slide) {
  if (const QImage* kept = large_.object(slide))
    return *kept;
  QImage image;
  if (isMade(slide) && image.load(fileOf(slide, "slide"))) {
    large_.insert(slide, new QImage(image));
    return image;
  }
  want(slide);
  if (thumbnailFiles_.count(slide) != 0)
    return thumbnail(slide).scaled(pictureSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return drawing(slide, pictureSize());
}

QSize SlidePictures::pictureSize() const {
  int width = kSmallestWidth;
  for (const QScreen* screen : QGuiApplication::screens())
    width = std::max(width, static_cast<int>(screen->size().width() * screen->devicePixelRatio()));
  return sized(std::min(width, kLargestWidth));
}

void SlidePictures::want(int slide) {
  if (isMade(slide) || failed_.count(slide) != 0)
    return;
  std::erase(queue_, slide);
  queue_.push_front(slide);
}

void SlidePictures::wantAll() {
  if (!deck_)
    return;
  for (int slide = 1; slide <= deck_->SlideCount(); ++slide)
    if (thumbnailFiles_.count(slide) == 0 && failed_.count(slide) == 0)
      small_.insert(slide);
  runWanted_ = !run_;
}

bool SlidePictures::step() {
  waits_ = false;
  if (!deck_ || wanted() == 0)
    return false;
  const bool took = takeThumbnails();
  if (!queue_.empty() && (!run_ || run_->canExport())) {
    const int slide = queue_.front();
    queue_.pop_front();
    makePicture(slide);
  } else if (!run_ && !small_.empty()) {
    makeThumbnail(nextThumbnail());
  } else {
    waits_ = run_ && !took;
  }
  return true;
}

// Those that have become ready. False when there was none.
bool SlidePictures::takeThumbnails() {
  try {
    if (std::exchange(runWanted_, false)) {
      const QSize size = sized(kThumbnailWidth);
      run_ = deck_->ExportAll(size.width(), size.height());
    }
    int took = 0;
    while (run_ && took < kThumbnailsAtOnce) {
      const std::optional<host::SlidePicture> next = run_->next();
      if (run_->hasEnded())
        run_.reset();
      if (!next)
        break;
      ++took;
      thumbnailArrived(next->slide, render::toQt(next->file));
    }
    return took > 0;
  } catch (const HostError&) {
    run_.reset();  // what is left is exported one by one, which tells what is wrong
    return false;
  }
}

// The first one at or behind what is looked at.
int SlidePictures::nextThumbnail() const {
  const auto next = small_.lower_bound(lastAsked_);
  return next != small_.end() ? *next : *small_.begin();
}

void SlidePictures::makePicture(int slide) {
  const QImage image = exported(slide, fileOf(slide, "slide"), pictureSize());
  if (image.isNull())
    return;
  made_.insert(slide);
  large_.insert(slide, new QImage(image));
  if (arrived)
    arrived(slide);
}

void SlidePictures::makeThumbnail(int slide) {
  const QString file = fileOf(slide, "thumbnail");
  if (!exported(slide, file, sized(kThumbnailWidth)).isNull())
    thumbnailArrived(slide, file);
}

void SlidePictures::thumbnailArrived(int slide, const QString& file) {
  small_.erase(slide);
  thumbnailFiles_[slide] = file;
  thumbnails_.remove(slide);
  if (arrived)
    arrived(slide);
}

// Null when it cannot be had.
QImage SlidePictures::exported(int slide, const QString& file, QSize size) {
  try {
    deck_->Slides(slide).Export(file.toStdString(), "JPG", size.width(), size.height());
    const QImage image(file);
    if (image.isNull())
      throw HostError(Fault::badData, 0, "The picture of slide " + std::to_string(slide) + " cannot be read");
    return image;
  } catch (const HostError& error) {
    small_.erase(slide);
    std::erase(queue_, slide);
    failed_.insert(slide);
    if (said && !failureSaid_)
      said(std::string("Slides are shown as plain text: ") + error.what());
    failureSaid_ = true;
    return {};
  }
}

QString SlidePictures::fileOf(int slide, const char* kind) const {
  return folder_.filePath(QString("%1-%2.jpg").arg(kind).arg(slide));
}

QImage SlidePictures::drawing(int slide, QSize size) const {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::white);
  if (!deck_)
    return image;
  QPainter painter(&image);
  qt::drawPlainSlide(plainSlide(*deck_, deck_->Slides(slide)), painter, size);
  return image;
}

QSize SlidePictures::sized(int width) const {
  const double ratio = deck_ && deck_->SlideWidth() > 0 ? deck_->SlideHeight() / deck_->SlideWidth() : 0.5625;
  return {width, std::max(1, static_cast<int>(std::lround(width * ratio)))};
}

}  // namespace qrn::desktop
