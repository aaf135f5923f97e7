// What the public headers offer to a host, used by one that is linked with the platform alone.
#include <gtest/gtest.h>

#include "acquisition/ObjRTGeneric.h"
#include "tests/support/Panel.h"

namespace {

class Host : public ::testing::Test {
  protected:
    Host() {
        m_session.m_nHostValueRate = 1000;
        m_session.m_nHostAuxRate = 250;
    }

    /// Presses Start, has the queue bring three blocks of 500 sets, and waits for the end of the
    /// capture: n and -n on channel 1, 2n and 7 on channel 2, n from 0 to 1499; line 1 is set in
    /// the first block, line 2 in the others.
    void Capture(RTPacketQueue& queue) {
        m_panel.Tap(IDC_START);
        for (int nBlock = 0; nBlock < 3; ++nBlock) {
            std::vector<std::int16_t> values;
            for (int n = nBlock * 500; n < nBlock * 500 + 500; ++n)
                for (const int nValue : {n, -n, 2 * n, 7})
                    values.push_back(static_cast<std::int16_t>(nValue));
            queue.push(MakeSamples(nBlock == 0 ? 1 : 2, values));
        }
        Operator::WaitFor("the end", [this] { return m_panel.IsEnabled(IDC_START); });
    }

    TestPanel m_panel{20, static_cast<std::uint8_t>(SecondInput::Position)};
    CRealTimeData& m_session = *m_panel.m_pSession;
};

TEST_F(Host, ReadsCaptureSessionAndPlotsThroughThePublicHeaders) {
    m_panel.Run([this] { Capture(m_panel.m_queue); });

    const CRTCurves& curves = *m_session.m_spCurves;
    ASSERT_EQ(curves.m_lstCurves[0].size(), 1u);
    EXPECT_EQ(curves.FirstCurve(2), nullptr);
    const RTCurveData& first = *curves.FirstCurve(0);
    const RTCurveData& second = *curves.FirstCurve(1);
    for (const RTCurveData* pCurve : {&first, &second}) {
        ASSERT_EQ(pCurve->GetCount(), 3000u);
        EXPECT_EQ(pCurve->GetCapacity(), 3000u);
        EXPECT_EQ(pCurve->m_anMarkers[9], -1);
    }
    for (int n = 0; n < 1500; ++n) {
        ASSERT_EQ(first.GetValues()[2 * n], n);
        ASSERT_EQ(first.GetValues()[2 * n + 1], -n);
        ASSERT_EQ(second.GetValues()[2 * n], 2 * n);
        ASSERT_EQ(second.GetValues()[2 * n + 1], 7);
    }
    // Channel 1 is the one on show, whose extremes are worked out at the end of a capture.
    EXPECT_EQ(first.GetExtremes(), (RTExtremes{1499, 0, 0, -1499}));
    EXPECT_EQ(first.FindMinMax(1, 3000), (RTMinMax{-1499, 0}));
    EXPECT_EQ(second.FindMinMax(200, 301), (RTMinMax{200, 300}));

    const RTPulseList& pulses = second.GetPulses();
    ASSERT_EQ(pulses.GetCount(), 3u);
    const RTPulse aPulses[] = {{1000, 1}, {2000, 2}, {3000, 2}};
    for (std::size_t n = 0; n < 3; ++n) EXPECT_EQ(pulses.At(n), aPulses[n]);
    EXPECT_EQ(pulses.FindPosition(3, 1001), 1u);

    EXPECT_FALSE(m_session.m_hReaderThread);
    EXPECT_EQ(m_session.m_bStopReader, 1);
    EXPECT_EQ(m_session.m_nChannels, 2);
    EXPECT_EQ(int{m_session.m_graph.m_nGraphRate}, 1000);
    EXPECT_EQ(int{m_session.m_graph.m_nRangeMin}, -5000);
    EXPECT_TRUE(IsAutoZoom(m_session.m_graph));

    RTPlot& plot = m_session.m_aPlots[1];
    EXPECT_EQ(plot.m_spCurves, m_session.m_spCurves);
    EXPECT_EQ(plot.m_pGraph, &m_session.m_graph);
    EXPECT_EQ(plot.m_nChannel, 1);
    EXPECT_EQ(plot.m_nMode, 20);
    EXPECT_EQ(plot.m_nViewEnd, 3000);
    EXPECT_EQ(plot.m_pColours->m_crBackground, RGB(192, 192, 192));
    plot.m_nMarkerA = 2440;
    plot.m_nMarkerB = 400;
    plot.m_nTriggerLevel = 1299;
    EXPECT_EQ(plot.GetTimeDistance(), 51);
    EXPECT_EQ(plot.GetTriggerPercent(), 25);
}

TEST_F(Host, OwnsTheMessagesOfTheScreen) {
    m_panel.Run([this] { m_panel.Tap(IDC_START); });
    ASSERT_EQ(m_panel.m_view.m_messages.size(), 1u);
    CObjConfig& start = *m_panel.m_view.m_messages[0];
    EXPECT_EQ(start.HostHook11(1), "");

    // A message of the host's own takes over what the screen's, made in the library, holds.
    CObjRTGeneric copy;
    copy.m_nType = 40;
    copy.CopyFrom(&start);
    std::string image;
    copy.ToBytes(image);
    std::string expected{40, 1, 41, 2, '\xB8', 0x0B, 0, '\xE8', 0x03};
    expected.resize(44);
    EXPECT_EQ(image, expected);
}

}  // namespace
