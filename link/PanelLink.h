// A panel's link as it runs: its session, its transport and its thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "link/BrokerLogin.h"
#include "link/LinkAddress.h"
#include "link/LinkPeer.h"
#include "link/MessageSender.h"
#include "link/PanelPort.h"
#include "link/TlsFiles.h"

struct PanelLinkSettings {
    LinkAddress m_address;
    bool m_bCommand = true;  ///< not only to view
    std::string m_strName;   ///< the panel's, for people
    TlsFiles m_tlsFiles;     ///< for an address that is encrypted
    BrokerLogin m_login;     ///< for a broker's
};

/// Joins the instrument, again whenever the connection is lost, until it is ended. What the session
/// tells the screen comes on the link's thread.
class CPanelLink {
  public:
    /// What came in, over all connections.
    struct Totals {
        LinkCounts m_counts;
        unsigned m_nReconnections = 0;
    };

    /// Begins.
    /// @param screen must outlive the link
    /// @throws CTlsError
    CPanelLink(const PanelLinkSettings& settings, IPanelScreen& screen);
    /// Ends it if that has not been done.
    ~CPanelLink();

    /// Hands a message image over; never waits. Any thread.
    void Send(std::string image, ImageKind kind);
    /// The screen has the sample time that it was told. Any thread.
    void OnSampleTimeSet();

    /// Takes leave, within a second: waiting messages have half of it. Nothing is told any more.
    Totals End();

  private:
    struct Inside;
    std::unique_ptr<Inside> m_pInside;
};
