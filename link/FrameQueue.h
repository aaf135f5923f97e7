// The frames that one side has to send on one connection.
#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "link/Frame.h"

/// Numbers frames and keeps them until the transport takes them. The transport takes some, sends
/// them, says so, and takes the next: what it has taken still counts.
///
/// Threads: one at a time.
class CFrameQueue {
  public:
    void Add(FrameKind kind, std::uint16_t nFlags, SharedBytes spPayload);

    /// Numbers begin anew. What waits stays, in front of what comes.
    void RestartNumbers() { m_nNext = 0; }

    /// Leaves out what the transport has not taken; the numbers stay used up.
    void DropWaiting();

    /// The next frames, about so many bytes but at least one frame; none when nothing waits, or the
    /// frames taken before are not sent yet.
    std::vector<OutFrame> Take(std::size_t nBytes);
    /// All that waits, to be sent behind what was taken.
    std::vector<OutFrame> TakeRest();
    /// The frames taken are sent, or will never be.
    void OnSent() { m_nTakenBytes = 0; }

    /// Of all frames that wait or are taken and not sent.
    std::size_t CountBytes() const { return m_nWaitingBytes + m_nTakenBytes; }
    bool IsEmpty() const { return CountBytes() == 0; }

  private:
    std::deque<OutFrame> m_waiting;
    std::size_t m_nWaitingBytes = 0;
    std::size_t m_nTakenBytes = 0;
    std::uint32_t m_nNext = 0;
};
