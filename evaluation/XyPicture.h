// The picture of strokes as force over position, with the limits that they are held against.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "evaluation/Verdict.h"
#include "platform/drawing/Graphics.h"

/// What a picture says beside names and numbers.
struct XyWords {
    std::wstring m_strForce = L"force";
    std::wstring m_strPosition = L"position";
    std::wstring m_strVoltage = L"voltage";
    std::array<std::wstring, 3> m_arrOutcomes{L"PASS", L"FAIL", L"CANNOT"};  ///< by Outcome
};

/// What a picture shows. Everything is borrowed.
struct XyPicture {
    struct Stroke {
        const CStroke* m_pStroke;                   ///< one that can be evaluated
        const StrokeVerdict* m_pVerdict = nullptr;  ///< of the limits; null: not judged
    };
    std::vector<Stroke> m_strokes;      ///< the newest last; none: only limits and axes
    const Limits* m_pLimits = nullptr;  ///< null: values as they are, and no objects
    std::wstring m_strTitle;            ///< when the limits have none
    bool m_bVoltage = false;            ///< the second input is a voltage, not a position
    XyWords m_words = {};
};

/// The size that a picture has when nobody asks for another one, in pixels of the design.
constexpr CSize XY_PICTURE_SIZE{800, 600};

/// Draws on all of a surface; texts and lines grow with its height, in pixels of the design.
/// @param size in pixels
void DrawXyPicture(CDC& dc, CSize size, const XyPicture& picture);
