// As many lines and texts as a paint of the plot draws, at positions that are known beforehand:
// what is left of a paint when nothing has to be found out. Drawn by two programs, so it knows
// nothing but the language of 2017.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "benchmarks/Strokes.h"

struct BarePoint {
    int x;
    int y;
};

struct BareLine {
    enum Kind { Grid, Frame, Curve };  ///< dotted yellow, grey, blue
    Kind m_kind;
    std::vector<BarePoint> m_points;
};

struct BareText {
    BarePoint m_at;
    std::string m_strText;
};

struct BareDrawing {
    static constexpr int CURVES_LEFT = 40;  ///< the area that the curves' lines are clipped to
    static constexpr int CURVES_TOP = 21;
    static constexpr int CURVES_BOTTOM = 296;

    std::vector<BareLine> m_lines;
    std::vector<BareText> m_texts;
};

/// From column to column to the farther end, and to both where the line passes between them.
inline std::vector<BarePoint> FindBareCurve(std::size_t nValues, unsigned nCurve) {
    constexpr std::size_t COLUMNS = 500;  // that a plot reduces a curve to
    std::vector<std::int16_t> values(nValues);
    FillStrokes(values, nCurve);
    const auto toY = [](int nValue) { return 158 - nValue * 255 / HIGHEST_VALUE / 2; };
    const std::size_t nWidth = nValues / COLUMNS;
    std::vector<BarePoint> points;
    int nLevel = 0;
    for (std::size_t nColumn = 0; nColumn < COLUMNS; ++nColumn) {
        int nMin = INT16_MAX;
        int nMax = INT16_MIN;
        for (std::size_t i = 0; i < nWidth; i += SHOWN_STEP) {
            nMin = std::min<int>(nMin, values[nColumn * nWidth + i]);
            nMax = std::max<int>(nMax, values[nColumn * nWidth + i]);
        }
        const int x = BareDrawing::CURVES_LEFT +
                      static_cast<int>(nColumn) * (PICTURE_WIDTH - 42) / int{COLUMNS};
        if (nMin < nLevel && nMax > nLevel) points.push_back({x, toY(nMin)});
        nLevel = nLevel >= nMax ? nMin : nMax;
        points.push_back({x, toY(nLevel)});
    }
    return points;
}

/// The steps of one digital line.
inline std::vector<BarePoint> FindBareTrace(int nTrace) {
    constexpr int CHANGES = 12;
    constexpr int STEP = (PICTURE_WIDTH - BareDrawing::CURVES_LEFT) / CHANGES;
    std::vector<BarePoint> points;
    for (int k = 0; k < CHANGES; ++k) {
        const int y = 310 + nTrace * 16 + (k >> nTrace & 1) * 13;
        points.push_back({BareDrawing::CURVES_LEFT + k * STEP, y});
        points.push_back({BareDrawing::CURVES_LEFT + (k + 1) * STEP, y});
    }
    return points;
}

inline BareDrawing MakeBareDrawing(unsigned nCurves, std::size_t nValues) {
    constexpr int GRID_LINES = 11;
    constexpr int TIME_LABELS = 9;
    constexpr int LEGEND_ENTRIES = 15;  // that fit into the picture
    BareDrawing drawing;
    const auto addLine = [&](BareLine::Kind kind, BarePoint from, BarePoint to) {
        drawing.m_lines.push_back({kind, {from, to}});
    };
    const auto addText = [&](int x, int y, const std::string& strText) {
        drawing.m_texts.push_back({{x, y}, strText});
    };

    for (int k = 0; k < GRID_LINES; ++k) {
        addLine(BareLine::Grid, {40, 30 + 25 * k}, {PICTURE_WIDTH, 30 + 25 * k});
        addText(2, 24 + 25 * k, std::to_string(HIGHEST_VALUE - 1000 * k));
    }
    for (const int y : {296, 380}) addLine(BareLine::Frame, {0, y}, {PICTURE_WIDTH, y});
    for (int k = 0; k < TIME_LABELS; ++k) {
        addLine(BareLine::Frame, {40 + k * 85, 390}, {40 + k * 85, 380});
        addText(42 + k * 85, 391, std::to_string(k * 6000));
    }
    for (int k = 0; k < 4; ++k) {
        drawing.m_lines.push_back({BareLine::Frame, FindBareTrace(k)});
        addText(2, 308 + 16 * k, "I #" + std::to_string(k + 1));
    }
    addText(PICTURE_WIDTH - 30, 400, "(ms)");
    for (unsigned k = 0; k < nCurves; ++k)
        drawing.m_lines.push_back({BareLine::Curve, FindBareCurve(nValues, k)});
    for (int k = 0; nCurves > 1 && k < LEGEND_ENTRIES; ++k) {
        addLine(BareLine::Frame, {600, 30 + 15 * k}, {620, 30 + 15 * k});
        addText(625, 24 + 15 * k, "Curve #" + std::to_string(k + 1));
    }
    return drawing;
}
