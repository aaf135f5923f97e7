// Repaints: what a plot shows after a change is what one shows that was never painted before.
#include <gtest/gtest.h>

#include "tests/plot/PlotSheet.h"

namespace {

/// The picture of a plot of the same state, painted for the first time.
std::vector<BYTE> PaintFirst(const PlotSheet& sheet) {
    const RTPlot& plot = sheet.m_plot;
    PlotSheet first(plot.m_nWidth, plot.m_nHeight);
    first.m_graph = sheet.m_graph;
    first.m_spCurves = sheet.m_spCurves;
    first.m_plot.m_spCurves = plot.m_spCurves;
    first.m_plot.m_nViewStart = plot.m_nViewStart;
    first.m_plot.m_nViewEnd = plot.m_nViewEnd;
    first.m_plot.m_bZoomed = plot.m_bZoomed;
    first.m_plot.m_nSpanValues = plot.m_nSpanValues;
    first.m_plot.m_nDisplay = plot.m_nDisplay;
    first.m_plot.m_nMode = plot.m_nMode;
    first.m_plot.m_nChannel = plot.m_nChannel;
    first.Paint();
    return first.m_bitmap.EncodePng();
}

/// Paints, and expects another picture than at the last call.
void ExpectNewPicture(PlotSheet& sheet, std::vector<BYTE>& last, const char* pStep) {
    sheet.Paint();
    const std::vector<BYTE> picture = sheet.m_bitmap.EncodePng();
    EXPECT_TRUE(picture != last) << pStep;
    EXPECT_TRUE(picture == PaintFirst(sheet)) << pStep;
    last = picture;
    sheet.Paint();
    EXPECT_TRUE(sheet.m_bitmap.EncodePng() == last) << pStep << ", once more";
}

int Wave(std::uint32_t i) { return static_cast<int>(i % 900) * 5 - static_cast<int>(i % 7) * 90; }
int Falling(std::uint32_t i) { return 4500 - static_cast<int>(i / 5); }

TEST(Repaint, ShowsWhateverHasChanged) {
    PlotSheet sheet;
    sheet.m_graph.m_bAutoZoom = 0;
    sheet.Add(20000, Wave);
    const auto spGrowing = sheet.m_spCurves->AddCurve(0, 20000);
    for (std::int16_t& nValue : spGrowing->GetFreeValues()) nValue = -600;
    sheet.m_spCurves->AddCurve(0, 20000);  // stays empty
    sheet.Add(20000, Wave);

    std::vector<BYTE> last;
    const auto expect = [&](const char* pStep) { ExpectNewPicture(sheet, last, pStep); };
    expect("begin");
    spGrowing->PublishCount(2);
    expect("a first value, that the line behind comes from");
    spGrowing->PublishCount(9000);
    expect("more values");
    sheet.m_plot.m_nDisplay = 1;
    expect("the other quantity");
    sheet.m_plot.m_nDisplay = 2;
    expect("both quantities");
    sheet.m_graph.m_nRangeMin = 0;
    expect("range");
    sheet.m_graph.m_bAutoZoom = 1;
    expect("auto zoom");
    spGrowing->SetExtremes({9000, 0, 0, 0});
    expect("extremes");
    sheet.m_plot.m_bZoomed = 1;
    sheet.m_plot.m_nViewStart = 4000;
    sheet.m_plot.m_nViewEnd = 30000;  // behind the last value, also after the next step
    expect("zoom");
    sheet.m_plot.m_nDisplay = 0;
    expect("one quantity");
    sheet.m_plot.m_nViewStart += 40;
    sheet.m_plot.m_nViewEnd += 40;
    expect("another part of the same length");
    sheet.m_plot.m_nDisplay = 2;
    expect("both, from the same index on");
    sheet.m_plot.m_nMode = 3;
    expect("mode");
}

TEST(Repaint, KnowsACurveFromItsPredecessor) {
    PlotSheet sheet;
    sheet.m_graph.m_bAutoZoom = 0;
    sheet.Add(20000, Wave);
    std::vector<BYTE> last;
    ExpectNewPicture(sheet, last, "one set");
    sheet.m_plot.m_spCurves = sheet.m_spCurves = nullptr;
    sheet.m_plot.m_spCurves = sheet.m_spCurves = std::make_shared<CRTCurves>();
    sheet.Add(20000, Falling);
    ExpectNewPicture(sheet, last, "a set of the same size");

    std::swap(sheet.m_spCurves->m_lstCurves[0], sheet.m_spCurves->m_lstCurves[1]);
    sheet.Add(20000, Wave);
    ExpectNewPicture(sheet, last, "a curve in the place of another");
    sheet.m_plot.m_nChannel = 1;
    ExpectNewPicture(sheet, last, "another channel");
}

}  // namespace
