// JPEG pictures of all slides of a deck, one after the other, while everything else goes on: those that are
// kept at once, the others as pdftoppm draws them, after LibreOffice has made the PDF where there is none.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "adapters/deck/studio.h"
#include "host/presentation.h"

namespace qrn::deck {

class PictureRun : public host::PictureRun {
 public:
  PictureRun(std::shared_ptr<Studio> studio, std::shared_ptr<const PictureSource> source, PictureKind kind);
  std::optional<host::SlidePicture> next() override;
  bool canExport() const override { return stage_ == Stage::draw || stage_ == Stage::end; }
  bool hasEnded() const override { return stage_ == Stage::end && ready_.empty(); }

 private:
  enum class Stage { look, convert, draw, end };
  void look();
  void convert();
  void draw();
  bool takePage(bool painterEnded);
  void startPages();
  std::string pageFile(std::size_t page);
  std::string pictureOf(std::size_t slide) const;

  std::shared_ptr<Studio> studio_;
  std::shared_ptr<const PictureSource> source_;
  PictureKind kind_;
  Stage stage_ = Stage::look;
  std::size_t looked_ = 0;           // slides of which it is known whether their picture is kept
  std::deque<std::size_t> missing_;  // slides to be drawn
  std::deque<host::SlidePicture> ready_;
  std::unique_ptr<Conversion> conversion_;
  std::unique_ptr<WorkFolder> work_;
  std::string pdf_;
  Program painter_;
  double pageSince_ = 0;     // seconds, when the last page came
  std::size_t painted_ = 0;  // slides at the front of `missing_` that the painter has been given
  std::size_t digits_ = 0;   // of page numbers in file names; 0: not known yet
};

}  // namespace qrn::deck
