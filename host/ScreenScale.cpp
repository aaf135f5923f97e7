#include "host/ScreenScale.h"

#include "host/StripPainter.h"
#include "platform/windows/Application.h"
#include "platform/windows/FrameLook.h"
#include "platform/windows/WindowScale.h"

namespace {

// In pixels of the design: the screen, and the screen with what stands around it.
constexpr CSize SCREEN_SIZE{795, 455};
constexpr CSize WHOLE_SIZE{SCREEN_SIZE.cx + 2 * FRAME_BORDER,
                           FRAME_CAPTION + SCREEN_SIZE.cy + STRIP_HEIGHT + 2 * FRAME_BORDER};

}  // namespace

double ChooseScale(const Options& options) {
    if (options.m_dScale) return *options.m_dScale;
    if (options.m_bFitDisplay) return FindFittingScale(WHOLE_SIZE);
    if (!HasDisplay()) return 1;
    return GetDisplayKind() == DisplayKind::Panel ? FindFittingScale(WHOLE_SIZE)
                                                  : GetDesktopScale();
}
