#include "adapters/deck/picture_run.h"

#include <algorithm>
#include <cstdio>

namespace qrn::deck {

namespace {

constexpr std::size_t kLookedAtOnce = 20;  // a few milliseconds
constexpr std::size_t kMostDigits = 6;

std::string padded(std::size_t number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(text.size() < digits ? digits - text.size() : 0, '0') + text;
}

}  // namespace

PictureRun::PictureRun(std::shared_ptr<Studio> studio, std::shared_ptr<const PictureSource> source,
                       PictureKind kind)
    : studio_(std::move(studio)), source_(std::move(source)), kind_(kind) {}

std::optional<host::SlidePicture> PictureRun::next() {
  if (ready_.empty() && stage_ == Stage::look)
    look();
  else if (ready_.empty() && stage_ == Stage::convert)
    convert();
  else if (ready_.empty() && stage_ == Stage::draw)
    draw();
  if (ready_.empty())
    return std::nullopt;
  const host::SlidePicture picture = ready_.front();
  ready_.pop_front();
  return picture;
}

std::string PictureRun::pictureOf(std::size_t slide) const {
  return studio_->pictureNamed(source_->slideVersion(slide), kind_);
}

void PictureRun::look() {
  const std::size_t count = source_->slides().size();
  for (const std::size_t end = std::min(count, looked_ + kLookedAtOnce); looked_ < end; ++looked_) {
    if (const std::string picture = pictureOf(looked_); isKept(picture))
      ready_.push_back({static_cast<int>(looked_) + 1, picture});
    else
      missing_.push_back(looked_);
  }
  if (looked_ == count)
    stage_ = Stage::convert;
}

void PictureRun::convert() {
  if (pdf_.empty())
    pdf_ = studio_->pdfNamed(source_->deckVersion());
  if (!conversion_ && !isKept(pdf_)) {
    conversion_ = std::make_unique<Conversion>(studio_, *source_);
    return;
  }
  if (conversion_ && !conversion_->hasEnded())
    return;
  stage_ = !conversion_ || conversion_->finish(pdf_) ? Stage::draw : Stage::end;
  conversion_.reset();
}

void PictureRun::draw() {
  const bool ended = painter_.hasEnded();
  if (takePage(ended))
    return;
  const bool stuck = !ended && now() - pageSince_ > kDrawSeconds;
  if (!ended && !stuck)
    return;
  for (; painted_ > 0; --painted_) missing_.pop_front();  // it left these out
  if (missing_.empty() || stuck)
    stage_ = Stage::end;
  else
    startPages();
}

// The next slides that stand side by side go to one call of the painter.
void PictureRun::startPages() {
  for (painted_ = 1; painted_ < missing_.size() && missing_[painted_] == missing_[painted_ - 1] + 1;)
    ++painted_;
  work_ = std::make_unique<WorkFolder>(*studio_);
  pageSince_ = now();
  painter_ = Program(studio_->drawing(pdf_, work_->path() + "/page", missing_.front() + 1,
                                      missing_[painted_ - 1] + 1, kind_));
}

// A page is whole when the next one has been begun or the painter has ended.
bool PictureRun::takePage(bool painterEnded) {
  if (painted_ == 0)
    return false;
  const std::size_t slide = missing_.front();
  const bool whole = painterEnded || (painted_ > 1 && exists(pageFile(slide + 2)));
  const std::string picture = pictureOf(slide);
  if (!whole || std::rename(pageFile(slide + 1).c_str(), picture.c_str()) != 0)
    return false;
  missing_.pop_front();
  --painted_;
  pageSince_ = now();
  ready_.push_back({static_cast<int>(slide) + 1, picture});
  return true;
}

// The painter writes page numbers with as many digits as the last page of the PDF has.
std::string PictureRun::pageFile(std::size_t page) {
  const std::string stem = work_->path() + "/page";
  if (exists(stem + ".jpg"))
    return stem + ".jpg";
  for (std::size_t digits = kMostDigits; digits_ == 0 && digits > 0; --digits)
    if (exists(stem + "-" + padded(page, digits) + ".jpg"))
      digits_ = digits;
  return stem + "-" + padded(page, digits_) + ".jpg";
}

}  // namespace qrn::deck
