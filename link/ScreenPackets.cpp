#include "link/ScreenPackets.h"

#include "acquisition/ObjRTGeneric.h"

std::uint16_t GetStartedSampleTime(const PacketView& packet) {
    if (FindMeaning(packet) != PacketMeaning::CaptureStarted) return 0;
    return GetStartedSampleTime(packet.m_payload);
}

std::shared_ptr<RTPacket> MakeIdlePacket() {
    std::vector<std::uint8_t> payload(CObjRTGeneric::PAYLOAD_SIZE);
    payload[0] = RTCMD_STATUS;
    auto spPacket = MakePacket(RTPACKET_CONTROL, std::move(payload));
    spPacket->m_nLeading = LEADING_CUT_SHORT;
    return spPacket;
}
