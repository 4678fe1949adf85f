// What every set of pictures needs: a folder, the sizes, and a way to take one.
#pragma once

#include <QImage>
#include <QSet>
#include <QSize>
#include <QString>
#include <QWidget>
#include <array>
#include <string>

namespace qrn::pictures {

inline constexpr std::array<QSize, 3> kSizes{QSize(1024, 768), QSize(1920, 1080), QSize(3840, 2160)};

class Album {
 public:
  explicit Album(QString folder);
  // Writes "<name>-<width>x<height>.png"; throws HostError when it cannot, or when that picture has been
  // taken.
  void take(QWidget& window, const QString& name);
  void save(const QImage& picture, const QString& name);
  int count() const { return static_cast<int>(files_.size()); }

 private:
  QString folder_;
  QSet<QString> files_;
};

void deliverEvents();

void takeDeckWindow(Album& album);
void takeSlideShow(Album& album);
void takeKeypads(Album& album);
void takeVoteStates(Album& album);
void takeForms(Album& album);

}  // namespace qrn::pictures
