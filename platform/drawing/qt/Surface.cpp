#include "platform/drawing/qt/Surface.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

PixelView GraphicsSurface::View() const {
    if (!m_pImage || m_pImage->isNull()) return {nullptr, 0, {}};
    CRect area{0, 0, m_pImage->width(), m_pImage->height()};
    if (m_limits) area = Intersect(area, *m_limits);
    if (m_clip) area = Intersect(area, *m_clip);
    return {reinterpret_cast<std::uint32_t*>(m_pImage->bits()), m_pImage->bytesPerLine() / 4, area};
}

QFont ToQFont(const CFont& font) {
    const bool bSubstitute = font.m_strFace.empty() || font.m_strFace == L"MS Shell Dlg" ||
                             font.m_strFace == L"Microsoft Sans Serif";
    QFont qtFont(bSubstitute ? QStringLiteral("Liberation Sans")
                             : QString::fromStdWString(font.m_strFace));
    qtFont.setPixelSize(std::max(1, font.m_nPixelHeight));
    qtFont.setBold(font.m_bBold);
    // Glyphs look the same in windows, in memory and in saved pictures.
    qtFont.setHintingPreference(QFont::PreferFullHinting);
    qtFont.setStyleStrategy(QFont::NoSubpixelAntialias);
    return qtFont;
}

int FindScaledHeight(const CFont& font, double dScale) {
    // A product that is whole may come out a little below.
    constexpr double ROUNDING_ERROR = 1e-6;
    const auto scale = [dScale](int nPixels) {
        return static_cast<int>(std::floor(nPixels * dScale + ROUNDING_ERROR));
    };
    CFont scaled = font;
    scaled.m_nPixelHeight = std::max(1, scale(font.m_nPixelHeight));
    if (!qGuiApp) return scaled.m_nPixelHeight;
    // Letters of a few pixels are as wide as the pixels make them: a size that is so many times as
    // large can be wider by more than that.
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const QFontMetrics design(ToQFont(font));
    const auto fits = [&] {
        const QFontMetrics metrics(ToQFont(scaled));
        return metrics.height() <= scale(design.height()) &&
               metrics.horizontalAdvance(letters) <= scale(design.horizontalAdvance(letters));
    };
    while (scaled.m_nPixelHeight > 1 && !fits()) --scaled.m_nPixelHeight;
    return scaled.m_nPixelHeight;
}

CBitmap ToBitmap(const QImage& image) {
    auto pImage = std::make_unique<CBitmap::Image>();
    pImage->m_pixels = image.convertToFormat(QImage::Format_RGB32);
    pImage->m_pixels.setDevicePixelRatio(1);
    return CBitmap(std::move(pImage));
}

void DrawBitmap(QPainter& painter, const CBitmap& bitmap, const QRectF& rect) {
    const CBitmap::Image* pImage = bitmap.GetImage();
    if (!pImage || rect.isEmpty()) return;
    const QSizeF natural = pImage->m_pDrawing ? pImage->m_pDrawing->viewBoxF().size()
                                              : QSizeF(pImage->m_pixels.size());
    QRectF fitted(QPointF(), natural.scaled(rect.size(), Qt::KeepAspectRatio));
    fitted.moveCenter(rect.center());

    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (pImage->m_pDrawing)
        pImage->m_pDrawing->render(&painter, fitted);
    else
        painter.drawImage(fitted, pImage->m_pixels);
    painter.restore();
}
