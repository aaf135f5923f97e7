// Forms the instrument's packets and sends them on their way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "instrument/InstrumentCommand.h"
#include "instrument/PacketSink.h"

/// A report that a capture was begun that the screen which gets it did not ask for.
std::shared_ptr<RTPacket> MakeStartedReport(const CaptureRequest& request);

/// Collects sample sets into blocks and blocks into packets, and forms the event packets.
///
/// A block ends where the digital lines change, so that each block's status byte holds for all of
/// its values. Events are pushed behind the samples collected before them: the order of calls is
/// the order of packets.
///
/// Threads: one at a time. Collected samples that were not flushed are lost with the writer.
class CPacketWriter {
  public:
    /// Longest payload that a packet's 16-bit offsets can address, in bytes.
    static constexpr std::size_t MAX_PAYLOAD = 65535;

    explicit CPacketWriter(CPacketSink sink) : m_sink(std::move(sink)) {}

    /// Adds one sample set, channel after channel.
    /// @param byLines bits 0 to 3: the digital lines while these values were taken
    void AddSet(std::uint8_t byLines, std::span<const std::int16_t> values);

    /// Pushes the samples collected so far, if any.
    void Flush();

    /// The instrument's running state: running, or idle.
    void ReportState(bool bRunning);
    /// The instrument has begun a capture that the screen did not ask for.
    void ReportCaptureStarted(const CaptureRequest& request);
    /// The values that follow belong to a new curve.
    void AnnounceCurve();

  private:
    void BeginBlock(std::uint8_t byLines);

    const CPacketSink m_sink;
    std::vector<std::uint8_t> m_payload;  ///< of the sample packet being collected; empty: none
    std::size_t m_nBlock = 0;             ///< offset of the open block in it
    std::size_t m_nBlockValues = 0;       ///< values in the open block
};
