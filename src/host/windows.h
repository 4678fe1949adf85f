// The window system around the forms: the presentation program's two windows and the mouse. Null in a run
// without windows.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/errors.h"

namespace qrn::host {

// Screen pixels. Right and bottom lie just outside.
struct WindowRect {
  int left = 0, top = 0, right = 0, bottom = 0;
  int width() const { return right - left; }
  int height() const { return bottom - top; }
  bool empty() const { return right <= left || bottom <= top; }
  bool operator==(const WindowRect&) const = default;
};

// Handles are any numbers above 0; 0 is no window.
class Windows {
 public:
  virtual ~Windows() = default;
  virtual std::int64_t editWindow() const = 0;
  virtual std::int64_t showWindow() const = 0;
  virtual WindowRect rectangle(std::int64_t handle) const = 0;  // empty for a window that is gone
  virtual WindowRect desktop() const = 0;                       // the screen the forms are on
  virtual std::vector<std::int64_t> topWindows() const = 0;     // all of the presentation program
  virtual void setTopmost(std::int64_t handle, bool topmost) = 0;
  virtual void enableWindow(std::int64_t handle, bool enabled) = 0;
  virtual void bringToFront(std::int64_t handle) = 0;
  virtual void placeForm(const std::string& form, const WindowRect& place) = 0;
  virtual WindowRect formRectangle(const std::string& form) const {
    (void)form;
    return desktop();
  }
  // Writes a picture of what stands on that part of the screen.
  virtual void capture(const WindowRect& place, const std::string& file) {
    (void)place, (void)file;
    throw HostError(Fault::world, 5, "The screen cannot be captured here");
  }
  // False when the system asks for as little motion as possible.
  virtual bool motionWanted() const { return true; }
  virtual void freeCursor() = 0;  // lets the mouse leave the form and shows it
  virtual void trapCursor(const WindowRect& place) = 0;
  virtual void showCursor(bool visible) = 0;
};

}  // namespace qrn::host
