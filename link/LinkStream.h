// An open transport that carries bytes: TCP, TLS, a serial line.
#pragma once

#include <asio/error_code.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "link/FrameQueue.h"
#include "link/LinkAddress.h"
#include "link/LinkTls.h"

/// What a stream tells its owner. Nothing comes once it is closed or lost.
struct StreamEvents {
    std::function<void(std::span<const std::uint8_t>)> m_onBytes;
    /// The frames taken are sent: the queue's OnSent and the next Send are due.
    std::function<void()> m_onSent;
    /// The transport is gone.
    /// @param bPatient it makes no sense to try again soon
    std::function<void(const std::string& strWhy, bool bPatient)> m_onLost;
};

/// Reads and writes without waiting. Shared with its own operations, it outlives its owner's hold
/// by the time that closing takes.
///
/// Threads: its context's.
class CLinkStream {
  public:
    /// Most that one read brings, and about what one write takes, in bytes.
    static constexpr std::size_t PIECE = 64u << 10;
    /// How long closing may take.
    static constexpr std::chrono::milliseconds CLOSE_TIME{1000};

    virtual ~CLinkStream() = default;

    /// Begins to read. To be called once.
    virtual void Start(StreamEvents events) = 0;
    /// While it is not read, the other side is held back by the transport.
    virtual void SetReading(bool bReading) = 0;
    /// Takes what the queue has, as one write, unless frames taken before are not sent yet.
    virtual void Send(CFrameQueue& queue) = 0;
    /// Sends what was taken and these frames, takes leave and closes, all within CLOSE_TIME.
    virtual void Close(const std::vector<OutFrame>& lastFrames) = 0;
    /// Ends it at once, also while it closes.
    virtual void Abandon() = 0;
};

/// Of a connected socket.
std::shared_ptr<CLinkStream> MakeTcpStream(asio::ip::tcp::socket socket);

/// Of a socket behind its handshake.
std::shared_ptr<CLinkStream> MakeTlsStream(TlsSocket socket);

/// Opens a serial line.
/// @param error why there is none, when null is returned
std::shared_ptr<CLinkStream> OpenLine(asio::io_context& context, const LinkAddress& address,
                                      asio::error_code& error);

/// In words.
std::string DescribeTransportError(const asio::error_code& error);
