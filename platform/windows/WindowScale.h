// How large windows are on the display (platform/drawing/DisplayScale.h). User-interface thread,
// once the window system is there.
//
// The window system's own scaling is switched off, so that every window's pixels are the display's;
// what a desktop asks of it is taken as a scale of ours.
#pragma once

#include "platform/drawing/Geometry.h"
#include "platform/system/Export.h"

constexpr double MIN_WINDOW_SCALE = 0.5;
constexpr double MAX_WINDOW_SCALE = 4;

/// Sets the display scale, and with it the sizes of standard boxes and of what controls draw by
/// themselves. Before the first window.
PLATFORM_API void ScaleWindows(double dScale);

/// Whether there is a display that somebody can look at.
PLATFORM_API bool HasDisplay();

/// The scale that the desktop's settings ask for: a quarter of 1 at the least, 1 without such
/// settings.
PLATFORM_API double GetDesktopScale();

/// The largest scale at which a window of a size, in pixels of the design, fits the part of the
/// display that is there for windows.
PLATFORM_API double FindFittingScale(CSize design);
