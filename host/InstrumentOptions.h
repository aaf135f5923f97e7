// What the command lines of rtpanel and rtinstrument have in common: the instrument.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "curves/InstrumentMode.h"
#include "instrument/RecordedPress.h"
#include "instrument/RecordingFile.h"

class CCommandLine;

struct InstrumentOptions {
    std::uint8_t m_nMode = 1;
    SecondInput m_secondInput = SecondInput::Position;
    std::uint16_t m_nValueRate = 40000;  ///< values per second and channel; of a pair both count
    std::uint16_t m_nAuxRate = 20000;
    std::uint32_t m_nDevice24V = 0;  ///< bit n: the position input of channel n + 1 is 0-24 V
    std::uint32_t m_nSeed = 1;

    bool m_bCaptureLocked = false;

    std::string m_strReplay;  ///< recording to play; empty: the simulated press
    RecordingColumns m_columns;
    ReplaySettings m_replay;                ///< but for the rate
    std::optional<double> m_rowsPerSecond;  ///< none: the recording's, or 1000
};

// The options must outlive the line's Parse.
void AddInstrument(CCommandLine& line, InstrumentOptions& options);
void AddReplay(CCommandLine& line, InstrumentOptions& options);

/// After Parse. @throws CUsageError when the recording's options stand without a recording
void CheckReplay(const CCommandLine& line);
