// The picture of strokes as force over position.
#pragma once

#include "tools/Picture.h"
#include "tools/Strokes.h"

constexpr int LEAST_XY_EXTENT = 100;  ///< pixels

struct XyPlotRequest {
    std::wstring m_strOutput;  ///< a file, or "-" for standard output
    std::wstring m_strLimits;  ///< empty: none
    PictureFormat m_format = PictureFormat::Png;
    CSize m_size;  ///< pixels
    StrokeRequest m_strokes;
};

/// Draws all strokes of some files over each other. What cannot be drawn is reported and left out;
/// without any stroke no picture is written. Needs a window system.
/// @return the exit code
/// @throws CUsageError, CFileException, CMemoryException
int PlotStrokes(const std::vector<std::wstring>& arrFiles, const XyPlotRequest& request);
