#include "instrument/PacketWriter.h"

#include "acquisition/ObjRTGeneric.h"

namespace {

constexpr std::size_t BLOCK_HEAD = 3;  // status byte and value count
constexpr std::uint8_t HEADER_BYTE = 0;

std::vector<std::uint8_t> FormControl(RTCommand command, std::size_t nByte, bool bValue) {
    std::vector<std::uint8_t> payload(CObjRTGeneric::PAYLOAD_SIZE);
    payload[0] = command;
    payload[nByte] = bValue ? 1 : 0;
    return payload;
}

}  // namespace

std::shared_ptr<RTPacket> MakeStartedReport(const CaptureRequest& request) {
    auto payload = FormControl(RTCMD_CAPTURE, 5, request.m_bContinuous);
    payload[6] = static_cast<std::uint8_t>(request.m_nSampleMilliseconds & 0xFF);
    payload[7] = static_cast<std::uint8_t>(request.m_nSampleMilliseconds >> 8);
    payload[8] = static_cast<std::uint8_t>(request.m_nValueRate & 0xFF);
    payload[9] = static_cast<std::uint8_t>(request.m_nValueRate >> 8);
    return MakePacket(RTPACKET_CONTROL, std::move(payload));
}

void CPacketWriter::AddSet(std::uint8_t byLines, std::span<const std::int16_t> values) {
    // Room for a block of its own, whether or not the set opens one.
    if (m_payload.size() + BLOCK_HEAD + 2 * values.size() > MAX_PAYLOAD) Flush();
    if (m_payload.empty()) {
        m_payload.push_back(HEADER_BYTE);
        BeginBlock(byLines);
    } else if (m_payload[m_nBlock] != byLines) {
        BeginBlock(byLines);
    }

    for (const std::int16_t nValue : values) {
        const auto nBits = static_cast<std::uint16_t>(nValue);
        m_payload.push_back(static_cast<std::uint8_t>(nBits & 0xFF));
        m_payload.push_back(static_cast<std::uint8_t>(nBits >> 8));
    }
    // The count is big-endian, the values are little-endian.
    m_nBlockValues += values.size();
    m_payload[m_nBlock + 1] = static_cast<std::uint8_t>(m_nBlockValues >> 8);
    m_payload[m_nBlock + 2] = static_cast<std::uint8_t>(m_nBlockValues & 0xFF);
}

void CPacketWriter::BeginBlock(std::uint8_t byLines) {
    m_nBlock = m_payload.size();
    m_nBlockValues = 0;
    m_payload.push_back(byLines);
    m_payload.resize(m_payload.size() + 2);
}

void CPacketWriter::Flush() {
    if (m_payload.empty()) return;
    m_sink(MakePacket(RTPACKET_SAMPLES, std::move(m_payload)));
    m_payload.clear();
}

void CPacketWriter::ReportState(bool bRunning) {
    Flush();
    m_sink(MakePacket(RTPACKET_CONTROL, FormControl(RTCMD_STATUS, 3, bRunning)));
}

void CPacketWriter::ReportCaptureStarted(const CaptureRequest& request) {
    Flush();
    m_sink(MakeStartedReport(request));
}

void CPacketWriter::AnnounceCurve() {
    Flush();
    m_sink(MakePacket(RTPACKET_NEW_CURVE, {'P'}));
}
