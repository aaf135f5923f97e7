// How the status strip looks.
#pragma once

#include "host/StripTexts.h"
#include "platform/drawing/Graphics.h"

/// In pixels of the design: two lines of 14 points.
constexpr int STRIP_HEIGHT = 46;

/// Fills an area: the instrument on the left, on the colour of its mood; the values at the markers
/// on the right, as wide as they are; between them the file. A text that is too long loses its
/// middle.
void PaintStrip(CDC& dc, const CRect& area, const StripContents& contents);
