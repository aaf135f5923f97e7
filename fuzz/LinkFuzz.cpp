// Feeds arbitrary bytes to the reader of the link's frames, and what it finds to the readers of
// their payloads.
//
// The first byte chooses manner and limit, the second how the rest is cut into pieces.
#include <cstdlib>
#include <vector>

#include "link/FrameReader.h"
#include "link/Payloads.h"

namespace {

void Check(bool bHolds) {
    if (!bHolds) std::abort();
}

void CheckPayload(PayloadView payload) {
    ReadVersions(payload);
    if (const auto join = ReadJoin(payload)) Check(join->m_strName.size() <= 3 * MAX_NAME);
    if (const auto hello = ReadHello(payload)) Check(ReadHello(FormHello(*hello)).has_value());
    if (const auto packet = ReadPacket(payload)) Check(packet->m_payload.size() <= 65535);
    if (const auto message = ReadMessage(payload)) Check(message->m_image.size() <= MAX_IMAGE);
    ReadAck(payload);
    if (const auto parting = ReadParting(payload)) Check(parting->m_strText.size() <= 600);
}

/// Reads bytes in pieces of 1 to nPiece bytes, and writes down what comes out.
std::vector<std::uint64_t> Read(std::span<const std::uint8_t> bytes, LinkManner manner,
                                std::size_t nLimit, std::size_t nPiece) {
    CFrameReader reader(manner, nLimit);
    std::vector<std::uint64_t> found;
    const std::size_t nBytes = bytes.size();
    for (std::size_t nSize = 1; !bytes.empty(); nSize = nSize % nPiece + 1) {
        const std::size_t nTaken = std::min(nSize, bytes.size());
        reader.Add(bytes.first(nTaken), {});
        bytes = bytes.subspan(nTaken);
        while (const auto frame = reader.Read()) {
            found.insert(found.end(), {std::uint64_t(frame->m_kind), frame->m_nFlags,
                                       frame->m_nSequence, frame->m_payload.size()});
            CheckPayload(frame->m_payload);
        }
        Check(reader.CountHeld() < FRAME_HEAD + nLimit + FRAME_TAIL);
    }
    found.insert(found.end(),
                 {std::uint64_t(reader.GetFault()), reader.CountDamages(), reader.CountDropped()});
    Check(reader.CountChecked() <= 16 * nBytes + (1u << 20));
    // What is left when nothing more comes goes away byte by byte.
    const std::uint64_t nHeld = reader.CountHeld();
    if (manner == LinkManner::Line) {
        for (std::uint64_t n = 1; n <= nHeld && reader.CountHeld() > 0; ++n) {
            reader.CheckStall(n * CFrameReader::STALL_TIME);
            while (reader.Read()) Check(reader.CountHeld() < nHeld);
        }
        Check(reader.CountHeld() == 0);
    }
    return found;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    constexpr std::size_t CHOICES = 2;
    if (nSize < CHOICES) return 0;
    const LinkManner manner = (pData[0] & 1) != 0 ? LinkManner::Line : LinkManner::Stream;
    const std::size_t nLimit =
        (pData[0] & 2) != 0 ? MAX_PAYLOAD_TO_PANEL : MAX_PAYLOAD_TO_INSTRUMENT;
    const std::span bytes(pData + CHOICES, nSize - CHOICES);
    Check(Read(bytes, manner, nLimit, std::size_t{pData[1]} + 1) ==
          Read(bytes, manner, nLimit, 1 << 20));
    CheckPayload(bytes);
    if (const auto frame = ReadWholeFrame(bytes, nLimit)) CheckPayload(frame->m_payload);
    return 0;
}
