#include "desktop/window_stack.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace qrn::desktop {

namespace {

void activate(QWidget* window) {
  window->raise();
  window->activateWindow();
  if (!window->focusWidget())
    window->setFocus();
}

}  // namespace

void WindowStack::raise(QWidget* window) {
  std::erase(windows_, window);
  windows_.emplace_back(window);
  activate(window);
}

void WindowStack::drop(QWidget* window) {
  const bool wasFront = front() == window;
  std::erase(windows_, window);
  if (QWidget* next = front(); next && wasFront)
    activate(next);
}

QWidget* WindowStack::front() const {
  const auto found = std::find_if(windows_.rbegin(), windows_.rend(), [](const QPointer<QWidget>& window) {
    return window && window->isVisible();
  });
  return found == windows_.rend() ? nullptr : found->data();
}

QRect WindowStack::placeForForms() const {
  const QWidget* window = front();
  const QScreen* screen = window ? window->screen() : QGuiApplication::primaryScreen();
  return screen->geometry();
}

}  // namespace qrn::desktop
