// Finds the frames in what a transport brings.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "link/Frame.h"
#include "link/LinkTime.h"

/// How a transport carries frames, and so what damaged bytes on it mean.
enum class LinkManner : std::uint8_t {
    Stream,  ///< TCP, TLS: bytes do not get lost; what is no frame ends the connection
    Line,    ///< a serial line: what is no frame is passed over
    Broker,  ///< one frame in each of a broker's messages; otherwise as a line
};

/// Takes bytes in pieces of any size and gives the frames in them: the same frames and counts
/// whatever the pieces. On a line it passes over what is no frame, finds a whole frame behind or
/// within a damaged one, and checks no byte more than about nine times, whatever the bytes are.
///
/// Holds at most a frame of the longest payload, and the last piece. Bytes count, not what a head
/// announces.
///
/// Threads: one at a time.
class CFrameReader {
  public:
    enum class Fault : std::uint8_t {
        None,
        Damaged,    ///< a check does not hold
        Malformed,  ///< another version, or a payload above the limit, with a check that holds
        Stalled,    ///< a frame that does not end
    };

    /// How long a frame may take from one byte to the last.
    static constexpr LinkTime STALL_TIME = std::chrono::seconds(2);

    /// @param manner Stream or Line
    /// @param nLimit longest payload that is taken, in bytes
    CFrameReader(LinkManner manner, std::size_t nLimit)
        : m_bLine(manner == LinkManner::Line), m_nLimit(nLimit) {}

    /// Takes a piece. Every frame has to be read before the next piece is added.
    void Add(std::span<const std::uint8_t> bytes, LinkTime now);

    /// The next frame; its payload stays until the next piece is added.
    /// @return nothing when more bytes are needed, or there is a fault
    std::optional<Frame> Read();

    /// To be called now and then: a frame that has not ended for STALL_TIME is given up. On a line
    /// there may be frames to read then.
    void CheckStall(LinkTime now);

    /// Bytes were not awaited for a while: a frame begun has its full time again.
    void RestartWait(LinkTime now) { m_progress = m_now = now; }

    /// What has ended a stream; final.
    Fault GetFault() const { return m_fault; }

    std::uint64_t CountDamages() const { return m_nDamages; }  ///< runs of bytes passed over
    std::uint64_t CountDropped() const { return m_nDropped; }  ///< bytes passed over
    std::uint64_t CountChecked() const { return m_nChecked; }  ///< bytes that a check went over
    std::size_t CountHeld() const { return m_buffer.size() - m_nBegin; }

  private:
    std::span<const std::uint8_t> GetHeld() const { return std::span(m_buffer).subspan(m_nBegin); }
    void Advance(std::size_t nBytes);
    void Drop(std::size_t nBytes);
    void Reject(Fault fault, std::size_t nBytes);
    void RejectFrame(std::size_t nBytes);

    const bool m_bLine;
    const std::size_t m_nLimit;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_nBegin = 0;         ///< of what is held in the buffer
    std::optional<FrameHead> m_head;  ///< of the first frame held, when its check holds
    Fault m_fault = Fault::None;
    LinkTime m_now{0};
    LinkTime m_progress{0};  ///< when a frame was read, a byte dropped, or the first one came

    // Places are counted in bytes since the transport was opened.
    std::uint64_t m_nPosition = 0;  ///< of the first byte held
    std::uint64_t m_nOrigin = 0;    ///< where damaged frames that overlap begin
    std::uint64_t m_nFar = 0;       ///< where the last of them ends
    std::uint64_t m_nWasted = 0;    ///< length of all of them

    bool m_bInDamage = false;
    std::uint64_t m_nDamages = 0;
    std::uint64_t m_nDropped = 0;
    std::uint64_t m_nChecked = 0;
};

/// Reads a broker's message, which is exactly one frame.
/// @return nothing when it is anything else
std::optional<Frame> ReadWholeFrame(std::span<const std::uint8_t> bytes, std::size_t nLimit);
