// The window system as the logic sees it: the deck window, the slide show, the forms over them, and the
// mouse.
#pragma once

#include <QRect>
#include <functional>

#include "desktop/window_stack.h"
#include "host/windows.h"

namespace qrn::desktop {

class DesktopWindows : public host::Windows {
 public:
  struct Sources {
    std::function<QWidget*()> editWindow, showWindow;  // null while there is none
    std::function<void(bool enabled)> enableEditWindow;
  };
  DesktopWindows(WindowStack& stack, Sources sources) : stack_(stack), sources_(std::move(sources)) {}

  std::int64_t editWindow() const override { return sources_.editWindow() ? kEdit : 0; }
  std::int64_t showWindow() const override { return sources_.showWindow() ? kShow : 0; }
  host::WindowRect rectangle(std::int64_t handle) const override;
  host::WindowRect desktop() const override;
  std::vector<std::int64_t> topWindows() const override;
  void setTopmost(std::int64_t, bool) override {}  // the stack alone says what lies in front
  void enableWindow(std::int64_t handle, bool enabled) override;
  void bringToFront(std::int64_t handle) override;
  void placeForm(const std::string& form, const host::WindowRect& place) override;
  host::WindowRect formRectangle(const std::string& form) const override;
  void capture(const host::WindowRect& place, const std::string& file) override;
  void freeCursor() override { stack_.holdCursor(true); }
  // The mouse is put back inside once and hidden; a toolkit cannot fence it in.
  void trapCursor(const host::WindowRect& place) override;
  void showCursor(bool visible) override { stack_.holdCursor(visible); }

 private:
  static constexpr std::int64_t kEdit = 1, kShow = 2;
  QWidget* window(std::int64_t handle) const;

  WindowStack& stack_;
  Sources sources_;
};

}  // namespace qrn::desktop
