// Repaints: what a plot shows after a change is what one shows that was never painted before.
#include <gtest/gtest.h>

#include <random>

#include "tests/plot/PlotSheet.h"
#include "tests/support/ScaledDisplay.h"

namespace {

/// The picture of a plot of the same state, painted for the first time.
std::vector<BYTE> PaintFirst(const PlotSheet& sheet) {
    const RTPlot& plot = sheet.m_plot;
    PlotSheet first(plot.m_nWidth, plot.m_nHeight);
    first.m_graph = sheet.m_graph;
    first.ShowAs(plot);
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
    sheet.m_spCurves->FirstCurve(0)->AddPulse(20000, 5);
    expect("a record of the input lines");
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

/// A capture that grows in random steps, also by nothing, with records of the input lines at its
/// end and, as when the reader is faster than the paint, behind the values that are shown.
TEST(Repaint, OfAGrowingCurveIsThePictureOfTheWhole) {
    for (unsigned nSeed = 0; nSeed < 24; ++nSeed) {
        std::mt19937 random(nSeed);
        const auto pick = [&](unsigned nBelow) {
            return static_cast<std::uint32_t>(random() % nBelow);
        };
        // Lines one, two and three pixels wide.
        const double dScale = nSeed % 4 == 1 ? 1.37 : nSeed % 4 == 2 ? 2.0 : nSeed / 4 % 3 + 0.8;
        const ScaledDisplay display(dScale);
        PlotSheet sheet(Scaled(nSeed % 5 == 4 ? 90 : 200), Scaled(132));
        sheet.m_plot.m_nDisplay = static_cast<std::uint8_t>(nSeed % 3);
        sheet.m_plot.m_nMode = nSeed % 4 == 3 ? 3 : 1;
        for (unsigned k = nSeed / 3 % 3; k > 0; --k) sheet.Add(6000, Wave).AddPulse(4000, 5);
        sheet.m_graph.m_bAutoZoom = nSeed % 2;
        const auto spGrowing = sheet.m_spCurves->AddCurve(0, nSeed % 7 == 6 ? 300 : 9000);
        sheet.m_plot.m_nSpanValues =
            static_cast<int>(spGrowing->GetCapacity()) / (nSeed % 8 == 7 ? 2 : 1);
        sheet.m_plot.m_nViewEnd = nSeed % 9 == 8 ? 5000 : 9000;
        for (std::int16_t& nValue : spGrowing->GetFreeValues())
            nValue = static_cast<std::int16_t>(static_cast<int>(pick(9000)) - 4500);
        for (int nStep = 0; nStep < 40; ++nStep) {
            const std::uint32_t nCount = spGrowing->GetCount();
            const std::uint32_t nGrown =
                std::min(nCount + (pick(3) == 0 ? pick(1500) : pick(30)), spGrowing->GetCapacity());
            for (std::uint32_t n = pick(4); n > 0; --n)
                spGrowing->AddPulse(static_cast<int>(nGrown),
                                    static_cast<std::uint8_t>(pick(3) == 0 ? pick(256) : 5));
            if (pick(4) != 0) spGrowing->PublishCount(nGrown);
            if (pick(12) == 0) sheet.m_plot.m_nMarkerA = static_cast<int>(pick(9000));
            if (pick(12) == 0) sheet.m_plot.m_nTriggerLevel = static_cast<int>(pick(4000));
            sheet.Paint();
            ASSERT_TRUE(sheet.m_bitmap.EncodePng() == PaintFirst(sheet)) << nSeed << ", " << nStep;
        }
    }
}

TEST(Repaint, DrawsOnlyWhatIsNew) {
    PlotSheet sheet(842, 420);
    sheet.m_graph.m_bAutoZoom = 0;
    for (int k = 0; k < 3; ++k) sheet.Add(120000, Wave);
    const auto spGrowing = sheet.m_spCurves->AddCurve(0, 120000);
    std::ranges::fill(spGrowing->GetFreeValues(), 700);
    const auto paintAt = [&](std::uint32_t nCount) {
        spGrowing->PublishCount(nCount);
        spGrowing->AddPulse(static_cast<int>(nCount), 5);
        return sheet.Paint();
    };
    EXPECT_EQ(paintAt(60000), (CRect{0, 0, 842, 420}));
    paintAt(60001);
    // Columns of 240 values, 1.6 pixels apart: those of 60,000 (x = 440), which has grown, to
    // 60,480, and the one before, from which the line comes.
    EXPECT_EQ(paintAt(60700), (CRect{438, 0, 444, 420}));
    EXPECT_TRUE(sheet.Paint().IsEmpty());
    sheet.m_plot.m_nMarkerB = 4000;
    EXPECT_EQ(sheet.Paint(), (CRect{0, 0, 842, 420}));
    // Records go on when the curve is full.
    paintAt(120000);
    EXPECT_TRUE(paintAt(120000).IsEmpty());
}

}  // namespace
