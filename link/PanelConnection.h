// The transports of a panel's link, as its thread works them.
#pragma once

#include <asio/io_context.hpp>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "link/FrameQueue.h"
#include "link/PanelLink.h"
#include "link/PanelSession.h"

/// What a connection tells. Nothing comes once it is closed or lost.
struct ConnectionEvents {
    std::function<void()> m_onOpened;
    std::function<void(std::span<const std::uint8_t>)> m_onBytes;
    std::function<void(BrokerTopic, std::span<const std::uint8_t>)> m_onBrokerMessage;
    /// The frames taken are sent.
    std::function<void()> m_onSent;
    /// @see StreamEvents::m_onLost; also of one that did not open
    std::function<void(const std::string& strWhy, bool bPatient)> m_onLost;
};

/// Opened and closed as often as the session asks.
///
/// Threads: the context's.
class IPanelConnection {
  public:
    virtual ~IPanelConnection() = default;

    virtual void Open() = 0;
    virtual void Close(const std::vector<OutFrame>& lastFrames) = 0;
    /// Takes what the queue has, unless it is not open, or frames taken before are not sent yet.
    virtual void Send(CFrameQueue& queue) = 0;
    virtual void SetReading(bool bReading) = 0;
    /// Waits for what the context does not know of, behind its end.
    virtual void AwaitClosed(std::chrono::steady_clock::time_point deadline) = 0;
};

/// By the settings' address.
/// @param context must outlive the connection
/// @param nToken the panel's, as its session has it
/// @throws CTlsError
std::unique_ptr<IPanelConnection> MakePanelConnection(asio::io_context& context,
                                                      const PanelLinkSettings& settings,
                                                      std::uint32_t nToken,
                                                      ConnectionEvents events);
