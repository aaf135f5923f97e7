#include <gtest/gtest.h>

#include "host/PressInstrument.h"
#include "host/SimulatedPress.h"
#include "tests/host/PacketDecoder.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

std::string MakeImage(std::initializer_list<int> payload) {
    std::string image{0x27, 0x01, 0x29};
    for (const int n : payload) image += static_cast<char>(n);
    image.resize(44);
    return image;
}

// 3000 ms, not continuous, 40000, 12.5 percent.
const std::string CAPTURE = MakeImage({2, 0xB8, 0x0B, 0, 0x40, 0x9C, 0x7D, 0});

TEST(InstrumentCommand, IsReadFromTheImage) {
    EXPECT_EQ(ReadCommand(CAPTURE), InstrumentCommand(CaptureRequest{3000, false, 40000, 125}));
    EXPECT_EQ(ReadCommand(MakeImage({2, 0, 0, 1, 0x10, 0x27})),
              InstrumentCommand(CaptureRequest{0, true, 10000, 0}));
    EXPECT_EQ(ReadCommand(MakeImage({2})), InstrumentCommand(StopRequest{}));
    EXPECT_EQ(ReadCommand(MakeImage({3})), InstrumentCommand(PassOutputRequest{}));
}

TEST(InstrumentCommand, WhatIsNoCommandIsRefused) {
    EXPECT_FALSE(ReadCommand(""));
    EXPECT_FALSE(ReadCommand(CAPTURE.substr(0, 43)));
    EXPECT_FALSE(ReadCommand(CAPTURE + '\0'));
    EXPECT_FALSE(ReadCommand(MakeImage({1})));
    std::string image = CAPTURE;
    image[0] = 40;
    EXPECT_FALSE(ReadCommand(image));
}

TEST(SampleLayout, FollowsTheMode) {
    struct Row {
        int nMode;
        SecondInput secondInput;
        SampleLayout layout;
    };
    const Row rows[] = {
        {1, SecondInput::Voltage, {1, 2}},  {2, SecondInput::Voltage, {2, 1}},
        {2, SecondInput::Position, {2, 1}}, {2, SecondInput::Analogue, {2, 2}},
        {3, SecondInput::Analogue, {3, 1}}, {10, SecondInput::Position, {1, 2}},
        {12, SecondInput::Voltage, {2, 1}}, {20, SecondInput::Voltage, {2, 2}},
        {21, SecondInput::Voltage, {1, 1}}, {22, SecondInput::Position, {2, 1}},
        {0, SecondInput::Voltage, {1, 1}},  {255, SecondInput::Analogue, {1, 1}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FindSampleLayout(static_cast<std::uint8_t>(row.nMode), row.secondInput),
                  row.layout)
            << "mode " << row.nMode;
}

std::unique_ptr<CPressInstrument> MakeInstrument(RTPacketQueue& queue,
                                                 std::optional<CaptureRequest> selfStart = {}) {
    return std::make_unique<CPressInstrument>(
        queue, SampleLayout{1, 2}, std::make_unique<CSimulatedPress>(SecondInput::Position, 1u),
        selfStart);
}

/// Waits until the decoder has seen an event, at most 10 s.
bool WaitFor(CPacketDecoder& decoder, RTPacketQueue& queue, char chEvent) {
    for (const auto end = Clock::now() + 10s; Clock::now() < end; std::this_thread::sleep_for(1ms))
        if (decoder.Drain(queue).m_strEvents.ends_with(chEvent)) return true;
    return false;
}

TEST(PressInstrument, RunsACaptureInRealTime) {
    RTPacketQueue queue;
    CPacketDecoder decoder(1, 2);
    const auto pInstrument = MakeInstrument(queue);
    const auto begin = Clock::now();
    pInstrument->Send(MakeImage({2, 200, 0, 0, 0x40, 0x9C}));

    // Never ahead of the clock.
    while (Clock::now() - begin < 150ms) {
        const auto nCount = decoder.Drain(queue).m_channels[0].size();
        const auto elapsed = std::chrono::duration<double>(Clock::now() - begin).count();
        ASSERT_LE(static_cast<double>(nCount), 40000 * elapsed + 2);
        std::this_thread::sleep_for(1ms);
    }
    ASSERT_TRUE(WaitFor(decoder, queue, 'I'));
    EXPECT_GE(Clock::now() - begin, 200ms);
    EXPECT_EQ(decoder.Drain(queue).m_channels[0].size(), 8000u);
    EXPECT_EQ(decoder.Drain(queue).m_strEvents, "RSI");
    EXPECT_GE(decoder.Drain(queue).m_nPackets, 5u);
}

TEST(PressInstrument, StopAndForeignImages) {
    RTPacketQueue queue;
    CPacketDecoder decoder(1, 2);
    const auto pInstrument = MakeInstrument(queue);
    pInstrument->Send("");
    pInstrument->Send("\x05\x01");
    pInstrument->Send(MakeImage({2, 0x60, 0xEA, 0, 0x40, 0x9C}));
    ASSERT_TRUE(WaitFor(decoder, queue, 'S'));
    pInstrument->Send(MakeImage({2}));
    ASSERT_TRUE(WaitFor(decoder, queue, 'I'));
    EXPECT_LT(decoder.Drain(queue).m_channels[0].size(), 2'400'000u);
    // Ready for the next one.
    pInstrument->Send(MakeImage({2, 20, 0, 0, 0x40, 0x9C}));
    ASSERT_TRUE(WaitFor(decoder, queue, 'R') || decoder.Drain(queue).m_strEvents.ends_with("RSI"));
    ASSERT_TRUE(WaitFor(decoder, queue, 'I'));
    EXPECT_EQ(decoder.Drain(queue).m_strEvents, "RSIRSI");
}

TEST(PressInstrument, BeginsByItselfOnceTheScreenIsShown) {
    RTPacketQueue queue;
    CPacketDecoder decoder(1, 2);
    auto pInstrument = MakeInstrument(queue, CaptureRequest{3000, true, 40000, 0});
    EXPECT_EQ(decoder.Drain(queue).m_nPackets, 0u);
    pInstrument->OnScreenShown();
    ASSERT_TRUE(WaitFor(decoder, queue, 'S'));
    EXPECT_TRUE(decoder.Drain(queue).m_strEvents.starts_with("CRS"));

    // Ends in the middle of it, and leaves the queue alone.
    pInstrument.reset();
    const std::size_t nPackets = decoder.Drain(queue).m_nPackets;
    std::this_thread::sleep_for(30ms);
    EXPECT_EQ(decoder.Drain(queue).m_nPackets, nPackets);
}

/// One stroke of force and second quantity, a sample each millisecond.
std::vector<PressSample> ReadStroke(CSimulatedPress&& press, std::size_t nChannel = 0) {
    std::vector<PressSample> stroke;
    for (int n = 0; n < 1500; ++n) {
        PressSample samples[3];
        press.Read(0, n / 1000.0, samples);
        stroke.push_back(samples[nChannel]);
    }
    return stroke;
}

TEST(SimulatedPress, MakesAPressStroke) {
    const auto stroke = ReadStroke(CSimulatedPress(SecondInput::Position, 7));
    const auto byForce = [](const PressSample& a, const PressSample& b) {
        return a.m_dForce < b.m_dForce;
    };
    const auto itPeak = std::max_element(stroke.begin(), stroke.end(), byForce);
    EXPECT_NEAR(itPeak->m_dForce, 3800, 250);
    EXPECT_NEAR(itPeak->m_dSecond, 4200, 20);
    EXPECT_NEAR(stroke.front().m_dForce, 0, 10);
    EXPECT_NEAR(stroke.back().m_dForce, 0, 10);
    EXPECT_NEAR(stroke.back().m_dSecond, 0, 10);
    // The snap: somewhere on the way down the force falls by a third of what it was within 30 ms.
    bool bSnap = false;
    for (auto it = stroke.begin() + 30; it != itPeak; ++it)
        bSnap = bSnap || (it[-30].m_dForce > 1500 && it->m_dForce < 0.67 * it[-30].m_dForce);
    EXPECT_TRUE(bSnap);
    // Further channels meet less resistance.
    const auto third = ReadStroke(CSimulatedPress(SecondInput::Position, 7), 2);
    EXPECT_NEAR(std::max_element(third.begin(), third.end(), byForce)->m_dForce, 0.64 * 3800, 200);
}

TEST(SimulatedPress, NoiseFollowsTheSeed) {
    const auto forceAt = [](std::uint32_t nSeed) {
        return ReadStroke(CSimulatedPress(SecondInput::Voltage, nSeed))[700].m_dForce;
    };
    EXPECT_EQ(forceAt(3), forceAt(3));
    EXPECT_NE(forceAt(3), forceAt(4));
}

}  // namespace
