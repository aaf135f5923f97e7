#include "host/StripTexts.h"

#include <algorithm>

#include "platform/system/Paths.h"

namespace {

constexpr NumberedText READY{3200, L"Ready"};
constexpr NumberedText WAITING{3201, L"Waiting for trigger %1 %"};
constexpr NumberedText CAPTURING{3202, L"Capturing %1 of %2 s"};
constexpr NumberedText STOPPED{3203, L"Stopped after %1 s"};
constexpr NumberedText CONTINUOUS{3204, L"Capturing stroke %1, %2 s"};
constexpr NumberedText CONTINUOUS_STOPPED{3205, L"Stopped: stroke %1, %2 s"};
constexpr NumberedText NO_INSTRUMENT{3207, L"No instrument"};
constexpr NumberedText SIMULATED{3210, L"Simulated press"};
constexpr NumberedText RECORDING{3211, L"Recording %1"};

/// By FileWork.
constexpr NumberedText DONE[] = {
    {3220, L"Saved: %1"}, {3221, L"Loaded: %1"}, {3222, L"Exported: %1"}};
constexpr NumberedText FAILED[] = {
    {3223, L"Not saved: %1"}, {3224, L"Not loaded: %1"}, {3225, L"Not exported: %1"}};

// The names of the quantities are the display list's.
constexpr NumberedText FORCE{0, L"Force"};
constexpr NumberedText POSITION{1, L"Position"};
constexpr NumberedText VOLTAGE{101, L"Voltage"};

/// With one decimal, the rest cut off.
std::wstring FormatTenths(std::uint64_t nTenths) {
    return std::to_wstring(nTenths / 10) + L'.' + std::to_wstring(nTenths % 10);
}

/// As short as it can be said.
std::wstring FormatSampleTime(std::uint32_t nMilliseconds) {
    return nMilliseconds % 1000 == 0 ? std::to_wstring(nMilliseconds / 1000)
                                     : FormatTenths(nMilliseconds / 100);
}

StripField DescribeActivity(const InstrumentState& state) {
    const std::wstring strStroke = std::to_wstring(state.m_nStrokes);
    const std::wstring strSeconds = FormatTenths(state.m_nMilliseconds / 100);
    switch (state.m_activity) {
    case InstrumentActivity::Waiting:
        return {StripMood::Waits, GetText(WAITING, {FormatTenths(state.m_nTriggerTenths)}), {}};
    case InstrumentActivity::Capturing:
        return {
            StripMood::Busy,
            state.m_bContinuous
                ? GetText(CONTINUOUS, {strStroke, strSeconds})
                : GetText(CAPTURING, {strSeconds, FormatSampleTime(state.m_nSampleMilliseconds)}),
            {}};
    case InstrumentActivity::Stopped:
        return {StripMood::Quiet,
                state.m_bContinuous ? GetText(CONTINUOUS_STOPPED, {strStroke, strSeconds})
                                    : GetText(STOPPED, {strSeconds}),
                {}};
    case InstrumentActivity::Unreachable:
        return {StripMood::Alarm, GetText(NO_CONNECTION), {}};
    case InstrumentActivity::Ready:
        break;
    }
    return {StripMood::Quiet, GetText(READY), {}};
}

/// What an error says behind the file's name, on one line.
std::wstring FindReason(const CException& error, const std::wstring& strPath) {
    std::wstring strReason = error.GetErrorMessage();
    if (strReason.starts_with(strPath + L'\n')) strReason.erase(0, strPath.size() + 1);
    for (wchar_t& c : strReason)
        if (c == L'\n') c = L' ';
    return strReason;
}

std::wstring FormatValue(wchar_t chWhat, const std::optional<std::int32_t>& value) {
    constexpr const wchar_t* UNKNOWN = L"\u2013";
    return std::wstring(1, chWhat) + L' ' + (value ? std::to_wstring(*value) : UNKNOWN);
}

}  // namespace

std::wstring NameInstrument(const std::wstring& strRecording) {
    if (strRecording.empty()) return GetText(SIMULATED);
    return GetText(RECORDING, {GetNameOfPath(strRecording)});
}

StripField DescribeInstrument(const InstrumentState& state, const std::wstring& strName,
                              bool bLocked) {
    StripField field = DescribeActivity(state);
    field.m_strDetail = state.m_strText.empty() ? strName : state.m_strText;
    if (bLocked) field.m_strDetail = GetText(LOCKED, {field.m_strDetail});
    return field;
}

std::wstring NameForce() { return GetText(FORCE); }

std::wstring NameSecond(SecondInput secondInput) {
    return GetText(secondInput == SecondInput::Voltage ? VOLTAGE : POSITION);
}

StripField DescribeNoInstrument() { return {StripMood::Quiet, GetText(NO_INSTRUMENT), {}}; }

StripField DescribeFile(const FileEvent& event) {
    const auto nWork = static_cast<std::size_t>(event.m_work);
    const std::wstring strName = GetNameOfPath(event.m_strPath);
    StripField field;
    if (event.m_pError) {
        field = {StripMood::Alarm, GetText(FAILED[nWork], {strName}),
                 FindReason(*event.m_pError, event.m_strPath)};
    } else {
        field = {StripMood::Quiet, GetText(DONE[nWork], {strName}),
                 GetFolderOfPath(event.m_strPath)};
    }
    field.m_nHeadKept = std::min(field.m_strHead.find(strName), field.m_strHead.size());
    return field;
}

std::vector<StripRow> DescribeMarkers(const std::vector<MarkerValues>& values,
                                      SecondInput secondInput) {
    std::vector<StripRow> rows;
    for (const MarkerValues& at : values) {
        StripRow& row = rows.emplace_back();
        row[0] = rows.size() == 1 ? NameForce() : NameSecond(secondInput);
        row[1] = FormatValue(L'A', at.m_a);
        row[2] = FormatValue(L'B', at.m_b);
        row[3] = FormatValue(L'\u0394',
                             at.m_a && at.m_b ? std::optional(*at.m_b - *at.m_a) : std::nullopt);
    }
    return rows;
}
