#include "acquisition/ObjRTGeneric.h"

#include <new>

#include "platform/system/Exceptions.h"

namespace {

std::unique_ptr<CObjRTGeneric> MakeControlMessage(RTCommand command) {
    std::unique_ptr<CObjRTGeneric> pMessage(new (std::nothrow) CObjRTGeneric);
    if (!pMessage) throw CMemoryException();
    pMessage->m_nType = RTPACKET_CONTROL;
    pMessage->m_abyPayload[0] = command;
    return pMessage;
}

}  // namespace

std::unique_ptr<CObjRTGeneric> MakeCaptureCommand(const RTCaptureParameters& parameters) {
    auto pMessage = MakeControlMessage(RTCMD_CAPTURE);
    auto pNext = pMessage->m_abyPayload.begin() + 1;
    const auto putByte = [&pNext](std::uint8_t by) { *pNext++ = by; };
    const auto putWord = [&putByte](std::uint16_t w) {  // low byte first
        putByte(static_cast<std::uint8_t>(w & 0xFF));
        putByte(static_cast<std::uint8_t>(w >> 8));
    };
    putWord(parameters.m_nSampleMilliseconds);
    putByte(parameters.m_bContinuous);
    putWord(parameters.m_nValueRate);
    putWord(parameters.m_nTriggerTenths);
    putByte(parameters.m_nDisplay);
    return pMessage;
}

std::unique_ptr<CObjRTGeneric> MakeStopCommand() { return MakeControlMessage(RTCMD_CAPTURE); }

std::unique_ptr<CObjRTGeneric> MakePassOutputCommand() {
    return MakeControlMessage(RTCMD_PASS_OUTPUT);
}
