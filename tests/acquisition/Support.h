// Hand-made packets, a session without a screen, and a screen that writes down what it is asked.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "acquisition/Capture.h"
#include "acquisition/PacketReader.h"
#include "acquisition/ReaderScreen.h"
#include "acquisition/ValueLayout.h"
#include "plugin/RealTimeData.h"

using Bytes = std::vector<std::uint8_t>;
using Calls = std::vector<std::string>;

/// Appends a data block to a sample payload: status, count high byte first, values low byte first.
inline void AddBlock(Bytes& payload, std::uint8_t byState, const std::vector<int>& values) {
    payload.push_back(byState);
    payload.push_back(static_cast<std::uint8_t>(values.size() / 256));
    payload.push_back(static_cast<std::uint8_t>(values.size() % 256));
    for (const int nValue : values) {
        payload.push_back(static_cast<std::uint8_t>(nValue & 0xFF));
        payload.push_back(static_cast<std::uint8_t>((nValue >> 8) & 0xFF));
    }
}

/// A sample payload with one block.
inline Bytes MakeSamples(const std::vector<int>& values, std::uint8_t byState = 0) {
    Bytes payload{0xEE};
    AddBlock(payload, byState, values);
    return payload;
}

/// The numbers first, first + 1, ... last.
inline std::vector<int> CountUp(int nFirst, int nLast) {
    std::vector<int> values;
    for (int n = nFirst; n <= nLast; ++n) values.push_back(n);
    return values;
}

inline std::vector<int> GetValues(const std::shared_ptr<RTCurveData>& spCurve) {
    if (!spCurve) return {};
    return {spCurve->GetValues(), spCurve->GetValues() + spCurve->GetCount()};
}

/// Positions and states of a curve's pulse records, as "position:state" texts.
inline std::vector<std::string> GetPulses(const std::shared_ptr<RTCurveData>& spCurve) {
    std::vector<std::string> pulses;
    const auto& lstPulses = spCurve->GetPulses();
    for (std::size_t i = 0; i < lstPulses.GetCount(); ++i)
        pulses.push_back(std::to_string(lstPulses.At(i).m_nPosition) + ":" +
                         std::to_string(lstPulses.At(i).m_byState));
    return pulses;
}

/// A session as set-up leaves it, and its capture state.
struct TestSession : CRealTimeData {
    explicit TestSession(std::uint8_t nMode, std::uint8_t nPositionInput = 0) {
        m_nMode = nMode;
        m_nPositionInput = nPositionInput;
        m_nChannels = CountChannels(nMode);
        m_spCurves = std::make_shared<CRTCurves>();
        for (std::uint8_t k = 0; k < RT_MAX_CHANNELS; ++k) {
            m_aPlots[k].m_nChannel = k;
            m_aPlots[k].m_pGraph = &m_graph;
            if (k < m_nChannels) m_aPlots[k].m_spCurves = m_spCurves;
        }
    }

    /// Starts a capture of so many values a channel, at most 32767.
    void StartValues(std::uint16_t nValues) {
        m_nHostValueRate = nValues;
        m_capture.SetSampleSeconds(1);
        m_capture.Start(0, 0);
    }

    std::vector<int> ChannelValues(std::size_t k) const {
        return GetValues(m_capture.GetCurrentCurve(k));
    }

    RTCapture m_capture{*this};
};

/// Writes down "idle" and "paint 0", ... in the order of the calls.
class CTestScreen final : public IReaderScreen {
  public:
    void ReturnToIdle() override { Add("idle"); }
    void RepaintPlot(std::size_t nPlot) override { Add("paint " + std::to_string(nPlot)); }

    /// What was asked since the last call.
    Calls TakeCalls() {
        const std::lock_guard lock(m_mutex);
        return std::move(m_calls);
    }

  private:
    void Add(std::string strCall) {
        const std::lock_guard lock(m_mutex);
        m_calls.push_back(std::move(strCall));
    }

    std::mutex m_mutex;
    Calls m_calls;
};

/// A session with a packet reader.
struct TestReader : TestSession {
    using TestSession::TestSession;

    Calls Handle(std::int32_t nType, Bytes payload) {
        m_reader.HandlePacket(*MakePacket(RTPacketType{nType}, std::move(payload)));
        return m_screen.TakeCalls();
    }
    Calls HandleSamples(const std::vector<int>& values) {
        return Handle(RTPACKET_SAMPLES, MakeSamples(values));
    }

    /// Runs the reader's thread on a queue until the first packet has reached the screen, and stops
    /// it: one told to stop before it starts would not read at all.
    void ReadQueue(RTPacketQueue& queue, bool bLeave = false) {
        m_pPacketQueue = &queue;
        std::thread reader([this] { m_reader.Run(); });
        while (m_screen.TakeCalls().empty()) std::this_thread::yield();
        m_bStopReader = 1;
        if (bLeave) m_reader.LeaveBetweenPackets();
        reader.join();
    }

    CTestScreen m_screen;
    CPacketReader m_reader{*this, m_capture, m_screen};
};
