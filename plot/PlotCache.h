// What is kept from one paint of a plot to the next.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/drawing/Graphics.h"
#include "plot/CurveLine.h"
#include "plot/InputTraces.h"
#include "plot/PlotSnapshot.h"

/// The positions and the level that are drawn over the curves; -1: not set.
using PlotMarks = std::array<std::int32_t, 6>;

/// Belongs to one picture, the one that RTPlot::Paint has drawn last with it. User-interface thread
/// only.
struct PlotCache {
    /// The picture is no longer what the last paint left: the next one draws all of it.
    void Forget() { m_scene.reset(); }

    std::vector<CurveLine> m_lines;  ///< of the older curves, by their places in the list
    CurveLine m_newestLine;
    CInputTraces m_traces;  ///< of the first curve with values

    // The picture as the last paint left it.
    std::optional<PlotScene> m_scene;  ///< none: nothing of the rest holds
    PlotMarks m_marks{};
    int m_nOlderLevel = 0;        ///< that the lines of the older curves have left behind
    bool m_bOlderValues = false;  ///< an older curve has values, and with them the traces
    /// The picture without the newest curve and the marks. Made by the first paint that finds
    /// nothing else changed.
    CBitmap m_ground;
    bool m_bHasGround = false;
};
