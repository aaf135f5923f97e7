#include <gtest/gtest.h>

#include <random>

#include "Support.h"

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

TEST(SampleDecoder, PairsLeaveOutAnIncompleteSet) {
    TestSession one(1);
    one.StartValues(1000);
    one.m_capture.StoreSamples(MakeSamples({1, 2, 3}));
    EXPECT_EQ(one.ChannelValues(0), (std::vector{1, 2}));

    TestSession two(20);
    two.StartValues(1000);
    two.m_capture.StoreSamples(MakeSamples({1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(two.ChannelValues(0), (std::vector{1, 2}));
    EXPECT_EQ(two.ChannelValues(1), (std::vector{3, 4}));
}

TEST(SampleDecoder, CountIsBigEndianAndValuesAreLittleEndian) {
    TestSession session(0);
    session.StartValues(1000);
    Bytes payload{0, 0, 0x01, 0x02};
    for (int i = 0; i < 258; ++i) payload.insert(payload.end(), {0x34, 0xF2});
    session.m_capture.StoreSamples(payload);
    EXPECT_EQ(session.ChannelValues(0), std::vector<int>(258, -3532));
}

TEST(SampleDecoder, BlocksOfOnePacketFollowEachOther) {
    TestSession session(12);
    session.StartValues(1000);
    Bytes payload{0};
    AddBlock(payload, 5, {1, -1, 2, -2});
    AddBlock(payload, 6, {});
    AddBlock(payload, 0xFA, {3, -3});
    session.m_capture.StoreSamples(payload);
    session.m_capture.StoreSamples(MakeSamples({4, -4}, 1));
    EXPECT_EQ(session.ChannelValues(0), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(session.ChannelValues(1), (std::vector{-1, -2, -3, -4}));
    for (std::size_t k = 0; k < 2; ++k)
        EXPECT_EQ(GetPulses(session.m_capture.GetCurrentCurve(k)),
                  (std::vector<std::string>{"2:5", "2:6", "3:250", "4:1"}));
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

TEST(SampleDecoder, ChannelsBehindOneWithoutACurveStoreNoValues) {
    RTCurrentCurves aspCurves{std::make_shared<RTCurveData>(10), nullptr,
                              std::make_shared<RTCurveData>(10)};
    DecodeSamples(MakeSamples(CountUp(1, 6), 9), {3, 1}, aspCurves);
    EXPECT_EQ(GetValues(aspCurves[0]), (std::vector{1, 4}));
    EXPECT_EQ(GetValues(aspCurves[2]), std::vector<int>{});
    EXPECT_EQ(GetPulses(aspCurves[2]), std::vector<std::string>{"0:9"});
}

TEST(SampleDecoder, ACurveWithoutCapacityGetsNothing) {
    RTCurrentCurves aspCurves{std::make_shared<RTCurveData>(0), std::make_shared<RTCurveData>(2),
                              nullptr};
    DecodeSamples(MakeSamples({1, 2, 3, 4}), {2, 1}, aspCurves);
    EXPECT_EQ(GetPulses(aspCurves[0]), std::vector<std::string>{});
    EXPECT_EQ(GetValues(aspCurves[1]), (std::vector{2, 4}));
}

TEST(SampleDecoder, ATruncatedBlockEndsThePacket) {
    Bytes whole{0};
    AddBlock(whole, 1, {1, 2});
    const std::size_t nSecond = whole.size();
    AddBlock(whole, 2, {3, 4});
    for (std::size_t nLength = 0; nLength < whole.size(); ++nLength) {
        SCOPED_TRACE(nLength);
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(nLength));
        RTCurrentCurves aspCurves{std::make_shared<RTCurveData>(10), nullptr, nullptr};
        DecodeSamples(cut, {1, 1}, aspCurves);
        const bool bFirst = nLength >= nSecond;
        EXPECT_EQ(GetValues(aspCurves[0]), bFirst ? (std::vector{1, 2}) : std::vector<int>{});
        EXPECT_EQ(aspCurves[0]->GetPulses().GetCount(), bFirst ? 1u : 0u);
    }
}

TEST(SampleDecoder, APayloadBeyond16BitOffsetsEnds) {
    Bytes payload{0};
    for (int i = 0; i < 30000; ++i) AddBlock(payload, 0, {i});
    ASSERT_GT(payload.size(), 65535u);
    RTCurrentCurves aspCurves{std::make_shared<RTCurveData>(40000), nullptr, nullptr};
    DecodeSamples(payload, {1, 1}, aspCurves);
    EXPECT_EQ(GetValues(aspCurves[0]), CountUp(0, 29999));
}

/// Deals the values of one block out set by set, as a person would.
void DealBlock(const std::vector<int>& values, ValueLayout layout, std::size_t nCapacity,
               std::vector<std::vector<int>>& channels) {
    const std::size_t nSet = layout.m_nChannels * layout.m_nPerChannel;
    for (std::size_t i = 0; i + nSet <= values.size(); i += nSet) {
        for (std::size_t j = 0; j < nSet; ++j) {
            auto& channel = channels[j / layout.m_nPerChannel];
            if (channel.size() < nCapacity) channel.push_back(values[i + j]);
        }
    }
}

TEST(SampleDecoder, RandomPacketsOfEveryLayout) {
    std::mt19937 random(20);
    const ValueLayout layouts[] = {{1, 1}, {1, 2}, {2, 1}, {2, 2}, {3, 1}};
    for (int nRound = 0; nRound < 300; ++nRound) {
        const ValueLayout layout = layouts[random() % std::size(layouts)];
        const std::size_t nCapacity = random() % 900;
        RTCurrentCurves aspCurves;
        for (auto& spCurve : aspCurves)
            spCurve = std::make_shared<RTCurveData>(static_cast<std::uint32_t>(nCapacity));
        std::vector<std::vector<int>> expected(3);

        Bytes payload{0};
        for (auto nBlocks = random() % 8; nBlocks > 0; --nBlocks) {
            std::vector<int> values(random() % 400);
            for (int& nValue : values) nValue = static_cast<std::int16_t>(random());
            AddBlock(payload, 0, values);
            DealBlock(values, layout, nCapacity, expected);
        }
        DecodeSamples(payload, layout, aspCurves);
        for (std::size_t k = 0; k < 3; ++k) ASSERT_EQ(GetValues(aspCurves[k]), expected[k]);
    }
}

TEST(SampleDecoder, RandomBytesStayInsideThePayload) {
    std::mt19937 random(7);
    for (int nRound = 0; nRound < 3000; ++nRound) {
        Bytes payload(random() % 200);
        for (auto& by : payload)
            by = static_cast<std::uint8_t>(random() % 5 ? random() % 4 : random());
        const std::vector<std::uint8_t> exact(payload);  // no spare room behind the last byte
        RTCurrentCurves aspCurves;
        for (auto& spCurve : aspCurves) spCurve = std::make_shared<RTCurveData>(64);
        const auto layout = FindValueLayout(static_cast<std::uint8_t>(random() % 24),
                                            static_cast<std::uint8_t>(random() % 3),
                                            static_cast<unsigned>(random() % 5));
        DecodeSamples(exact, layout, aspCurves);
        for (const auto& spCurve : aspCurves) ASSERT_LE(spCurve->GetCount(), 64u);
        ASSERT_LE(aspCurves[0]->GetCount() * 2, payload.size());
    }
}

}  // namespace
