// How much larger than its design everything stands on the display.
#pragma once

#include "platform/system/Export.h"

/// The factor between a pixel of the design and one of the display; 1 until it is set.
/// User-interface thread.
PLATFORM_API double GetDisplayScale() noexcept;

/// Sets the factor. Windows, fonts and pens that exist keep what they were made with: set it before
/// the first of them.
/// @param dScale above 0
PLATFORM_API void SetDisplayScale(double dScale) noexcept;

/// A distance of the design in pixels of the display, rounded to the nearest, halves away from 0.
PLATFORM_API int Scaled(int nPixels) noexcept;

/// How thick a line of the design is on the display: rounded to the nearest, at least 1.
PLATFORM_API int ScaledThickness(int nPixels) noexcept;
