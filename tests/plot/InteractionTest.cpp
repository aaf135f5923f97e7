#include <gtest/gtest.h>

#include <limits>

#include "tests/plot/PlotSheet.h"

namespace {

/// A plot 842 pixels wide that shows 120000 values, as a paint has left it.
struct Interaction : testing::Test {
    Interaction() : m_sheet(842), m_plot(m_sheet.m_plot) {
        m_sheet.m_graph.m_bAutoZoom = 0;
        m_sheet.Add(120000, [](std::uint32_t) { return 0; });
        m_sheet.Paint();
    }
    std::int32_t Click(PlotAction action, int x, int y = 100) {
        m_plot.m_nArmedAction = action;
        return m_plot.OnPlotClick({x, y});
    }
    PlotSheet m_sheet;
    RTPlot& m_plot;
};

TEST_F(Interaction, ADragWithinAHundredValuesIsDropped) {
    m_plot.OnPlotClick({340, 50});
    m_plot.EndZoomDrag(340);
    EXPECT_EQ(m_plot.m_nViewStart, 0);
    EXPECT_EQ(m_plot.m_nViewEnd, 120000);
    EXPECT_EQ(m_plot.m_bZoomed, 1);

    m_plot.m_bZoomed = 0;
    m_plot.OnPlotClick({340, 50});
    m_plot.EndZoomDrag(341);
    EXPECT_EQ(m_plot.m_nViewStart, 45000);
    EXPECT_EQ(m_plot.m_nViewEnd, 45150);
}

TEST_F(Interaction, ADragToTheLeftZoomsToo) {
    m_plot.OnPlotClick({341, 50});  // index 45150, which counts as 45100
    m_plot.EndZoomDrag(140);
    EXPECT_NEAR(m_plot.m_nViewStart, 15000, 1);
    EXPECT_EQ(m_plot.m_nViewEnd, 45100);
}

TEST_F(Interaction, ADragInAZoomedViewCountsFromItsStart) {
    m_plot.m_bZoomed = 1;
    m_plot.m_nViewStart = 40000;
    m_plot.m_nViewEnd = 80000;
    m_sheet.Paint();  // 50 values a pixel
    m_plot.OnPlotClick({143, 50});
    EXPECT_EQ(m_plot.m_nViewStart, 45100);  // 40000 + 5150
    m_plot.EndZoomDrag(240);
    EXPECT_EQ(m_plot.m_nViewEnd, 50000);
}

TEST_F(Interaction, ADragOfBothQuantitiesStartsEven) {
    m_plot.m_nDisplay = 2;
    m_plot.OnPlotClick({340, 50});
    EXPECT_EQ(m_plot.m_nViewStart, 45000);
}

TEST_F(Interaction, AReleaseBesideThePlotCountsAsOneAtItsEdge) {
    m_plot.OnPlotClick({340, 50});
    m_plot.EndZoomDrag(-5000);
    EXPECT_EQ(m_plot.m_nViewStart, 0);
    EXPECT_EQ(m_plot.m_nViewEnd, 45000);
    m_plot.ZoomAll();
    m_plot.OnPlotClick({340, 50});
    m_plot.EndZoomDrag(5000);
    EXPECT_NEAR(m_plot.m_nViewEnd, 120300, 1);  // x = 842, two pixels behind the last value
}

TEST_F(Interaction, APressInTheMarginOrWithoutCurvesBeginsNothing) {
    m_plot.OnPlotClick({20, 50});
    EXPECT_EQ(m_plot.m_bZoomDrag, 0);
    m_plot.EndZoomDrag(700);
    EXPECT_EQ(m_plot.m_nViewEnd, 120000);

    m_plot.m_spCurves = std::make_shared<CRTCurves>();
    EXPECT_EQ(Click(PLOTACT_MARKER_A, 340), 0);
    EXPECT_EQ(m_plot.m_nMarkerA, -1);
    EXPECT_EQ(m_plot.m_nArmedAction, PLOTACT_MARKER_A);
}

TEST_F(Interaction, AnArmedClickSetsItsMarkAndDisarms) {
    m_plot.m_dXScale = 2.5;
    m_plot.m_nViewStart = 1000;
    EXPECT_EQ(Click(PLOTACT_TOOLPULSE, 250), 1);
    EXPECT_EQ(m_plot.m_nToolPulseMark, 1101);
    EXPECT_EQ(Click(PLOTACT_START, 250), 2);
    EXPECT_EQ(m_plot.m_nStartMark, 1100);
    EXPECT_EQ(Click(PLOTACT_END, 250), 3);
    EXPECT_EQ(m_plot.m_nEndMark, 1101);
    EXPECT_EQ(Click(PLOTACT_MARKER_A, 290), 5);
    EXPECT_EQ(m_plot.m_nMarkerA, 1100);
    m_plot.m_dXScale = 2.7;
    EXPECT_EQ(Click(PLOTACT_MARKER_B, 310), 6);
    EXPECT_EQ(m_plot.m_nMarkerB, 1101);  // (270 + 5) / 2.7
    EXPECT_EQ(m_plot.m_nArmedAction, PLOTACT_NONE);
    EXPECT_EQ(m_plot.m_bZoomDrag, 0);

    m_plot.m_dXScale = 12.5;
    Click(PLOTACT_MARKER_B, 53);
    EXPECT_EQ(m_plot.m_nMarkerB, 1002);  // (13 + 12) / 12.5
    m_plot.m_nViewStart = 0;
    Click(PLOTACT_MARKER_A, 3);
    EXPECT_EQ(m_plot.m_nMarkerA, 0);
    Click(PLOTACT_MARKER_B, 3);
    EXPECT_EQ(m_plot.m_nMarkerB, 0);
}

TEST_F(Interaction, ATriggerClickSetsTheLevelAboveZero) {
    m_plot.m_dYScale = 0.05;
    m_plot.m_nZeroY = 150;
    EXPECT_EQ(Click(PLOTACT_TRIGGER, 300, 100), 4);
    EXPECT_EQ(m_plot.m_nTriggerLevel, 1000);
    EXPECT_EQ(m_plot.GetTriggerPercent(), 20);
    Click(PLOTACT_TRIGGER, 300, 200);
    EXPECT_EQ(m_plot.GetTriggerPercent(), -20);
    m_plot.m_nTriggerLevel = -1;
    EXPECT_EQ(m_plot.GetTriggerPercent(), 0);
}

TEST_F(Interaction, MarkersSnapToMarksWithinAThousandth) {
    m_plot.m_nEndMark = 10000;
    m_plot.m_nStartMark = 10010;
    const auto snap = [this](std::int32_t nMarker) {
        m_plot.SnapMarker(nMarker);
        return nMarker;
    };
    EXPECT_EQ(snap(10005), 10005);
    m_plot.m_bSnapToTimeMarkers = 7;
    EXPECT_EQ(snap(10005), 10000);
    EXPECT_EQ(snap(10011), 10010);  // beyond the end mark's reach, within the start mark's
    EXPECT_EQ(snap(9990), 9990);
    EXPECT_EQ(snap(10021), 10021);
    EXPECT_EQ(snap(0), 0);
    m_plot.m_nToolPulseMark = 10015;
    EXPECT_EQ(snap(10011), 10010);
    m_plot.m_nStartMark = -1;
    EXPECT_EQ(snap(10011), 10015);
    m_plot.m_nToolPulseMark = -1;
    EXPECT_EQ(snap(10011), 10011);
    m_plot.m_dXScale = 1;
    Click(PLOTACT_MARKER_A, 10045);
    EXPECT_EQ(m_plot.m_nMarkerA, 10000);
}

TEST_F(Interaction, TimeDistanceCountsFortyValuesAMillisecond) {
    m_plot.m_nMarkerA = 44039;
    EXPECT_EQ(m_plot.GetTimeDistance(), 0);
    m_plot.m_nMarkerB = 40000;
    EXPECT_EQ(m_plot.GetTimeDistance(), 100);
    m_plot.m_nMarkerA = std::numeric_limits<std::int32_t>::max();
    m_plot.m_nMarkerB = std::numeric_limits<std::int32_t>::min();
    EXPECT_EQ(m_plot.GetTimeDistance(), 107374182);
}

TEST_F(Interaction, WithoutAUsableScaleClicksAndDragsDoNothing) {
    using Limits = std::numeric_limits<double>;
    const double dUnpainted = RTPlot().m_dXScale;
    for (const double dScale :
         {dUnpainted, Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
        m_plot.m_dXScale = m_plot.m_dYScale = dScale;
        for (const std::int32_t nAction : {1, 2, 3, 4, 5, 6, -1}) {
            m_plot.m_nArmedAction = nAction;
            EXPECT_EQ(m_plot.OnPlotClick({300, 100}), 0) << nAction << " at " << dScale;
            EXPECT_EQ(m_plot.m_nArmedAction, nAction);
        }
        EXPECT_EQ(m_plot.m_bZoomDrag, 0);
    }
    EXPECT_EQ(m_plot.m_nViewStart, 0);
    for (const std::int32_t nPlace :
         {m_plot.m_nToolPulseMark, m_plot.m_nStartMark, m_plot.m_nEndMark, m_plot.m_nTriggerLevel})
        EXPECT_EQ(nPlace, -1);
    // The one scale that an action needs is enough.
    m_plot.m_dYScale = -0.05;
    EXPECT_EQ(Click(PLOTACT_MARKER_A, 300), 0);
    EXPECT_EQ(Click(PLOTACT_TRIGGER, 300), PLOTACT_TRIGGER);
    m_sheet.Paint();
    m_plot.m_dYScale = 0;
    EXPECT_EQ(Click(PLOTACT_MARKER_A, 300), PLOTACT_MARKER_A);
    // A drag that loses its scale leaves the view as it was.
    m_plot.OnPlotClick({340, 50});
    m_plot.m_dXScale = 0;
    m_plot.EndZoomDrag(640);
    EXPECT_EQ(m_plot.m_bZoomDrag + m_plot.m_bZoomed, 0);
    EXPECT_EQ(m_plot.m_nViewStart, 0);
    EXPECT_EQ(m_plot.m_nViewEnd, 120000);
}

}  // namespace
