// Pictures of the slides of the open deck, large ones and thumbnails. Asking for one answers at once, with
// what there is: the picture, its thumbnail made large, or a plain drawing of the slide. What is wanted is
// made by step(), where nobody waits for it.
#pragma once

#include <QCache>
#include <QImage>
#include <QTemporaryDir>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>

#include "host/presentation.h"

namespace qrn::desktop {

// True for a slide that holds an exercise.
bool holdsExercise(host::Slide& slide);

class SlidePictures {
 public:
  SlidePictures();

  void setDeck(host::Presentation* deck);  // null: none; forgets every picture, ends what is on its way
  QImage thumbnail(int slide);             // kThumbnailWidth pixels wide
  QImage picture(int slide);               // pictureSize() large
  QSize pictureSize() const;               // that of the largest screen, in the slides' proportions
  void want(int slide);                    // its picture, before all that was wanted until now
  void wantAll();                          // all thumbnails, behind pictures

  // Goes on with what is wanted, one picture at most. False when nothing was wanted any more.
  bool step();
  int wanted() const { return static_cast<int>(queue_.size() + small_.size()); }
  int thumbnailsWanted() const { return static_cast<int>(small_.size()); }
  bool waits() const { return waits_; }  // another program has to go on before step() can

  std::function<void(int slide)> arrived;  // its picture or thumbnail has taken the place of a lesser one
  std::function<void(const std::string&)> said;  // the first failure

  static constexpr int kThumbnailWidth = 320;

 private:
  bool isMade(int slide) const { return made_.count(slide) != 0; }
  QString fileOf(int slide, const char* kind) const;
  QImage drawing(int slide, QSize size) const;
  QSize sized(int width) const;
  bool takeThumbnails();
  int nextThumbnail() const;
  void makePicture(int slide);
  void makeThumbnail(int slide);
  QImage exported(int slide, const QString& file, QSize size);
  void thumbnailArrived(int slide, const QString& file);

  host::Presentation* deck_ = nullptr;
  QTemporaryDir folder_;
  std::unique_ptr<host::PictureRun> run_;  // all thumbnails on their way
  bool runWanted_ = false, waits_ = false, failureSaid_ = false;
  std::deque<int> queue_;                // pictures wanted
  std::set<int> small_, made_, failed_;  // thumbnails wanted; pictures made; slides given up
  int lastAsked_ = 1;                    // thumbnails near this one are looked at
  std::map<int, QString> thumbnailFiles_;
  QCache<int, QImage> thumbnails_, large_;
};

}  // namespace qrn::desktop
