// Pictures of the slides of the open deck. Asking for one answers at once, with a plain drawing of the slide
// while its picture has not been made; the pictures wanted are made one at a time by step(), where nobody
// waits for them.
#pragma once

#include <QCache>
#include <QImage>
#include <QTemporaryDir>
#include <deque>
#include <functional>
#include <map>
#include <set>

#include "host/presentation.h"

namespace qrn::desktop {

using ProgressLine = std::function<void(const std::string&)>;
using PreparePictures = std::function<void(host::Presentation&, const ProgressLine&)>;

// True for a slide that holds an exercise.
bool holdsExercise(host::Slide& slide);

class SlidePictures {
 public:
  explicit SlidePictures(PreparePictures prepare = {});

  void setDeck(host::Presentation* deck);  // null: none; forgets every picture
  QImage thumbnail(int slide);             // kThumbnailWidth pixels wide
  QImage picture(int slide);               // pictureSize() large
  QSize pictureSize() const;               // that of the largest screen, in the slides' proportions
  bool isMade(int slide) const { return made_.count(slide) != 0; }
  void wantAll();  // behind what is asked for by thumbnail() and picture()

  // Makes the next wanted picture. False when nothing is wanted any more.
  bool step();
  int wanted() const { return static_cast<int>(queue_.size()); }

  std::function<void(int slide)> arrived;        // a picture has taken the place of the drawing
  std::function<void(const std::string&)> said;  // progress, and the first failure

  static constexpr int kThumbnailWidth = 320;

 private:
  QString fileOf(int slide) const;
  QImage drawing(int slide, QSize size) const;
  QSize sized(int width) const;
  void want(int slide);
  void make(int slide);

  PreparePictures prepare_;
  host::Presentation* deck_ = nullptr;
  QTemporaryDir folder_;
  bool prepared_ = false, failureSaid_ = false;
  std::deque<int> queue_;
  std::set<int> made_, failed_;
  std::map<int, QImage> thumbnails_;
  QCache<int, QImage> large_;
};

}  // namespace qrn::desktop
