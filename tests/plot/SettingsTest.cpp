#include <gtest/gtest.h>

#include <set>

#include "platform/windows/Application.h"
#include "plot/RTPlot.h"
#include "tests/support/TemporaryFolder.h"

namespace {

const std::wstring FLAGS = L"KV3090\\RealTimeMonitor";
const std::wstring COLOURS = L"RealTimeMonitor\\Colours";

/// An application with a settings store of its own.
struct Store {
    TemporaryFolder m_folder;
    CApplication m_app{L"plot test", m_folder.Path("settings.ini")};
};

TEST(PlotSettings, AnEmptyStoreGivesTheDefaults) {
    const Store store;
    const RTPlot plot;
    const RTPlotColours& colours = *plot.m_pColours;
    EXPECT_EQ(colours.m_crBackground, 12632256u);
    EXPECT_EQ(colours.m_crText, 0u);
    EXPECT_EQ(colours.m_crTimeMarker, 0u);
    EXPECT_EQ(colours.m_crGridLines, 65535u);
    EXPECT_EQ(colours.m_acrGraphLine[0], 16711680u);
    EXPECT_EQ(colours.m_acrGraphLine2[0], 15570276u);
    EXPECT_EQ(colours.m_acrGraphLine[5], 9470064u);
    EXPECT_EQ(colours.m_acrGraphLine2[8], 9234160u);
    EXPECT_EQ(colours.m_acrGraphLine[9], 5737262u);
    EXPECT_EQ(plot.m_bSnapToTimeMarkers, 0);
    EXPECT_EQ(plot.m_nArmedAction, -1);
    EXPECT_EQ(plot.m_nValueSpan, 5000);
    EXPECT_EQ(plot.m_nSpanValues, 1);
    EXPECT_EQ(plot.m_nMarkerA, -1);
    EXPECT_EQ(plot.m_nTriggerLevel, -1);
}

TEST(PlotSettings, AllSlotsHaveColoursThatCanBeToldApart) {
    const RTPlot plot;
    const auto& lines = plot.m_pColours->m_acrGraphLine;
    const auto& secondLines = plot.m_pColours->m_acrGraphLine2;
    std::set<COLORREF> distinct(lines.begin(), lines.end());
    distinct.insert(secondLines.begin(), secondLines.end());
    distinct.insert(plot.m_pColours->m_crBackground);
    EXPECT_EQ(distinct.size(), 2 * RTPlotColours::SLOT_COUNT + 1);
    EXPECT_EQ(lines[10], 30840u);
    EXPECT_EQ(lines[11], 30720u);
    EXPECT_EQ(lines[12], 120u);
    EXPECT_EQ(lines[13], 7864320u);
}

TEST(PlotSettings, ColoursComeFromTheirOwnSection) {
    Store store;
    store.m_app.WriteProfileInt(COLOURS, L"CurveGridLines", 255);
    store.m_app.WriteProfileInt(COLOURS, L"GraphLineColour3", 7);
    store.m_app.WriteProfileInt(COLOURS, L"GraphLine2Colour9", 8);
    store.m_app.WriteProfileInt(COLOURS, L"GraphLineColour10", 9);  // no such key
    store.m_app.WriteProfileInt(FLAGS, L"Text", 255);
    store.m_app.WriteProfileInt(FLAGS + L"\\Colours", L"Text", 255);
    const RTPlot plot;
    EXPECT_EQ(plot.m_pColours->m_crGridLines, RGB(255, 0, 0));
    EXPECT_EQ(plot.m_pColours->m_acrGraphLine[3], 7u);
    EXPECT_EQ(plot.m_pColours->m_acrGraphLine2[9], 8u);
    EXPECT_EQ(plot.m_pColours->m_acrGraphLine[10], 30840u);
    EXPECT_EQ(plot.m_pColours->m_crText, 0u);
}

TEST(PlotSettings, FlagsAreReadAndWrittenBack) {
    Store store;
    { const RTPlot plot; }
    EXPECT_EQ(store.m_app.GetProfileInt(FLAGS, L"SnapToTimeMarkers", 99), 0);
    EXPECT_EQ(store.m_app.GetProfileInt(FLAGS, L"ShowAllCurvePulses", 99), 0);

    store.m_app.WriteProfileInt(FLAGS, L"SnapToTimeMarkers", 7);
    store.m_app.WriteProfileInt(FLAGS, L"ShowAllCurvePulses", 7);
    {
        const RTPlot plot;
        EXPECT_EQ(plot.m_bSnapToTimeMarkers, 7);
        EXPECT_EQ(plot.m_bShowAllCurvePulses, 1);
    }
    EXPECT_EQ(store.m_app.GetProfileInt(FLAGS, L"SnapToTimeMarkers", 99), 7);
    EXPECT_EQ(store.m_app.GetProfileInt(FLAGS, L"ShowAllCurvePulses", 99), 1);
}

}  // namespace
