// What a repaint has to draw.
#pragma once

#include <algorithm>

#include "plot/Truncate.h"

/// A part of a picture's width that is to be drawn anew.
struct ChangedSpan {
    int m_nFrom = FAR_PIXEL;
    int m_nEnd = -FAR_PIXEL;  ///< just behind

    static constexpr ChangedSpan Everything() { return {-FAR_PIXEL, FAR_PIXEL}; }
    void Include(const ChangedSpan& other) {
        m_nFrom = std::min(m_nFrom, other.m_nFrom);
        m_nEnd = std::max(m_nEnd, other.m_nEnd);
    }
};
