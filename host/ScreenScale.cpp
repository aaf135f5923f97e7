#include "host/ScreenScale.h"

#include "host/StripPainter.h"
#include "host/VerdictPainter.h"
#include "platform/windows/Application.h"
#include "platform/windows/FrameLook.h"
#include "platform/windows/WindowScale.h"

namespace {

/// Of the screen, in pixels of the design.
constexpr CSize SCREEN_SIZE{795, 455};

/// Of the screen with what stands around it.
CSize GetWholeSize(const Options& options) {
    const int nStrips = STRIP_HEIGHT + (options.m_strLimits.empty() ? 0 : VERDICT_HEIGHT);
    return {SCREEN_SIZE.cx + 2 * FRAME_BORDER,
            FRAME_CAPTION + SCREEN_SIZE.cy + nStrips + 2 * FRAME_BORDER};
}

}  // namespace

double ChooseScale(const Options& options) {
    if (options.m_dScale) return *options.m_dScale;
    const bool bFit =
        options.m_bFitDisplay || (HasDisplay() && GetDisplayKind() == DisplayKind::Panel);
    if (bFit) return FindFittingScale(GetWholeSize(options));
    return HasDisplay() ? GetDesktopScale() : 1;
}
