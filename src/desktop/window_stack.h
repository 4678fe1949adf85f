// Which of our windows lies in front. Bare window systems and some window managers leave the keyboard nowhere
// when a full-screen window goes; the stack hands it to the window beneath.
#pragma once

#include <QPointer>
#include <QRect>
#include <QWidget>
#include <vector>

namespace qrn::desktop {

class WindowStack {
 public:
  void raise(QWidget* window);  // shown and put in front
  void drop(QWidget* window);   // hidden or closing: the next visible one gets the keyboard
  QWidget* front() const;       // null when none is visible
  QRect placeForForms() const;  // where full-screen forms stand: the screen of the front window

 private:
  std::vector<QPointer<QWidget>> windows_;  // the last is in front
};

}  // namespace qrn::desktop
