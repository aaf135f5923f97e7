// A whole capture as one comma-separated table, for programs that analyse it.
#pragma once

#include <cstdint>
#include <string>

#include "curves/InstrumentMode.h"
#include "curves/RTCurves.h"

class CTextFile;
class IProgress;

/// What the values of a capture mean.
struct RTTableOptions {
    bool m_bPairs = false;                             ///< a step brings a channel two values
    SecondInput m_secondInput = SecondInput::Voltage;  ///< names the second of them
    std::uint16_t m_nValueRate = 0;                    ///< values per second; 0: times count values
};

/// Writes a header and a row for each step of each curve, every row with a line break:
///
///     curve,time_ms,ch1_force,ch1_position,ch2_force,ch2_position,line1,line2,line3,line4
///
/// Of the channels those that have curves; the second quantity is "position" or "voltage", and
/// single values have none. Curves are counted from 1, and each begins at time 0. Values are in
/// thousandths, as WriteCurveCsv writes them; a last value without a partner is left out. A channel
/// that has no such curve, or has less values, leaves its fields empty. The lines (0 or 1) are
/// those of the curve's pulse records, of the longest curve that has any; behind the last record
/// they are empty. Each curve's counts are taken once. Closes the file, and fails as WriteCsv does.
/// @throws CFileException, CUserException
void WriteTableCsv(CTextFile& file, const CRTCurves& curves, const RTTableOptions& options,
                   IProgress* pProgress = nullptr);
