#include "link/LinkStatus.h"

#include <iterator>

#include "platform/system/Text.h"

namespace {

/// By LinkReason.
constexpr NumberedText REASONS[] = {
    {3270, L"ended by the other side"},
    {3271, L"no common version of the protocol"},
    {3272, L"another panel commands"},
    {3273, L"too many panels"},
    {3274, L"the instrument has begun anew"},
    {3275, L"the other side breaks the protocol"},
    {3276, L"this panel does not keep up"},
    {3277, L"replaced by a newer connection of this panel"},
    {3278, L"the instrument has ended"},
    {3279, L"silence for 3 s"},
    {3280, L"damaged data"},
    {3281, L"not permitted"},
    {3282, L"too much data"},
    {3283, L"the instrument has changed"},
};
constexpr NumberedText OTHER_REASON{3284, L"reason %1"};

/// What transports say in these words, their own and the system's.
constexpr NumberedText TRANSPORT_TROUBLES[] = {
    {3288, L"no answer"},
    {3289, L"closed by the other side"},
    {3297, L"closed by the broker"},
    {3298, L"connection refused"},
    {3299, L"connection reset by peer"},
    {3321, L"the device is gone"},
    {3322, L"no such file or directory"},
    {3323, L"permission denied"},
    {3324, L"device or resource busy"},
    {3325, L"host not found (authoritative)"},
    {3326, L"host not found (non-authoritative), try again later"},
    {3327, L"no route to host"},
    {3328, L"network is unreachable"},
};

std::string DescribeInstrument(const LinkStatus& status) {
    std::string strText = status.m_strName.empty() ? "instrument" : status.m_strName;
    if (!status.m_strSerialNumber.empty()) strText += " (no. " + status.m_strSerialNumber + ")";
    return strText;
}

std::string DescribeConnected(const LinkStatus& status) {
    if (status.m_nLostInCapture == 1) return "1 packet lost in this capture";
    if (status.m_nLostInCapture > 1)
        return std::to_string(status.m_nLostInCapture) + " packets lost in this capture";
    if (status.m_bAwaitsCurve) return "capture running, shown from the next curve";
    if (status.m_bRunning) return "capture running";
    if (status.m_away)
        return "connected again after " + std::to_string(status.m_away->count()) + " s";
    return status.m_bCommands ? "connected" : "viewing";
}

std::string DescribeAbsence(const LinkStatus& status, const std::string& strAddress) {
    std::string strText;
    if (status.m_bOtherCommands) {
        strText = (status.m_strName.empty() ? strAddress : status.m_strName) +
                  " is commanded by \"" + status.m_strOtherPanel + "\"";
    } else if (status.m_bLost) {
        strText = "Connection lost (" + status.m_trouble.m_strEnglish + ")";
    } else {
        strText = strAddress + ": " +
                  (status.m_trouble.IsEmpty() ? std::string("connecting")
                                              : status.m_trouble.m_strEnglish);
    }
    if (status.m_bCutShort) strText += ", capture cut short";
    strText += ".";
    if (!status.m_trouble.IsEmpty() && status.m_bTriesAgain) strText += " Trying again.";
    if (status.m_bOtherCommands) strText += " (--view shows it without commanding.)";
    return strText;
}

}  // namespace

LinkText DescribeParting(const Parting& parting) {
    const auto nReason = static_cast<std::size_t>(parting.m_reason);
    LinkText text = nReason < std::size(REASONS)
                        ? LinkText(REASONS[nReason])
                        : LinkText(OTHER_REASON, {std::to_string(nReason)});
    if (!parting.m_strText.empty()) text.Add(": ", LinkText(parting.m_strText));
    return text;
}

LinkText DescribeTransportTrouble(const std::string& strWhy) {
    const std::wstring strEnglish = FromUtf8(strWhy);
    for (const NumberedText& text : TRANSPORT_TROUBLES)
        if (strEnglish == text.m_pEnglish) return LinkText(text);
    return LinkText(strWhy);
}

std::string DescribeStatus(const LinkStatus& status, const std::string& strAddress) {
    if (status.m_state == PanelState::Changed)
        return "The instrument has changed (" + status.m_change.m_strEnglish +
               "). Close the screen and start again.";
    if (status.m_state == PanelState::Ended) return strAddress + ": ended.";
    std::string strText = status.m_state == PanelState::Connected
                              ? DescribeInstrument(status) + ", " + DescribeConnected(status)
                              : DescribeAbsence(status, strAddress);
    if (!status.m_notice.IsEmpty())
        strText += (strText.ends_with('.') ? " " : "; ") + status.m_notice.m_strEnglish;
    return strText;
}
