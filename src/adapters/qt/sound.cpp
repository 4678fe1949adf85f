#include "adapters/qt/sound.h"

#include <QApplication>
#include <QFileInfo>

namespace qrn::qt {

void QtSound::play(const std::string& file) {
  if (QFileInfo(QString::fromStdString(file)).isFile())
    QApplication::beep();
}

}  // namespace qrn::qt
