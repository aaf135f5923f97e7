#include "link/LinkStatus.h"

namespace {

std::string DescribeReason(LinkReason reason) {
    switch (reason) {
    case LinkReason::Normal:
        return "ended by the other side";
    case LinkReason::NoCommonVersion:
        return "no common version of the protocol";
    case LinkReason::OtherCommands:
        return "another panel commands";
    case LinkReason::TooMany:
        return "too many panels";
    case LinkReason::JoinFirst:
        return "the instrument has begun anew";
    case LinkReason::Malformed:
        return "the other side breaks the protocol";
    case LinkReason::NotKeepingUp:
        return "this panel does not keep up";
    case LinkReason::Replaced:
        return "replaced by a newer connection of this panel";
    case LinkReason::InstrumentEnds:
        return "the instrument has ended";
    case LinkReason::Silence:
        return "silence for 3 s";
    case LinkReason::Damaged:
        return "damaged data";
    case LinkReason::NotPermitted:
        return "not permitted";
    case LinkReason::Flood:
        return "too much data";
    case LinkReason::Changed:
        return "the instrument has changed";
    }
    return "reason " + std::to_string(static_cast<unsigned>(reason));
}

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
        strText = "Connection lost (" + status.m_strTrouble + ")";
    } else {
        strText = strAddress + ": " +
                  (status.m_strTrouble.empty() ? std::string("connecting") : status.m_strTrouble);
    }
    if (status.m_bCutShort) strText += ", capture cut short";
    strText += ".";
    if (!status.m_strTrouble.empty() && status.m_bTriesAgain) strText += " Trying again.";
    if (status.m_bOtherCommands) strText += " (--view shows it without commanding.)";
    return strText;
}

}  // namespace

std::string DescribeParting(const Parting& parting) {
    std::string strText = DescribeReason(parting.m_reason);
    if (!parting.m_strText.empty()) strText += ": " + parting.m_strText;
    return strText;
}

bool IsWell(const LinkStatus& status) {
    return status.m_state == PanelState::Connected && status.m_nLostInCapture == 0 &&
           status.m_strNotice.empty();
}

std::string DescribeStatus(const LinkStatus& status, const std::string& strAddress) {
    if (status.m_state == PanelState::Changed)
        return "The instrument has changed (" + status.m_strChange +
               "). Close the screen and start again.";
    if (status.m_state == PanelState::Ended) return strAddress + ": ended.";
    std::string strText = status.m_state == PanelState::Connected
                              ? DescribeInstrument(status) + ", " + DescribeConnected(status)
                              : DescribeAbsence(status, strAddress);
    if (!status.m_strNotice.empty()) strText += " " + status.m_strNotice;
    return strText;
}
