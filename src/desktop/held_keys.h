// Tells the presses of a key that is held from strokes, where the window system does not: it sends a release
// and a press of the same instant for each repeat, and when the two come apart in its queue the press looks
// like a new stroke. Such a press goes on as the auto-repeat that it is. Works for the whole application
// while it lives.
#pragma once

#include <QObject>

class QKeyEvent;

namespace qrn::desktop {

class HeldKeys : public QObject {
 public:
  HeldKeys();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool isRepeat(const QKeyEvent& press) const;

  int releasedKey_ = 0;
  unsigned long long releasedAt_ = 0;  // milliseconds of the window system; 0 unknown
};

}  // namespace qrn::desktop
