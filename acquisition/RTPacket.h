// The host's packet record and the queue that brings packets to the screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "platform/system/ConcurrentQueue.h"

/// Packet types; a reader ignores all others.
enum RTPacketType : std::int32_t {
    RTPACKET_SAMPLES = 3,     ///< header byte, then data blocks
    RTPACKET_NEW_CURVE = 20,  ///< byte 0 'P': a new curve begins
    RTPACKET_CONTROL = 39,    ///< byte 0: RTCommand
};

/// Sub-codes of real-time control, in packets from the instrument and in messages to it.
enum RTCommand : std::uint8_t {
    RTCMD_STATUS = 1,       ///< from the instrument: running state in byte 3, 0 = idle
    RTCMD_CAPTURE = 2,      ///< to it: start or stop; from it: capture started
    RTCMD_PASS_OUTPUT = 3,  ///< to it: send the pass output on channel 1
};

/// One packet of the instrument. The host allocates, fills and shares it; the screen never changes
/// it, and frees it by letting go of its reference.
///
/// Payload of samples: one header byte, not read; then blocks of one status byte (bits 0 to 3: the
/// digital lines), the count n of values as a big-endian 16-bit number, and n little-endian signed
/// 16-bit values, one sample set after the other. At most 65,535 bytes.
struct RTPacket {
    std::uint32_t m_nLeading = 0;           ///< the host's own; not read
    std::int32_t m_nType = 0;               ///< RTPacketType
    const std::uint8_t* m_pData = nullptr;  ///< the payload; lives as long as the packet
    std::int32_t m_nLength = 0;             ///< payload length in bytes
};

static_assert(offsetof(RTPacket, m_nLeading) == 0 && offsetof(RTPacket, m_nType) == 4 &&
              offsetof(RTPacket, m_pData) == 8 && offsetof(RTPacket, m_nLength) == 16 &&
              sizeof(RTPacket) == 24);

/// A packet that owns its payload.
inline std::shared_ptr<RTPacket> MakePacket(RTPacketType type, std::vector<std::uint8_t> payload) {
    struct OwningPacket : RTPacket {
        std::vector<std::uint8_t> m_payload;
    };
    auto spPacket = std::make_shared<OwningPacket>();
    spPacket->m_payload = std::move(payload);
    spPacket->m_nType = type;
    spPacket->m_pData = spPacket->m_payload.data();
    spPacket->m_nLength = static_cast<std::int32_t>(spPacket->m_payload.size());
    return spPacket;
}

using RTPacketQueue = concurrent_queue<std::shared_ptr<RTPacket>>;
