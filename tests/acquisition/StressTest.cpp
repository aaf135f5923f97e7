#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "Support.h"
#include "acquisition/PacketReader.h"

namespace {

/// Reads every value and pulse record of the curves of a plot, from a snapshot, as a paint does.
/// @return the number of values of channel k + 1 that are not k + 1, or records out of order
std::size_t CountFaults(CRealTimeData& session, std::size_t k, std::size_t& nValues) {
    RTCurveList lstCurves;
    {
        const std::lock_guard lock(session.m_lock);
        lstCurves = session.m_aPlots[k].m_spCurves->m_lstCurves[k];
    }
    std::size_t nFaults = 0;
    for (const auto& spCurve : lstCurves) {
        const std::uint32_t nCount = spCurve->GetCount();
        for (std::uint32_t i = 0; i < nCount; ++i)
            nFaults += spCurve->GetValues()[i] != static_cast<int>(k) + 1;
        if (nCount > 0 && spCurve->FindMinMax(0, nCount).m_nMax != static_cast<int>(k) + 1)
            ++nFaults;
        const auto& lstPulses = spCurve->GetPulses();
        const std::size_t nPulses = lstPulses.GetCount();
        for (std::size_t i = 1; i < nPulses; ++i)
            nFaults += lstPulses.At(i).m_nPosition < lstPulses.At(i - 1).m_nPosition;
        nValues += nCount;
    }
    return nFaults;
}

TEST(CaptureStress, ReaderPainterAndCommandsAtTheSameTime) {
    TestSession session(12);
    CTestScreen screen;
    CPacketReader reader(session, session.m_capture, screen);
    RTPacketQueue queue;
    session.m_pPacketQueue = &queue;
    session.StartValues(5000);

    std::vector<int> values;
    for (int i = 0; i < 200; ++i) values.insert(values.end(), {1, 2});
    const auto spSamples = MakePacket(RTPACKET_SAMPLES, MakeSamples(values, 3));
    const auto spNewCurve = MakePacket(RTPACKET_NEW_CURVE, {0x50});
    const auto spStarted = MakePacket(RTPACKET_CONTROL, {2, 0, 0, 0, 0, 1});
    const auto spIdle = MakePacket(RTPACKET_CONTROL, {1, 0, 0, 0});

    std::atomic<bool> bEnd{false};
    std::thread readerThread([&] { reader.Run(); });
    std::thread linkThread([&] {
        for (int i = 0; !bEnd; ++i) {
            queue.push(i % 50 == 0   ? spNewCurve
                       : i % 20 == 0 ? spStarted
                       : i % 33 == 0 ? spIdle
                                     : spSamples);
            if (i % 40 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    });
    std::size_t nFaults = 0;
    std::size_t nValues = 0;
    std::thread painterThread([&] {
        while (!bEnd)
            nFaults += CountFaults(session, 0, nValues) + CountFaults(session, 1, nValues);
    });

    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    for (int i = 0; std::chrono::steady_clock::now() < end; ++i) {
        if (i % 3 == 0) session.m_capture.Start(0, 0);
        if (i % 7 == 0) session.m_capture.Clear();
        if (i % 5 == 0) session.m_capture.ToggleContinuous();
        if (i % 11 == 0)
            session.m_capture.ReplaceCurves(std::make_shared<CRTCurves>(), {5000, 1, {}});
        if (i % 2 == 0) session.m_capture.SelectPlot(static_cast<std::uint8_t>(i / 2 % 2));
        session.m_capture.CopyCurves();
        session.m_capture.SetSampleSeconds(static_cast<std::int16_t>(1 + i % 2));
        screen.TakeCalls();
        std::this_thread::sleep_for(std::chrono::microseconds(300));
    }
    bEnd = true;
    linkThread.join();
    painterThread.join();
    session.m_bStopReader = 1;
    readerThread.join();
    EXPECT_EQ(nFaults, 0u);
    EXPECT_GT(nValues, 0u);
}

}  // namespace
