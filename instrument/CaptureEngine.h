// The instrument's capture: what it samples, when, and what it tells the screen about it.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "acquisition/ValueLayout.h"
#include "instrument/InstrumentCommand.h"
#include "instrument/InstrumentState.h"
#include "instrument/PacketWriter.h"
#include "instrument/PressSignal.h"

/// Samples a press at the value rate and forms the packets. It has no clock and no thread of its
/// own: the caller says how much time has passed, and every sample set due by then has been pushed
/// when Advance returns, whatever the size of the steps. So nothing is lost when a step comes late,
/// and a capture of T seconds at rate R is T x R values per channel (rounded up to a whole pair).
///
/// The press begins a stroke when a capture begins. With a trigger level the values before the
/// force of channel 1 reaches the level are not sent, and the sample time runs from there. In a
/// continuous capture each further stroke is announced as a new curve, where it begins or reaches
/// the level.
///
/// Threads: one at a time.
class CCaptureEngine {
  public:
    using Time = std::chrono::nanoseconds;  ///< of a steady clock, from any beginning

    /// Force of channel 1 that a trigger level of 100 percent means, in value units.
    static constexpr int FULL_SCALE = 5000;

    CCaptureEngine(CPacketSink sink, const ValueLayout& layout,
                   std::unique_ptr<IPressSignal> pPress);

    /// Carries a command out; a capture begins at `now`.
    void Execute(const InstrumentCommand& command, Time now);

    /// Begins a capture that the screen has not asked for, and tells it.
    void BeginBySelf(const CaptureRequest& request, Time now);

    /// Pushes every sample set that is due at a time. Times do not go back.
    void Advance(Time now);

    bool IsRunning() const { return m_bRunning; }

    /// As of the last call.
    InstrumentState GetState() const;

  private:
    void Begin(const CaptureRequest& request, Time now);
    void End(InstrumentActivity activity);
    void TakeSet(std::uint8_t byPass);
    void SendSet(std::uint8_t byLines);
    std::uint64_t CountSetsDue(Time elapsed) const;

    CPacketWriter m_writer;
    const ValueLayout m_layout;
    const std::unique_ptr<IPressSignal> m_pPress;

    bool m_bRunning = false;
    InstrumentActivity m_idleActivity = InstrumentActivity::Ready;  ///< while it is not running
    CaptureRequest m_request;
    Time m_begin{0};
    std::uint64_t m_nSetsTaken = 0;  ///< since the beginning, sent or not
    std::uint64_t m_nSetsSent = 0;
    std::uint64_t m_nSetsWanted = 0;  ///< to be sent until the sample time is over
    std::uint64_t m_nStroke = 0;
    std::uint64_t m_nStrokesSent = 0;  ///< of which values have been sent
    bool m_bArmed = false;             ///< waits for the trigger level, of this stroke
    bool m_bSending = false;
    Time m_passOutputEnd{0};

    std::vector<PressSample> m_samples;  ///< one per channel
    std::vector<std::int16_t> m_values;  ///< one set
};
