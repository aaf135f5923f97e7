// What a packet of the instrument says, apart from the values in it.
#pragma once

#include <cstdint>
#include <span>

#include "acquisition/RTPacket.h"

enum class PacketMeaning : std::uint8_t {
    Other,  ///< nothing to the screen
    Samples,
    NewCurve,
    CaptureStarted,  ///< the instrument has begun a capture that this screen did not ask for
    Running,         ///< running-state reports
    Idle,
};

using PacketPayload = std::span<const std::uint8_t>;

/// The payload of a packet, whose length is its host's word.
inline PacketPayload GetPayload(const RTPacket& packet) {
    if (packet.m_pData == nullptr || packet.m_nLength <= 0) return {};
    return {packet.m_pData, static_cast<std::size_t>(packet.m_nLength)};
}

/// Payload bytes of control packets.
constexpr std::size_t STATUS_RUNNING_STATE = 3;
constexpr std::size_t STARTED_CONTINUOUS = 5;
constexpr std::size_t STARTED_SAMPLE_TIME = 6;  ///< milliseconds, low byte first; may be absent

/// What is too short for what it says means nothing.
constexpr PacketMeaning FindMeaning(std::int32_t nType, PacketPayload payload) {
    constexpr std::uint8_t NEW_CURVE_MARK = 'P';
    if (nType == RTPACKET_SAMPLES) return PacketMeaning::Samples;
    if (payload.empty()) return PacketMeaning::Other;
    if (nType == RTPACKET_NEW_CURVE && payload[0] == NEW_CURVE_MARK) return PacketMeaning::NewCurve;
    if (nType != RTPACKET_CONTROL) return PacketMeaning::Other;
    if (payload[0] == RTCMD_CAPTURE && payload.size() > STARTED_CONTINUOUS)
        return PacketMeaning::CaptureStarted;
    if (payload[0] == RTCMD_STATUS && payload.size() > STATUS_RUNNING_STATE)
        return payload[STATUS_RUNNING_STATE] != 0 ? PacketMeaning::Running : PacketMeaning::Idle;
    return PacketMeaning::Other;
}

/// In the leading field, which is the host's own, of an idle report that the host makes up since
/// the instrument is out of reach: what it was capturing is cut short.
constexpr std::uint32_t LEADING_CUT_SHORT = 1;

/// Of a capture-started packet.
constexpr bool IsStartedContinuous(PacketPayload payload) {
    return payload[STARTED_CONTINUOUS] != 0;
}

/// The sample time that a capture-started packet tells, in milliseconds; 0: none.
constexpr std::uint16_t GetStartedSampleTime(PacketPayload payload) {
    if (payload.size() < STARTED_SAMPLE_TIME + 2) return 0;
    return static_cast<std::uint16_t>(payload[STARTED_SAMPLE_TIME] |
                                      payload[STARTED_SAMPLE_TIME + 1] << 8);
}
