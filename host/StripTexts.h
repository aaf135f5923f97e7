// What the status strip says: from the state of things to words in the operator's language, as the
// screen lends it to the layer below. Numbers stand as the screen labels them: values as they are,
// a point in front of decimals.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "curves/InstrumentMode.h"
#include "host/MarkerValues.h"
#include "instrument/InstrumentState.h"
#include "platform/system/FileEvents.h"
#include "platform/system/NumberedText.h"

constexpr NumberedText NO_CONNECTION{3206, L"No connection"};
constexpr NumberedText LOCKED{3212, L"%1 (locked)"};

/// How a field is to be seen.
enum class StripMood : BYTE {
    Quiet,
    Busy,   ///< a capture runs
    Waits,  ///< something that does not come from here is to happen first
    Alarm,  ///< something has failed
};

/// Two lines of text; either may be empty.
struct StripField {
    StripMood m_mood = StripMood::Quiet;
    std::wstring m_strHead;
    std::wstring m_strDetail;
    std::size_t m_nHeadKept = 0;  ///< characters at the beginning of the head that always stay
    friend bool operator==(const StripField&, const StripField&) = default;
};

/// A quantity's row of marker values: its name, the value at A, at B, and the second less the
/// first.
using StripRow = std::array<std::wstring, 4>;

/// All that the strip shows at one time.
struct StripContents {
    StripField m_instrument;
    StripField m_file;
    std::vector<StripRow> m_markers;
    friend bool operator==(const StripContents&, const StripContents&) = default;
};

/// The instrument that the panel runs on, named for the operator.
/// @param strRecording the recording that it plays; empty: it is the simulated press
std::wstring NameInstrument(const std::wstring& strRecording);

/// The state, and below it what the instrument says of itself or else its name.
/// @param bLocked captures are controlled elsewhere
StripField DescribeInstrument(const InstrumentState& state, const std::wstring& strName,
                              bool bLocked);

/// The quantities of a pair, as the display list calls them.
std::wstring NameForce();
std::wstring NameSecond(SecondInput secondInput);

/// A panel without an instrument.
StripField DescribeNoInstrument();

/// What became of a file: its name, and below it its folder or why it failed.
StripField DescribeFile(const FileEvent& event);

/// One row for each row of values; what is unknown is a dash, what follows from a marker that is
/// not set is empty.
std::vector<StripRow> DescribeMarkers(const std::vector<MarkerValues>& values,
                                      SecondInput secondInput);
