// How the link stands, for people.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "link/LinkText.h"
#include "link/Payloads.h"

enum class PanelState : std::uint8_t {
    Connecting,  ///< the transport is being opened
    Joining,     ///< the instrument was asked
    Connected,
    Waiting,  ///< until the next try
    Changed,  ///< the instrument is not the one that the screen was made for; final
    Ended,    ///< by this side; final
};

/// A panel's link at one moment.
struct LinkStatus {
    PanelState m_state = PanelState::Connecting;
    std::string m_strName;          ///< the instrument's; empty: not known yet
    std::string m_strSerialNumber;  ///< may be empty
    bool m_bCommands = false;
    bool m_bRunning = false;      ///< a capture is on the screen and goes on
    bool m_bAwaitsCurve = false;  ///< a capture runs that the screen shows from its next curve
    std::uint64_t m_nLostInCapture = 0;  ///< packets, of the capture on the screen

    /// Not connected: why, in words; empty: no try has failed yet.
    LinkText m_trouble;
    bool m_bRefused = false;        ///< the instrument said so itself, in place of a HELLO
    bool m_bOtherCommands = false;  ///< another panel commands the instrument;
    std::string m_strOtherPanel;    ///< its name
    bool m_bLost = false;           ///< there was a connection before
    bool m_bCutShort = false;       ///< its end cut a capture short
    bool m_bTriesAgain = true;
    /// Connected again, after so long.
    std::optional<std::chrono::seconds> m_away;

    /// What the operator should know of the last message or the last HELLO; empty: nothing.
    LinkText m_notice;
    LinkText m_change;  ///< Changed: what differs
    friend bool operator==(const LinkStatus&, const LinkStatus&) = default;
};

/// One line of English that says how the link stands.
/// @param strAddress where the link leads to, as it was given
std::string DescribeStatus(const LinkStatus& status, const std::string& strAddress);

/// Why a connection ended or did not begin, in words.
LinkText DescribeParting(const Parting& parting);

/// The same of what a transport says of its end, in the operator's language as far as its words are
/// usual ones.
LinkText DescribeTransportTrouble(const std::string& strWhy);
