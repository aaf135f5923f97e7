// Frame, scales, axes, marks and legend, by the pixels that they leave.
#include <gtest/gtest.h>

#include <limits>

#include "tests/plot/PlotSheet.h"
#include "tests/support/ScaledDisplay.h"

namespace {

constexpr COLORREF GREY = RGB(192, 192, 192);
constexpr COLORREF YELLOW = RGB(255, 255, 0);
constexpr COLORREF BLACK = RGB(0, 0, 0);
constexpr COLORREF MAGENTA = RGB(255, 0, 255);

// Of a plot 343 pixels high: band 68, its rows 13, traces 10 high, top margin 17.
constexpr int AXIS_Y = 303;
constexpr int BAND_TOP = 235;
constexpr int BASELINE = 218;
constexpr int USABLE_HEIGHT = 198;

int Zero(std::uint32_t) { return 0; }

TEST(Painter, WithoutCurvesDrawsBackgroundAndFrame) {
    PlotSheet sheet;
    sheet.m_plot.m_dXScale = 7;
    sheet.Paint();
    EXPECT_EQ(sheet.Find(GREY).size(), 696u * 341u);
    EXPECT_EQ(sheet.Find(BLACK).size(), 2u * 698u + 2u * 341u);
    EXPECT_EQ(sheet.m_plot.m_dXScale, 7);
    EXPECT_EQ(sheet.m_plot.m_nLeftMargin, 0);

    sheet.m_plot.m_spCurves = nullptr;
    sheet.Paint();
    EXPECT_EQ(sheet.Find(GREY).size(), 696u * 341u);
}

TEST(Painter, LeavesTheScalesInThePlot) {
    PlotSheet sheet(842);
    sheet.m_graph.m_bAutoZoom = 0;
    sheet.Add(120000, Zero);
    sheet.Paint();
    EXPECT_EQ(sheet.m_plot.m_dXScale, 800.0 / 120000);
    EXPECT_EQ(sheet.m_plot.m_nValueSpan, 10000);
    EXPECT_EQ(sheet.m_plot.m_dYScale, USABLE_HEIGHT / 10000.0);
    EXPECT_NEAR(sheet.m_plot.m_nZeroY, BASELINE - USABLE_HEIGHT / 2, 1);
    EXPECT_EQ(sheet.m_plot.m_nLeftMargin, 40);

    sheet.m_plot.m_bZoomed = 1;
    sheet.m_plot.m_nViewStart = 45000;
    sheet.m_plot.m_nViewEnd = 90000;
    sheet.Paint();
    EXPECT_EQ(sheet.m_plot.m_dXScale, 800.0 / 45000);
}

/// At twice the size: band 137 pixels, top margin 34, 395 usable ones, baseline 435; 75 values a
/// pixel, 120 a column.
TEST(Painter, StandsOnThePixelsOfTheDisplay) {
    const ScaledDisplay display(2);
    PlotSheet sheet(2 * 842, 2 * 343);
    sheet.m_graph.m_bAutoZoom = 0;
    sheet.Add(120000, [](std::uint32_t i) { return i < 60000    ? 0
                                                   : i < 110000 ? 2500
                                                                : -5000; })
        .AddPulse(90000, 1);
    sheet.m_plot.m_nMarkerA = 90030;
    sheet.m_plot.m_nTriggerLevel = -2000;
    sheet.Paint();
    EXPECT_EQ(sheet.m_plot.m_dXScale, 1600.0 / 120000);
    EXPECT_EQ(sheet.m_plot.m_nLeftMargin, 80);
    EXPECT_EQ(sheet.m_plot.m_nZeroY, 237);
    // The last column of 0 stands at 880 - 120 / 75, the first of 2500 at 880.
    const auto expectColumn = [&](int x, COLORREF color, const std::vector<int>& rows) {
        SCOPED_TRACE(x);
        std::vector<int> found;
        for (int y = 0; y < 686; ++y)
            if (sheet.m_dc.GetPixel(x, y) == color) found.push_back(y);
        EXPECT_EQ(found, rows);
    };
    constexpr COLORREF BLUE = RGB(0, 0, 255);
    for (const int x : {80, 501, 877}) expectColumn(x, BLUE, {237, 238});
    for (const int x : {882, 1201, 1500}) expectColumn(x, BLUE, {139, 140});
    expectColumn(1676, BLUE, {434, 435});
    for (const auto& [x, y] : {std::pair{880, 141}, {880, 200}, {879, 236}, {878, 236}})
        EXPECT_EQ(sheet.m_dc.GetPixel(x, y), BLUE) << y;
    expectColumn(1400, MAGENTA, {316, 317});
    // Input line 1: row 1 of 27 pixels begins at 606 - 4 * 27; set, it stands 4 above.
    expectColumn(1001, RGB(0, 51, 153), {494, 495});
    expectColumn(1501, RGB(0, 51, 153), {});
    expectColumn(1279, BLACK, {0, 1, 684, 685});
    for (const int x : {1280, 1281}) EXPECT_GT(sheet.CountInColumn(x, BLACK), 300);
    // Six on and six off from 80 to 1684, but for the marker and the curve.
    for (const int y : {395, 396}) EXPECT_EQ(sheet.CountInRow(y, YELLOW), 804 - 2 - 2);
    EXPECT_TRUE(sheet.HasText(280, 626, L"375", BLACK, TextAlign::Center));
    for (int y = 607; y <= 626; ++y) EXPECT_EQ(sheet.m_dc.GetPixel(281, y), BLACK) << y;
    EXPECT_EQ(sheet.m_dc.GetPixel(281, 606), GREY);
}

TEST(Painter, LabelsTheTimeAxisInMilliseconds) {
    PlotSheet sheet(842);
    sheet.Add(120000, Zero);
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(0, 313, L"(ms)", BLACK));
    EXPECT_TRUE(sheet.HasText(40, 313, L"0", BLACK));
    EXPECT_TRUE(sheet.HasText(140, 313, L"375", BLACK, TextAlign::Center));
    EXPECT_TRUE(sheet.HasText(740, 313, L"2625", BLACK, TextAlign::Center));
    EXPECT_TRUE(sheet.HasText(840, 313, L"3000", BLACK, TextAlign::Right));
    for (int x = 40; x <= 840; x += 100)
        for (int y = AXIS_Y + 1; y <= AXIS_Y + 10; ++y) EXPECT_EQ(sheet.m_dc.GetPixel(x, y), BLACK);
    EXPECT_EQ(sheet.m_dc.GetPixel(140, AXIS_Y), GREY);
}

TEST(Painter, LabelsTheTimeOfAViewAndOfOtherRates) {
    PlotSheet sheet;
    sheet.Add(120000, Zero);
    sheet.m_plot.m_bZoomed = 1;
    sheet.m_plot.m_nViewStart = 45000;
    sheet.m_plot.m_nViewEnd =
        90000;  // ticks every 5000: a leading 45 of hundreds, next multiple 50
    const int x = 40 + 656 / 9;
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(40, 313, L"1125", BLACK));
    EXPECT_TRUE(sheet.HasText(x, 313, L"1250", BLACK, TextAlign::Center));
    sheet.m_graph.m_nGraphRate = 20500;  // 20 whole values a millisecond
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(x, 313, L"2500", BLACK, TextAlign::Center));
    sheet.m_graph.m_nGraphRate = 400;
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(x, 313, L"125000", BLACK, TextAlign::Center));
    sheet.m_graph.m_nGraphRate = 0;
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(x, 313, L"50000", BLACK, TextAlign::Center));

    sheet.m_plot.m_nViewStart = 0;
    sheet.m_plot.m_nViewEnd = 1000;  // a leading 100, next multiple 105
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(40 + 68, 313, L"105", BLACK, TextAlign::Center));
    sheet.m_plot.m_nViewEnd = 0;
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(40, 313, L"0", BLACK));
}

TEST(Painter, DrawsTheValueGridWithItsLabels) {
    PlotSheet sheet;
    sheet.m_graph.m_bAutoZoom = 0;
    sheet.Add(100, [](std::uint32_t) { return 32000; });  // out of sight
    sheet.Paint();
    for (int j = 0; j <= 10; ++j) {
        const int y = sheet.m_plot.m_nZeroY + 99 - static_cast<int>(j * 19.8);
        const std::wstring strLabel = std::to_wstring(-5000 + j * 1000);
        EXPECT_EQ(sheet.CountInRow(y, YELLOW), 330) << y;  // of 658, three on and three off
        EXPECT_EQ(sheet.m_dc.GetPixel(42, y), YELLOW);
        EXPECT_EQ(sheet.m_dc.GetPixel(43, y), GREY);
        EXPECT_TRUE(sheet.HasLabel(y - 8, strLabel.c_str())) << j;
    }
    EXPECT_EQ(sheet.Find(YELLOW).size(), 11u * 330u);
}

TEST(Painter, DrawsTheInputBand) {
    PlotSheet sheet;
    sheet.Add(100, Zero);
    sheet.Paint();
    for (const int y : {BAND_TOP, AXIS_Y - 13})
        EXPECT_GE(sheet.CountInRow(y, RGB(128, 128, 128)), 690);
    EXPECT_TRUE(sheet.HasText(0, BAND_TOP + 13, L"I #2", BLACK));
    EXPECT_TRUE(sheet.HasText(0, BAND_TOP + 26, L"I #3", BLACK));
}

struct AutoZoomCase {
    RTExtremes m_extremes;
    int m_nDisplay;
    int m_nRangeMin, m_nRangeMax;
    int m_nSpan;
    int m_nZeroY;
    int m_nMinY;  ///< of the lowest grid line; -1: out of sight
    const wchar_t* m_pLowest;
    const wchar_t* m_pNext;
};

/// Of a plot 700 pixels high: baseline 485, 465 usable pixels, grid lines 46.5 apart.
TEST(Painter, FollowsTheExtremesWithAutoZoom) {
    const AutoZoomCase cases[] = {
        {{1000, -200, 9, 9}, 0, -5000, 5000, 1440, 407, 484, L"-240", L"-96"},
        {{9, 9, 1000, -200}, 1, -5000, 5000, 1440, 407, 484, L"-240", L"-96"},
        {{1000, 7, 9, -200}, 2, -5000, 5000, 1440, 407, 484, L"-240", L"-96"},
        {{0, 0, 9, -9}, 0, -5000, 5000, 10000, 252, 484, L"-5000", L"-4000"},
        {{0, 0, 0, 0}, 0, 5000, -5000, 20, 485, 485, L"0", L"2"},
        {{9, -9, 0, 0}, 0, -5000, 5000, 20, 252, 484, L"-10", L"-8"},
        {{10, 5, 0, 0}, 0, -5000, 5000, 20, 485, 485, L"0", L"2"},
        // 48 to 46 becomes 20 wide, below the maximum; the range decides where zero is.
        {{40, 39, 0, 0}, 0, 0, 5000, 20, 485, 485, L"28", L"30"},
        {{40, 39, 0, 0}, 0, -5000, 5000, 20, 485 - 651, -1, nullptr, nullptr},
        {{32767, -32768, 0, 0}, 0, -5000, 5000, 65535, 252, 484, L"-32768", L"-26215"},
        // The maximum is never below 0.
        {{-50, -100, 0, 0}, 0, -5000, 5000, 120, 20, 485, L"-120", L"-108"},
        // Recomputed without a value.
        {{-32768, 32767, 0, 0}, 0, -5000, 5000, 20, 485, 485, L"0", L"2"},
    };
    for (const AutoZoomCase& one : cases) {
        PlotSheet sheet(698, 700);
        sheet.m_plot.m_nDisplay = static_cast<std::uint8_t>(one.m_nDisplay);
        sheet.m_graph = {one.m_nRangeMin, one.m_nRangeMax, 40000, 1};
        sheet.Add(1000, Zero).SetExtremes(one.m_extremes);
        sheet.Paint();
        const auto nCase = &one - cases;
        EXPECT_EQ(sheet.m_plot.m_nValueSpan, one.m_nSpan) << nCase;
        EXPECT_EQ(sheet.m_plot.m_nZeroY, one.m_nZeroY) << nCase;
        if (one.m_nMinY < 0) continue;
        EXPECT_TRUE(sheet.HasLabel(one.m_nMinY - 8, one.m_pLowest)) << nCase;
        EXPECT_TRUE(sheet.HasLabel(one.m_nMinY - 46 - 8, one.m_pNext)) << nCase;
    }
}

struct RangeCase {
    std::int32_t m_nRangeMin, m_nRangeMax;
    int m_nSpan;
    int m_nZeroY;
    int m_nLines;
    int m_nLow, m_nLowY;    ///< a value and where it stands
    int m_nHigh, m_nHighY;  ///< another
};

/// Both ends count in 16 bits. With the lower end above the upper one the axis runs downwards, and
/// has no grid: its steps are never negative.
TEST(Painter, FollowsARangeOfAnyOrder) {
    constexpr std::int32_t MIN = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t MAX = std::numeric_limits<std::int32_t>::max();
    const RangeCase cases[] = {
        {5000, -5000, -10000, 218, 0, 5000, 218, -5000, 20},
        {-1, -5, -4, 267, 0, -1, 218, -5, 20},
        {1, 0, -1, 218, 0, 1, 218, 0, 20},
        {0, 0, 1, 218, 2, 0, 218, 1, 20},
        {7, 7, 1, 218, 2, 7, 218, 8, 20},
        {-20000, 70000, 24464, 56, 11, -20000, 217, 4464, 20},  // 70000 is 4464
        {70000, -20000, -24464, 218, 0, 4464, 218, -20000, 20},
        {MIN, MAX, -1, 218, 0, 0, 218, -1, 20},
        {40000, -40000, 51072, 218, 11, 0, 218, 25536, 119},  // -25536 to 25536
    };
    for (const RangeCase& one : cases) {
        PlotSheet sheet;
        sheet.m_graph = {one.m_nRangeMin, one.m_nRangeMax, 40000, 0};
        sheet.Add(1000, [&](std::uint32_t i) { return i < 500 ? one.m_nLow : one.m_nHigh; });
        sheet.Paint();
        const auto strCase =
            std::to_string(one.m_nRangeMin) + " to " + std::to_string(one.m_nRangeMax);
        EXPECT_EQ(sheet.m_plot.m_nValueSpan, one.m_nSpan) << strCase;
        EXPECT_DOUBLE_EQ(sheet.m_plot.m_dYScale, 198.0 / one.m_nSpan) << strCase;
        EXPECT_EQ(sheet.m_plot.m_nZeroY, one.m_nZeroY) << strCase;
        int nLines = 0;
        for (int y = 0; y < 343; ++y) nLines += sheet.m_dc.GetPixel(696, y) == YELLOW;
        EXPECT_EQ(nLines, one.m_nLines) << strCase;
        EXPECT_NEAR(sheet.CountInRow(one.m_nLowY, RGB(0, 0, 255)), 328, 3) << strCase;
        EXPECT_NEAR(sheet.CountInRow(one.m_nHighY, RGB(0, 0, 255)), 328, 3) << strCase;

        // A click sets the level that is drawn where it was made.
        if (one.m_nRangeMin != 5000) continue;
        sheet.m_plot.m_nArmedAction = PLOTACT_TRIGGER;
        sheet.m_plot.OnPlotClick({300, 218 - 99});
        EXPECT_EQ(sheet.m_plot.m_nTriggerLevel, -5000);
        sheet.Paint();
        EXPECT_EQ(sheet.CountInRow(218 - 99, MAGENTA), 658);
    }
}

TEST(Painter, TakesTheExtremesOfAllCurves) {
    PlotSheet sheet;
    sheet.Add(1000, Zero).SetExtremes({500, 0, 0, 0});
    sheet.Add(1000, Zero).SetExtremes({100, -1000, 0, 0});
    sheet.m_spCurves->m_lstCurves[0].push_back(nullptr);
    sheet.Paint();
    EXPECT_EQ(sheet.m_plot.m_nValueSpan, 600 + 1200);
    sheet.m_plot.m_bZoomed = 1;
    sheet.m_plot.m_nViewStart = 990;  // in view or not
    sheet.Paint();
    EXPECT_EQ(sheet.m_plot.m_nValueSpan, 600 + 1200);
}

TEST(Painter, DrawsMarksWithoutAndMarkersWithTheMargin) {
    PlotSheet sheet(842);
    auto& curve = sheet.Add(120000, Zero);
    const auto& colours = *sheet.m_plot.m_pColours;
    sheet.m_plot.m_pColours->m_crToolPulse = RGB(1, 0, 0);
    sheet.m_plot.m_pColours->m_crStart = RGB(2, 0, 0);
    sheet.m_plot.m_pColours->m_crEnd = RGB(3, 0, 0);
    sheet.m_plot.m_pColours->m_crTimeMarker = RGB(4, 0, 0);
    sheet.m_plot.m_nToolPulseMark = 15000;
    sheet.m_plot.m_nStartMark = 36000;
    sheet.m_plot.m_nEndMark = 75000;
    sheet.m_plot.m_nMarkerA = 40000;
    sheet.m_plot.m_nMarkerB = 44040;
    curve.m_anMarkers[9] = 66000;
    sheet.m_plot.m_nTriggerLevel = 1000;
    sheet.m_graph.m_bAutoZoom = 0;
    sheet.Paint();
    // The trigger line crosses each of them but not the frame's row 0, where lines stop.
    EXPECT_EQ(sheet.CountInColumn(100, colours.m_crToolPulse), 341);
    EXPECT_EQ(sheet.CountInColumn(240, colours.m_crStart), BAND_TOP - 1);
    EXPECT_EQ(sheet.CountInColumn(500, colours.m_crEnd), 341);
    // Of 24 pixels 15, counted from y = 343 upwards, which itself lies below the picture.
    for (const int x : {40 + 266, 40 + 293, 40 + 440}) {
        EXPECT_EQ(sheet.m_dc.GetPixel(x, 335), RGB(4, 0, 0)) << x;
        EXPECT_NE(sheet.m_dc.GetPixel(x, 334), RGB(4, 0, 0)) << x;
        EXPECT_NEAR(sheet.CountInColumn(x, RGB(4, 0, 0)), 343 * 15 / 24, 4) << x;
    }
    const int y = sheet.m_plot.m_nZeroY - static_cast<int>(1000 * sheet.m_plot.m_dYScale);
    EXPECT_EQ(sheet.CountInRow(y, MAGENTA), 842 - 40);
    EXPECT_EQ(sheet.Find(MAGENTA).size(), 802u);

    sheet.Add(120000, Zero);  // with a second curve, the curves' own markers are not drawn
    sheet.Paint();
    EXPECT_LE(sheet.CountInColumn(40 + 440, RGB(4, 0, 0)), 10);
    EXPECT_GE(sheet.CountInColumn(40 + 266, RGB(4, 0, 0)), 190);
}

TEST(Painter, NamesSeveralCurvesInALegend) {
    PlotSheet sheet(698, 525);  // the entry of the 21st curve touches the bottom
    sheet.Add(1000, Zero);
    sheet.Paint();
    EXPECT_FALSE(sheet.HasText(628, 110, L"Curve #1", RGB(0, 0, 255)));
    for (int k = 1; k < 23; ++k) sheet.Add(1000, [k](std::uint32_t) { return 10 * k; });
    sheet.m_graph = {-5000, 30, 40000, 0};  // keeps the curves away from the legend
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(628, 110, L"Curve #1", RGB(0, 0, 255)));
    EXPECT_TRUE(sheet.HasText(628, 130, L"Curve #2", RGB(0, 100, 0)));
    EXPECT_TRUE(sheet.HasText(628, 310, L"Curve #11", RGB(120, 120, 0)));
    EXPECT_TRUE(sheet.HasText(628, 510, L"Curve #21", RGB(35, 65, 98)));
    for (int x = 598; x < 618; ++x) EXPECT_EQ(sheet.m_dc.GetPixel(x, 140), RGB(0, 100, 0));
    EXPECT_NE(sheet.m_dc.GetPixel(618, 140), RGB(0, 100, 0));
    sheet.m_plot.m_nDisplay = 1;
    sheet.Paint();
    EXPECT_TRUE(sheet.HasText(628, 130, L"Curve #2", RGB(0, 100, 0)));
}

TEST(Painter, DrawsOnlyTheFirstCurveWithValuesInTheBand) {
    PlotSheet sheet;
    sheet.m_spCurves->AddCurve(0, 1000);
    sheet.Add(1000, Zero).AddPulse(1000, 0);
    sheet.Add(1000, Zero).AddPulse(1000, 0xF);
    sheet.Paint();
    // Line 1 clear: two pixels and the trace's height above its base, which is three rows up.
    EXPECT_GE(sheet.CountInRow(AXIS_Y - 4 * 13 - 10 - 2, 10040064), 650);
    EXPECT_EQ(sheet.CountInRow(AXIS_Y - 4 * 13 - 2, 10040064), 0);
    // The first curve with values keeps the band also when none of them is in view.
    sheet.Add(2000, Zero).AddPulse(2000, 0);
    sheet.m_plot.m_bZoomed = 1;
    for (const auto& [nStart, nDisplay] : {std::pair{1000, 1}, {1500, 0}}) {
        sheet.m_plot.m_nViewStart = nStart;
        sheet.m_plot.m_nViewEnd = nStart + 2;
        sheet.m_plot.m_nDisplay = static_cast<std::uint8_t>(nDisplay);
        sheet.Paint();
        EXPECT_TRUE(sheet.Find(10040064).empty()) << nStart;
    }
}

/// Values that only a damaged file or a plot without room can bring: the paint must come back.
TEST(Painter, SurvivesImpossibleState) {
    constexpr std::int32_t MIN = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t MAX = std::numeric_limits<std::int32_t>::max();
    for (const int nDisplay : {0, 1, 2})
        for (const std::int32_t nOne : {MIN, -1, 0, 1, 2500, MAX})
            for (const std::int32_t nOther : {MIN, 0, 3000, MAX}) {
                PlotSheet sheet(nOther == 0 ? 30 : 300, nOne == 0 ? 20 : 200);
                sheet.Add(3000, [](std::uint32_t i) { return static_cast<int>(i); })
                    .AddPulse(nOne, 5);
                sheet.m_spCurves->m_lstCurves[0][0]->AddPulse(nOther, 2);
                sheet.m_plot.m_nDisplay = static_cast<std::uint8_t>(nDisplay);
                sheet.m_plot.m_nSpanValues = nOne;
                sheet.m_plot.m_nViewStart = nOther;
                sheet.m_plot.m_nViewEnd = nOne;
                sheet.m_plot.m_nMarkerA = sheet.m_plot.m_nEndMark = nOne;
                sheet.m_plot.m_nTriggerLevel = nOther;
                sheet.m_graph = {nOther, nOne, 1, static_cast<std::uint8_t>(nOne == 2500)};
                for (const int bZoomed : {0, 1}) {
                    sheet.m_plot.m_bZoomed = static_cast<std::uint8_t>(bZoomed);
                    sheet.Paint();
                    EXPECT_NE(sheet.m_plot.m_nValueSpan, 0);
                }
            }
}

TEST(Painter, DrawsNothingOfTheTimeAxisWhileTheViewStartsBeyondItsEnd) {
    PlotSheet sheet;
    sheet.m_plot.m_nDisplay = 1;
    sheet.Add(1000, Zero).AddPulse(1000, 0);
    sheet.m_plot.m_nViewStart = 1001;
    sheet.Paint();
    EXPECT_TRUE(sheet.Find(sheet.m_plot.m_pColours->m_acrGraphLine2[0]).empty());
    EXPECT_TRUE(sheet.Find(10040064).empty());
    EXPECT_EQ(sheet.m_dc.GetPixel(40, AXIS_Y + 1), GREY);
}

}  // namespace
