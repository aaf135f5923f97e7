#include "host/ScreenScale.h"

#include "platform/windows/Application.h"
#include "platform/windows/WindowScale.h"

namespace {

// In pixels of the design: the screen, and what stands around it.
constexpr CSize SCREEN_SIZE{795, 455};
constexpr int FRAME_BORDER = 3;
constexpr int FRAME_CAPTION = 30;
constexpr int STATUS_STRIP = 28;

constexpr CSize WHOLE_SIZE{SCREEN_SIZE.cx + 2 * FRAME_BORDER,
                           FRAME_CAPTION + SCREEN_SIZE.cy + STATUS_STRIP + 2 * FRAME_BORDER};

}  // namespace

double ChooseScale(const Options& options) {
    if (options.m_dScale) return *options.m_dScale;
    if (options.m_bFitDisplay) return FindFittingScale(WHOLE_SIZE);
    if (!HasDisplay()) return 1;
    return GetDisplayKind() == DisplayKind::Panel ? FindFittingScale(WHOLE_SIZE)
                                                  : GetDesktopScale();
}
