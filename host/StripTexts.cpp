#include "host/StripTexts.h"

#include <algorithm>
#include <initializer_list>

#include "platform/system/Paths.h"
#include "ui/LanguageTable.h"

namespace {

/// A text's string number and what it is in a language that does not have it. %1 and %2 stand for
/// what is filled in.
struct StripString {
    std::int32_t m_nString;
    const wchar_t* m_pBuiltIn;
};

constexpr StripString READY{3200, L"Ready"};
constexpr StripString WAITING{3201, L"Waiting for trigger %1 %"};
constexpr StripString CAPTURING{3202, L"Capturing %1 of %2 s"};
constexpr StripString STOPPED{3203, L"Stopped after %1 s"};
constexpr StripString CONTINUOUS{3204, L"Capturing stroke %1, %2 s"};
constexpr StripString CONTINUOUS_STOPPED{3205, L"Stopped: stroke %1, %2 s"};
constexpr StripString UNREACHABLE{3206, L"No connection"};
constexpr StripString NO_INSTRUMENT{3207, L"No instrument"};
constexpr StripString SIMULATED{3210, L"Simulated press"};
constexpr StripString RECORDING{3211, L"Recording %1"};
constexpr StripString LOCKED{3212, L"%1 (locked)"};

/// By FileWork.
constexpr StripString DONE[] = {
    {3220, L"Saved: %1"}, {3221, L"Loaded: %1"}, {3222, L"Exported: %1"}};
constexpr StripString FAILED[] = {
    {3223, L"Not saved: %1"}, {3224, L"Not loaded: %1"}, {3225, L"Not exported: %1"}};

// The names of the quantities are the display list's.
constexpr StripString FORCE{0, L"Force"};
constexpr StripString POSITION{1, L"Position"};
constexpr StripString VOLTAGE{101, L"Voltage"};

std::wstring Say(const CLanguageTable& texts, const StripString& string,
                 std::initializer_list<std::wstring> fillings = {}) {
    const std::wstring* const pFound = texts.Find(string.m_nString);
    const std::wstring strPattern = pFound ? *pFound : string.m_pBuiltIn;
    std::wstring strText;
    for (std::size_t n = 0; n < strPattern.size(); ++n) {
        const std::size_t nFilling = strPattern[n] == L'%' && n + 1 < strPattern.size()
                                         ? strPattern[n + 1] - L'1'
                                         : SIZE_MAX;
        if (nFilling < fillings.size()) {
            strText += fillings.begin()[nFilling];
            ++n;
        } else {
            strText += strPattern[n];
        }
    }
    return strText;
}

/// With one decimal, the rest cut off.
std::wstring FormatTenths(std::uint64_t nTenths) {
    return std::to_wstring(nTenths / 10) + L'.' + std::to_wstring(nTenths % 10);
}

/// As short as it can be said.
std::wstring FormatSampleTime(std::uint32_t nMilliseconds) {
    return nMilliseconds % 1000 == 0 ? std::to_wstring(nMilliseconds / 1000)
                                     : FormatTenths(nMilliseconds / 100);
}

StripField DescribeActivity(const CLanguageTable& texts, const InstrumentState& state) {
    const std::wstring strStroke = std::to_wstring(state.m_nStrokes);
    const std::wstring strSeconds = FormatTenths(state.m_nMilliseconds / 100);
    switch (state.m_activity) {
    case InstrumentActivity::Waiting:
        return {StripMood::Waits, Say(texts, WAITING, {FormatTenths(state.m_nTriggerTenths)}), {}};
    case InstrumentActivity::Capturing:
        return {StripMood::Busy,
                state.m_bContinuous
                    ? Say(texts, CONTINUOUS, {strStroke, strSeconds})
                    : Say(texts, CAPTURING,
                          {strSeconds, FormatSampleTime(state.m_nSampleMilliseconds)}),
                {}};
    case InstrumentActivity::Stopped:
        return {StripMood::Quiet,
                state.m_bContinuous ? Say(texts, CONTINUOUS_STOPPED, {strStroke, strSeconds})
                                    : Say(texts, STOPPED, {strSeconds}),
                {}};
    case InstrumentActivity::Unreachable:
        return {StripMood::Alarm, Say(texts, UNREACHABLE), {}};
    case InstrumentActivity::Ready:
        break;
    }
    return {StripMood::Quiet, Say(texts, READY), {}};
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

std::wstring NameInstrument(const CLanguageTable& texts, const std::wstring& strRecording) {
    if (strRecording.empty()) return Say(texts, SIMULATED);
    return Say(texts, RECORDING, {GetNameOfPath(strRecording)});
}

StripField DescribeInstrument(const CLanguageTable& texts, const InstrumentState& state,
                              const std::wstring& strName, bool bLocked) {
    StripField field = DescribeActivity(texts, state);
    field.m_strDetail = state.m_strText.empty() ? strName : state.m_strText;
    if (bLocked) field.m_strDetail = Say(texts, LOCKED, {field.m_strDetail});
    return field;
}

StripField DescribeNoInstrument(const CLanguageTable& texts) {
    return {StripMood::Quiet, Say(texts, NO_INSTRUMENT), {}};
}

StripField DescribeFile(const CLanguageTable& texts, const FileEvent& event) {
    const auto nWork = static_cast<std::size_t>(event.m_work);
    const std::wstring strName = GetNameOfPath(event.m_strPath);
    StripField field;
    if (event.m_pError) {
        field = {StripMood::Alarm, Say(texts, FAILED[nWork], {strName}),
                 FindReason(*event.m_pError, event.m_strPath)};
    } else {
        field = {StripMood::Quiet, Say(texts, DONE[nWork], {strName}),
                 GetFolderOfPath(event.m_strPath)};
    }
    field.m_nHeadKept = std::min(field.m_strHead.find(strName), field.m_strHead.size());
    return field;
}

std::vector<StripRow> DescribeMarkers(const CLanguageTable& texts,
                                      const std::vector<MarkerValues>& values,
                                      SecondInput secondInput) {
    const StripString& second = secondInput == SecondInput::Voltage ? VOLTAGE : POSITION;
    std::vector<StripRow> rows;
    for (const MarkerValues& at : values) {
        StripRow& row = rows.emplace_back();
        row[0] = Say(texts, rows.size() == 1 ? FORCE : second);
        row[1] = FormatValue(L'A', at.m_a);
        row[2] = FormatValue(L'B', at.m_b);
        row[3] = FormatValue(L'\u0394',
                             at.m_a && at.m_b ? std::optional(*at.m_b - *at.m_a) : std::nullopt);
    }
    return rows;
}
