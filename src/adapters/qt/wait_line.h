#pragma once

#include <QPointer>
#include <QWidget>

#include "host/wait.h"

namespace qrn::qt {

// All that the room sees of a step that takes time: a thin line at the foot of the window in front, once the
// step has lasted for kPatienceMs. Takes no key and no focus.
class WaitLine : public QWidget {
 public:
  WaitLine();
  void begin(QWidget* over);  // goes on when a step is under way already; null: over the screen
  void end();

  static constexpr int kPatienceMs = 400;

 private:
  void appear();
  QPointer<QWidget> over_;
  host::Timer tmrPatience_;
};

}  // namespace qrn::qt
