// The instrument that is served on the link.
#pragma once

#include <cstdint>
#include <functional>

#include "link/Frame.h"
#include "link/Payloads.h"

/// Sends a packet to all panels. @param nFlags FRAMEFLAG_FOR_VIEWERS or 0
using SendPacket = std::function<void(const PacketView& packet, std::uint16_t nFlags)>;

/// What makes the packets and carries the messages out, whatever panels there are.
///
/// Threads: all calls come from the link's thread, none is made from within another. Whoever
/// samples does so on a thread of its own, which never waits for the link.
class IServedInstrument {
  public:
    virtual ~IServedInstrument() = default;

    /// The link has begun.
    /// @param onPackets to be called, from any thread, when there is something to hand over; it
    /// does
    ///        not wait
    virtual void Begin(std::function<void()> onPackets) = 0;
    /// The link ends: `onPackets` is not called any more once this has returned.
    virtual void End() = 0;

    /// Sends all packets that there are.
    virtual void HandOver(const SendPacket& send) = 0;

    /// Carries a message image out. Sends all packets of what was before; those that come of the
    /// image are left to the next HandOver.
    virtual AckResult Execute(PayloadView image, const SendPacket& send) = 0;

    /// Ends a capture as a stop command does, and sends all packets of it.
    virtual void StopCapture(const SendPacket& send) = 0;

    /// The first panel has come: a capture that is controlled elsewhere may begin.
    virtual void OnFirstJoined() = 0;
};
