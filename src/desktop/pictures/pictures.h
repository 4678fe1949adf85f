// What every set of pictures needs: a folder, the sizes, and a way to take one.
#pragma once

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
  // Writes "<name>-<width>x<height>.png"; throws HostError when it cannot.
  void take(QWidget& window, const QString& name);
  int count() const { return count_; }

 private:
  QString folder_;
  int count_ = 0;
};

void deliverEvents();

void takeDeckWindow(Album& album);
void takeSlideShow(Album& album);
void takeKeypads(Album& album);
void takeDialogs(Album& album);
void takeForms(Album& album);

}  // namespace qrn::pictures
