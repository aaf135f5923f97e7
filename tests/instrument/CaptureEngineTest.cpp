#include "instrument/CaptureEngine.h"

#include <gtest/gtest.h>

#include "tests/instrument/PacketDecoder.h"

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
    CCaptureEngine Make(const ValueLayout& layout, double dGain = 1) {
        m_decoder = CPacketDecoder(layout.m_nChannels, layout.m_nPerChannel);
        return CCaptureEngine(m_queue, layout, std::make_unique<CRamp>(dGain));
    }
    const Received& Drain() { return m_decoder.Drain(m_queue); }

    /// What comes of a capture by a time after its start when nobody looked before.
    const Received& Capture(const ValueLayout& layout, const CaptureRequest& request,
                            CCaptureEngine::Time end, double dGain = 1) {
        CCaptureEngine engine = Make(layout, dGain);
        engine.Execute(request, 0s);
        engine.Advance(end);
        return Drain();
    }

    RTPacketQueue m_queue;
    CPacketDecoder m_decoder{1, 1};
};

TEST_F(CaptureEngine, SixtySecondsAtFullRateAreCompleteWhateverTheSteps) {
    CCaptureEngine engine = Make({3, 1});
    auto now = 123456789ns;
    engine.Execute(CaptureRequest{60000, false, 40000, 0}, now);
    engine.Advance(now += 20s);  // makes several packets
    EXPECT_GE(Drain().m_nPackets, 74u);
    const std::chrono::nanoseconds aSteps[] = {10ms, 3141593ns, 1ns, 977ms, 9999999ns};
    for (int n = 0; engine.IsRunning() && n < 100000; ++n) engine.Advance(now += aSteps[n % 5]);

    const Received& received = Drain();
    EXPECT_EQ(received.m_channels[2].size(), 2'400'000u);
    EXPECT_EQ(received.m_strEvents, "RSI");
    EXPECT_LE(received.m_nLongestPayload, 65535);
}

TEST_F(CaptureEngine, DeliversWhatIsDueAndNoMoreUntilStop) {
    CCaptureEngine engine = Make({1, 1});
    engine.Execute(CaptureRequest{60000, false, 2000, 0}, 5s);
    for (int n = 0; n < 2; ++n) {
        engine.Advance(5s + 250ms);
        EXPECT_EQ(Drain().m_channels[0].size(), 500u);
    }
    engine.Execute(StopRequest{}, 5s + 255ms);
    engine.Advance(9s);
    EXPECT_EQ(Drain().m_channels[0].size(), 510u);
    EXPECT_EQ(Drain().m_strEvents, "RSI");
    EXPECT_FALSE(engine.IsRunning());
}

TEST_F(CaptureEngine, SaysWhatItIsDoingAndHowFarItHasCome) {
    using enum InstrumentActivity;
    struct Step {
        std::variant<CCaptureEngine::Time, InstrumentCommand> m_act;  ///< a time, or a command
        InstrumentActivity m_activity;
        std::uint64_t m_nMilliseconds, m_nStrokes;
    };
    const auto follow = [this](const ValueLayout& layout, const std::vector<Step>& steps) {
        CCaptureEngine engine = Make(layout);
        EXPECT_EQ(engine.GetState(), InstrumentState());
        CCaptureEngine::Time now = 7s;
        for (std::size_t n = 0; n < steps.size(); ++n) {
            if (const auto* pCommand = std::get_if<InstrumentCommand>(&steps[n].m_act))
                engine.Execute(*pCommand, now);
            else
                engine.Advance(now = 7s + std::get<0>(steps[n].m_act));
            const InstrumentState state = engine.GetState();
            EXPECT_EQ(int(state.m_activity), int(steps[n].m_activity)) << n;
            EXPECT_EQ(state.m_nMilliseconds, steps[n].m_nMilliseconds) << n;
            EXPECT_EQ(state.m_nStrokes, steps[n].m_nStrokes) << n;
        }
        return engine.GetState();
    };
    // The level of half the scale comes at 0.5 s.
    const CaptureRequest triggered{300, false, 1000, 500};
    EXPECT_EQ(follow({1, 2}, {{triggered, Waiting, 0, 0},
                              {400ms, Waiting, 0, 0},
                              {600ms, Capturing, 100, 1},
                              {900ms, Ready, 300, 1},
                              {StopRequest{}, Ready, 300, 1},
                              {triggered, Waiting, 0, 0}}),
              (InstrumentState{Waiting, false, 500, 300, 0, 0, L""}));
    EXPECT_EQ(follow({1, 1}, {{CaptureRequest{65000, true, 1000, 500}, Waiting, 0, 0},
                              {1400ms, Capturing, 900, 1},
                              {1600ms, Capturing, 1100, 2},
                              {StopRequest{}, Stopped, 1100, 2},
                              {StopRequest{}, Stopped, 1100, 2},
                              {CaptureRequest{100, false, 1000, 0}, Capturing, 0, 0}}),
              (InstrumentState{Capturing, false, 0, 100, 0, 0, L""}));
}

TEST_F(CaptureEngine, SetsCarryEachChannelsQuantitiesInOrder) {
    // Ten value slots per channel: five pairs, 2 ms apart, 10 of force each.
    EXPECT_EQ(
        Capture({2, 2}, {10, false, 1000, 0}, 1s).m_channels,
        (std::vector<std::vector<int>>{{0, 0, 10, -10, 20, -20, 30, -30, 40, -40},
                                       {100, -100, 100, -100, 100, -100, 100, -100, 100, -100}}));
    EXPECT_EQ(Capture({3, 1}, {3, false, 1000, 0}, 1s).m_channels,
              (std::vector<std::vector<int>>{{0, 5, 10}, {100, 100, 100}, {200, 200, 200}}));
    // What does not fit is clamped.
    EXPECT_EQ(Capture({1, 2}, {4, false, 1000, 0}, 1s, 1e6).m_channels[0],
              (std::vector{0, 0, 32767, -32768}));
    // An odd number of values is filled with a whole pair.
    EXPECT_EQ(Capture({1, 2}, {1000, false, 1001, 0}, 2s).m_channels[0].size(), 1002u);
    EXPECT_EQ(Capture({1, 1}, {1000, true, 0, 0}, 5s).m_strEvents, "RI") << "no rate";
}

TEST_F(CaptureEngine, BlocksEndWhereTheLinesChange) {
    EXPECT_EQ(Capture({1, 1}, {1000, false, 1000, 0}, 1s).m_strLines, "250:0 500:1 750:5 1000:0 ");

    // The pass output shows on line 4 for a while.
    CCaptureEngine engine = Make({1, 1});
    engine.Execute(CaptureRequest{1000, false, 1000, 0}, 0s);
    engine.Execute(PassOutputRequest{}, 20ms);
    for (auto now = 20ms; now <= 240ms; now += 10ms) engine.Advance(now);
    EXPECT_TRUE(Drain().m_strLines.starts_with("20:0 30:8 ")) << Drain().m_strLines;
    EXPECT_TRUE(Drain().m_strLines.ends_with("240:0 "));
}

}  // namespace
