#include "link/ScreenPackets.h"

#include "acquisition/ObjRTGeneric.h"
#include "link/ByteOrder.h"

namespace {

constexpr std::uint8_t NEW_CURVE_MARK = 'P';
constexpr std::size_t STATUS_RUNNING_STATE = 3;
constexpr std::size_t STARTED_CONTINUOUS = 5;
constexpr std::size_t STARTED_SAMPLE_TIME = 6;

}  // namespace

PacketMeaning FindMeaning(const PacketView& packet) {
    const PayloadView payload = packet.m_payload;
    if (packet.m_nType == RTPACKET_SAMPLES) return PacketMeaning::Samples;
    if (payload.empty()) return PacketMeaning::Other;
    if (packet.m_nType == RTPACKET_NEW_CURVE && payload[0] == NEW_CURVE_MARK)
        return PacketMeaning::NewCurve;
    if (packet.m_nType != RTPACKET_CONTROL) return PacketMeaning::Other;
    if (payload[0] == RTCMD_CAPTURE && payload.size() > STARTED_CONTINUOUS)
        return PacketMeaning::CaptureStarted;
    if (payload[0] == RTCMD_STATUS && payload.size() > STATUS_RUNNING_STATE)
        return payload[STATUS_RUNNING_STATE] != 0 ? PacketMeaning::Running : PacketMeaning::Idle;
    return PacketMeaning::Other;
}

std::uint16_t GetStartedSampleTime(const PacketView& packet) {
    if (FindMeaning(packet) != PacketMeaning::CaptureStarted ||
        packet.m_payload.size() < STARTED_SAMPLE_TIME + 2)
        return 0;
    return GetNumber<std::uint16_t>(packet.m_payload.subspan(STARTED_SAMPLE_TIME));
}

std::shared_ptr<RTPacket> MakeIdleReport() {
    std::vector<std::uint8_t> payload(CObjRTGeneric::PAYLOAD_SIZE);
    payload[0] = RTCMD_STATUS;
    return MakePacket(RTPACKET_CONTROL, std::move(payload));
}
