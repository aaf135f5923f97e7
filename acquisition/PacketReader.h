// The packet reader: the screen's second thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "acquisition/PacketMeaning.h"
#include "acquisition/ReaderScreen.h"
#include "plugin/RealTimeData.h"

class RTCapture;

/// Drains the host's packet queue: values go into the current curves, control packets begin and end
/// captures. Each packet is handled whole and in its turn; what the screen has to show is asked for
/// after the session lock is left.
///
/// A packet for which there is no memory is dropped with a line of debug text; the reader goes on.
/// Packets of other types, and control packets that are too short for what they say, are ignored.
///
/// Threads: Run belongs to the reader thread; LeaveBetweenPackets may be called from any thread.
/// Capture, session and screen must outlive Run.
class CPacketReader {
  public:
    CPacketReader(CRealTimeData& session, RTCapture& capture, IReaderScreen& screen)
        : m_session(session), m_capture(capture), m_screen(screen) {}

    /// Reads packets until the session's m_bStopReader is set and the queue has run empty. The flag
    /// is looked at at the start and after each pause of 10 ms that an empty queue causes. Without
    /// a queue it only pauses.
    void Run();

    /// Makes Run return after the packet in hand, whatever is still queued.
    void LeaveBetweenPackets() { m_bLeave.store(true, std::memory_order_relaxed); }

    /// Handles one packet, as Run does.
    void HandlePacket(const RTPacket& packet);

  private:
    void DrainQueue(std::shared_ptr<RTPacket>& spPacket);
    void OnSamples(PacketPayload payload);
    void OnCaptureStarted(PacketPayload payload);
    void ReturnToIdle();

    CRealTimeData& m_session;
    RTCapture& m_capture;
    IReaderScreen& m_screen;
    std::atomic<bool> m_bLeave{false};
};
