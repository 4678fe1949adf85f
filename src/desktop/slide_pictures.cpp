#include "desktop/slide_pictures.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "adapters/qt/slide_painter.h"
#include "host/errors.h"
#include "render/fonts.h"
#include "render/render.h"

namespace qrn::desktop {

namespace {

constexpr int kLargeKept = 6;  // pictures of full size held in memory
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
  return !slide.tags().Item("qrnMatrix").empty();
}

SlidePictures::SlidePictures(PreparePictures prepare) : prepare_(std::move(prepare)), large_(kLargeKept) {}

void SlidePictures::setDeck(host::Presentation* deck) {
  deck_ = deck;
  prepared_ = failureSaid_ = false;
  queue_.clear();
  for (const int slide : made_) QFile::remove(fileOf(slide));
  made_.clear();
  failed_.clear();
  thumbnails_.clear();
  large_.clear();
}

QImage SlidePictures::thumbnail(int slide) {
  const auto found = thumbnails_.find(slide);
  if (!isMade(slide))
    want(slide);
  if (found != thumbnails_.end())
    return found->second;
  return thumbnails_[slide] = drawing(slide, sized(kThumbnailWidth));
}

QImage SlidePictures::picture(int slide) {
  if (const QImage* kept = large_.object(slide))
    return *kept;
  QImage image;
  if (isMade(slide))
    image.load(fileOf(slide));
  if (image.isNull()) {
    want(slide);
    return drawing(slide, pictureSize());
  }
  large_.insert(slide, new QImage(image));
  return image;
}

QSize SlidePictures::pictureSize() const {
  int width = kSmallestWidth;
  for (const QScreen* screen : QGuiApplication::screens())
    width = std::max(width, static_cast<int>(screen->size().width() * screen->devicePixelRatio()));
  return sized(std::min(width, kLargestWidth));
}

void SlidePictures::wantAll() {
  if (!deck_)
    return;
  const std::set<int> already(queue_.begin(), queue_.end());
  for (int slide = 1; slide <= deck_->SlideCount(); ++slide)
    if (!isMade(slide) && failed_.count(slide) == 0 && already.count(slide) == 0)
      queue_.push_back(slide);
}

bool SlidePictures::step() {
  if (!deck_ || queue_.empty())
    return false;
  if (!prepared_) {
    prepared_ = true;
    if (prepare_)
      prepare_(
          *deck_, said ? said : [](const std::string&) {});
  }
  if (queue_.empty())
    return false;
  const int slide = queue_.front();
  queue_.pop_front();
  make(slide);
  return true;
}

void SlidePictures::make(int slide) {
  try {
    const QSize size = pictureSize();
    deck_->Slides(slide).Export(fileOf(slide).toStdString(), "PNG", size.width(), size.height());
    const QImage image(fileOf(slide));
    if (image.isNull())
      throw HostError(Fault::badData, 0, "The picture of slide " + std::to_string(slide) + " cannot be read");
    thumbnails_[slide] =
        image.scaled(sized(kThumbnailWidth), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    made_.insert(slide);
    if (arrived)
      arrived(slide);
  } catch (const HostError& error) {
    failed_.insert(slide);
    if (said && !failureSaid_)
      said(std::string("Slides are shown as plain text: ") + error.what());
    failureSaid_ = true;
  }
}

void SlidePictures::want(int slide) {
  if (failed_.count(slide) != 0)
    return;
  std::erase(queue_, slide);
  queue_.push_front(slide);
}

QString SlidePictures::fileOf(int slide) const {
  return folder_.filePath(QString("slide-%1.png").arg(slide));
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
