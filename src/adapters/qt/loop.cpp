#include "adapters/qt/loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <chrono>

namespace qrn::qt {

namespace {

constexpr std::int64_t kLongestRest = 3'600'000'000;  // microseconds

}  // namespace

void QtLoop::yield() {
  runPumps();
  QCoreApplication::processEvents();
}

void QtLoop::sleep(int milliseconds) {
  QThread::msleep(static_cast<unsigned long>(milliseconds));
}

// A wake before the flag is looked at ends the rest here; a later one stays with the dispatcher, since
// nothing takes events in between.
void QtLoop::rest(std::optional<std::int64_t> microseconds) {
  if (woken_.exchange(false) || microseconds == 0)
    return;
  QTimer alarm;
  alarm.setTimerType(Qt::PreciseTimer);
  if (microseconds)
    alarm.start(std::chrono::milliseconds((std::min(*microseconds, kLongestRest) + 999) / 1000));
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void QtLoop::wake() {
  woken_ = true;
  if (QAbstractEventDispatcher* dispatcher = QCoreApplication::eventDispatcher())
    dispatcher->wakeUp();
}

}  // namespace qrn::qt
