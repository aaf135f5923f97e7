// Serves an instrument through a message broker.
#pragma once

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "link/BrokerClient.h"
#include "link/InstrumentHub.h"

/// Publishes what the instrument is and its packets, for any number who view, and brings the hub
/// the panel that commands, which it takes for one on a line. The topics stand below the address's:
/// hello and packets, up/XXXXXXXX from a panel, down/XXXXXXXX to it. Each counts its frames by
/// itself. When the broker is gone, the station tries to come back.
///
/// Bounds: packets are left out while more than MAX_UNSENT bytes are on their way to the broker; of
/// panels that write to the instrument at most MAX_PANELS are known.
///
/// Threads: its context's.
class CBrokerStation {
  public:
    static constexpr std::size_t MAX_UNSENT = 2u << 20;
    static constexpr std::size_t MAX_PANELS = 8;

    /// @param context must outlive the station, as must the hub
    /// @param settings where the broker is, and how it lets one in
    CBrokerStation(asio::io_context& context, CInstrumentHub& hub, BrokerSettings settings,
                   std::function<void(const std::string& strLine)> onNews);

    const LinkAddress& GetAddress() const { return m_settings.m_address; }

    /// Begins. To be called once.
    void Start();
    /// Publishes a packet.
    void Send(const PacketView& packet, std::uint16_t nFlags);
    /// Publishes what the hub has for its panels, and what the instrument is if that has changed.
    void SendAll();
    /// To be called every 20 ms or so.
    void OnTime(LinkTime now);
    /// Takes leave, behind what the hub has, and waits for that at most half a second.
    void Finish();

  private:
    /// A panel that writes to the instrument.
    struct Writer {
        PanelId m_id = 0;
        std::uint32_t m_nNext = 0;  ///< number on its topic
    };

    void Open();
    void OnConnected();
    void OnMessage(const std::string& strTopic, std::span<const std::uint8_t> bytes);
    void OnLost(const std::string& strWhy, bool bPatient);
    void Welcome(const std::string& strToken, const Join& join);
    Writer& FindWriter(const std::string& strToken);
    void SendTo(const std::string& strToken, Writer& writer);
    void PublishHello();
    void PublishOnPackets(FrameKind kind, std::uint16_t nFlags, SharedBytes spPayload);
    void Publish(const std::string& strTopic, const OutFrame& frame, BrokerCare care,
                 bool bRetained = false);
    BrokerSettings MakeSettings() const;
    BrokerMessage MakeMessage(const std::string& strTopic, const OutFrame& frame) const;

    asio::io_context& m_context;
    CInstrumentHub& m_hub;
    const BrokerSettings m_settings;
    const std::function<void(const std::string&)> m_onNews;
    const std::string m_strTopic;
    asio::steady_timer m_timer;
    std::unique_ptr<CBrokerClient> m_pClient;
    bool m_bConnected = false;
    bool m_bTold = false;                     ///< that the broker cannot be reached
    std::map<std::string, Writer> m_writers;  ///< by the token in their topic
    std::optional<Hello> m_hello;             ///< as it was published last
    std::uint32_t m_nHelloNumber = 0;
    std::uint32_t m_nPacketsNumber = 0;
    LinkTime m_published{0};  ///< when the last frame went to packets
};
