// The picture of a channel of a capture.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "curves/CaptureFile.h"
#include "tools/Picture.h"

/// Milliseconds from the beginning of the curves; value indices when the file has no rate.
struct PlotRange {
    double m_dFrom;
    double m_dTo;  ///< above m_dFrom
};

/// The screen's plot area, in pixels: the size that texts and margins of a plot are designed for.
constexpr CSize PLOT_DESIGN_SIZE{698, 343};

struct PlotRequest {
    PictureFormat m_format = PictureFormat::Png;
    CSize m_size = PLOT_DESIGN_SIZE;   ///< in pixels
    std::uint8_t m_nChannel = 1;       ///< from 1
    std::uint8_t m_nDisplay = 0;       ///< 0 first values of the pairs, 1 second values, 2 both
    std::optional<PlotRange> m_range;  ///< none: all
    std::wstring m_strTitle;           ///< empty: none
    bool m_bUnits = false;             ///< axes have names
};

/// Draws the plot as the screen has it after loading the capture, with what else is asked for.
/// Leaves the display scale of the picture. Needs a window system.
/// @return the bytes of a file
/// @throws CMemoryException
std::vector<BYTE> DrawPlotPicture(const std::shared_ptr<RTCaptureFile>& spCapture,
                                  const PlotRequest& request);
