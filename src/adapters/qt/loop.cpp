#include "adapters/qt/loop.h"

#include <QCoreApplication>
#include <QThread>

namespace qrn::qt {

void QtLoop::yield() {
  runPumps();
  QCoreApplication::processEvents();
}

void QtLoop::sleep(int milliseconds) {
  QThread::msleep(static_cast<unsigned long>(milliseconds));
}

}  // namespace qrn::qt
