// Pictures of the vote screen in all its states, on a dark and on a light slide with a stripe at its edge.
#include <QDir>
#include <QPainter>
#include <QTemporaryDir>

#include "desktop/pictures/pictures.h"
#include "desktop/pictures/states/vote_states.h"
#include "render/colours.h"
#include "render/render.h"

namespace qrn::pictures {

namespace {

host::Ground stripedSlide(const QTemporaryDir& folder, bool dark, QSize size) {
  host::Ground ground = plainGround(dark);
  QImage slide(size, QImage::Format_RGB32);
  slide.fill(render::toColour(ground.background));
  QPainter(&slide).fillRect(0, 0, size.width() / 100, size.height(), QColor(0xe6, 0x9f, 0x3c));
  const QString file = folder.filePath(QString("%1-%2.png").arg(dark ? "dark" : "light").arg(size.width()));
  slide.save(file);
  ground.pictureTone = ground.background;
  ground.backgroundFile = file.toStdString();
  return ground;
}

}  // namespace

void takeVoteStates(Album& album) {
  const QTemporaryDir folder;
  for (const QSize size : {kSizes[0], kSizes[1]})
    for (const bool dark : {true, false})
      for (const VoteState& state : voteStates(stripedSlide(folder, dark, size), size.width(), size.height()))
        album.save(render::surfaceImage(state.surface, size),
                   QString("vote-%1-%2").arg(state.name.c_str(), dark ? "dark" : "light"));
}

}  // namespace qrn::pictures
