// What an instrument is doing, as far as the operator is to know.
#pragma once

#include <cstdint>
#include <string>

enum class InstrumentActivity : std::uint8_t {
    Ready,        ///< waits for a command; the last capture, if any, came to its end
    Waiting,      ///< a capture was begun and no value was sent: the trigger level is not reached
    Capturing,    ///< values are sent
    Stopped,      ///< as Ready; the last capture was ended by a command
    Unreachable,  ///< cannot be told anything
};

struct InstrumentState {
    InstrumentActivity m_activity = InstrumentActivity::Ready;

    // Of the capture that runs or ran last; all 0 before the first.
    bool m_bContinuous = false;
    std::uint16_t m_nTriggerTenths = 0;       ///< level, tenths of a percent of full scale; 0: none
    std::uint32_t m_nSampleMilliseconds = 0;  ///< how long it is to last; continuous: 0
    std::uint64_t m_nMilliseconds = 0;        ///< how much of it has been sent
    std::uint64_t m_nStrokes = 0;             ///< how many curves it has begun

    /// What else it says of itself, for the operator; mostly nothing.
    std::wstring m_strText;

    friend bool operator==(const InstrumentState&, const InstrumentState&) = default;
};
