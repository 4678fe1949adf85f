// The scripted world with real windows: waits deliver Qt's events as well as the script's.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTest>

#include "adapters/qt/loop.h"
#include "adapters/qt/text_measure.h"
#include "support/test_host.h"

namespace qrn::test {

inline void needApplication() {
  static int argc = 1;
  static char name[] = "desktop_test";
  static char* argv[] = {name, nullptr};
  static const QApplication* application = new QApplication(argc, argv);
  (void)application;
}

class WindowWorld : public TestHost {
 public:
  explicit WindowWorld(int slideCount = 3) : TestHost(slideCount) {
    needApplication();
    host::host().textMeasure = &realMeasure;
  }
  void yield() override {
    QCoreApplication::processEvents();
    TestHost::yield();
    ++yields;
  }
  void rest(std::optional<std::int64_t> microseconds) override {
    QElapsedTimer slept;
    slept.start();
    loop.rest(microseconds);
    clock.micros += slept.nsecsElapsed() / 1000;
  }

  qt::QtLoop loop;
  int yields = 0;

  qt::QtTextMeasure realMeasure;
};

// Names the visible buttons and texts of a window that have less room than they need or stick out of it.
inline std::string cutParts(QWidget& window) {
  std::string cut;
  for (QWidget* part : window.findChildren<QWidget*>()) {
    if (!part->isVisible() || !(qobject_cast<QAbstractButton*>(part) || qobject_cast<QLabel*>(part)))
      continue;
    const QSize needed = part->minimumSizeHint();
    const QRect place(part->mapTo(&window, QPoint(0, 0)), part->size());
    if (part->width() < needed.width() || part->height() < needed.height() || !window.rect().contains(place))
      cut += part->property("text").toString().toStdString() + "; ";
  }
  return cut;
}

}  // namespace qrn::test
