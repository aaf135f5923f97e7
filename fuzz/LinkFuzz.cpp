// Feeds arbitrary bytes to the reader of the link's frames, and what it finds to the readers of
// their payloads.
//
// The first byte chooses manner and limit, the second how the rest is cut into pieces. Most changed
// inputs get their checks put right again, so that they are read further than to the first of them.
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "link/ByteOrder.h"
#include "link/Checksum.h"
#include "link/FrameReader.h"
#include "link/Payloads.h"

namespace {

/// Bytes in front of the link's.
constexpr std::size_t CHOICES = 2;
/// Where a frame's head says the payload's length.
constexpr std::size_t LENGTH_PLACE = 12;

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
        // A stream that has failed keeps its last piece, and takes no other.
        Check(reader.GetFault() != CFrameReader::Fault::None ||
              reader.CountHeld() < FRAME_HEAD + nLimit + FRAME_TAIL);
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

/// Puts the checks right of what begins like frames, one behind another. A length that the bytes
/// cannot hold stays as it is, under a right check of its head.
void MendChecks(std::span<std::uint8_t> bytes) {
    while (bytes.size() >= FRAME_HEAD) {
        if (!std::ranges::equal(bytes.first(FRAME_SYNC.size()), FRAME_SYNC)) {
            bytes = bytes.subspan(1);
            continue;
        }
        CChecksum checksum;
        checksum.Add(bytes.first(FRAME_CHECKED_HEAD));
        PutNumber(bytes.subspan(FRAME_CHECKED_HEAD), checksum.Get());
        const auto nPayload = GetNumber<std::uint32_t>(bytes.subspan(LENGTH_PLACE));
        if (bytes.size() - FRAME_HEAD < std::size_t{nPayload} + FRAME_TAIL) return;
        checksum.Add(bytes.subspan(FRAME_HEAD, nPayload));
        PutNumber(bytes.subspan(FRAME_HEAD + nPayload), checksum.Get());
        bytes = bytes.subspan(FRAME_HEAD + nPayload + FRAME_TAIL);
    }
}

/// Lets the first frame reach to the end of the bytes, or close to it.
void Widen(std::span<std::uint8_t> bytes, unsigned nSeed) {
    if (bytes.size() < FRAME_HEAD + FRAME_TAIL) return;
    std::ranges::copy(FRAME_SYNC, bytes.begin());
    const std::size_t nRoom = bytes.size() - FRAME_HEAD - FRAME_TAIL;
    PutNumber(bytes.subspan(LENGTH_PLACE),
              static_cast<std::uint32_t>(nRoom - std::min<std::size_t>(nSeed % 64, nRoom)));
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* pData, std::size_t nSize, std::size_t nMax);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* pData, std::size_t nSize,
                                               std::size_t nMax, unsigned nSeed) {
    constexpr std::size_t LIMITS[] = {MAX_PAYLOAD_TO_INSTRUMENT, MAX_PAYLOAD_TO_PANEL};
    nSize = LLVMFuzzerMutate(pData, nSize, nMax);
    if (nSize < CHOICES) return nSize;
    if (nSeed % 8 == 0) {
        // A frame at one of the limits, or one byte to either side of it.
        const std::size_t nFrame = FRAME_HEAD + LIMITS[nSeed / 8 % 2] + FRAME_TAIL;
        const std::size_t nWanted = CHOICES + nFrame + nSeed / 16 % 3 - 1;
        if (nWanted > nMax) return nSize;
        std::fill(pData + std::min(nSize, nWanted), pData + nWanted, std::uint8_t{0xA5});
        nSize = std::max(nSize, nWanted);
        Widen({pData + CHOICES, nWanted - CHOICES}, 0);
    } else if (nSeed % 8 == 1) {
        Widen({pData + CHOICES, nSize - CHOICES}, nSeed / 8);
    }
    if (nSeed % 8 != 7) MendChecks({pData + CHOICES, nSize - CHOICES});
    return nSize;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
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
