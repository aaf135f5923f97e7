#include "host/Press.h"

#include <cstdio>

#include "instrument/RecordedPress.h"
#include "instrument/SimulatedPress.h"

namespace {

/// Sample time of the captures that the instrument begins by itself, in milliseconds: the screen
/// sizes its curves for its own default of 3 s.
constexpr std::uint16_t SELF_START_MILLISECONDS = 3000;

/// What has been understood of a recording.
std::string DescribeReplay(const InstrumentOptions& options, const Recording& recording,
                           double dRate) {
    const auto describe = [](const std::string& strName, double dScale) {
        char szText[64];
        std::snprintf(szText, sizeof szText, " x %g", dScale);
        return "'" + strName + "'" + szText;
    };
    std::string strText = "recording " + options.m_strReplay + ": " +
                          std::to_string(recording.m_adFirst.size()) + " rows, " +
                          describe(recording.m_strFirstName, options.m_replay.m_dFirstScale);
    if (!recording.m_strSecondName.empty())
        strText += " and " + describe(recording.m_strSecondName, options.m_replay.m_dSecondScale);
    char szRate[64];
    std::snprintf(szRate, sizeof szRate, ", %g rows a second", dRate);
    strText += szRate;
    if (recording.m_rowsPerSecond) strText += " by '" + recording.m_strTimeName + "'";
    return strText + " (" + recording.m_strForm + ")";
}

void MakeRecorded(const InstrumentOptions& options, Press& press) {
    RecordingColumns columns = options.m_columns;
    columns.m_bTimes = !options.m_rowsPerSecond;
    Recording recording = ReadRecording(options.m_strReplay, columns);
    ReplaySettings replay = options.m_replay;
    const double dOwnRate = recording.m_rowsPerSecond.value_or(replay.m_dRowsPerSecond);
    replay.m_dRowsPerSecond = options.m_rowsPerSecond.value_or(dOwnRate);
    press.m_strText = DescribeReplay(options, recording, replay.m_dRowsPerSecond);
    auto pRecorded = std::make_unique<CRecordedPress>(std::move(recording), replay);
    if (const std::size_t nClamped = pRecorded->CountClamped())
        press.m_strText += "; " + std::to_string(nClamped) + " values do not fit 16 bits";
    press.m_pSignal = std::move(pRecorded);
}

}  // namespace

Press MakePress(const InstrumentOptions& options) {
    Press press;
    if (options.m_strReplay.empty()) {
        press.m_pSignal = std::make_unique<CSimulatedPress>(options.m_secondInput, options.m_nSeed);
        press.m_strText = "simulated press";
    } else {
        MakeRecorded(options, press);
    }
    if (options.m_bCaptureLocked)
        press.m_selfStart = CaptureRequest{SELF_START_MILLISECONDS, true, options.m_nValueRate, 0};
    return press;
}
