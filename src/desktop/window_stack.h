// Which of our windows lies in front. Bare window systems and some window managers leave the keyboard nowhere
// when a full-screen window goes; the stack hands it to the window beneath.
#pragma once

#include <QPixmap>
#include <QPointer>
#include <QRect>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace qrn::desktop {

class WindowStack {
 public:
  void raise(QWidget* window);  // shown and put in front
  void drop(QWidget* window);   // hidden or closing: the next visible one gets the keyboard
  QWidget* front() const;       // null when none is visible
  // What our windows show of a place on the screen, but for one of them; transparent where none stands.
  QPixmap picture(const QRect& place, const QWidget* without) const;
  // Where forms stand: on what the room sees of the window in front, else on the whole of its screen.
  QRect placeForForms() const;

  // Windows of forms by the form's name, from the making of the window to its end.
  using Placer = std::function<void(const QRect& place)>;
  void addForm(const std::string& form, QWidget* window, Placer placer) {
    forms_[form] = {window, std::move(placer)};
  }
  void removeForm(const std::string& form, const QWidget* window);
  QWidget* formWindow(const std::string& form) const;  // null for a form without a window
  void placeForm(const std::string& form, const QRect& place);

  // The mouse cursor over forms: held in sight, or hidden while the mouse rests.
  void holdCursor(bool held) { cursorHeld_ = held; }
  bool cursorHeld() const { return cursorHeld_; }

 private:
  struct FormWindow {
    QWidget* window = nullptr;
    Placer placer;
  };
  std::vector<QPointer<QWidget>> windows_;  // the last is in front
  std::map<std::string, FormWindow> forms_;
  bool cursorHeld_ = false;
};

}  // namespace qrn::desktop
