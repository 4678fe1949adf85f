#include "adapters/qt/loop.h"

#include <QCoreApplication>
#include <QThread>

namespace qrn::qt {

void QtLoop::yield() {
  for (std::size_t i = 0; i < pumps_.size(); ++i)  // a pump may add another
    pumps_[i]();
  QCoreApplication::processEvents();
}

void QtLoop::sleep(int milliseconds) {
  QThread::msleep(static_cast<unsigned long>(milliseconds));
}

}  // namespace qrn::qt
