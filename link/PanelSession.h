// A panel's end of the link: joins the instrument, brings messages to it and packets to the screen.
#pragma once

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "link/LinkPeer.h"
#include "link/MessageSender.h"
#include "link/PanelPort.h"
#include "link/RateWindow.h"
#include "link/ScreenGate.h"

struct PanelSettings {
    LinkManner m_manner = LinkManner::Stream;
    bool m_bCommand = true;      ///< not only to view
    std::uint32_t m_nToken = 1;  ///< random, of this run of the program; not 0
    std::string m_strName;       ///< the panel's, for people
    std::function<double()> m_random = [] { return 0.0; };  ///< 0 up to 1
};

/// Where a broker's message came from.
enum class BrokerTopic : std::uint8_t { Hello, Packets, Down };

/// States, acknowledgement, flow and bounds of one panel's link, over every connection that it has
/// in its life. It has no socket, no clock and no thread: its surroundings tell what happens, and
/// when, and do what it asks of them. After every call they send what GetPeer().GetQueue()
/// holds, while a transport is open.
///
/// - A message is carried out once or its failure is told; none is sent after a reconnection.
/// - When the connection is lost, the screen is told that the capture is over, behind all packets.
/// - Whatever the instrument sends, packets that wait and packets that the screen has not released
///   hold no more than about MAX_HELD bytes: WantsBytes is false then.
///
/// Threads: one at a time. Packets may be released on any thread, also when the session is gone.
class CPanelSession {
  public:
    static constexpr std::size_t MAX_HELD = 16u << 20;
    static constexpr std::size_t RESUME_HELD = 12u << 20;

    /// @param transport, screen must outlive the session
    CPanelSession(PanelSettings settings, IPanelTransport& transport, IPanelScreen& screen);

    /// Begins. To be called once, before anything else.
    void Start(LinkTime now);

    void OnOpened(LinkTime now);
    /// The transport did not open, or has closed.
    /// @param strWhy in words
    /// @param bPatient it makes no sense to try again soon
    void OnTransportLost(const std::string& strWhy, bool bPatient, LinkTime now);
    void OnBytes(std::span<const std::uint8_t> bytes, LinkTime now);
    void OnBrokerMessage(BrokerTopic topic, std::span<const std::uint8_t> bytes, LinkTime now);
    /// To be called every 20 ms or so.
    void OnTime(LinkTime now);
    /// Whether the transport is to be read.
    bool WantsBytes() const { return !m_bPaused; }

    /// Hands a message image over; never waits.
    void Send(std::string_view image, ImageKind kind, LinkTime now);
    void OnSampleTimeSet(LinkTime now);

    /// Ends: gives waiting messages 500 ms, then takes leave. GetState() is Ended then.
    void Finish(LinkTime now);

    PanelState GetState() const { return m_status.m_state; }
    CLinkPeer& GetPeer() { return m_peer; }
    /// How often a connection came after one that was lost.
    unsigned CountReconnections() const { return m_nReconnections; }

  private:
    void Connect(LinkTime now);
    void SendJoin(LinkTime now);
    void SendDue(LinkTime now);
    void KeepConnection(LinkTime now);
    void Report();

    /// Ends the connection, or the attempt at one, for a reason of the protocol.
    /// @param bGoodbye the instrument is told too
    void Part(const Parting& why, bool bGoodbye, LinkTime now);
    void Lose(const LinkText& why, std::optional<LinkTime> delay, LinkTime now);
    LinkTime FindPause();
    void DropWork();
    void EndTransport();
    void EndFor(PanelState state);

    void ReadFrames(LinkTime now);
    /// @param pOrder null: its number is not looked at
    void TakeFrame(const Frame& frame, CFrameOrder* pOrder, LinkTime now);
    void TakeWhileJoining(const Frame& frame, LinkTime now);
    void TakeWhileConnected(const Frame& frame, LinkTime now);
    void TakeParting(const Frame& frame, LinkTime now);
    void TakeHello(const Frame& frame, LinkTime now);
    void TakeRetainedHello(const Frame& frame, LinkTime now);
    void Accept(const Hello& hello, LinkTime now);
    bool SuitsScreen(const Hello& hello, LinkTime now);
    void TakeAck(const Frame& frame, LinkTime now);
    void TakePacket(const Frame& frame, LinkTime now);
    bool IsFlood(const Frame& frame, LinkTime now);
    void BreakOff(LinkReason reason, LinkTime now);

    void Deliver(std::shared_ptr<RTPacket> spPacket, unsigned nSampleSeconds = 0);
    void TellIdle(bool bBehindScreen);
    void LeaveUnsent(ImageKind kind, const LinkText& notice);

    bool IsLine() const { return m_settings.m_manner != LinkManner::Stream; }
    bool IsJoining() const { return m_status.m_state == PanelState::Joining; }
    bool IsConnected() const { return m_status.m_state == PanelState::Connected; }
    /// A broker's viewer publishes nothing: it takes what the instrument left there.
    bool IsSilent() const {
        return m_settings.m_manner == LinkManner::Broker && !m_settings.m_bCommand;
    }

    const PanelSettings m_settings;
    IPanelTransport& m_transport;
    IPanelScreen& m_screen;
    CLinkPeer m_peer;
    CFrameOrder m_helloOrder;  ///< of a broker's topics
    CFrameOrder m_downOrder;
    CMessageSender m_sender;
    CScreenGate m_gate;
    CRateWindow m_frameRate;
    CRateWindow m_valueRate;

    LinkStatus m_status;
    LinkStatus m_reported;
    bool m_bOpening = false;  ///< the transport was asked for
    bool m_bOpen = false;     ///< and is there
    bool m_bAsked = false;    ///< a JOIN is not answered yet
    LinkTime m_since{0};      ///< of the state
    LinkTime m_next{0};       ///< when to try, or to join, again
    LinkTime m_joinedAt{0};
    LinkTime m_lostAt{0};
    std::uint32_t m_nAttempt = 0;
    unsigned m_nFailures = 0;  ///< and lost connections, in a row
    unsigned m_nReconnections = 0;
    std::optional<Hello> m_first;      ///< what the screen was made for
    Hello m_hello;                     ///< of this connection
    std::optional<LinkTime> m_finish;  ///< when waiting messages are given up

    /// Bytes of packets that are not released; packets outlive the session.
    std::shared_ptr<std::atomic<std::size_t>> m_spHeld;
    struct Behind {
        std::shared_ptr<RTPacket> m_spPacket;
        unsigned m_nSampleSeconds = 0;  ///< not 0: this packet goes when the screen has it
    };
    std::deque<Behind> m_behind;  ///< packets that wait for the first one's sample time
    bool m_bPaused = false;
};
