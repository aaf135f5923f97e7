// What passes from the link to the screen.
#pragma once

#include <cstdint>

#include "link/ScreenPackets.h"

/// Keeps the values of one capture out of the curves of another. A screen that joins in the midst
/// of a capture gets values from the next curve on; one that has asked for a capture, from where
/// the instrument took the request.
///
/// Threads: one at a time.
class CScreenGate {
  public:
    /// A connection begins: what comes first belongs to no curve of ours.
    void OnConnected();

    /// The screen has handed over a request to start.
    void OnStartHanded();
    /// The instrument has answered the oldest request not answered yet.
    /// @return packets of values, missing in the capture that begins: those that were kept out
    /// since
    ///         the request, when it had to be sent again
    std::uint64_t OnStartAnswered(bool bTaken, bool bSentAgain);

    /// An idle report goes to the screen that is not the instrument's.
    void OnIdlePushed() { m_bRunning = false; }

    /// Requests not answered never will be.
    void ForgetStarts() { m_nUnanswered = 0; }

    /// Judges the instrument's next packet.
    bool Passes(const PacketView& packet);

    /// As far as the screen was told or has asked for.
    bool IsRunning() const { return m_bRunning; }
    bool HasUnansweredStart() const { return m_nUnanswered > 0; }
    /// Values are kept out until a curve begins.
    bool AwaitsCurve() const { return m_bAwaitsCurve; }

  private:
    bool m_bOpen = false;
    bool m_bRunning = false;
    bool m_bAwaitsCurve = false;
    unsigned m_nUnanswered = 0;    ///< requests to start
    std::uint64_t m_nKeptOut = 0;  ///< packets of values, since the last request
};
