#include "link/Frame.h"

#include <algorithm>

#include "link/ByteOrder.h"
#include "link/Checksum.h"

namespace {

constexpr std::size_t VERSION_AT = 4;
constexpr std::size_t KIND_AT = 5;
constexpr std::size_t FLAGS_AT = 6;
constexpr std::size_t SEQUENCE_AT = 8;
constexpr std::size_t LENGTH_AT = 12;

}  // namespace

void OutFrame::AppendTo(std::vector<std::uint8_t>& bytes) const {
    bytes.insert(bytes.end(), m_head.begin(), m_head.end());
    const auto payload = GetPayload();
    bytes.insert(bytes.end(), payload.begin(), payload.end());
    bytes.insert(bytes.end(), m_tail.begin(), m_tail.end());
}

OutFrame MakeFrame(FrameKind kind, std::uint16_t nFlags, std::uint32_t nSequence,
                   SharedBytes spPayload) {
    OutFrame frame;
    frame.m_spPayload = std::move(spPayload);
    const std::span head(frame.m_head);
    std::ranges::copy(FRAME_SYNC, head.begin());
    head[VERSION_AT] = LINK_VERSION;
    head[KIND_AT] = static_cast<std::uint8_t>(kind);
    PutNumber(head.subspan(FLAGS_AT), nFlags);
    PutNumber(head.subspan(SEQUENCE_AT), nSequence);
    PutNumber(head.subspan(LENGTH_AT), static_cast<std::uint32_t>(frame.GetPayload().size()));

    CChecksum check;
    check.Add(head.first(FRAME_CHECKED_HEAD));
    PutNumber(head.subspan(FRAME_CHECKED_HEAD), check.Get());
    check.Add(frame.GetPayload());
    PutNumber(std::span(frame.m_tail), check.Get());
    return frame;
}

bool ReadHead(std::span<const std::uint8_t> bytes, FrameHead& head) {
    head.m_nVersion = bytes[VERSION_AT];
    head.m_frame.m_kind = FrameKind{bytes[KIND_AT]};
    head.m_frame.m_nFlags = GetNumber<std::uint16_t>(bytes.subspan(FLAGS_AT));
    head.m_frame.m_nSequence = GetNumber<std::uint32_t>(bytes.subspan(SEQUENCE_AT));
    head.m_nPayload = GetNumber<std::uint32_t>(bytes.subspan(LENGTH_AT));
    CChecksum check;
    check.Add(bytes.first(FRAME_CHECKED_HEAD));
    return GetNumber<std::uint32_t>(bytes.subspan(FRAME_CHECKED_HEAD)) == check.Get();
}

bool CheckFrame(std::span<const std::uint8_t> bytes) {
    CChecksum check;
    check.Add(bytes.first(FRAME_CHECKED_HEAD));
    check.Add(bytes.subspan(FRAME_HEAD, bytes.size() - FRAME_HEAD - FRAME_TAIL));
    return GetNumber<std::uint32_t>(bytes.last(FRAME_TAIL)) == check.Get();
}
