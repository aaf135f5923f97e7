#include "host/LinkTexts.h"

#include <cwctype>

#include "platform/system/Text.h"

namespace {

constexpr NumberedText CONNECTING{3304, L"Connecting"};
constexpr NumberedText CONNECTED{3305, L"Connected"};
constexpr NumberedText VIEWING{3306, L"Viewing"};
constexpr NumberedText RUNNING{3307, L"Capture running"};
constexpr NumberedText FROM_NEXT_CURVE{3308, L"Shown from the next curve"};
constexpr NumberedText ONE_LOST{3309, L"1 packet lost in this capture"};
constexpr NumberedText LOST{3310, L"%1 packets lost in this capture"};
constexpr NumberedText BACK{3311, L"Connected again after %1 s"};
constexpr NumberedText CONNECTION_LOST{3312, L"Connection lost"};
constexpr NumberedText CUT_SHORT{3313, L"Connection lost, capture cut short"};
constexpr NumberedText OTHER_COMMANDS{3314, L"Commanded by %1"};
constexpr NumberedText OR_VIEW{3315, L"Trying again (--view shows it without commanding)"};
constexpr NumberedText TRYING_AGAIN{3316, L"%1. Trying again."};
constexpr NumberedText CHANGED{3317, L"The instrument has changed"};
constexpr NumberedText START_AGAIN{3318, L"%1: close the screen and start again"};
constexpr NumberedText NUMBERED_NAME{3319, L"%1 (no. %2)"};

/// What stands on a line of its own begins with a capital letter.
std::wstring BeginLine(std::wstring strText) {
    if (!strText.empty()) strText[0] = static_cast<wchar_t>(std::towupper(strText[0]));
    return strText;
}

std::wstring NameInstrument(const LinkStatus& status, const std::wstring& strAddress) {
    const std::wstring strName = status.m_strName.empty() ? strAddress : FromUtf8(status.m_strName);
    return status.m_strSerialNumber.empty()
               ? strName
               : GetText(NUMBERED_NAME, {strName, FromUtf8(status.m_strSerialNumber)});
}

StripField DescribeConnected(const LinkStatus& status, const std::wstring& strName) {
    if (status.m_nLostInCapture == 1) return {StripMood::Alarm, GetText(ONE_LOST), strName};
    if (status.m_nLostInCapture > 1)
        return {StripMood::Alarm, GetText(LOST, {std::to_wstring(status.m_nLostInCapture)}),
                strName};
    if (status.m_bAwaitsCurve)
        return {StripMood::Waits, GetText(RUNNING), GetText(FROM_NEXT_CURVE)};
    if (status.m_bRunning) return {StripMood::Busy, GetText(RUNNING), strName};
    if (status.m_away)
        return {StripMood::Quiet, GetText(BACK, {std::to_wstring(status.m_away->count())}),
                strName};
    return {StripMood::Quiet, GetText(status.m_bCommands ? CONNECTED : VIEWING), strName};
}

StripField DescribeAbsence(const LinkStatus& status, const std::wstring& strAddress) {
    if (status.m_bOtherCommands)
        return {StripMood::Alarm, GetText(OTHER_COMMANDS, {FromUtf8(status.m_strOtherPanel)}),
                GetText(OR_VIEW)};
    if (!status.m_bLost && status.m_trouble.IsEmpty())
        return {StripMood::Waits, GetText(CONNECTING), strAddress};
    std::wstring strDetail = status.m_bLost ? BeginLine(status.m_trouble.m_strShown)
                                            : strAddress + L": " + status.m_trouble.m_strShown;
    if (status.m_bTriesAgain) strDetail = GetText(TRYING_AGAIN, {strDetail});
    const NumberedText& head =
        status.m_bCutShort ? CUT_SHORT : (status.m_bLost ? CONNECTION_LOST : NO_CONNECTION);
    return {StripMood::Alarm, GetText(head), strDetail};
}

}  // namespace

StripField DescribeLink(const LinkStatus& status, const std::wstring& strAddress, bool bLocked) {
    if (status.m_state == PanelState::Changed)
        return {StripMood::Alarm, GetText(CHANGED),
                GetText(START_AGAIN, {BeginLine(status.m_change.m_strShown)})};
    const bool bConnected = status.m_state == PanelState::Connected;
    std::wstring strName = NameInstrument(status, strAddress);
    if (bLocked && status.m_bCommands) strName = GetText(LOCKED, {strName});
    StripField field =
        bConnected ? DescribeConnected(status, strName) : DescribeAbsence(status, strAddress);
    if (!status.m_notice.IsEmpty()) {
        field.m_mood = StripMood::Alarm;
        field.m_strDetail = BeginLine(status.m_notice.m_strShown);
    }
    return field;
}
