// An instrument elsewhere, on a link.
#pragma once

#include <mutex>
#include <optional>
#include <vector>

#include "instrument/Instrument.h"
#include "instrument/PacketSink.h"
#include "link/PanelLink.h"

class CDialog;
class CWnd;
struct CRealTimeData;

/// Joins the instrument as soon as it is made and stays with it until it is destroyed, within a
/// second; says on standard error, in lines that begin with "link", how the link stands whenever
/// that changes, and on standard output, at the end, what came in.
///
/// Threads: as IInstrument says; AttachScreen and the destructor on the user-interface thread.
class CLinkInstrument : public IInstrument, private IPanelScreen {
  public:
    /// @param ui must outlive the instrument; a window, to which calls to the user-interface thread
    /// are posted
    /// @throws CTlsError
    CLinkInstrument(CWnd& ui, const PanelLinkSettings& settings);
    ~CLinkInstrument() override;

    void Send(std::string_view image) override;
    InstrumentState GetState() const override;

    LinkStatus GetStatus() const;
    const std::string& GetAddress() const { return m_address.m_strText; }
    /// What the instrument is, once it has been reached.
    std::optional<Hello> GetHello() const;

    /// The screen that was made for it, which gets the sample time of captures that others begin,
    /// and its session, which gets new rates. Packets wait for it; from then on they go to the
    /// sink, one at a time.
    void AttachScreen(CDialog& screen, CRealTimeData& session, const CPacketSink& sink);

    /// How far the screen has been told of a capture.
    enum class Progress : std::uint8_t { None, Running, Over };
    Progress GetProgress() const;
    /// What went wrong since the last start was sent, or ever if none was, in English; empty:
    /// nothing.
    std::string FindTrouble() const;

  private:
    void PushPacket(std::shared_ptr<RTPacket> spPacket) override;
    void PushPacketBehindScreen(std::shared_ptr<RTPacket> spPacket) override;
    void OnInstrumentKnown(const Hello& hello) override;
    void SetRates(std::uint16_t nValueRate, std::uint16_t nAuxRate) override;
    void SetSampleTime(unsigned nSeconds) override;
    void OnStatus(const LinkStatus& status) override;

    void Note(const RTPacket& packet);
    void ApplySampleTime();
    void Log(const LinkStatus& status);
    void CheckLine(const Hello& hello);

    CWnd& m_ui;
    const LinkAddress m_address;

    // Of the user-interface thread.
    CDialog* m_pScreen = nullptr;
    CRealTimeData* m_pSession = nullptr;
    unsigned m_nSampleSeconds = 0;  ///< for the screen to take over; 0: none

    // Of the link's thread.
    std::string m_strLogged;
    LinkStatus m_logged;
    LinkTime m_loggedAt{0};

    std::mutex m_sinkMutex;
    std::optional<CPacketSink> m_sink;                  ///< guarded by m_sinkMutex
    std::vector<std::shared_ptr<RTPacket>> m_awaiting;  ///< the sink; guarded by m_sinkMutex

    mutable std::mutex m_mutex;  ///< guards what follows
    LinkStatus m_status;
    std::optional<Hello> m_hello;
    std::string m_strTrouble;
    Progress m_progress = Progress::None;

    CPanelLink m_link;  ///< last: it ends before what it uses
};
