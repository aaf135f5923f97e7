// What the kinds of frames carry.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

// Each record has a pair of operations. Forming gives the payload's bytes; texts are cut, between
// two characters, to what the payload may hold. Reading gives nothing when the payload is
// malformed: it ends before its last field, a text is too long, or a number is out of its range.
// Bytes behind the last field are not looked at. Every text read is fit to be shown: what is not
// UTF-8, and control characters, have become U+FFFD.

using PayloadBytes = std::vector<std::uint8_t>;
using PayloadView = std::span<const std::uint8_t>;

/// Longest texts in bytes as they are sent, without their length.
constexpr std::size_t MAX_NAME = 64;
constexpr std::size_t MAX_SERIAL_NUMBER = 32;
constexpr std::size_t MAX_REASON_TEXT = 200;

/// The protocol versions that a panel speaks. They open every JOIN, also one of a later version.
struct VersionRange {
    std::uint8_t m_nLowest = 1;   ///< 1 or more
    std::uint8_t m_nHighest = 1;  ///< not below the lowest
};

std::optional<VersionRange> ReadVersions(PayloadView payload);

/// A panel asks to be let in.
struct Join {
    VersionRange m_versions;
    bool m_bCommand = true;        ///< it wants to command, not just to view
    std::uint32_t m_nToken = 0;    ///< of this run of the panel program; not 0
    std::uint32_t m_nAttempt = 0;  ///< counts this program's JOINs from 1
    std::string m_strName;         ///< for people
};

PayloadBytes FormJoin(const Join& join);
std::optional<Join> ReadJoin(PayloadView payload);

/// What the instrument is.
struct Hello {
    std::uint8_t m_nVersion = 1;      ///< of the protocol, chosen
    std::uint8_t m_nMode = 0;         ///< instrument mode; any value
    std::uint8_t m_nSecondInput = 0;  ///< kind of second input, 0 to 2
    bool m_bCommands = false;         ///< this panel commands
    bool m_bRunning = false;          ///< a capture is running
    bool m_bLocked = false;           ///< captures are controlled elsewhere
    std::uint16_t m_nValueRate = 1;   ///< values per second and channel; not 0
    std::uint16_t m_nAuxRate = 0;     ///< second rate
    std::uint32_t m_nDevice24V = 0;   ///< device parameter 50
    std::uint32_t m_nToken = 0;       ///< of this run of the instrument; not 0
    std::uint32_t m_nAttempt = 0;     ///< of the JOIN answered; 0: of none, for all who view
    std::string m_strName;
    std::string m_strSerialNumber;
    friend bool operator==(const Hello&, const Hello&) = default;
};

PayloadBytes FormHello(const Hello& hello);
std::optional<Hello> ReadHello(PayloadView payload);

/// A packet for the screen.
struct PacketView {
    std::int32_t m_nType = 0;
    PayloadView m_payload;  ///< at most 65,535 bytes
};

PayloadBytes FormPacket(const PacketView& packet);
std::optional<PacketView> ReadPacket(PayloadView payload);

/// A message image for the instrument.
struct MessageView {
    std::uint32_t m_nNumber = 0;  ///< counts the messages of a connection from 1
    PayloadView m_image;          ///< 1 to 1,000 bytes
};

constexpr std::size_t MAX_IMAGE = 1000;

PayloadBytes FormMessage(const MessageView& message);
std::optional<MessageView> ReadMessage(PayloadView payload);

/// What became of a message. Other numbers mean the same as Impossible.
enum class AckResult : std::uint8_t {
    Taken = 0,
    NotUnderstood = 1,
    NotAllowed = 2,  ///< the panel views
    Locked = 3,      ///< captures are controlled elsewhere
    Impossible = 4,  ///< it cannot be done now
};

struct Ack {
    std::uint32_t m_nNumber = 0;
    AckResult m_result = AckResult::Taken;
};

PayloadBytes FormAck(const Ack& ack);
std::optional<Ack> ReadAck(PayloadView payload);

/// Why a connection ends or does not begin; any number may come.
enum class LinkReason : std::uint16_t {
    Normal = 0,
    NoCommonVersion = 1,
    OtherCommands = 2,  ///< the text is the other panel's name
    TooMany = 3,
    JoinFirst = 4,
    Malformed = 5,
    NotKeepingUp = 6,
    Replaced = 7,  ///< by a newer connection of the same panel
    InstrumentEnds = 8,
    Silence = 9,  ///< or a frame that does not end
    Damaged = 10,
    NotPermitted = 11,
    Flood = 12,
    Changed = 13,  ///< the instrument is not the one that the screen was opened for
};

/// Of REFUSE and GOODBYE.
struct Parting {
    LinkReason m_reason{};
    std::string m_strText;
};

PayloadBytes FormParting(const Parting& parting);
std::optional<Parting> ReadParting(PayloadView payload);
