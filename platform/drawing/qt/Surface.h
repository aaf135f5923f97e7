// What stands behind device contexts, bitmaps and fonts, for the window code.
//
// Ownership: a surface borrows its image and everything selected into it. User-interface thread
// only, except where platform/drawing/Graphics.h says otherwise.
#pragma once

#include <QFont>
#include <QImage>
#include <QRectF>
#include <memory>
#include <optional>

#include "platform/drawing/Graphics.h"
#include "platform/drawing/qt/Raster.h"

class QPainter;
class QSvgRenderer;

/// The image that a device context draws on, and the state of the context.
struct PLATFORM_API GraphicsSurface {
    explicit GraphicsSurface(QImage* pTarget = nullptr) : m_pImage(pTarget) {}

    /// The pixels, and the part of them that drawing may change. Takes a copy of an image that
    /// shares its pixels with another one.
    PixelView View() const;

    QImage* m_pImage;  ///< 32-bit RGB; null: drawing does nothing
    const CPen* m_pPen = nullptr;
    const CFont* m_pFont = nullptr;
    std::optional<CRect> m_limits;
    std::optional<CRect> m_clip;
    BackgroundMode m_backgroundMode = BackgroundMode::Opaque;
    COLORREF m_textColor = RGB(0, 0, 0);
    TextAlign m_textAlign = TextAlign::Left;
    RasterOp m_rasterOp = RasterOp::Copy;
};

struct CBitmap::Image {
    QImage m_pixels;  ///< of a resource picture: at its natural size
    /// A resource picture's drawing; null when the pixels are all there is.
    std::shared_ptr<QSvgRenderer> m_pDrawing;
};

/// The font for a description: the face that stands in for it, sized in pixels.
PLATFORM_API QFont ToQFont(const CFont& font);

/// The largest height at which a font of the design, scaled, is no wider and no higher than its
/// metrics in the design, scaled: what has room for a text in the design has room on the display.
PLATFORM_API int FindScaledHeight(const CFont& font, double dScale);

/// A bitmap with an image's pixels.
PLATFORM_API CBitmap ToBitmap(const QImage& image);

/// Draws a bitmap as large as it fits into a rectangle, in its own proportions and centred. A
/// resource picture that is a drawing is sharp at any size and pixel density.
PLATFORM_API void DrawBitmap(QPainter& painter, const CBitmap& bitmap, const QRectF& rect);
