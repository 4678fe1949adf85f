// The windows of the presentation program: finding them, placing our forms over them, and keeping people out
// of them while a vote runs. In a run without windows a running slide show stands for a screen of 1024x768
// pixels.
#pragma once

#include <cstdint>
#include <string>

#include "host/windows.h"

namespace qrn {

// 0 for a window that is not there.
void GetPowerPointWindowHandles(std::int64_t& editHwnd, std::int64_t& showHwnd);

// Takes handles and rectangles of both windows into glo.PowerPoint_hWnd, glo.PowerPointSlideShow_hWnd and
// their _RECT.
void RecordPPTHandles();

// The part of a show's rectangle that the slide fills: centred, in the slide's proportions.
host::WindowRect AdjustSlideShowRECTforScreenRatio(const host::WindowRect& show, double slideWidth,
                                                   double slideHeight);

// Place a loaded form over the show, the edit window, or a rectangle; a missing window falls back to the next
// one and at last to the desktop.
void AlignWindowToPPTSlideShow(const std::string& form);
void AlignWindowToPPT(const std::string& form);
void AlignWindow(const std::string& form, const host::WindowRect& place);

// Shuts or opens all top windows of the presentation program; those shut stand in glo.disabledWindows. Does
// nothing when the installation says so.
void EnablePPT(bool enable);

// Lets the mouse leave the form and shows it.
void FreeCursor();

// Picture of what is on the screen under a form, in the folder of the run; "" when it cannot be taken.
std::string GrabBackground(const std::string& form);

}  // namespace qrn
