// Rendered lines of text, kept for the next time: a plot draws the same few labels again and again.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/drawing/Graphics.h"
#include "platform/drawing/qt/Raster.h"

/// How much each pixel of a text is covered, and where the text stands. Positions are relative to
/// the top-left corner of the text's cell.
struct TextMask {
    CSize m_cell;                          ///< advance width and line height
    CRect m_ink;                           ///< where the mask lies; may reach out of the cell
    std::vector<std::uint8_t> m_coverage;  ///< row by row; 255: wholly covered
};

/// The mask of one line of text.
/// @param pFont null: 12 pixels of "MS Shell Dlg", in which a value of five digits and a sign is
///        narrower than a plot's label margin
/// @return valid until the next call on the same thread
const TextMask& RenderText(const CFont* pFont, const std::wstring& strText);

/// Blends a colour through a mask whose cell begins at a point.
void BlendText(const PixelView& view, CPoint origin, const TextMask& mask, std::uint32_t nPixel);

/// What a text without a font is drawn in.
const CFont& GetDefaultFont();
