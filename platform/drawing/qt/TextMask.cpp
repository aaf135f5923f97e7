#include "platform/drawing/qt/TextMask.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <unordered_map>

#include "platform/drawing/qt/Surface.h"

namespace {

constexpr std::size_t MAX_KEPT_FONTS = 8;
constexpr std::size_t MAX_KEPT_TEXTS = 256;  ///< of one font
constexpr std::size_t MAX_KEPT_LENGTH = 64;

/// Smaller glyphs are fitted to the pixel grid, which keeps the thin strokes of labels sharp and in
/// their full colour; smoothing would turn them into shades.
constexpr int SMOOTH_FROM_HEIGHT = 18;

/// The texts of one font. Holds no object of the window system: it may outlive that.
struct FontTexts {
    std::wstring m_strFace;
    int m_nPixelHeight;
    bool m_bBold;
    std::unordered_map<std::wstring, TextMask> m_texts;
};

std::unordered_map<std::wstring, TextMask>& TextsOf(const CFont& font) {
    thread_local std::vector<FontTexts> fonts;
    for (FontTexts& kept : fonts)
        if (kept.m_nPixelHeight == font.m_nPixelHeight && kept.m_bBold == font.m_bBold &&
            kept.m_strFace == font.m_strFace)
            return kept.m_texts;
    if (fonts.size() == MAX_KEPT_FONTS) fonts.clear();
    return fonts.emplace_back(FontTexts{font.m_strFace, font.m_nPixelHeight, font.m_bBold, {}})
        .m_texts;
}

TextMask Render(const CFont& font, const std::wstring& strText) {
    TextMask mask;
    if (!qGuiApp) return mask;
    QFont qtFont = ToQFont(font);
    if (font.m_nPixelHeight < SMOOTH_FROM_HEIGHT) qtFont.setStyleStrategy(QFont::NoAntialias);
    const QFontMetrics metrics(qtFont);
    const QString text = QString::fromStdWString(strText);
    mask.m_cell = {metrics.horizontalAdvance(text), metrics.height()};
    if (text.isEmpty()) return mask;

    // A glyph may lean out of its cell on either side by part of its height.
    const int nMargin = metrics.height() / 2;
    QImage image(mask.m_cell.cx + 2 * nMargin, mask.m_cell.cy, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return mask;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setFont(qtFont);
    painter.setPen(Qt::white);
    painter.drawText(nMargin, metrics.ascent(), text);
    painter.end();

    mask.m_ink = {-nMargin, 0, image.width() - nMargin, image.height()};
    mask.m_coverage.reserve(static_cast<std::size_t>(image.width()) * image.height());
    for (int y = 0; y < image.height(); ++y) {
        const auto* pRow = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            mask.m_coverage.push_back(static_cast<std::uint8_t>(qAlpha(pRow[x])));
    }
    return mask;
}

std::uint32_t Blend(std::uint32_t nBelow, std::uint32_t nAbove, unsigned nCoverage) {
    std::uint32_t nMixed = 0xFF000000u;
    for (const unsigned nShift : {0u, 8u, 16u}) {
        const unsigned nFrom = nBelow >> nShift & 0xFFu;
        const unsigned nTo = nAbove >> nShift & 0xFFu;
        nMixed |= (nFrom * (255 - nCoverage) + nTo * nCoverage + 127) / 255 << nShift;
    }
    return nMixed;
}

const CFont& DefaultFont() {
    static const CFont font = [] {
        CFont made;
        made.CreatePixelFont(12, L"MS Shell Dlg", false);
        return made;
    }();
    return font;
}

}  // namespace

const TextMask& RenderText(const CFont* pFont, const std::wstring& strText) {
    const CFont& font = pFont && *pFont ? *pFont : DefaultFont();
    if (strText.size() > MAX_KEPT_LENGTH || !qGuiApp) {
        thread_local TextMask single;
        single = Render(font, strText);
        return single;
    }
    auto& texts = TextsOf(font);
    const auto found = texts.find(strText);
    if (found != texts.end()) return found->second;
    if (texts.size() == MAX_KEPT_TEXTS) texts.clear();
    return texts.emplace(strText, Render(font, strText)).first->second;
}

const CFont& GetDefaultFont() { return DefaultFont(); }

void BlendText(const PixelView& view, CPoint origin, const TextMask& mask, std::uint32_t nPixel) {
    CRect ink = mask.m_ink;
    ink.OffsetRect(origin.x, origin.y);
    const CRect part = Intersect(ink, view.m_clip);
    if (part.IsEmpty()) return;
    for (int y = part.top; y < part.bottom; ++y) {
        const std::uint8_t* pCoverage = mask.m_coverage.data() +
                                        static_cast<std::ptrdiff_t>(y - ink.top) * ink.Width() +
                                        (part.left - ink.left);
        std::uint32_t* p = view.At(part.left, y);
        for (int x = part.left; x < part.right; ++x, ++p, ++pCoverage)
            if (*pCoverage != 0) *p = Blend(*p, nPixel, *pCoverage);
    }
}
