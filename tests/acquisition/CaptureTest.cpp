#include <gtest/gtest.h>

#include "platform/system/Exceptions.h"
#include "tests/acquisition/Support.h"

namespace {

std::size_t CountCurves(const CRealTimeData& session, std::size_t nChannel) {
    return session.m_spCurves->m_lstCurves[nChannel].size();
}

TEST(Capture, StartSizesCurvesAndTellsTheInstrument) {
    TestSession session(20);
    session.m_nHostValueRate = 40000;
    session.m_nHostAuxRate = 16000;
    session.m_capture.SetSampleSeconds(60);
    EXPECT_TRUE(session.m_capture.IsIdle());
    EXPECT_EQ(session.m_capture.Start(125, 2), (RTCaptureParameters{60000, 0, 40000, 125, 2}));
    EXPECT_FALSE(session.m_capture.IsIdle());
    for (std::size_t k = 0; k < 2; ++k) {
        EXPECT_EQ(session.m_capture.GetCurrentCurve(k)->GetCapacity(), 2400000u);
        EXPECT_EQ(session.m_capture.GetCurrentCurve(k), session.m_spCurves->FirstCurve(k));
        EXPECT_EQ(session.m_aPlots[k].m_nSpanValues, 2400000);
        EXPECT_EQ(session.m_aPlots[k].m_nViewEnd, 0);  // until values come
    }
    EXPECT_EQ(CountCurves(session, 2), 0u);
    EXPECT_EQ(session.m_nValueRate, 40000);
    EXPECT_EQ(session.m_nAuxRate, 16000);
    EXPECT_EQ(int{session.m_graph.m_nGraphRate}, 40000);

    // A long sample time wraps in the command only.
    session.m_nHostValueRate = 10;
    session.m_capture.SetSampleSeconds(66);
    EXPECT_EQ(session.m_capture.Start(0, 0).m_nSampleMilliseconds, 464);
    EXPECT_EQ(session.m_capture.GetCurrentCurve(0)->GetCapacity(), 660u);
}

TEST(Capture, SecondStartKeepsTheFirstCurve) {
    TestSession session(0);
    session.StartValues(2);
    EXPECT_TRUE(session.m_capture.StoreSamples(MakeSamples({4, 5})).m_bCaptureEnded);
    const auto spFirst = session.m_capture.GetCurrentCurve(0);
    session.m_spCurves->m_byVersion = 12;
    const auto spCopy = session.m_capture.CopyCurves();
    session.StartValues(9);
    // The end of the first capture comes too late to touch the second one.
    EXPECT_EQ(session.m_capture.FinishCapture(), std::nullopt);
    EXPECT_EQ(CountCurves(session, 0), 2u);
    EXPECT_EQ(session.m_spCurves->FirstCurve(0), spFirst);
    EXPECT_EQ(session.m_spCurves->m_lstCurves[0].back(), session.m_capture.GetCurrentCurve(0));
    // A copy of the set does not grow with it.
    EXPECT_EQ(spCopy->m_lstCurves[0], RTCurveList{spFirst});
    EXPECT_EQ(spCopy->m_byVersion, 12);
}

TEST(Capture, ContinuousStartBeginsAFreshSet) {
    TestSession session(12);
    session.StartValues(5);
    const std::weak_ptr<CRTCurves> wpOld = session.m_spCurves;
    EXPECT_TRUE(session.m_capture.ToggleContinuous());
    session.StartValues(5);
    EXPECT_TRUE(wpOld.expired());
    EXPECT_TRUE(session.m_capture.IsContinuousRunning());
    for (std::size_t k = 0; k < 2; ++k) {
        EXPECT_EQ(CountCurves(session, k), 1u);
        EXPECT_EQ(session.m_aPlots[k].m_spCurves, session.m_spCurves);
    }
    EXPECT_EQ(session.m_aPlots[2].m_spCurves, nullptr);

    // Stop ends a continuous capture only while continuous mode is selected.
    session.m_capture.ToggleContinuous();
    session.m_capture.Stop();
    EXPECT_TRUE(session.m_capture.IsContinuousRunning());
    session.m_capture.ToggleContinuous();
    session.m_capture.Stop();
    EXPECT_FALSE(session.m_capture.IsContinuousRunning());
}

TEST(Capture, AFailedStartChangesNothing) {
    TestSession session(12);
    session.StartValues(5);
    const auto spSet = session.m_spCurves;
    const auto spCurve = session.m_capture.GetCurrentCurve(0);
    session.m_capture.ReportIdle();

    session.m_capture.ToggleContinuous();
    session.m_nHostValueRate = 40000;
    session.m_capture.SetSampleSeconds(-3);
    EXPECT_THROW(session.m_capture.Start(0, 0), CMemoryException);
    EXPECT_EQ(session.m_spCurves, spSet);
    EXPECT_EQ(session.m_capture.GetCurrentCurve(0), spCurve);
    EXPECT_EQ(session.m_nValueRate, 5);
    EXPECT_EQ(session.m_aPlots[0].m_nSpanValues, 5);
    EXPECT_FALSE(session.m_capture.IsContinuousRunning());
    EXPECT_TRUE(session.m_capture.IsIdle());
}

}  // namespace
