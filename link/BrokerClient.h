// A connection to a message broker.
#pragma once

#include <asio/io_context.hpp>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "link/BrokerLogin.h"
#include "link/LinkAddress.h"
#include "link/TlsFiles.h"

/// How surely a message is to arrive: not at all, or at least once.
enum class BrokerCare : std::uint8_t { None = 0, Once = 1 };

struct BrokerMessage {
    std::string m_strTopic;
    std::vector<std::uint8_t> m_bytes;
    BrokerCare m_care = BrokerCare::None;
    bool m_bRetained = false;  ///< the broker keeps it for those who come later
};

struct BrokerSubscription {
    std::string m_strTopic;  ///< may hold + and #
    BrokerCare m_care = BrokerCare::None;
};

struct BrokerSettings {
    LinkAddress m_address;
    BrokerLogin m_login;
    TlsFiles m_tlsFiles;
    std::vector<BrokerSubscription> m_subscriptions;
    std::optional<BrokerMessage> m_will;  ///< what the broker says when this side vanishes
};

/// Called on the context's thread; not behind Close or the destructor.
struct BrokerEvents {
    std::function<void()> m_onOpened;  ///< all subscriptions are in force
    std::function<void(const std::string& strTopic, std::span<const std::uint8_t>)> m_onMessage;
    std::function<void()> m_onSent;  ///< nothing waits to be sent any more
    /// @see StreamEvents::m_onLost
    std::function<void(const std::string& strWhy, bool bPatient)> m_onLost;
};

/// One connection in MQTT 5, opened at once and not again. It has a thread of its own, which may be
/// stuck in the system's lookup of a name or in connecting; then it is left alone at the end, and
/// ends by itself.
///
/// Bounds: MAX_PACKET for a message in either direction; INBOX_BYTES of messages that the context's
/// thread has not taken, then the broker is held back; MAX_THREADS in all, then nothing is opened.
///
/// Threads: the context's.
class CBrokerClient {
  public:
    static constexpr std::uint32_t MAX_PACKET = 66000;
    static constexpr std::size_t INBOX_BYTES = 1u << 20;
    static constexpr int MAX_THREADS = 8;
    /// How long closing may take.
    static constexpr std::chrono::milliseconds CLOSE_TIME{1000};

    /// @param context must outlive the client
    CBrokerClient(asio::io_context& context, BrokerSettings settings, BrokerEvents events);
    /// Without Close the connection just ends, and the broker says the will.
    ~CBrokerClient();
    CBrokerClient(const CBrokerClient&) = delete;
    CBrokerClient& operator=(const CBrokerClient&) = delete;

    /// Hands a message over; without a connection it is dropped.
    void Publish(const BrokerMessage& message);
    /// Of the messages handed over that are not reported as sent.
    std::size_t CountUnsent() const;

    /// While messages are not wanted they wait, and the broker behind them.
    void SetReading(bool bReading);

    /// Lets what was handed over be sent and takes leave, within CLOSE_TIME.
    /// @return is ready when that is done
    std::future<void> Close();

  private:
    struct State;
    std::shared_ptr<State> m_spState;
};
