#include "instrument/InstrumentCommand.h"

#include "acquisition/ObjRTGeneric.h"

namespace {

constexpr std::size_t IMAGE_HEAD = 3;  // type, index + 1, payload length
constexpr std::size_t PAYLOAD_LENGTH = CObjRTGeneric::PAYLOAD_SIZE;

}  // namespace

std::optional<InstrumentCommand> ReadCommand(std::string_view image) {
    const auto byteAt = [image](std::size_t n) { return static_cast<std::uint8_t>(image[n]); };
    if (image.size() != IMAGE_HEAD + PAYLOAD_LENGTH || byteAt(0) != RTPACKET_CONTROL ||
        byteAt(2) != PAYLOAD_LENGTH)
        return std::nullopt;

    image.remove_prefix(IMAGE_HEAD);
    const auto payloadByte = [image](std::size_t n) { return static_cast<std::uint8_t>(image[n]); };
    const auto payloadWord = [&](std::size_t n) {
        return static_cast<std::uint16_t>(payloadByte(n) | payloadByte(n + 1) << 8);
    };
    switch (payloadByte(0)) {
    case RTCMD_CAPTURE: {
        const CaptureRequest request{payloadWord(1), payloadByte(3) != 0, payloadWord(4),
                                     payloadWord(6)};
        if (request == CaptureRequest{}) return StopRequest{};
        return request;
    }
    case RTCMD_PASS_OUTPUT:
        return PassOutputRequest{};
    default:
        return std::nullopt;
    }
}
