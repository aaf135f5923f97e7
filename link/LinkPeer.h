// What both ends of a connection do alike.
#pragma once

#include <cstdint>
#include <optional>

#include "link/FrameOrder.h"
#include "link/FrameQueue.h"
#include "link/FrameReader.h"
#include "link/LinkTime.h"
#include "link/Payloads.h"

/// What came in, since the program's start or the transport's opening.
struct LinkCounts {
    std::uint64_t m_nFrames = 0;
    std::uint64_t m_nLost = 0;     ///< by the sequence numbers
    std::uint64_t m_nOld = 0;      ///< dropped by them
    std::uint64_t m_nDamages = 0;  ///< runs of bytes that were no frame
    std::uint64_t m_nIgnored = 0;  ///< of kinds that are not known or not for this side
};

/// The other end of an open transport: its bytes in, frames out, and the times of both.
///
/// Threads: one at a time.
class CLinkPeer {
  public:
    static constexpr LinkTime KEEPALIVE_TIME = std::chrono::seconds(1);
    static constexpr LinkTime SILENCE_TIME = std::chrono::seconds(3);

    CLinkPeer(LinkManner manner, std::size_t nLimit)
        : m_manner(manner), m_nLimit(nLimit), m_reader(std::in_place, manner, nLimit) {}

    /// A transport was opened: nothing has come, and nothing waits to be sent.
    void OnOpened(LinkTime now);

    void Send(FrameKind kind, PayloadBytes payload, LinkTime now);
    /// Sends a frame that others get too.
    void SendShared(FrameKind kind, std::uint16_t nFlags, SharedBytes spPayload, LinkTime now);
    /// Sends the last frame, in place of all that waits.
    void SendLast(FrameKind kind, const Parting& parting, LinkTime now);

    /// A good frame came. Its number is looked at separately.
    void OnFrame(LinkTime now);
    /// Takes a frame's number.
    /// @return how many frames are missing in front of it; nothing: an old one, to be dropped
    std::optional<std::uint32_t> TakeNumber(std::uint32_t nSequence);

    /// Sends a KEEPALIVE if nothing else was sent for a while.
    void KeepAlive(LinkTime now);
    bool IsSilent(LinkTime now) const { return now - m_heard >= SILENCE_TIME; }
    /// Nothing was read for reasons of this side: the times run from now on.
    void RestartWait(LinkTime now);

    bool HasGoodFrame() const { return m_bGoodFrame; }
    /// Damages since the last call.
    std::uint64_t TakeNewDamages();

    CFrameReader& GetReader() { return *m_reader; }
    CFrameQueue& GetQueue() { return m_queue; }
    CFrameOrder& GetOrder() { return m_order; }
    LinkCounts& GetCounts() { return m_counts; }

  private:
    const LinkManner m_manner;
    const std::size_t m_nLimit;
    std::optional<CFrameReader> m_reader;
    CFrameOrder m_order;
    CFrameQueue m_queue;
    LinkTime m_heard{0};
    LinkTime m_sent{0};
    bool m_bGoodFrame = false;  ///< on the open transport
    std::uint64_t m_nDamagesSeen = 0;
    LinkCounts m_counts;
};
