#include <gtest/gtest.h>

#include <thread>

#include "Support.h"
#include "acquisition/PacketReader.h"

namespace {

using Calls = std::vector<std::string>;

struct TestReader : TestSession {
    using TestSession::TestSession;

    Calls Handle(std::int32_t nType, Bytes payload) {
        m_reader.HandlePacket(*MakePacket(nType, std::move(payload)));
        return m_screen.TakeCalls();
    }
    Calls HandleSamples(const std::vector<int>& values) {
        return Handle(RTPACKET_SAMPLES, MakeSamples(values));
    }

    CTestScreen m_screen;
    CPacketReader m_reader{*this, m_capture, m_screen};
};

/// A reader that is told to stop before it starts would not read at all.
void WaitForAPacket(TestReader& session) {
    while (session.m_screen.TakeCalls().empty()) std::this_thread::yield();
}

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

TEST(PacketReader, PayloadsThatAreNotThere) {
    TestReader session(12);
    session.StartValues(50);
    const std::uint8_t byByte = 0x50;
    for (const std::int32_t nType : {RTPACKET_SAMPLES, RTPACKET_NEW_CURVE, RTPACKET_CONTROL})
        for (const RTPacket& packet :
             {RTPacket{0, nType, nullptr, 100}, RTPacket{0, nType, &byByte, -5},
              RTPacket{0, nType, &byByte, INT32_MIN}, RTPacket{0, nType, &byByte, 0}})
            session.m_reader.HandlePacket(packet);
    EXPECT_EQ(session.m_screen.TakeCalls(), Calls(4, "paint 0"));
    EXPECT_EQ(session.m_spCurves->m_lstCurves[0].size(), 1u);
}

TEST(PacketReader, AFullCurveReturnsToIdleAtEveryFurtherPacket) {
    TestReader session(12);
    session.StartValues(3);
    session.m_capture.SelectPlot(1);
    EXPECT_EQ(session.HandleSamples({5, -5, 7, -7}), Calls{"paint 1"});
    const Calls full{"paint 1", "idle", "paint 1"};
    EXPECT_EQ(session.HandleSamples({9, -9, 11, -11}), full);
    EXPECT_EQ(session.HandleSamples({13, -13}), full);
    EXPECT_TRUE(session.m_capture.IsIdle());
    EXPECT_EQ(session.ChannelValues(1), (std::vector{-5, -7, -9}));
    // Even indices -5 and -9, odd index -7; of the plot on show only.
    EXPECT_EQ(session.m_capture.GetCurrentCurve(1)->GetExtremes(), (RTExtremes{-5, -9, -7, -7}));
    EXPECT_EQ(session.m_capture.GetCurrentCurve(0)->GetExtremes(), RTExtremes{});

    SetAutoZoom(session.m_graph, false);
    EXPECT_EQ(session.HandleSamples({}), (Calls{"paint 1", "idle"}));
}

TEST(PacketReader, AFullContinuousCurveEndsNothing) {
    TestReader session(0);
    session.m_capture.ToggleContinuous();
    session.StartValues(2);
    EXPECT_EQ(session.HandleSamples({1, 2, 3}), Calls{"paint 0"});
    EXPECT_EQ(session.ChannelValues(0), (std::vector{1, 2}));
}

TEST(PacketReader, ACurveWithoutCapacityIsFull) {
    TestReader session(0);
    session.StartValues(0);
    EXPECT_EQ(session.HandleSamples({1}), (Calls{"paint 0", "idle", "paint 0"}));
}

TEST(PacketReader, RunningStateReport) {
    TestReader session(0);
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, {1, 0, 0, 5}), Calls{});
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, {1, 7, 7, 0}), (Calls{"idle", "paint 0"}));
    session.StartValues(10);
    session.HandleSamples({5, -3, 7, 9});
    session.Handle(RTPACKET_CONTROL, {1, 0, 0, 0, 1});
    EXPECT_EQ(session.m_capture.GetCurrentCurve(0)->GetExtremes(), (RTExtremes{7, 5, 9, -3}));
}

TEST(PacketReader, PacketsThatAreIgnored) {
    TestReader session(0);
    session.StartValues(10);
    const auto spSet = session.m_spCurves;
    for (const Bytes& payload : {Bytes{}, Bytes{1}, Bytes{1, 0, 0}, Bytes{2}, Bytes{2, 0, 0, 0, 0},
                                 Bytes{3, 0, 0, 0, 0, 0}, Bytes{0, 0, 0, 0, 0, 0}})
        EXPECT_EQ(session.Handle(RTPACKET_CONTROL, payload), Calls{});
    EXPECT_EQ(session.Handle(RTPACKET_NEW_CURVE, {0x51}), Calls{});
    EXPECT_EQ(session.Handle(-1, MakeSamples({1})), Calls{});
    EXPECT_EQ(session.m_spCurves, spSet);
    EXPECT_EQ(spSet->m_lstCurves[0].size(), 1u);
    EXPECT_FALSE(session.m_capture.IsIdle());
}

TEST(PacketReader, NewCurveEventBeginsASetOfItsOwn) {
    TestReader session(3);
    session.StartValues(10);
    const auto spOld = session.m_spCurves;
    EXPECT_EQ(session.Handle(RTPACKET_NEW_CURVE, {0x50, 9}), Calls{});
    EXPECT_NE(session.m_spCurves, spOld);
    for (std::size_t k = 0; k < 3; ++k) {
        EXPECT_EQ(session.m_spCurves->m_lstCurves[k].size(), 1u);
        EXPECT_EQ(session.m_aPlots[k].m_spCurves, session.m_spCurves);
        EXPECT_EQ(session.m_capture.GetCurrentCurve(k)->GetCapacity(), 10u);
    }
    EXPECT_EQ(spOld->m_lstCurves[0].size(), 1u);
}

TEST(PacketReader, CaptureStartedWithACaptureInHand) {
    TestReader session(12);
    session.StartValues(10);
    const auto spSet = session.m_spCurves;
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, {2, 0, 0, 0, 0, 1}), Calls{});
    EXPECT_FALSE(session.m_capture.IsContinuous());
    EXPECT_EQ(session.m_spCurves, spSet);
    EXPECT_EQ(spSet->m_lstCurves[1].size(), 2u);
    EXPECT_EQ(spSet->m_lstCurves[1].back(), session.m_capture.GetCurrentCurve(1));
}

TEST(PacketReader, CaptureStartedByTheInstrument) {
    TestReader session(12);
    session.m_nValueRate = 20;
    const auto spFirst = session.m_spCurves;
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, {2, 0, 0, 0, 0, 1}), Calls{"paint 0"});
    EXPECT_TRUE(session.m_capture.IsContinuous());
    EXPECT_TRUE(session.m_capture.IsContinuousRunning());
    EXPECT_NE(session.m_spCurves, spFirst);
    EXPECT_EQ(session.m_aPlots[1].m_spCurves, session.m_spCurves);
    EXPECT_EQ(session.m_capture.GetCurrentCurve(1)->GetCapacity(), 60u);

    session.m_capture.Clear();
    const auto spSecond = session.m_spCurves;
    EXPECT_EQ(session.Handle(RTPACKET_CONTROL, {2, 0, 0, 0, 0, 0}), Calls{});
    EXPECT_FALSE(session.m_capture.IsContinuous());
    EXPECT_EQ(session.m_spCurves, spSecond);
    EXPECT_EQ(spSecond->m_lstCurves[0].size(), 1u);
}

TEST(PacketReader, EmptiesTheQueueBeforeItStops) {
    TestReader session(0);
    session.StartValues(20000);
    RTPacketQueue queue;
    session.m_pPacketQueue = &queue;
    std::weak_ptr<RTPacket> wpLast;
    for (int i = 0; i < 2000; ++i) {
        auto spPacket = MakePacket(RTPACKET_SAMPLES, MakeSamples({i, -i}));
        wpLast = spPacket;
        queue.push(i % 100 == 0 ? nullptr : std::move(spPacket));
    }
    std::thread reader([&] { session.m_reader.Run(); });
    WaitForAPacket(session);
    session.m_bStopReader = 1;
    reader.join();
    ASSERT_EQ(session.ChannelValues(0).size(), 3960u);
    EXPECT_EQ(session.ChannelValues(0).back(), -1999);
    EXPECT_TRUE(wpLast.expired());
}

TEST(PacketReader, StopsWithoutAQueueAndWhenToldBeforeItStarts) {
    TestReader session(0);
    std::thread reader([&] { session.m_reader.Run(); });
    session.m_bStopReader = 1;
    reader.join();

    RTPacketQueue queue;
    queue.push(MakePacket(RTPACKET_SAMPLES, MakeSamples({1})));
    session.m_pPacketQueue = &queue;
    session.m_reader.Run();
    EXPECT_EQ(session.m_screen.TakeCalls(), Calls{});
}

TEST(PacketReader, LeavesASteadyFlowBetweenPackets) {
    TestReader session(0);
    session.StartValues(10);
    RTPacketQueue queue;
    session.m_pPacketQueue = &queue;
    const auto spPacket = MakePacket(RTPACKET_SAMPLES, MakeSamples(CountUp(1, 2000)));
    for (int i = 0; i < 100000; ++i) queue.push(spPacket);
    std::thread reader([&] { session.m_reader.Run(); });
    WaitForAPacket(session);
    session.m_bStopReader = 1;
    session.m_reader.LeaveBetweenPackets();
    reader.join();
    std::shared_ptr<RTPacket> spLeft;
    EXPECT_TRUE(queue.try_pop(spLeft));
}

TEST(PacketReader, GoesOnAfterAnEventWithoutMemory) {
    TestReader session(0);
    session.StartValues(10);
    session.m_capture.SetSampleSeconds(-1);
    RTPacketQueue queue;
    session.m_pPacketQueue = &queue;
    queue.push(MakePacket(RTPACKET_NEW_CURVE, {0x50}));
    queue.push(MakePacket(RTPACKET_SAMPLES, MakeSamples({1, 2})));
    std::thread reader([&] { session.m_reader.Run(); });
    WaitForAPacket(session);
    session.m_bStopReader = 1;
    reader.join();
    EXPECT_EQ(session.ChannelValues(0), (std::vector{1, 2}));
    EXPECT_EQ(session.m_aPlots[0].m_nSpanValues, 10);
}

}  // namespace
