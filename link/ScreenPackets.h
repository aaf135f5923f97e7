// What the link understands of the packets that it carries.
#pragma once

#include <cstdint>
#include <memory>

#include "acquisition/RTPacket.h"
#include "link/Payloads.h"

enum class PacketMeaning : std::uint8_t {
    Other,
    Samples,
    NewCurve,
    CaptureStarted,  ///< the instrument has begun a capture that this screen did not ask for
    Running,         ///< running-state reports
    Idle,
};

/// As the screen's packet reader takes them: what is too short means nothing.
PacketMeaning FindMeaning(const PacketView& packet);

/// Whether the packet is one that a capture consists of.
constexpr bool IsOfCapture(std::int32_t nType) {
    return nType == RTPACKET_SAMPLES || nType == RTPACKET_NEW_CURVE || nType == RTPACKET_CONTROL;
}

/// The sample time that a capture-started packet tells, in milliseconds; 0: none.
std::uint16_t GetStartedSampleTime(const PacketView& packet);

/// A report that the instrument is idle.
std::shared_ptr<RTPacket> MakeIdleReport();
