// Holding the path of a stroke against windows, blocks, lines and envelopes.
#pragma once

#include <string>

#include "evaluation/Limits.h"

/// What came out, in values. Of the distances to the limits the smallest is the margin: below 0
/// where a limit is exceeded. It is that of points in a range, so it may say otherwise than the
/// path between them.
struct PathJudgement {
    std::string m_strReason;             ///< empty: passed
    std::optional<std::size_t> m_point;  ///< the first one where it failed
    std::optional<double> m_margin;      ///< none: there is none to give
    std::optional<double> m_position;    ///< of a line that was crossed: where, first
};

// All take a stroke that can be evaluated.

PathJudgement JudgePath(const CStroke& stroke, const WindowLimit& window);
PathJudgement JudgePath(const CStroke& stroke, const BlockLimit& block);
PathJudgement JudgePath(const CStroke& stroke, const LineLimit& line);
PathJudgement JudgePath(const CStroke& stroke, const EnvelopeLimit& envelope);
