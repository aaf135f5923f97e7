// What the kinds carry, read from and formed as bytes.
#include <gtest/gtest.h>

#include "link/FrameReader.h"
#include "link/Payloads.h"
#include "tests/link/Support.h"

namespace {

PayloadView GetPayload(const Bytes& frame) {
    return std::span(frame).subspan(FRAME_HEAD, frame.size() - FRAME_HEAD - FRAME_TAIL);
}

/// The payload with some of its bytes replaced.
Bytes Replace(const Bytes& frame, std::size_t nAt, std::string_view strDigits) {
    const PayloadView payload = GetPayload(frame);
    Bytes bytes(payload.begin(), payload.end());
    const Bytes other = FromHex(strDigits);
    std::ranges::copy(other, bytes.begin() + static_cast<std::ptrdiff_t>(nAt));
    return bytes;
}

TEST(Payload, FormsAndReadsTheConversation) {
    // What is formed of what was read is the same again.
    const auto expect = [&](const Bytes& frame, FrameKind kind, std::uint32_t n, auto form,
                            auto read, const auto& content) {
        EXPECT_EQ(MakeBytes(kind, n, form(content)), frame);
        EXPECT_EQ(MakeBytes(kind, n, form(read(GetPayload(frame)).value())), frame);
    };
    expect(example::JOIN, FrameKind::Join, 0, FormJoin, ReadJoin,
           Join{{1, 1}, true, 0x11223344, 1, "desk 1"});
    expect(example::HELLO, FrameKind::Hello, 0, FormHello, ReadHello,
           Hello{1, 1, 1, true, false, false, 40000, 20000, 0, 0xCAFEF00D, 1, "press", "0042"});
    expect(example::MESSAGE, FrameKind::Message, 1, FormMessage, ReadMessage,
           MessageView{1, GetPayload(example::MESSAGE).subspan(4)});
    expect(example::ACK, FrameKind::Ack, 1, FormAck, ReadAck, Ack{1, AckResult::Taken});
    expect(example::SAMPLES, FrameKind::Packet, 3, FormPacket, ReadPacket,
           PacketView{3, GetPayload(example::SAMPLES).subspan(4)});
    EXPECT_EQ(MakeBytes(FrameKind::KeepAlive, 4), example::KEEPALIVE);
    expect(example::GOODBYE, FrameKind::Goodbye, 5, FormParting, ReadParting,
           Parting{LinkReason{8}, "bye"});
    Hello hello;
    hello.m_bRunning = hello.m_bLocked = true;
    EXPECT_EQ(FormHello(hello)[3], 6);
}

TEST(Payload, RefusesACutAtEveryLengthAndIgnoresWhatFollows) {
    const auto expect = [](const Bytes& frame, auto read) {
        const PayloadView payload = GetPayload(frame);
        for (std::size_t n = 0; n < payload.size(); ++n) EXPECT_FALSE(read(payload.first(n))) << n;
        Bytes longer(payload.begin(), payload.end());
        longer.push_back(0xEE);
        EXPECT_TRUE(read(longer));
    };
    expect(example::JOIN, ReadJoin);
    expect(example::HELLO, ReadHello);
    expect(example::ACK, ReadAck);
    expect(example::GOODBYE, ReadParting);
    expect(Bytes(20) + Bytes{2, 3} + Bytes(4), ReadVersions);

    for (const auto& [nBytes, bRead] :
         {std::pair(3, false), {4, true}, {65539, true}, {65540, false}})
        EXPECT_EQ(ReadPacket(Bytes(static_cast<std::size_t>(nBytes))).has_value(), bRead) << nBytes;
    for (const auto& [nBytes, bRead] :
         {std::pair(4, false), {5, true}, {1004, true}, {1005, false}})
        EXPECT_EQ(ReadMessage(Bytes(static_cast<std::size_t>(nBytes))).has_value(), bRead)
            << nBytes;
    EXPECT_EQ(ReadPacket(Bytes{0xFE, 0xFF, 0xFF, 0xFF})->m_nType, -2);
}

TEST(Payload, RefusesFieldsOutOfRange) {
    for (const auto& [nAt, strDigits] : {std::pair(0, "00"),
                                         {0, "03 02"},
                                         {2, "02"},
                                         {4, "00 00 00 00"},
                                         {8, "00 00 00 00"},
                                         {12, "07"},
                                         {12, "41"},
                                         {12, "FF"}})
        EXPECT_FALSE(ReadJoin(Replace(example::JOIN, std::size_t(nAt), strDigits)))
            << nAt << strDigits;
    for (const auto& [nAt, strDigits] : {std::pair(0, "00"),
                                         {0, "02"},
                                         {2, "03"},
                                         {4, "00 00"},
                                         {12, "00 00 00 00"},
                                         {20, "0A"},
                                         {20, "FF"},
                                         {26, "05"}})
        EXPECT_FALSE(ReadHello(Replace(example::HELLO, std::size_t(nAt), strDigits)))
            << nAt << strDigits;
    EXPECT_TRUE(ReadHello(Replace(example::HELLO, 1, "FF 02 F8 01 00")));

    const auto withTexts = [](std::size_t nName, std::size_t nSerial) {
        const PayloadView fixed = GetPayload(example::HELLO).first(20);
        Bytes bytes(fixed.begin(), fixed.end());
        bytes.push_back(static_cast<std::uint8_t>(nName));
        bytes.resize(bytes.size() + nName, 'x');
        bytes.push_back(static_cast<std::uint8_t>(nSerial));
        bytes.resize(bytes.size() + nSerial, 'x');
        return ReadHello(bytes).has_value();
    };
    EXPECT_TRUE(withTexts(64, 32));
    EXPECT_FALSE(withTexts(65, 0));
    EXPECT_FALSE(withTexts(0, 33));
    EXPECT_TRUE(ReadParting(Bytes{0, 0, 200} + Bytes(200, 'x')));
    EXPECT_FALSE(ReadParting(Bytes{0, 0, 201} + Bytes(201, 'x')));
}

TEST(Payload, ShowsTextsWithoutWhatCannotBeShown) {
    const auto read = [](std::string_view strText) {
        Bytes bytes{0, 0, static_cast<std::uint8_t>(strText.size())};
        bytes.insert(bytes.end(), strText.begin(), strText.end());
        return ReadParting(bytes).value().m_strText;
    };
    EXPECT_EQ(read("Pr\u00FCfstand \u20AC"), "Pr\u00FCfstand \u20AC");
    EXPECT_EQ(read("a\x1B[2Jb\r\n\x7F"), "a\uFFFD[2Jb\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(read("\u0080\u009F\u00A0"), "\uFFFD\uFFFD\u00A0");
    EXPECT_EQ(read("\xFFx\xC3"), "\uFFFDx\uFFFD");
    EXPECT_EQ(read(std::string_view("\0", 1)), "\uFFFD");
}

TEST(Payload, CutsATextBetweenCharacters) {
    const std::string strName = std::string(63, 'x') + "\u00FC" + "y";
    EXPECT_EQ(ReadJoin(FormJoin({{}, true, 1, 1, strName}))->m_strName, std::string(63, 'x'));
    EXPECT_EQ(ReadJoin(FormJoin({{}, true, 1, 1, std::string(65, 'x')}))->m_strName,
              std::string(64, 'x'));
}

}  // namespace
