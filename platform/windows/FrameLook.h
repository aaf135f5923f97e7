// What stands around the client area of a window where no window manager frames it: a border on all
// sides, and the caption with the window's title below the upper one.
#pragma once

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/Geometry.h"

/// In pixels of the design.
constexpr int FRAME_BORDER = 3;
constexpr int FRAME_CAPTION = 30;

/// What a frame adds to its client area, in pixels of the display: nothing where a window manager
/// draws the frames.
PLATFORM_API CSize GetFrameExtent();
