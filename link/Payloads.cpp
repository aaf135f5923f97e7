#include "link/Payloads.h"

#include <algorithm>

#include "link/ByteOrder.h"
#include "platform/system/Text.h"

namespace {

constexpr std::size_t MAX_PACKET = 65535;
constexpr std::uint8_t HELLO_COMMANDS = 1;
constexpr std::uint8_t HELLO_RUNNING = 2;
constexpr std::uint8_t HELLO_LOCKED = 4;

/// Takes field after field; one that runs past the end fails this one and all behind it.
class CFieldReader {
  public:
    explicit CFieldReader(PayloadView payload) : m_rest(payload) {}

    bool Failed() const { return m_bFailed; }

    template <std::unsigned_integral T>
    T Number() {
        const PayloadView field = Take(sizeof(T));
        return m_bFailed ? T{} : GetNumber<T>(field);
    }

    std::string Text(std::size_t nLongest) {
        const auto nBytes = Number<std::uint8_t>();
        if (nBytes > nLongest) m_bFailed = true;
        const PayloadView field = Take(nBytes);
        return MakeShowable(std::string(field.begin(), field.end()));
    }

  private:
    PayloadView Take(std::size_t nBytes) {
        m_bFailed = m_bFailed || nBytes > m_rest.size();
        if (m_bFailed) return {};
        const PayloadView field = m_rest.first(nBytes);
        m_rest = m_rest.subspan(nBytes);
        return field;
    }

    static std::string MakeShowable(const std::string& strBytes) {
        std::wstring strText = FromUtf8(strBytes);
        const auto isUnfit = [](wchar_t ch) {
            return ch < 0x20 || (ch >= 0x7F && ch <= 0x9F) || (ch >= 0xDC80 && ch <= 0xDCFF);
        };
        std::ranges::replace_if(strText, isUnfit, L'\xFFFD');
        return ToUtf8(strText);
    }

    PayloadView m_rest;
    bool m_bFailed = false;
};

template <std::unsigned_integral T>
void AppendNumber(PayloadBytes& bytes, T n) {
    bytes.resize(bytes.size() + sizeof(T));
    PutNumber(std::span(bytes).last(sizeof(T)), n);
}

void AppendText(PayloadBytes& bytes, std::string_view strText, std::size_t nLongest) {
    const auto isWithinCharacter = [](char ch) {
        return (static_cast<unsigned char>(ch) & 0xC0) == 0x80;
    };
    if (strText.size() > nLongest) {
        while (nLongest > 0 && isWithinCharacter(strText[nLongest])) --nLongest;
        strText = strText.substr(0, nLongest);
    }
    bytes.push_back(static_cast<std::uint8_t>(strText.size()));
    bytes.insert(bytes.end(), strText.begin(), strText.end());
}

}  // namespace

std::optional<VersionRange> ReadVersions(PayloadView payload) {
    CFieldReader fields(payload);
    VersionRange versions;
    versions.m_nLowest = fields.Number<std::uint8_t>();
    versions.m_nHighest = fields.Number<std::uint8_t>();
    if (fields.Failed() || versions.m_nLowest < 1 || versions.m_nHighest < versions.m_nLowest)
        return std::nullopt;
    return versions;
}

PayloadBytes FormJoin(const Join& join) {
    PayloadBytes bytes{join.m_versions.m_nLowest, join.m_versions.m_nHighest,
                       std::uint8_t{join.m_bCommand}, 0};
    AppendNumber(bytes, join.m_nToken);
    AppendNumber(bytes, join.m_nAttempt);
    AppendText(bytes, join.m_strName, MAX_NAME);
    return bytes;
}

std::optional<Join> ReadJoin(PayloadView payload) {
    const auto versions = ReadVersions(payload);
    if (!versions) return std::nullopt;
    Join join;
    join.m_versions = *versions;
    CFieldReader fields(payload.subspan(2));
    const auto nRole = fields.Number<std::uint8_t>();
    fields.Number<std::uint8_t>();
    join.m_bCommand = nRole == 1;
    join.m_nToken = fields.Number<std::uint32_t>();
    join.m_nAttempt = fields.Number<std::uint32_t>();
    join.m_strName = fields.Text(MAX_NAME);
    if (fields.Failed() || nRole > 1 || join.m_nToken == 0 || join.m_nAttempt == 0)
        return std::nullopt;
    return join;
}

PayloadBytes FormHello(const Hello& hello) {
    const unsigned nState = (hello.m_bCommands ? HELLO_COMMANDS : 0u) |
                            (hello.m_bRunning ? HELLO_RUNNING : 0u) |
                            (hello.m_bLocked ? HELLO_LOCKED : 0u);
    PayloadBytes bytes{hello.m_nVersion, hello.m_nMode, hello.m_nSecondInput,
                       static_cast<std::uint8_t>(nState)};
    AppendNumber(bytes, hello.m_nValueRate);
    AppendNumber(bytes, hello.m_nAuxRate);
    AppendNumber(bytes, hello.m_nDevice24V);
    AppendNumber(bytes, hello.m_nToken);
    AppendNumber(bytes, hello.m_nAttempt);
    AppendText(bytes, hello.m_strName, MAX_NAME);
    AppendText(bytes, hello.m_strSerialNumber, MAX_SERIAL_NUMBER);
    return bytes;
}

std::optional<Hello> ReadHello(PayloadView payload) {
    constexpr std::uint8_t MAX_SECOND_INPUT = 2;
    CFieldReader fields(payload);
    Hello hello;
    hello.m_nVersion = fields.Number<std::uint8_t>();
    hello.m_nMode = fields.Number<std::uint8_t>();
    hello.m_nSecondInput = fields.Number<std::uint8_t>();
    const auto byState = fields.Number<std::uint8_t>();
    hello.m_bCommands = (byState & HELLO_COMMANDS) != 0;
    hello.m_bRunning = (byState & HELLO_RUNNING) != 0;
    hello.m_bLocked = (byState & HELLO_LOCKED) != 0;
    hello.m_nValueRate = fields.Number<std::uint16_t>();
    hello.m_nAuxRate = fields.Number<std::uint16_t>();
    hello.m_nDevice24V = fields.Number<std::uint32_t>();
    hello.m_nToken = fields.Number<std::uint32_t>();
    hello.m_nAttempt = fields.Number<std::uint32_t>();
    hello.m_strName = fields.Text(MAX_NAME);
    hello.m_strSerialNumber = fields.Text(MAX_SERIAL_NUMBER);
    if (fields.Failed() || hello.m_nVersion != 1 || hello.m_nSecondInput > MAX_SECOND_INPUT ||
        hello.m_nValueRate == 0 || hello.m_nToken == 0)
        return std::nullopt;
    return hello;
}

PayloadBytes FormPacket(const PacketView& packet) {
    PayloadBytes bytes;
    bytes.reserve(sizeof packet.m_nType + packet.m_payload.size());
    AppendNumber(bytes, static_cast<std::uint32_t>(packet.m_nType));
    bytes.insert(bytes.end(), packet.m_payload.begin(), packet.m_payload.end());
    return bytes;
}

std::optional<PacketView> ReadPacket(PayloadView payload) {
    PacketView packet;
    if (payload.size() < sizeof packet.m_nType ||
        payload.size() > sizeof packet.m_nType + MAX_PACKET)
        return std::nullopt;
    packet.m_nType = static_cast<std::int32_t>(GetNumber<std::uint32_t>(payload));
    packet.m_payload = payload.subspan(sizeof packet.m_nType);
    return packet;
}

PayloadBytes FormMessage(const MessageView& message) {
    PayloadBytes bytes;
    AppendNumber(bytes, message.m_nNumber);
    bytes.insert(bytes.end(), message.m_image.begin(), message.m_image.end());
    return bytes;
}

std::optional<MessageView> ReadMessage(PayloadView payload) {
    MessageView message;
    if (payload.size() <= sizeof message.m_nNumber ||
        payload.size() > sizeof message.m_nNumber + MAX_IMAGE)
        return std::nullopt;
    message.m_nNumber = GetNumber<std::uint32_t>(payload);
    message.m_image = payload.subspan(sizeof message.m_nNumber);
    return message;
}

PayloadBytes FormAck(const Ack& ack) {
    PayloadBytes bytes;
    AppendNumber(bytes, ack.m_nNumber);
    bytes.push_back(static_cast<std::uint8_t>(ack.m_result));
    return bytes;
}

std::optional<Ack> ReadAck(PayloadView payload) {
    CFieldReader fields(payload);
    Ack ack;
    ack.m_nNumber = fields.Number<std::uint32_t>();
    ack.m_result = AckResult{fields.Number<std::uint8_t>()};
    if (fields.Failed()) return std::nullopt;
    return ack;
}

PayloadBytes FormParting(const Parting& parting) {
    PayloadBytes bytes;
    AppendNumber(bytes, static_cast<std::uint16_t>(parting.m_reason));
    AppendText(bytes, parting.m_strText, MAX_REASON_TEXT);
    return bytes;
}

std::optional<Parting> ReadParting(PayloadView payload) {
    CFieldReader fields(payload);
    Parting parting;
    parting.m_reason = LinkReason{fields.Number<std::uint16_t>()};
    parting.m_strText = fields.Text(MAX_REASON_TEXT);
    if (fields.Failed()) return std::nullopt;
    return parting;
}
