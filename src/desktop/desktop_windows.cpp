#include "desktop/desktop_windows.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>

#include "render/fonts.h"

namespace qrn::desktop {

namespace {

host::WindowRect fromQt(const QRect& rect) {
  return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

QRect toRect(const host::WindowRect& rect) {
  return {rect.left, rect.top, rect.width(), rect.height()};
}

}  // namespace

QWidget* DesktopWindows::window(std::int64_t handle) const {
  if (handle == kEdit)
    return sources_.editWindow();
  return handle == kShow ? sources_.showWindow() : nullptr;
}

host::WindowRect DesktopWindows::rectangle(std::int64_t handle) const {
  const QWidget* found = window(handle);
  return found ? fromQt(found->geometry()) : host::WindowRect{};
}

host::WindowRect DesktopWindows::desktop() const {
  return fromQt(stack_.placeForForms());
}

std::vector<std::int64_t> DesktopWindows::topWindows() const {
  std::vector<std::int64_t> handles;
  for (const std::int64_t handle : {kEdit, kShow})
    if (window(handle))
      handles.push_back(handle);
  return handles;
}

void DesktopWindows::enableWindow(std::int64_t handle, bool enabled) {
  if (handle == kEdit)
    sources_.enableEditWindow(enabled);
  else if (QWidget* found = window(handle))
    found->setEnabled(enabled);
}

void DesktopWindows::bringToFront(std::int64_t handle) {
  if (QWidget* found = window(handle))
    stack_.raise(found);
}

void DesktopWindows::placeForm(const std::string& form, const host::WindowRect& place) {
  if (!place.empty())
    stack_.placeForm(form, toRect(place));
}

host::WindowRect DesktopWindows::formRectangle(const std::string& form) const {
  const QWidget* found = stack_.formWindow(form);
  return found ? fromQt(found->geometry()) : desktop();
}

void DesktopWindows::capture(const host::WindowRect& place, const std::string& file) {
  const QRect rect = toRect(place);
  QScreen* screen = QGuiApplication::screenAt(rect.center());
  if (!screen)
    screen = QGuiApplication::primaryScreen();
  const QRect inside = rect.translated(-screen->geometry().topLeft());
  const QPixmap picture = screen->grabWindow(0, inside.x(), inside.y(), inside.width(), inside.height());
  if (picture.isNull() || !picture.save(render::toQt(file)))
    throw HostError(Fault::world, 5, "The screen could not be captured to " + file);
}

void DesktopWindows::trapCursor(const host::WindowRect& place) {
  const QRect rect = toRect(place);
  if (!rect.isEmpty() && !rect.contains(QCursor::pos()))
    QCursor::setPos(rect.center());
  stack_.holdCursor(false);
}

}  // namespace qrn::desktop
