// What the link understands of the packets that it carries.
#pragma once

#include <cstdint>
#include <memory>

#include "acquisition/PacketMeaning.h"
#include "link/Payloads.h"

inline PacketMeaning FindMeaning(const PacketView& packet) {
    return FindMeaning(packet.m_nType, packet.m_payload);
}

/// Whether the packet is one that a capture consists of.
constexpr bool IsOfCapture(std::int32_t nType) {
    return nType == RTPACKET_SAMPLES || nType == RTPACKET_NEW_CURVE || nType == RTPACKET_CONTROL;
}

/// The sample time that a capture-started packet tells, in milliseconds; 0: none.
std::uint16_t GetStartedSampleTime(const PacketView& packet);

/// A report that the instrument is idle, though nobody has heard it say so (LEADING_CUT_SHORT).
std::shared_ptr<RTPacket> MakeIdlePacket();
