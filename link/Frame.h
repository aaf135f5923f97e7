// The frame: what every transport of the link carries, one after another.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Protocol version, the only one that this system speaks.
constexpr std::uint8_t LINK_VERSION = 1;

enum class FrameKind : std::uint8_t {
    Join = 1,       ///< panel to instrument; see Payloads.h for what the kinds carry
    Hello = 2,      ///< instrument to panel
    Packet = 3,     ///< instrument to panel
    Message = 4,    ///< panel to instrument
    Ack = 5,        ///< instrument to panel
    KeepAlive = 6,  ///< both ways
    Refuse = 7,     ///< instrument to panel
    Goodbye = 8,    ///< both ways
};

/// Flag of a packet that the panel which commands the instrument drops.
constexpr std::uint16_t FRAMEFLAG_FOR_VIEWERS = 1;

/// Layout, in bytes: sync, u8 version, u8 kind, u16 flags, u32 sequence number, u32 length of the
/// payload, u32 check of these 16 bytes; the payload; u32 check of the same 16 bytes and the
/// payload. Numbers are least significant byte first, checks are CRC-32C.
constexpr std::array<std::uint8_t, 4> FRAME_SYNC = {0xA5, 0x52, 0x54, 0x5A};
constexpr std::size_t FRAME_CHECKED_HEAD = 16;
constexpr std::size_t FRAME_HEAD = FRAME_CHECKED_HEAD + 4;
constexpr std::size_t FRAME_TAIL = 4;

/// Longest payloads, by the direction they go.
constexpr std::size_t MAX_PAYLOAD_TO_PANEL = 65600;
constexpr std::size_t MAX_PAYLOAD_TO_INSTRUMENT = 1024;

/// A frame that came in.
struct Frame {
    FrameKind m_kind{};  ///< any value
    std::uint16_t m_nFlags = 0;
    std::uint32_t m_nSequence = 0;
    std::span<const std::uint8_t> m_payload;  ///< in the buffer of whoever read it
};

/// Bytes that several frames may share.
using SharedBytes = std::shared_ptr<const std::vector<std::uint8_t>>;

/// A frame to be sent: head, payload and tail, in this order. Frames to several receivers share
/// their payload.
struct OutFrame {
    std::array<std::uint8_t, FRAME_HEAD> m_head{};
    SharedBytes m_spPayload;  ///< null: empty
    std::array<std::uint8_t, FRAME_TAIL> m_tail{};

    std::span<const std::uint8_t> GetPayload() const {
        return m_spPayload ? std::span(*m_spPayload) : std::span<const std::uint8_t>();
    }
    std::size_t GetSize() const { return FRAME_HEAD + GetPayload().size() + FRAME_TAIL; }
    /// Appends the frame's bytes.
    void AppendTo(std::vector<std::uint8_t>& bytes) const;
};

OutFrame MakeFrame(FrameKind kind, std::uint16_t nFlags, std::uint32_t nSequence,
                   SharedBytes spPayload);

/// What a head says of its frame.
struct FrameHead {
    std::uint8_t m_nVersion = 0;
    Frame m_frame;               ///< without its payload
    std::size_t m_nPayload = 0;  ///< as announced; not limited
};

/// Reads FRAME_HEAD bytes.
/// @return whether the head's check holds
bool ReadHead(std::span<const std::uint8_t> bytes, FrameHead& head);

/// Whether a frame's own check holds, of all of its bytes (which hold the payload announced).
bool CheckFrame(std::span<const std::uint8_t> bytes);
