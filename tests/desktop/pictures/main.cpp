// quorin-pictures DIR: draws every window in its main states with made-up data into DIR, for someone to look
// at.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <iostream>

#include "adapters/qt/loop.h"
#include "adapters/qt/text_measure.h"
#include "adapters/system/files.h"
#include "adapters/system/machine.h"
#include "base/errors.h"
#include "desktop/pictures/pictures.h"
#include "desktop/style.h"
#include "support/test_host.h"

namespace qrn::pictures {

namespace {

class SteadyClock : public host::Clock {
 public:
  SteadyClock() { timer_.start(); }
  host::DateTime now() const override { return {2026, 3, 14, 9, 30, 0, 0}; }
  std::int64_t microseconds() const override { return timer_.nsecsElapsed() / 1000; }

 private:
  QElapsedTimer timer_;
};

}  // namespace

Album::Album(QString folder) : folder_(std::move(folder)) {
  if (!QDir().mkpath(folder_))
    throw HostError(Fault::world, 76, "The folder cannot be made: " + folder_.toStdString());
}

void Album::take(QWidget& window, const QString& name) {
  deliverEvents();
  save(window.grab().toImage(), name);
}

void Album::save(const QImage& picture, const QString& name) {
  const QString file =
      QString("%1/%2-%3x%4.png").arg(folder_, name).arg(picture.width()).arg(picture.height());
  if (files_.contains(file))
    throw HostError(Fault::program, 58, "Two pictures have the name " + file.toStdString());
  files_.insert(file);
  if (!picture.save(file))
    throw HostError(Fault::world, 75, "The picture cannot be written: " + file.toStdString());
}

void deliverEvents() {
  for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
}

struct Set {
  const char* name;
  void (*take)(Album&);
};
constexpr Set kSets[]{{"deck", takeDeckWindow},
                      {"show", takeSlideShow},
                      {"keypads", takeKeypads},
                      {"votes", takeVoteStates},
                      {"forms", takeForms}};

// The set of that name, or every one.
int takeAll(const QString& folder, const QString& name) {
  SteadyClock clock;
  qt::QtLoop loop;
  qt::QtTextMeasure measure;
  system::DiskFiles files;
  system::MachineEnvironment environment;
  test::TestHost world;
  world.dialogs.answersAll = true;
  host::Host& neighbours = host::host();
  neighbours.clock = &clock;
  neighbours.loop = &loop;
  neighbours.textMeasure = &measure;
  neighbours.files = &files;
  neighbours.environment = &environment;
  Album album(folder);
  for (const Set& set : kSets)
    if (name.isEmpty() || name == set.name)
      set.take(album);
  for (const std::string& question : world.dialogs.asked) std::cerr << "a form said: " << question << "\n";
  return album.count();
}

}  // namespace qrn::pictures

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  if (argc < 2 || argc > 3) {
    std::cerr << "usage: quorin-pictures DIR [deck|show|keypads|votes|forms]\n";
    return 2;
  }
  qrn::desktop::applyStyle(*qApp);
  try {
    std::cout << qrn::pictures::takeAll(QString::fromLocal8Bit(argv[1]), argc > 2 ? argv[2] : "")
              << " pictures\n";
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "quorin-pictures: " << error.what() << "\n";
    return 1;
  }
}
