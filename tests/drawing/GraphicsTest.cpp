#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <utility>

#include "platform/drawing/Graphics.h"
#include "platform/system/Exceptions.h"
#include "tests/support/ScaledDisplay.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr COLORREF PAPER = RGB(10, 20, 30);
constexpr COLORREF INK = RGB(200, 100, 50);

using Pixels = std::set<std::pair<int, int>>;

/// A memory context with a bitmap of its own, filled with the paper's colour.
struct Sheet {
    Sheet(int nWidth, int nHeight) : cx(nWidth), cy(nHeight) {
        m_bitmap.CreateBitmap(cx, cy);
        m_dc.CreateCompatibleDC(nullptr);
        m_dc.SelectBitmap(&m_bitmap);
        m_dc.FillSolidRect({0, 0, cx, cy}, PAPER);
        m_dc.SetBackgroundMode(BackgroundMode::Transparent);
        m_dc.SelectPen(&m_pen);
    }
    Pixels Find(COLORREF color) const {
        Pixels found;
        for (int y = 0; y < cy; ++y)
            for (int x = 0; x < cx; ++x)
                if (m_dc.GetPixel(x, y) == color) found.insert({x, y});
        return found;
    }
    void Line(CPoint from, CPoint to) {
        m_dc.MoveTo(from.x, from.y);
        m_dc.LineTo(to.x, to.y);
    }

    int cx, cy;
    CBitmap m_bitmap;
    CDC m_dc;
    CPen m_pen{PenStyle::Solid, INK};
};

/// Whether a thin line sets a pixel: at each step along it the nearest one across it, and of two
/// equally near ones the lower number.
bool IsOnLine(CPoint from, CPoint to, int x, int y) {
    using Wide = __int128;
    const Wide dx = Wide{to.x} - from.x, dy = Wide{to.y} - from.y;
    const bool bSteep = (dy < 0 ? -dy : dy) > (dx < 0 ? -dx : dx);
    const Wide nLong = bSteep ? dy : dx, nShort = bSteep ? dx : dy;
    const Wide nSteps = nLong < 0 ? -nLong : nLong;
    const Wide nX = Wide{x} - from.x, nY = Wide{y} - from.y;
    const Wide nStep = (bSteep ? nY : nX) * (nLong < 0 ? -1 : 1);
    // How far the pixel is from the line, in 1 / nSteps of a pixel.
    const Wide nAway = (bSteep ? nX : nY) * nSteps - nShort * nStep;
    return nStep >= 0 && nStep < nSteps && 2 * nAway >= -nSteps && 2 * nAway < nSteps;
}

/// Every pixel of a sheet that a line sets: so many across it in place of each, and a square of
/// them where it begins.
Pixels TraceLine(CPoint from, CPoint to, int nWide, int cx, int cy) {
    using std::abs;
    const bool bSteep = abs(std::int64_t{to.y} - from.y) > abs(std::int64_t{to.x} - from.x);
    const auto isIn = [nWide](std::int64_t n, int nFirst) {
        return n >= nFirst && n < std::int64_t{nFirst} + nWide;
    };
    Pixels pixels;
    for (int x = 0; x < cx; ++x)
        for (int y = 0; y < cy; ++y) {
            bool bSet = nWide > 1 && !(from == to) && isIn(x, from.x) && isIn(y, from.y);
            for (int n = 0; n < nWide; ++n)
                bSet |= IsOnLine(from, to, bSteep ? x - n : x, bSteep ? y : y - n);
            if (bSet) pixels.insert({x, y});
        }
    return pixels;
}

TEST(Line, SetsTheNearestPixelsInEveryDirection) {
    for (const int nWide : {1, 2, 3}) {
        const ScaledDisplay display(nWide + 0.4);
        for (int x = 0; x < 15; ++x)
            for (int y = 0; y < 15; ++y) {
                Sheet sheet(15, 15);
                sheet.Line({7, 7}, {x, y});
                EXPECT_EQ(sheet.Find(INK), TraceLine({7, 7}, {x, y}, nWide, 15, 15))
                    << x << ' ' << y << ' ' << nWide;
            }
    }
}

TEST(Line, FromFarOutsideOrClippedRunsOverTheSamePixels) {
    constexpr int MIN = std::numeric_limits<int>::min();
    constexpr int MAX = std::numeric_limits<int>::max();
    const std::pair<CPoint, CPoint> lines[] = {
        {{MIN, MIN}, {MAX, MAX}},     {{MAX, MIN + 77}, {MIN, MAX}},
        {{MIN, 3}, {MAX, 12}},        {{MAX, 12}, {MIN, 3}},
        {{9, MIN}, {4, MAX}},         {{MAX, 10}, {-5, 10}},
        {{-1000003, 500}, {777, -3}}, {{5, 5}, {MAX, MIN}},
        {{MIN, MAX}, {8, 9}},         {{-70000, -70001}, {70013, 70000}},
        {{MIN, MAX - 5}, {MAX, MAX}}, {{-2, 14}, {26, -6}},
        {{13, -2}, {4, 19}},
    };
    const CRgn region({5, 4, 12, 11});
    for (const int nWide : {1, 3})
        for (const bool bClip : {false, true})
            for (const auto& [from, to] : lines) {
                const ScaledDisplay display(nWide);
                Sheet sheet(20, 16);
                if (bClip) sheet.m_dc.SelectClipRgn(&region);
                sheet.Line(from, to);
                Pixels expected = TraceLine(from, to, nWide, 20, 16);
                std::erase_if(expected, [&](const auto& pixel) {
                    return bClip && !region.m_rect.PtInRect({pixel.first, pixel.second});
                });
                EXPECT_EQ(sheet.Find(INK), expected) << from.x << ' ' << from.y;
            }
}

/// A row drawn with a pen from an x position on, '#' for the ink, '=' for white.
std::string DrawRow(PenStyle style, BackgroundMode mode, int xFrom, int nLength) {
    Sheet sheet(nLength, 1);
    const CPen pen(style, INK);
    sheet.m_dc.SelectPen(&pen);
    sheet.m_dc.SetBackgroundMode(mode);
    sheet.Line({xFrom, 0}, {nLength, 0});
    std::string row;
    for (int x = 0; x < nLength; ++x)
        row += sheet.m_dc.GetPixel(x, 0) == INK                  ? '#'
               : sheet.m_dc.GetPixel(x, 0) == RGB(255, 255, 255) ? '='
                                                                 : '.';
    return row;
}

TEST(Line, HasItsPensPattern) {
    EXPECT_EQ(DrawRow(PenStyle::Dot, BackgroundMode::Transparent, 0, 14), "###...###...##");
    EXPECT_EQ(DrawRow(PenStyle::Dot, BackgroundMode::Opaque, 2, 10), "..###===##");
    EXPECT_EQ(DrawRow(PenStyle::DashDotDot, BackgroundMode::Transparent, 0, 30),
              "#########...###...###...######");
    // Kept where a line enters the surface.
    EXPECT_EQ(DrawRow(PenStyle::Dot, BackgroundMode::Transparent, -4, 8), "..###...");
    EXPECT_EQ(DrawRow(PenStyle::DashDotDot, BackgroundMode::Transparent, -24 * 1000 - 10, 8),
              "..###...");
    const ScaledDisplay display(2);
    EXPECT_EQ(DrawRow(PenStyle::Dot, BackgroundMode::Opaque, -8, 16), "====######======");
    EXPECT_EQ(DrawRow(PenStyle::DashDotDot, BackgroundMode::Transparent, -48 * 1000 - 10, 32),
              "########......######......######");
}

TEST(Rectangle, HasItsOutlineInside) {
    for (const double dScale : {0.6, 1.0, 2.0}) {
        const ScaledDisplay display(dScale);
        const int nWide = dScale > 1 ? 2 : 1;
        Sheet sheet(12, 9);
        const CBrush brush(RGB(1, 2, 3));
        sheet.m_dc.Rectangle({1, 1, 11, 8}, &brush);
        EXPECT_EQ(sheet.Find(INK).size(), 10u * 7u - (10 - 2 * nWide) * (7 - 2 * nWide));
        EXPECT_EQ(sheet.Find(brush.m_color).size(), (10u - 2 * nWide) * (7 - 2 * nWide));
        sheet.m_dc.Rectangle({4, 4, 4 + nWide, 7}, &brush);
        EXPECT_EQ(sheet.m_dc.GetPixel(4, 6), INK);
    }
}

/// What a text changes of a sheet.
struct Ink {
    Ink(Sheet& sheet, CPoint point, const wchar_t* pText) {
        sheet.m_dc.TextOut(point.x, point.y, pText);
        for (int x = 0; x < sheet.cx; ++x)
            for (int y = 0; y < sheet.cy; ++y) {
                if (sheet.m_dc.GetPixel(x, y) == PAPER) continue;
                ++m_nPixels;
                m_box = {std::min(m_box.left, x), std::min(m_box.top, y),
                         std::max(m_box.right, x + 1), std::max(m_box.bottom, y + 1)};
            }
    }
    CRect m_box{1000, 1000, 0, 0};
    int m_nPixels = 0;
};

TEST(DrawnText, StandsWhereItsAlignmentSays) {
    Sheet left(100, 20), right(100, 20), center(100, 20);
    left.m_dc.SetTextColor(INK);
    const Ink atLeft(left, {50, 2}, L"3000");
    EXPECT_FALSE(left.Find(INK).empty()) << "no pixel wholly in the text's colour";
    EXPECT_NEAR(atLeft.m_box.left, 50, 2);
    right.m_dc.SetTextAlign(TextAlign::Right);
    const Ink atRight(right, {50, 2}, L"3000");
    EXPECT_NEAR(atRight.m_box.right, 50, 2);
    EXPECT_EQ(atRight.m_box.Width(), atLeft.m_box.Width());
    center.m_dc.SetTextAlign(TextAlign::Center);
    const Ink atCenter(center, {50, 2}, L"3000");
    EXPECT_NEAR(atCenter.m_box.left, 50 - atLeft.m_box.Width() / 2, 2);
    EXPECT_EQ(atCenter.m_box.Width(), atLeft.m_box.Width());
}

TEST(DrawnText, FillsItsCellInTheOpaqueMode) {
    Sheet sheet(60, 20);
    sheet.m_dc.SetBackgroundMode(BackgroundMode::Opaque);
    const Ink cell(sheet, {5, 3}, L"8");
    EXPECT_EQ(cell.m_nPixels, cell.m_box.Width() * cell.m_box.Height());
    EXPECT_EQ(cell.m_box.TopLeft(), (CPoint{5, 3}));
    EXPECT_EQ(sheet.m_dc.GetPixel(5, 3), RGB(255, 255, 255));
}

TEST(Bitmap, IsCopiedAndSavedOrReportsTheFile) {
    Sheet sheet(4, 4);
    const CBitmap copy = sheet.m_bitmap;
    sheet.m_dc.FillSolidRect({0, 0, 4, 4}, INK);
    EXPECT_EQ(copy.GetPixel(1, 1), PAPER);
    EXPECT_EQ(sheet.m_bitmap.GetPixel(1, 1), INK);
    const TemporaryFolder folder;
    sheet.m_bitmap.SavePng(folder.Path("a.png"));
    EXPECT_EQ(folder.Get("a.png").substr(0, 4), "\x89PNG");
    EXPECT_THROW(sheet.m_bitmap.SavePng(folder.Path("none/a.png")), CFileException);
}

}  // namespace
