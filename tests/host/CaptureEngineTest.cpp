#include "host/CaptureEngine.h"

#include <gtest/gtest.h>

#include "tests/host/PacketDecoder.h"

namespace {

using namespace std::chrono_literals;

/// A stroke of one second whose force rises evenly from 0 to 5000 on channel 1 and stands at 100
/// and 200 on the others; the second quantity is the force's negative. Lines: away from home in the
/// second and third quarter.
class CRamp : public IPressSignal {
  public:
    explicit CRamp(double dGain = 1) : m_dGain(dGain) {}

    double GetStrokeSeconds() const override { return 1.0; }
    const StrokePhases& GetPhases() const override { return m_phases; }
    void Read(std::uint64_t, double dSeconds, std::span<PressSample> channels) override {
        const double adForce[] = {5000 * dSeconds * m_dGain, 100, 200};
        for (std::size_t k = 0; k < channels.size(); ++k) channels[k] = {adForce[k], -adForce[k]};
    }

  private:
    double m_dGain;
    StrokePhases m_phases{0.25, 0.5, 0.5, 0.5, 0.75};
};

class CaptureEngine : public ::testing::Test {
  protected:
    CCaptureEngine Make(unsigned nChannels, unsigned nPerChannel, double dGain = 1) {
        m_decoder = CPacketDecoder(nChannels, nPerChannel);
        return CCaptureEngine(m_queue, {nChannels, nPerChannel}, std::make_unique<CRamp>(dGain));
    }
    const Received& Drain() { return m_decoder.Drain(m_queue); }

    RTPacketQueue m_queue;
    CPacketDecoder m_decoder{1, 1};
};

TEST_F(CaptureEngine, SixtySecondsAtFullRateAreCompleteWhateverTheSteps) {
    CCaptureEngine engine = Make(1, 2);
    auto now = 123456789ns;
    engine.Execute(CaptureRequest{60000, false, 40000, 0}, now);
    const std::chrono::nanoseconds aSteps[] = {10ms, 3141593ns, 1ns, 977ms, 9999999ns};
    for (int n = 0; engine.IsRunning() && n < 100000; ++n) engine.Advance(now += aSteps[n % 5]);

    const Received& received = Drain();
    EXPECT_EQ(received.m_channels[0].size(), 2'400'000u);
    EXPECT_EQ(received.m_strEvents, "RSI");
    EXPECT_LE(received.m_nLongestPayload, 65535);
}

TEST_F(CaptureEngine, DeliversWhatIsDueAndNoMore) {
    CCaptureEngine engine = Make(1, 1);
    engine.Execute(CaptureRequest{1000, false, 2000, 0}, 5s);
    engine.Advance(5s + 250ms);
    EXPECT_EQ(Drain().m_channels[0].size(), 500u);
    engine.Advance(5s + 250ms);
    EXPECT_EQ(Drain().m_channels[0].size(), 500u);
    engine.Advance(9s);
    EXPECT_EQ(Drain().m_channels[0].size(), 2000u);
    EXPECT_EQ(Drain().m_strEvents, "RSI");
}

TEST_F(CaptureEngine, SetsCarryEachChannelsQuantitiesInOrder) {
    CCaptureEngine pairs = Make(2, 2);
    pairs.Execute(CaptureRequest{10, false, 1000, 0}, 0s);
    pairs.Advance(1s);
    // Ten value slots per channel: five pairs, 2 ms apart, 10 of force each.
    EXPECT_EQ(Drain().m_channels[0], (std::vector{0, 0, 10, -10, 20, -20, 30, -30, 40, -40}));
    EXPECT_EQ(Drain().m_channels[1],
              (std::vector{100, -100, 100, -100, 100, -100, 100, -100, 100, -100}));

    CCaptureEngine singles = Make(3, 1);
    singles.Execute(CaptureRequest{3, false, 1000, 0}, 0s);
    singles.Advance(1s);
    EXPECT_EQ(Drain().m_channels[0], (std::vector{0, 5, 10}));
    EXPECT_EQ(Drain().m_channels[1], (std::vector{100, 100, 100}));
    EXPECT_EQ(Drain().m_channels[2], (std::vector{200, 200, 200}));
}

TEST_F(CaptureEngine, AnOddNumberOfValuesIsFilledWithAWholePair) {
    CCaptureEngine engine = Make(1, 2);
    engine.Execute(CaptureRequest{1000, false, 1001, 0}, 0s);
    engine.Advance(2s);
    EXPECT_EQ(Drain().m_channels[0].size(), 1002u);
}

TEST_F(CaptureEngine, ALateStepMakesSeveralWholePackets) {
    CCaptureEngine engine = Make(3, 1);
    engine.Execute(CaptureRequest{20000, false, 65535, 0}, 0s);
    engine.Advance(20s);
    const Received& received = Drain();
    EXPECT_EQ(received.m_channels[2].size(), 1'310'700u);
    EXPECT_LE(received.m_nLongestPayload, 65535);
    EXPECT_GE(received.m_nPackets, 120u);
}

TEST_F(CaptureEngine, StopEndsACaptureAtTheMomentAndReportsIdle) {
    CCaptureEngine engine = Make(1, 1);
    engine.Execute(CaptureRequest{60000, false, 1000, 0}, 0s);
    engine.Advance(100ms);
    engine.Execute(StopRequest{}, 105ms);
    engine.Advance(10s);
    EXPECT_EQ(Drain().m_channels[0].size(), 105u);
    EXPECT_EQ(Drain().m_strEvents, "RSI");
    EXPECT_FALSE(engine.IsRunning());
}

TEST_F(CaptureEngine, TheSampleTimeRunsFromTheTrigger) {
    CCaptureEngine engine = Make(1, 1);
    // 50.0 percent of 5000 is reached in the middle of the ramp.
    engine.Execute(CaptureRequest{200, false, 1000, 500}, 0s);
    engine.Advance(499ms);
    EXPECT_EQ(Drain().m_strEvents, "R");
    engine.Advance(2s);
    const Received& received = Drain();
    EXPECT_EQ(received.m_strEvents, "RSI");
    ASSERT_EQ(received.m_channels[0].size(), 200u);
    EXPECT_EQ(received.m_channels[0].front(), 2500);
    EXPECT_EQ(received.m_channels[0].back(), 3495);
}

TEST_F(CaptureEngine, ALevelThatIsNotReachedWaitsForStop) {
    CCaptureEngine engine = Make(1, 1, 0.1);
    engine.Execute(CaptureRequest{200, false, 1000, 200}, 0s);
    engine.Advance(30s);
    EXPECT_EQ(Drain().m_strEvents, "R");
    engine.Execute(StopRequest{}, 31s);
    EXPECT_EQ(Drain().m_strEvents, "RI");
}

TEST_F(CaptureEngine, AContinuousCaptureAnnouncesEachFurtherStroke) {
    CCaptureEngine engine = Make(1, 1);
    engine.Execute(CaptureRequest{3000, true, 1000, 0}, 0s);
    for (auto now = 0ms; now <= 3500ms; now += 7ms) engine.Advance(now);
    EXPECT_EQ(Drain().m_strEvents, "RSPSPSPS");
    EXPECT_EQ(Drain().m_curveBegins, (std::vector<std::size_t>{1000, 2000, 3000}));
    engine.Execute(StopRequest{}, 3600ms);
    EXPECT_EQ(Drain().m_strEvents, "RSPSPSPSI");
}

TEST_F(CaptureEngine, AContinuousCaptureWithATriggerAnnouncesAtTheLevel) {
    // Just above the even ramp, so that the level lies between two samples.
    CCaptureEngine engine = Make(1, 1, 1.001);
    engine.Execute(CaptureRequest{3000, true, 1000, 800}, 0s);
    engine.Advance(2900ms);
    // Begins at 0.8 s; the next curves at 1.8 s and 2.8 s.
    EXPECT_EQ(Drain().m_curveBegins, (std::vector<std::size_t>{1000, 2000}));
    EXPECT_EQ(Drain().m_channels[0][1000], 4004);
}

TEST_F(CaptureEngine, BlocksEndWhereTheLinesChange) {
    CCaptureEngine engine = Make(1, 1);
    engine.Execute(CaptureRequest{1000, false, 1000, 0}, 0s);
    engine.Advance(1s);
    EXPECT_EQ(Drain().m_lines,
              (std::vector<Received::LineState>{{250, 0}, {500, 1}, {750, 5}, {1000, 0}}));
}

TEST_F(CaptureEngine, ThePassOutputShowsOnLineFourForAWhile) {
    CCaptureEngine engine = Make(1, 1);
    engine.Execute(CaptureRequest{1000, false, 1000, 0}, 0s);
    engine.Execute(PassOutputRequest{}, 20ms);
    for (auto now = 20ms; now <= 240ms; now += 10ms) engine.Advance(now);
    const Received& received = Drain();
    EXPECT_EQ(received.m_lines.front(), (Received::LineState{20, 0}));
    EXPECT_EQ(received.m_lines[1].m_nLines, 8);
    EXPECT_EQ(received.m_lines.back().m_nLines, 0);
}

TEST_F(CaptureEngine, WhatDoesNotFitIsClamped) {
    CCaptureEngine engine = Make(1, 2, 1e6);
    engine.Execute(CaptureRequest{4, false, 1000, 0}, 0s);
    engine.Advance(1s);
    EXPECT_EQ(Drain().m_channels[0], (std::vector{0, 0, 32767, -32768}));
}

TEST_F(CaptureEngine, ACaptureWithoutARateIsOverAtOnce) {
    CCaptureEngine engine = Make(1, 1);
    engine.Execute(CaptureRequest{1000, true, 0, 0}, 0s);
    engine.Advance(5s);
    EXPECT_EQ(Drain().m_strEvents, "RI");
}

TEST_F(CaptureEngine, ACaptureThatBeginsByItselfSaysSoFirst) {
    CCaptureEngine engine = Make(1, 1);
    engine.BeginBySelf(CaptureRequest{3000, true, 1000, 0}, 0s);
    engine.Advance(1500ms);
    EXPECT_EQ(Drain().m_strEvents, "CRSPS");
}

}  // namespace
