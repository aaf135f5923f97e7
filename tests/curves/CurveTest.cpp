// Curves and curve sets: creation, and a reader beside the writer.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

#include "curves/RTCurves.h"
#include "platform/system/Exceptions.h"

namespace {

TEST(Curve, AReaderSeesWholeValuesPulsesAndRangesWhileItIsFilled) {
    constexpr std::uint32_t nCapacity = 300000;
    RTCurveData curve(nCapacity);
    std::atomic<bool> bStarted{false};

    // The value at an index is a known function of it, so the reader can tell an unwritten one.
    std::thread writer([&] {
        while (!bStarted.load()) std::this_thread::yield();
        std::uint32_t nCount = 0;
        while (nCount < nCapacity) {
            const std::uint32_t nTake =
                std::min<std::uint32_t>(100 + nCount % 37, nCapacity - nCount);
            const auto places = curve.GetFreeValues();
            for (std::uint32_t i = 0; i < nTake; ++i)
                places[i] = static_cast<std::int16_t>((nCount + i) / 10);
            nCount += nTake;
            curve.PublishCount(nCount);
            curve.AddPulse(static_cast<std::int32_t>(nCount), static_cast<std::uint8_t>(nCount));
        }
    });

    bStarted = true;
    std::uint32_t nCount = 0;
    while (nCount < nCapacity) {
        const std::size_t nPulses = curve.GetPulses().GetCount();
        nCount = curve.GetCount();
        if (nCount < 2) continue;
        ASSERT_EQ(curve.GetValues()[nCount - 1], static_cast<std::int16_t>((nCount - 1) / 10));
        ASSERT_EQ(curve.FindMinMax(0, nCount),
                  (RTMinMax{0, static_cast<std::int16_t>((nCount - 1 - (nCount - 1) % 2) / 10)}));
        if (nPulses == 0) continue;
        const RTPulse& pulse = curve.GetPulses().At(nPulses - 1);
        ASSERT_LE(pulse.m_nPosition, static_cast<std::int32_t>(nCount));
        ASSERT_EQ(pulse.m_byState, static_cast<std::uint8_t>(pulse.m_nPosition));
    }
    writer.join();
}

TEST(CurveSet, AppendsCurvesInOrderAndStaysWholeWhenMemoryIsRefused) {
    CRTCurves set;
    const auto pFirst = set.AddCurve(1, 10);
    const auto pSecond = set.AddCurve(1, 0);
    EXPECT_THROW(set.AddCurve(1, 0xFFFFFFFFu), CMemoryException);

    ASSERT_EQ(set.m_lstCurves[1].size(), 2u);
    EXPECT_EQ(set.FirstCurve(1), pFirst);
    EXPECT_EQ(set.m_lstCurves[1].back(), pSecond);
    EXPECT_EQ(set.FirstCurve(0), nullptr);
    EXPECT_TRUE(pSecond->GetFreeValues().empty());
}

}  // namespace
