#include <gtest/gtest.h>

#include "platform/drawing/SvgDC.h"

namespace {

/// What stands between the file's first two lines and its end.
std::string Elements(CSvgDC& dc) {
    const std::vector<BYTE> bytes = dc.EncodeSvg();
    const std::string strFile(bytes.begin(), bytes.end());
    EXPECT_TRUE(strFile.starts_with(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
        "width=\"50\" height=\"25\" viewBox=\"0 0 100 50\" "))
        << strFile;
    EXPECT_TRUE(strFile.ends_with("</svg>\n"));
    const std::size_t nBegin = strFile.find(">\n", strFile.find("<svg")) + 2;
    return strFile.substr(nBegin, strFile.size() - nBegin - 7);
}

TEST(SvgDC, JoinsTheLinesOfAPenThatAreDrawnInTurn) {
    CSvgDC dc({100, 50}, 2);
    const CPen red(PenStyle::Solid, RGB(255, 16, 0));
    const CPen dashed(PenStyle::DashDotDot, RGB(0, 0, 255));
    for (int n = 0; n < 3; ++n) {
        dc.SelectPen(&red);
        dc.MoveTo(10 * n, n);
        dc.LineTo(10 * n + 10, n + 1);
        dc.SelectPen(&dashed);
        dc.MoveTo(10 * n, 20);
        dc.LineTo(10 * n + 10, 20);
        dc.LineTo(10 * n + 10, 20);
    }
    dc.SelectPen(nullptr);
    dc.MoveTo(30, 3);
    dc.LineTo(30, 8);
    const CPen dotted(PenStyle::Dot, RGB(0, 0, 0));
    dc.SelectPen(&dotted);
    dc.LineTo(40, 8);
    EXPECT_EQ(
        Elements(dc),
        "<polyline stroke=\"#ff1000\" points=\"0.5,0.5 10.5,1.5 20.5,2.5 30.5,3.5\"/>\n"
        "<polyline stroke=\"#0000ff\" stroke-dasharray=\"9 3 3 3 3 3\" "
        "points=\"0.5,20.5 10.5,20.5 20.5,20.5 30.5,20.5\"/>\n"
        "<polyline stroke=\"#000000\" points=\"30.5,3.5 30.5,8.5\"/>\n"
        "<polyline stroke=\"#000000\" stroke-dasharray=\"3 3\" points=\"30.5,8.5 40.5,8.5\"/>\n");
}

TEST(SvgDC, ClipsLinesToWhereTheyMayBeDrawn) {
    const auto draw = [](const CRect* pClip, const std::vector<CPoint>& points) {
        CSvgDC dc({100, 50}, 2);
        if (pClip) {
            const CRgn region(*pClip);
            dc.SelectClipRgn(&region);
        }
        dc.MoveTo(points[0].x, points[0].y);
        dc.PolylineTo(std::span(points).subspan(1));
        std::string strPoints;
        const std::string strElements = Elements(dc);
        for (std::size_t n = 0; (n = strElements.find("points=\"", n)) != std::string::npos;) {
            n += 8;
            strPoints += strElements.substr(n, strElements.find('"', n) - n) + "|";
        }
        return strPoints;
    };
    const CRect clip{10, 5, 31, 26};  // pixels 10 to 30, 5 to 25
    EXPECT_EQ(draw(&clip, {{0, 10}, {90, 10}}), "10.5,10.5 30.5,10.5|");
    EXPECT_EQ(draw(&clip, {{20, 40}, {20, -7}}), "20.5,25.5 20.5,5.5|");
    EXPECT_EQ(draw(&clip, {{0, 0}, {40, 40}}), "10.5,10.5 25.5,25.5|");
    EXPECT_EQ(draw(&clip, {{40, 6}, {0, 26}}), "30.5,11.5 10.5,21.5|");
    EXPECT_EQ(draw(&clip, {{15, 10}, {45, 20}, {15, 22}}),
              "15.5,10.5 30.5,15.5|30.5,21.5 15.5,22.5|")
        << "out and in again";
    EXPECT_EQ(draw(&clip, {{0, 2}, {90, 4}, {40, 30}, {5, 90}, {9, 0}}), "");
    EXPECT_EQ(draw(nullptr, {{-100, 10}, {536870912, 10}}), "0.5,10.5 99.5,10.5|");
}

TEST(SvgDC, KeepsTextsFillsAndOtherPictures) {
    CSvgDC part({20, 10}, 2);
    part.FillSolidRect({1, 2, 5, 4}, RGB(1, 2, 3));
    part.LineTo(3, 0);

    CSvgDC dc({100, 50}, 2);
    const CBrush brush(RGB(192, 192, 192));
    dc.LineTo(9, 0);
    dc.Rectangle({100, 50, 0, 0}, &brush);
    dc.SetRasterOp(RasterOp::Invert);
    dc.Rectangle({0, 0, 100, 50}, &brush);
    CFont font;
    font.CreatePixelFont(20, L"MS Shell Dlg", true);
    dc.SelectFont(&font);
    dc.SetTextColor(RGB(0, 128, 0));
    dc.SetTextAlign(TextAlign::Center);
    dc.TextOut(50, 7, L"a<b> & \"\u00E9\"\x01");
    dc.DrawPicture({30, 40}, part);
    EXPECT_EQ(
        Elements(dc),
        "<polyline stroke=\"#000000\" points=\"0.5,0.5 9.5,0.5\"/>\n"
        "<rect x=\"0.5\" y=\"0.5\" width=\"99\" height=\"49\" fill=\"#c0c0c0\" "
        "stroke=\"#000000\"/>\n"
        "<text x=\"50\" y=\"25.11\" font-size=\"20\" font-weight=\"bold\" text-anchor=\"middle\" "
        "fill=\"#008000\">a&lt;b&gt; &amp; &quot;\u00E9&quot;\uFFFD</text>\n"
        "<g transform=\"translate(30 40)\">\n"
        "<rect x=\"1\" y=\"2\" width=\"4\" height=\"2\" fill=\"#010203\"/>\n"
        "<polyline stroke=\"#000000\" points=\"0.5,0.5 3.5,0.5\"/>\n</g>\n");
}

}  // namespace
