// A device context whose drawing becomes a vector picture.
#pragma once

#include <memory>
#include <vector>

#include "platform/drawing/Graphics.h"

/// Keeps lines as polylines, fills as rectangles and texts as texts, and gives them as an SVG file.
///
/// A line that goes on where a recent one of the same pen ended is joined to it, though something
/// else was drawn in between: a curve drawn piece by piece is one polyline. Texts and fills stand
/// above all that was drawn before them.
/// Nothing can be read back from it: pixels have no colour, nothing is inverted and nothing copied.
/// The background mode is always the transparent one. Texts and fills are not clipped.
class PLATFORM_API CSvgDC : public CDC {
  public:
    /// @param extent in units, which are to this context what pixels are to others
    /// @param nUnitsPerPixel units for a pixel of the picture's natural size: the finer, the less
    ///        the points of a curve are rounded
    CSvgDC(CSize extent, int nUnitsPerPixel);
    ~CSvgDC() override;

    void PolylineTo(std::span<const CPoint> points) override;
    void FillSolidRect(const CRect& rect, COLORREF color) override;
    void Rectangle(const CRect& rect, const CBrush* pBrush) override;
    void TextOut(int x, int y, const std::wstring& strText) override;
    void CopyRect(int, int, int, int, CDC*, int, int) override {}

    /// Draws all that another one shows, its top-left corner at a point.
    void DrawPicture(CPoint corner, CSvgDC& picture);

    /// The picture so far, as the bytes of a file.
    std::vector<BYTE> EncodeSvg();

  private:
    struct Picture;
    std::unique_ptr<Picture> m_pPicture;
};
