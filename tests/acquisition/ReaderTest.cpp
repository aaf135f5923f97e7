#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/acquisition/Support.h"

namespace {

TEST(PacketReader, SamplePacketWithoutBlocksZoomsOutAndRepaints) {
    for (const Bytes& payload : {Bytes{}, Bytes{0}, Bytes{0, 1}, Bytes{0, 1, 0}}) {
        TestReader session(12);
        session.StartValues(50);
        session.m_aPlots[1].m_bZoomed = 1;
        session.m_aPlots[1].m_nViewStart = 10;
        session.m_aPlots[1].m_nViewEnd = 20;
        EXPECT_EQ(session.Handle(RTPACKET_SAMPLES, payload), Calls{"paint 0"});
        EXPECT_EQ(session.m_aPlots[1].m_bZoomed, 0);
        EXPECT_EQ(session.m_aPlots[1].m_nViewStart, 0);
        EXPECT_EQ(session.m_aPlots[1].m_nViewEnd, 50);
        EXPECT_EQ(session.ChannelValues(0), std::vector<int>{});
    }
}

TEST(PacketReader, AFullCurveReturnsToIdleAtEveryFurtherPacket) {
    TestReader session(12);
    session.StartValues(3);
    session.m_capture.SelectPlot(1);
    session.m_capture.SelectPlot(3);  // there is none
    EXPECT_EQ(session.HandleSamples({5, -5, 7, -7}), Calls{"paint 1"});
    const Calls full{"paint 1", "paint 1", "idle"};
    EXPECT_EQ(session.HandleSamples({9, -9, 11, -11}), full);
    EXPECT_EQ(session.HandleSamples({13, -13}), full);
    EXPECT_TRUE(session.m_capture.IsIdle());
    EXPECT_EQ(session.ChannelValues(1), (std::vector{-5, -7, -9}));
    // Even indices -5 and -9, odd index -7; of the plot on show only.
    EXPECT_EQ(session.m_capture.GetCurrentCurve(1)->GetExtremes(), (RTExtremes{-5, -9, -7, -7}));
    EXPECT_EQ(session.m_capture.GetCurrentCurve(0)->GetExtremes(), RTExtremes{});

    const Bytes idle{1, 0, 0, 0};
    session.m_aPlots[1].m_bZoomed = 1;
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, idle), (Calls{"paint 1", "idle"}));
    EXPECT_EQ(session.m_aPlots[1].m_bZoomed, 0);
    SetAutoZoom(session.m_graph, false);
    session.m_aPlots[1].m_bZoomed = 1;
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, idle), Calls{"idle"});
    EXPECT_EQ(session.m_aPlots[1].m_bZoomed, 1);
}

TEST(PacketReader, WhatEndsACapture) {
    TestReader session(0);
    session.StartValues(0);  // a curve without capacity is full
    EXPECT_EQ(session.HandleSamples({1}), (Calls{"paint 0", "paint 0", "idle"}));
    session.m_capture.ToggleContinuous();
    session.StartValues(2);  // a full one of a continuous capture ends nothing
    EXPECT_EQ(session.HandleSamples({1, 2, 3}), Calls{"paint 0"});
    EXPECT_EQ(session.ChannelValues(0), (std::vector{1, 2}));
}

TEST(PacketReader, PacketsThatAreIgnored) {
    TestReader session(0);
    session.StartValues(10);
    const auto spSet = session.m_spCurves;
    for (const Bytes& payload :
         {Bytes{}, Bytes{1}, Bytes{1, 0, 0, 5}, Bytes{1, 0, 0}, Bytes{2}, Bytes{2, 0, 0, 0, 0},
          Bytes{3, 0, 0, 0, 0, 0}, Bytes{0, 0, 0, 0, 0, 0}})
        EXPECT_EQ(session.Handle(RTPACKET_CONTROL, payload), Calls{});
    EXPECT_EQ(session.Handle(RTPACKET_NEW_CURVE, {0x51}), Calls{});
    EXPECT_EQ(session.Handle(-1, MakeSamples({1})), Calls{});
    // Payloads that are not there; only a sample packet repaints.
    const std::uint8_t byByte = 0x50;
    for (const std::int32_t nType : {RTPACKET_SAMPLES, RTPACKET_NEW_CURVE, RTPACKET_CONTROL})
        for (const RTPacket& packet :
             {RTPacket{0, nType, nullptr, 100}, RTPacket{0, nType, &byByte, INT32_MIN},
              RTPacket{0, nType, &byByte, 0}})
            session.m_reader.HandlePacket(packet);
    EXPECT_EQ(session.m_screen.TakeCalls(), Calls(3, "paint 0"));
    EXPECT_EQ(session.m_spCurves, spSet);
    EXPECT_EQ(spSet->m_lstCurves[0].size(), 1u);
    EXPECT_FALSE(session.m_capture.IsIdle());
}

TEST(PacketReader, CaptureStartedByTheInstrument) {
    TestReader session(12);
    const Bytes continuous{2, 0, 0, 0, 0, 1};
    session.m_nValueRate = 20;
    const auto spFirst = session.m_spCurves;
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, continuous), Calls{"paint 0"});
    EXPECT_TRUE(session.m_capture.IsContinuous());
    EXPECT_TRUE(session.m_capture.IsContinuousRunning());
    EXPECT_NE(session.m_spCurves, spFirst);
    EXPECT_EQ(session.m_aPlots[1].m_spCurves, session.m_spCurves);
    EXPECT_EQ(session.m_capture.GetCurrentCurve(1)->GetCapacity(), 60u);

    // After Clear there is again nothing in hand.
    session.m_capture.Clear();
    const auto spSecond = session.m_spCurves;
    EXPECT_EQ(session.m_aPlots[1].m_spCurves, spSecond);
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, {2, 0, 0, 0, 0, 0}), Calls{});
    EXPECT_FALSE(session.m_capture.IsContinuous());
    EXPECT_EQ(session.m_spCurves, spSecond);
    EXPECT_EQ(spSecond->m_lstCurves[0].size(), 1u);

    // With a capture in hand the mode stays, and the set takes a further curve.
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, continuous), Calls{});
    EXPECT_FALSE(session.m_capture.IsContinuous());
    EXPECT_EQ(session.m_spCurves, spSecond);
    EXPECT_EQ(spSecond->m_lstCurves[1].size(), 2u);
    EXPECT_EQ(spSecond->m_lstCurves[1].back(), session.m_capture.GetCurrentCurve(1));

    // An announced curve has a set of its own.
    EXPECT_EQ(session.Handle(RTPACKET_NEW_CURVE, {0x50}), Calls{});
    EXPECT_NE(session.m_spCurves, spSecond);
    EXPECT_EQ(session.m_aPlots[1].m_spCurves->m_lstCurves[1],
              RTCurveList{session.m_capture.GetCurrentCurve(1)});
}

/// In a process of its own each, as the rules are read once.
TEST(PacketReader, TracesNewCurvesOnlyWhenARuleAsksForIt) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto announce = [] {
        TestReader(0).Handle(RTPACKET_NEW_CURVE, {0x50});
        std::exit(0);
    };
    const testing::ExitedWithCode ended(0);
    ::unsetenv("QT_LOGGING_RULES");
    EXPECT_EXIT(announce(), ended, testing::Eq(""));
    ::setenv("QT_LOGGING_RULES", "realtime.trace=true", 1);
    EXPECT_EXIT(announce(), ended, "realtime.trace: New Curve\n$");
    ::unsetenv("QT_LOGGING_RULES");
}

TEST(PacketReader, EmptiesTheQueueBeforeItStops) {
    TestReader session(0);
    session.StartValues(20000);
    session.m_capture.SetSampleSeconds(-1);  // no memory for another curve
    RTPacketQueue queue;
    queue.push(MakePacket(RTPACKET_NEW_CURVE, {0x50}));
    std::weak_ptr<RTPacket> wpLast;
    for (int i = 0; i < 2000; ++i) {
        auto spPacket = MakePacket(RTPACKET_SAMPLES, MakeSamples({i, -i}));
        wpLast = spPacket;
        queue.push(i % 100 == 0 ? nullptr : std::move(spPacket));
    }
    session.ReadQueue(queue);
    ASSERT_EQ(session.ChannelValues(0).size(), 3960u);
    EXPECT_EQ(session.ChannelValues(0).back(), -1999);
    EXPECT_EQ(session.m_aPlots[0].m_nSpanValues, 20000);
    EXPECT_TRUE(wpLast.expired());
}

}  // namespace
