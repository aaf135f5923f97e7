// An instrument's end of the link: lets panels in, takes their messages, and sends them packets.
#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>

#include "link/InstrumentPort.h"
#include "link/LinkPeer.h"
#include "link/RateWindow.h"

struct HubSettings {
    /// What the instrument is. Role, running capture and attempt are filled in.
    Hello m_hello;
    unsigned m_nMaxPanels = 8;  ///< joined ones, 1 to 8; one place is kept for who commands
};

/// One transport to a panel.
struct PanelTransport {
    LinkManner m_manner = LinkManner::Stream;  ///< Stream or Line
    std::string m_strFrom;                     ///< for people
    std::size_t m_nMaxFrame = SIZE_MAX;        ///< longest frame of values on a slow line, in bytes
};

/// States, roles, flow and bounds of all panels of one instrument. It has no socket, no clock and
/// no thread: its surroundings tell what happens, and when, and do what it asks through the port.
/// After every call they send what the queues hold.
///
/// - At most one panel commands; a bad panel costs its own connection, never another's.
/// - No panel holds more than MAX_QUEUED bytes: one that does not keep up is sent away.
/// - When the panel that commands is gone, the capture that it may have begun is ended.
///
/// Threads: one at a time.
class CInstrumentHub {
  public:
    static constexpr std::size_t MAX_QUEUED = 2u << 20;  ///< in frames, for one panel
    static constexpr std::size_t MAX_UNJOINED = 8;       ///< streams; one more closes the oldest

    /// @param port must outlive the hub
    CInstrumentHub(HubSettings settings, IInstrumentPort& port);
    ~CInstrumentHub();

    /// A stream was accepted, or a line opened.
    PanelId OnOpened(PanelTransport transport, LinkTime now);
    /// The transport is gone by itself.
    void OnClosed(PanelId id, const std::string& strWhy);
    void OnBytes(PanelId id, std::span<const std::uint8_t> bytes, LinkTime now);
    /// To be called every 20 ms or so.
    void OnTime(LinkTime now);

    /// Sends a packet to every panel that has joined. May be called from within Execute.
    /// @param nFlags FRAMEFLAG_FOR_VIEWERS: the panel that commands passes over it
    void Broadcast(const PacketView& packet, std::uint16_t nFlags, LinkTime now);

    /// Takes leave of all.
    void Finish(LinkTime now);

    /// What is to be sent on a connection; null when there is none of this name.
    CFrameQueue* GetQueue(PanelId id);
    bool IsJoined(PanelId id) const;
    /// What the instrument is now, for who views and has asked nothing.
    Hello MakeHello() const;

  private:
    struct Panel;
    class CScope;

    void ReadFrames(Panel& panel, LinkTime now);
    void TakeFrame(Panel& panel, const Frame& frame, LinkTime now);
    void TakeUnjoined(Panel& panel, const Frame& frame, LinkTime now);
    void TakeJoin(Panel& panel, const Frame& frame, LinkTime now);
    void Admit(Panel& panel, const Join& join, std::uint32_t nSequence, LinkTime now);
    void TakeMessage(Panel& panel, const Frame& frame, LinkTime now);
    void SendPacket(Panel& panel, std::uint16_t nFlags, const SharedBytes& spPayload, LinkTime now);
    void KeepConnection(Panel& panel, LinkTime now);

    /// Sends a REFUSE or GOODBYE, and ends the connection.
    void Part(Panel& panel, const Parting& why, LinkTime now);
    void Leave(Panel& panel, LinkReason reason, const std::string& strWhy, LinkTime now);
    void Retire(Panel& panel, const std::string& strWhy);
    void StopIfDue();
    void CloseOldestUnjoined(LinkTime now);
    Panel* FindCommander();
    std::size_t CountViewers() const;

    const HubSettings m_settings;
    IInstrumentPort& m_port;
    std::map<PanelId, std::unique_ptr<Panel>> m_panels;
    PanelId m_nLast = 0;
    unsigned m_nDepth = 0;  ///< of operations within operations
    bool m_bRunning = false;
    bool m_bStopDue = false;
    bool m_bAnyJoined = false;
};
