#include "platform/drawing/Graphics.h"

#include <array>
#include <cstring>
#include <utility>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/qt/Surface.h"
#include "platform/drawing/qt/TextMask.h"

namespace {

/// By pen style, in pixels of the design.
constexpr std::array<LineDashes, 3> DASHES{{{}, {3, 3}, {9, 3, 3, 3, 3, 3}}};

constexpr std::uint32_t BACKGROUND_PIXEL = ToPixel(RGB(255, 255, 255));

/// What a line drawn now looks like.
LineStyle CurrentLineStyle(const GraphicsSurface& surface) {
    LineStyle style{.m_nPixel = ToPixel(RGB(0, 0, 0)), .m_nThickness = ScaledThickness(1)};
    if (!surface.m_pPen) return style;
    style.m_nPixel = ToPixel(surface.m_pPen->m_color);
    if (surface.m_pPen->m_style == PenStyle::Solid) return style;
    for (const int nLength : DASHES[static_cast<std::size_t>(surface.m_pPen->m_style)])
        if (nLength > 0) style.m_dashes[style.m_nDashes++] = ScaledThickness(nLength);
    if (surface.m_backgroundMode == BackgroundMode::Opaque) style.m_nGapPixel = BACKGROUND_PIXEL;
    return style;
}

}  // namespace

void CFont::CreatePointFont(int nPointSize, const wchar_t* pFace) {
    CreatePixelFont(PixelsOfPointSize(nPointSize), pFace, false);
}

void CFont::CreatePixelFont(int nHeight, const wchar_t* pFace, bool bBold) {
    m_strFace = pFace;
    m_bBold = bBold;
    m_nPixelHeight = nHeight;
    if (GetDisplayScale() != 1) m_nPixelHeight = FindScaledHeight(*this, GetDisplayScale());
}

CDC::CDC() : CDC(std::make_unique<GraphicsSurface>()) {}
CDC::CDC(std::unique_ptr<GraphicsSurface> pSurface) : m_pSurface(std::move(pSurface)) {}
CDC::~CDC() = default;

void CDC::CreateCompatibleDC(CDC*) { *m_pSurface = GraphicsSurface(); }

void CDC::SelectBitmap(CBitmap* pBitmap) {
    CBitmap::Image* pImage = pBitmap ? pBitmap->GetImage() : nullptr;
    m_pSurface->m_pImage = pImage ? &pImage->m_pixels : nullptr;
    if (!pImage) return;
    // What will be drawn is pixels: a resource picture stops being a drawing of any size.
    pImage->m_pDrawing.reset();
    if (pImage->m_pixels.format() != QImage::Format_RGB32)
        pImage->m_pixels.convertTo(QImage::Format_RGB32);
}

const CPen* CDC::SelectPen(const CPen* pPen) { return std::exchange(m_pSurface->m_pPen, pPen); }

const CFont* CDC::SelectFont(const CFont* pFont) {
    return std::exchange(m_pSurface->m_pFont, pFont);
}

void CDC::SelectClipRgn(const CRgn* pRgn) {
    m_pSurface->m_clip = pRgn ? std::optional(pRgn->m_rect) : std::nullopt;
}

void CDC::LimitTo(const CRect* pPart) {
    m_pSurface->m_limits = pPart ? std::optional(*pPart) : std::nullopt;
}

BackgroundMode CDC::SetBackgroundMode(BackgroundMode mode) {
    return std::exchange(m_pSurface->m_backgroundMode, mode);
}

COLORREF CDC::SetTextColor(COLORREF color) { return std::exchange(m_pSurface->m_textColor, color); }

TextAlign CDC::SetTextAlign(TextAlign align) {
    return std::exchange(m_pSurface->m_textAlign, align);
}

RasterOp CDC::SetRasterOp(RasterOp op) { return std::exchange(m_pSurface->m_rasterOp, op); }

void CDC::LineTo(int x, int y) {
    const CPoint to{x, y};
    PolylineTo({&to, 1});
}

void CDC::PolylineTo(std::span<const CPoint> points) {
    if (points.empty()) return;
    const LineStyle style = CurrentLineStyle(*m_pSurface);
    const PixelView view = m_pSurface->View();
    for (const CPoint& to : points) DrawLine(view, std::exchange(m_position, to), to, style);
}

void CDC::FillSolidRect(const CRect& rect, COLORREF color) {
    FillPixels(m_pSurface->View(), rect, ToPixel(color));
}

void CDC::Rectangle(const CRect& rect, const CBrush* pBrush) {
    CRect area = rect;
    area.NormalizeRect();
    if (area.IsEmpty()) return;
    const PixelView view = m_pSurface->View();
    if (m_pSurface->m_rasterOp == RasterOp::Invert) {
        InvertPixels(view, area);
        return;
    }
    if (pBrush) FillPixels(view, area, ToPixel(pBrush->m_color));
    const LineStyle style = CurrentLineStyle(*m_pSurface);
    const int nThickness = style.m_nThickness;
    if (area.Width() <= nThickness || area.Height() <= nThickness) {
        FillPixels(view, area, style.m_nPixel);
        return;
    }
    const CPoint corners[] = {{area.left, area.top},
                              {area.right - nThickness, area.top},
                              {area.right - nThickness, area.bottom - nThickness},
                              {area.left, area.bottom - nThickness}};
    for (std::size_t k = 0; k < 4; ++k) DrawLine(view, corners[k], corners[(k + 1) % 4], style);
}

void CDC::TextOut(int x, int y, const std::wstring& strText) {
    const PixelView view = m_pSurface->View();
    if (view.m_clip.IsEmpty() || y >= view.m_clip.bottom) return;
    const TextMask& mask = RenderText(m_pSurface->m_pFont, strText);
    CPoint origin{x, y};
    if (m_pSurface->m_textAlign == TextAlign::Right) origin.x -= mask.m_cell.cx;
    if (m_pSurface->m_textAlign == TextAlign::Center) origin.x -= mask.m_cell.cx / 2;
    if (m_pSurface->m_backgroundMode == BackgroundMode::Opaque)
        FillPixels(view, {origin.x, origin.y, origin.x + mask.m_cell.cx, origin.y + mask.m_cell.cy},
                   BACKGROUND_PIXEL);
    BlendText(view, origin, mask, ToPixel(m_pSurface->m_textColor));
}

CSize CDC::GetTextExtent(const std::wstring& strText) const {
    return MeasureText(m_pSurface->m_pFont, strText);
}

void CDC::CopyRect(int x, int y, int cx, int cy, CDC* pSource, int xSource, int ySource) {
    const PixelView target = m_pSurface->View();
    const QImage* pImage = pSource ? pSource->m_pSurface->m_pImage : nullptr;
    if (target.m_clip.IsEmpty() || !pImage || pImage->isNull()) return;

    // Both rectangles in the target's coordinates.
    CRect available{0, 0, pImage->width(), pImage->height()};
    available.OffsetRect(x - xSource, y - ySource);
    const CRect part = Intersect(Intersect({x, y, x + cx, y + cy}, available), target.m_clip);
    if (part.IsEmpty()) return;

    // Within one image, rows are taken in the order in which none is overwritten before its turn.
    const bool bUpwards = pSource->m_pSurface->m_pImage == m_pSurface->m_pImage && y > ySource;
    for (int nRow = 0; nRow < part.Height(); ++nRow) {
        const int yTarget = bUpwards ? part.bottom - 1 - nRow : part.top + nRow;
        const auto* pRow =
            reinterpret_cast<const std::uint32_t*>(pImage->constScanLine(yTarget - y + ySource)) +
            (part.left - x + xSource);
        std::memmove(target.At(part.left, yTarget), pRow, sizeof(std::uint32_t) * part.Width());
    }
}

COLORREF CDC::GetPixel(int x, int y) const {
    const QImage* pImage = m_pSurface->m_pImage;
    if (!pImage || !pImage->valid(x, y)) return NO_COLOR;
    return ToColor(pImage->pixel(x, y));
}
