#include "desktop/window_stack.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>

#include "adapters/qt/themed.h"

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
  QWidget* beneath = front();
  if (window->isWindow() && !window->isFullScreen() && window->objectName() != "deckWindow" && beneath &&
      beneath != window && window->windowHandle())
    window->windowHandle()->setTransientParent(beneath->windowHandle());  // stays above a full-screen show
  std::erase_if(windows_, [&](const QPointer<QWidget>& one) { return !one || one == window; });
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

QPixmap WindowStack::picture(const QRect& place, const QWidget* without) const {
  std::vector<QWidget*> seen;  // the lowest first, but for those that one above them covers
  for (const QPointer<QWidget>& window : windows_) {
    if (!window || !window->isVisible() || window == without)
      continue;
    if (window->geometry().contains(place))
      seen.clear();
    seen.push_back(window);
  }
  const double scale = seen.empty() ? 1 : seen.back()->devicePixelRatioF();
  QPixmap picture(place.size() * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  for (QWidget* window : seen)
    painter.drawPixmap(window->geometry().translated(-place.topLeft()), window->grab());
  return picture;
}

QRect WindowStack::placeForForms() const {
  const QWidget* window = front();
  if (window && window->windowFlags().testFlag(Qt::FramelessWindowHint))
    return qt::placeOf(*window);
  const QScreen* screen = window ? window->screen() : QGuiApplication::primaryScreen();
  return screen->geometry();
}

void WindowStack::removeForm(const std::string& form, const QWidget* window) {
  const auto found = forms_.find(form);
  if (found != forms_.end() && found->second.window == window)  // the form may have been loaded again
    forms_.erase(found);
}

QWidget* WindowStack::formWindow(const std::string& form) const {
  const auto found = forms_.find(form);
  return found == forms_.end() ? nullptr : found->second.window;
}

void WindowStack::placeForm(const std::string& form, const QRect& place) {
  const auto found = forms_.find(form);
  if (found != forms_.end())
    found->second.placer(place);
}

}  // namespace qrn::desktop
