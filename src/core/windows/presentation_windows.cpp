#include "core/windows/presentation_windows.h"

#include <algorithm>
#include <cmath>

#include "core/common.h"
#include "core/diagnostics.h"
#include "core/glo.h"
#include "core/options.h"
#include "host/host.h"
#include "host/presentation.h"

namespace qrn {

namespace {

constexpr const char* kModule = "Vote";
// Stands for the show's window in a run without windows.
constexpr std::int64_t kShowWithoutWindow = 1;
constexpr host::WindowRect kPlainScreen{0, 0, 1024, 768};

host::Windows* windows() {
  return host::host().windows;
}

bool showRuns() {
  const host::PresentationProgram* program = host::host().presentationProgram;
  return program && program->SlideShowWindowsCount() > 0;
}

void GetPowerPointWindowRECTs() {
  const auto rectangle = [](std::int64_t handle) {
    if (handle == 0)
      return host::WindowRect{};
    return windows() ? windows()->rectangle(handle) : kPlainScreen;
  };
  glo.PowerPoint_RECT = rectangle(glo.PowerPoint_hWnd);
  glo.PowerPointSlideShow_RECT = rectangle(glo.PowerPointSlideShow_hWnd);
}

// What the forms will fill: the show, else the edit window.
void takeScreenDimensions() {
  constexpr double kTwipsPerPixel = 15;
  const host::WindowRect& show = glo.PowerPointSlideShow_RECT;
  const host::WindowRect& place = show.empty() ? glo.PowerPoint_RECT : show;
  setScreenDimensions(place.width() * kTwipsPerPixel, place.height() * kTwipsPerPixel);
}

std::string sides(const host::WindowRect& place) {
  return "Top = " + std::to_string(place.top) + ", Left = " + std::to_string(place.left) +
         ", Right = " + std::to_string(place.right) + ", Bottom = " + std::to_string(place.bottom);
}

void log(const std::string& message) {
  writeDebugLog(kModule, "Windows", message);
}

void alignToEditWindow(const std::string& form, const std::string& otherwise) {
  if (glo.PowerPoint_hWnd > 0) {
    AlignWindow(form, glo.PowerPoint_RECT);
    return;
  }
  log(otherwise);
  AlignWindow(form, windows() ? windows()->desktop() : kPlainScreen);
}

}  // namespace

void GetPowerPointWindowHandles(std::int64_t& editHwnd, std::int64_t& showHwnd) {
  if (windows()) {
    editHwnd = windows()->editWindow();
    showHwnd = windows()->showWindow();
  } else {
    editHwnd = 0;
    showHwnd = showRuns() ? kShowWithoutWindow : 0;
  }
  if (showHwnd > 0)
    log("SlideShow Window Found: " + std::to_string(showHwnd));
}

void RecordPPTHandles() {
  glo.PowerPoint_hWnd = glo.PowerPointSlideShow_hWnd = 0;
  GetPowerPointWindowHandles(glo.PowerPoint_hWnd, glo.PowerPointSlideShow_hWnd);
  GetPowerPointWindowRECTs();
  if (glo.PowerPointSlideShow_hWnd > 0 && glo.oPresentation)
    glo.PowerPointSlideShow_RECT = AdjustSlideShowRECTforScreenRatio(
        glo.PowerPointSlideShow_RECT, glo.oPresentation->SlideWidth(), glo.oPresentation->SlideHeight());
  takeScreenDimensions();
}

host::WindowRect AdjustSlideShowRECTforScreenRatio(const host::WindowRect& show, double slideWidth,
                                                   double slideHeight) {
  if (show.empty() || slideWidth <= 0 || slideHeight <= 0)
    return show;
  const double scale = std::min(show.width() / slideWidth, show.height() / slideHeight);
  const int width = static_cast<int>(std::lround(slideWidth * scale));
  const int height = static_cast<int>(std::lround(slideHeight * scale));
  const int left = show.left + (show.width() - width) / 2;
  const int top = show.top + (show.height() - height) / 2;
  return {left, top, left + width, top + height};
}

void AlignWindowToPPTSlideShow(const std::string& form) {
  RecordPPTHandles();
  if (glo.PowerPointSlideShow_hWnd > 0) {
    log("GetWindowRect glo.PowerPointSlideShow_hWnd: " + sides(glo.PowerPointSlideShow_RECT));
    AlignWindow(form, glo.PowerPointSlideShow_RECT);
    return;
  }
  if (glo.PowerPoint_hWnd > 0)
    log("glo.PowerPointSlideShow_hwnd = 0, using PPT Edit Window handle as backup");
  alignToEditWindow(
      form,
      "glo.PowerPointSlideShow_hwnd = 0 AND glo.PowerPoint_hWnd = 0, using Desktop Window handle as "
      "backup");
}

void AlignWindowToPPT(const std::string& form) {
  RecordPPTHandles();
  alignToEditWindow(form, "glo.PowerPoint_hWnd = 0, using Desktop Window handle as backup");
}

void AlignWindow(const std::string& form, const host::WindowRect& place) {
  if (windows() && !place.empty())
    windows()->placeForm(form, place);
}

void EnablePPT(bool enable) {
  if (iniOptions().disableDisablingPptWindows || !windows())
    return;
  const auto change = [&] {
    RecordPPTHandles();
    std::vector<std::int64_t> handles = windows()->topWindows();
    if (enable) {
      handles.insert(handles.end(), glo.disabledWindows.begin(), glo.disabledWindows.end());
      glo.disabledWindows.clear();
    } else {
      glo.disabledWindows = handles;
    }
    for (const std::int64_t handle : handles) windows()->enableWindow(handle, enable);
    if (glo.PowerPointSlideShow_hWnd > 0 && !iniOptions().disableForceSlideShowNoTopmost)
      windows()->setTopmost(glo.PowerPointSlideShow_hWnd, false);
  };
  trapErrors(kModule, "EnablePPT", change, iniOptions().showAllErrors);
}

void FreeCursor() {
  if (windows())
    windows()->freeCursor();
}

std::string GrabBackground(const std::string& form) {
  const std::string file = glo.matrixPath + "grab_background.jpg";
  const bool grabbed = windows() && trapErrors(kModule, "GrabBackground", [&] {
                         windows()->capture(windows()->formRectangle(form), file);
                       });
  return grabbed ? file : "";
}

}  // namespace qrn
