#include <gtest/gtest.h>

#include <random>

#include "tests/acquisition/Support.h"

namespace {

struct ModeLayout {
    std::uint8_t m_nMode;
    std::uint8_t m_nPositionInput;
    std::vector<std::vector<int>> m_channels;  ///< what each channel gets of the values 1 to 12
};

TEST(SampleDecoder, EveryModesLayout) {
    const auto all = CountUp(1, 12);
    const std::vector<std::vector<int>> twoSingles{{1, 3, 5, 7, 9, 11}, {2, 4, 6, 8, 10, 12}};
    const std::vector<std::vector<int>> twoPairs{{1, 2, 5, 6, 9, 10}, {3, 4, 7, 8, 11, 12}};
    const std::vector<std::vector<int>> three{{1, 4, 7, 10}, {2, 5, 8, 11}, {3, 6, 9, 12}};
    const ModeLayout layouts[] = {
        {0, 0, {all}},      {1, 0, {all}},     {1, 1, {all}},       {2, 0, twoSingles},
        {2, 1, twoSingles}, {2, 2, twoPairs},  {3, 0, three},       {3, 2, three},
        {4, 0, {all}},      {10, 0, {all}},    {12, 0, twoSingles}, {12, 2, twoSingles},
        {20, 0, twoPairs},  {20, 1, twoPairs}, {21, 1, {all}},      {22, 2, twoSingles},
        {255, 2, {all}},
    };
    for (const ModeLayout& layout : layouts) {
        SCOPED_TRACE(int{layout.m_nMode});
        TestSession session(layout.m_nMode, layout.m_nPositionInput);
        session.StartValues(1000);
        session.m_capture.StoreSamples(MakeSamples(all));
        ASSERT_EQ(session.m_nChannels, layout.m_channels.size());
        for (std::size_t k = 0; k < layout.m_channels.size(); ++k)
            EXPECT_EQ(session.ChannelValues(k), layout.m_channels[k]);
    }
}

TEST(SampleDecoder, BlocksOfOnePacketFollowEachOther) {
    TestSession session(12);
    session.StartValues(1000);
    Bytes payload{0};
    AddBlock(payload, 5, {1, -1, 2, -2});
    AddBlock(payload, 6, {});
    AddBlock(payload, 0xFA, {3, -3});
    AddBlock(payload, 7, {});
    session.m_capture.StoreSamples(payload);
    session.m_capture.StoreSamples(MakeSamples({4, -4}, 1));
    EXPECT_EQ(session.ChannelValues(0), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(session.ChannelValues(1), (std::vector{-1, -2, -3, -4}));
    for (std::size_t k = 0; k < 2; ++k)
        EXPECT_EQ(GetPulses(session.m_capture.GetCurrentCurve(k)),
                  (std::vector<std::string>{"2:5", "2:6", "3:250", "3:7", "4:1"}));
}

TEST(SampleDecoder, AFullCurveTakesNoValuesButPulses) {
    TestSession session(20);
    session.StartValues(7);
    session.m_capture.StoreSamples(MakeSamples(CountUp(1, 8), 1));
    session.m_capture.StoreSamples(MakeSamples(CountUp(11, 20), 2));  // a share of 4 of 2 sets
    session.m_capture.StoreSamples(MakeSamples(CountUp(21, 24), 3));
    EXPECT_EQ(session.ChannelValues(0), (std::vector{1, 2, 5, 6, 11, 12, 15}));
    EXPECT_EQ(session.ChannelValues(1), (std::vector{3, 4, 7, 8, 13, 14, 17}));
    EXPECT_EQ(GetPulses(session.m_capture.GetCurrentCurve(1)),
              (std::vector<std::string>{"4:1", "7:2", "7:3"}));
}

TEST(SampleDecoder, ChannelsWithoutACurveOrCapacity) {
    // Behind a channel without a curve the others get no values; one without capacity gets nothing.
    RTCurrentCurves aspGap{std::make_shared<RTCurveData>(10), nullptr,
                           std::make_shared<RTCurveData>(10)};
    DecodeSamples(MakeSamples(CountUp(1, 6), 9), {3, 1}, aspGap);
    EXPECT_EQ(GetValues(aspGap[0]), (std::vector{1, 4}));
    EXPECT_EQ(GetValues(aspGap[2]), std::vector<int>{});
    EXPECT_EQ(GetPulses(aspGap[2]), std::vector<std::string>{"0:9"});

    RTCurrentCurves aspEmpty{std::make_shared<RTCurveData>(0), std::make_shared<RTCurveData>(2),
                             nullptr};
    DecodeSamples(MakeSamples({1, 2, 3, 4}), {2, 1}, aspEmpty);
    EXPECT_EQ(GetPulses(aspEmpty[0]), std::vector<std::string>{});
    EXPECT_EQ(GetValues(aspEmpty[1]), (std::vector{2, 4}));
    DecodeSamples(MakeSamples({1}, 9), {1, 1}, aspEmpty);
    EXPECT_EQ(GetPulses(aspEmpty[0]), std::vector<std::string>{});
}

TEST(SampleDecoder, ATruncatedBlockEndsThePacket) {
    Bytes payload{0};
    AddBlock(payload, 1, {1, 2});
    const std::size_t nSecond = payload.size();
    AddBlock(payload, 2, {3, 4});
    while (!payload.empty()) {
        payload.pop_back();
        payload.shrink_to_fit();
        RTCurrentCurves aspCurves{std::make_shared<RTCurveData>(10), nullptr, nullptr};
        DecodeSamples(payload, {1, 1}, aspCurves);
        const bool bFirst = payload.size() >= nSecond;
        EXPECT_EQ(GetValues(aspCurves[0]), bFirst ? (std::vector{1, 2}) : std::vector<int>{});
        EXPECT_EQ(aspCurves[0]->GetPulses().GetCount(), bFirst ? 1u : 0u);
    }
}

/// Deals the values of one block out set by set, as a person would.
void DealBlock(const std::vector<int>& values, ValueLayout layout, const RTCurrentCurves& aspCurves,
               std::vector<std::vector<int>>& channels) {
    const std::size_t nSet = layout.m_nChannels * layout.m_nPerChannel;
    for (std::size_t i = 0; i + nSet <= values.size(); i += nSet) {
        for (std::size_t j = 0; j < nSet; ++j) {
            const std::size_t k = j / layout.m_nPerChannel;
            if (channels[k].size() < aspCurves[k]->GetCapacity())
                channels[k].push_back(values[i + j]);
        }
    }
}

TEST(SampleDecoder, RandomPacketsOfEveryLayout) {
    std::mt19937 random(20);
    const ValueLayout layouts[] = {{1, 1}, {1, 2}, {2, 1}, {2, 2}, {3, 1}};
    for (int nRound = 0; nRound < 300; ++nRound) {
        const ValueLayout layout = layouts[random() % std::size(layouts)];
        const std::size_t nCapacity = 3 + random() % (nRound % 20 == 0 ? 60000 : 2000);
        const bool bAlike = nRound % 3 != 0;  // else one is ahead, and one is full before another
        RTCurrentCurves aspCurves;
        std::vector<std::vector<int>> expected(3);
        for (std::size_t k = 0; k < 3; ++k) {
            aspCurves[k] = std::make_shared<RTCurveData>(
                static_cast<std::uint32_t>(nCapacity + (bAlike ? 0 : random() % 300)));
            expected[k].resize(bAlike ? 0 : random() % 3);
            std::ranges::copy(expected[k], aspCurves[k]->GetFreeValues().begin());
            aspCurves[k]->PublishCount(static_cast<std::uint32_t>(expected[k].size()));
        }

        Bytes payload{0};
        for (auto nBlocks = random() % 8; nBlocks > 0; --nBlocks) {
            // Now and then a payload reaches beyond 16-bit offsets.
            std::vector<int> values(random() % (nRound % 20 == 0 ? 20000 : 900));
            for (int& nValue : values) nValue = static_cast<std::int16_t>(random());
            AddBlock(payload, 0, values);
            DealBlock(values, layout, aspCurves, expected);
        }
        DecodeSamples(payload, layout, aspCurves);
        for (std::size_t k = 0; k < 3; ++k) {
            ASSERT_EQ(GetValues(aspCurves[k]), expected[k]);
            const auto nCount = static_cast<std::uint32_t>(expected[k].size());
            for (int nRange = 0; nRange < 20; ++nRange) {
                const auto nFirst = static_cast<std::uint32_t>(random() % (nCount + 1));
                const auto nWide =
                    static_cast<std::uint32_t>(random() % (nRange % 2 ? 400 : 20000));
                const std::uint32_t nLast = std::min(nCount, nFirst + nWide);
                RTMinMax scanned;
                for (std::uint32_t n = nFirst; n < nLast; n += 2)
                    scanned.Include(static_cast<std::int16_t>(expected[k][n]));
                ASSERT_EQ(aspCurves[k]->FindMinMax(nFirst, nLast), scanned) << nFirst;
            }
        }
    }
}

}  // namespace
