// How the verdict strip looks.
#pragma once

#include "host/VerdictTexts.h"
#include "platform/drawing/Graphics.h"

/// In pixels of the design: letters that are read from three metres, and room for a finger on the
/// button that stands at the right end.
constexpr CSize VERDICT_BUTTON{88, 66};
constexpr int VERDICT_MARGIN = 8;
constexpr int VERDICT_HEIGHT = VERDICT_BUTTON.cy + 2 * VERDICT_MARGIN;

/// Fills an area but for its right end, which is the button's: the mark on the left, on the colour
/// that goes with it; then the head and the faults; then the counters.
void PaintVerdict(CDC& dc, const CRect& area, const VerdictContents& contents);
