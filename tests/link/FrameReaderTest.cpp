// Finding frames in bytes, whole, damaged and made to waste time.
#include <gtest/gtest.h>

#include <random>

#include "link/ByteOrder.h"
#include "link/Checksum.h"
#include "link/FrameOrder.h"
#include "link/FrameReader.h"
#include "tests/link/Support.h"

namespace {

using namespace std::chrono_literals;
using Fault = CFrameReader::Fault;

/// What a reader makes of bytes.
struct Reading {
    std::vector<std::uint32_t> m_sequences;
    std::size_t m_nPayload = 0;  ///< of all frames
    Fault m_fault = Fault::None;
    std::uint64_t m_nDamages = 0;
    std::uint64_t m_nDropped = 0;
    friend bool operator==(const Reading&, const Reading&) = default;
};

void PrintTo(const Reading& reading, std::ostream* pOut) {
    *pOut << testing::PrintToString(reading.m_sequences) << " fault " << int(reading.m_fault)
          << " damages " << reading.m_nDamages << " dropped " << reading.m_nDropped;
}

class CReading {
  public:
    explicit CReading(LinkManner manner, std::size_t nLimit = MAX_PAYLOAD_TO_PANEL)
        : m_reader(manner, nLimit) {}

    CReading& Add(std::span<const std::uint8_t> bytes, LinkTime now = 0s) {
        m_reader.Add(bytes, now);
        return ReadAll();
    }
    CReading& Wait(LinkTime now) {
        m_reader.CheckStall(now);
        return ReadAll();
    }
    Reading Get() {
        m_reading.m_fault = m_reader.GetFault();
        m_reading.m_nDamages = m_reader.CountDamages();
        m_reading.m_nDropped = m_reader.CountDropped();
        return m_reading;
    }
    const CFrameReader& GetReader() const { return m_reader; }

  private:
    CReading& ReadAll() {
        while (const auto frame = m_reader.Read()) {
            m_reading.m_sequences.push_back(frame->m_nSequence);
            m_reading.m_nPayload += frame->m_payload.size();
        }
        return *this;
    }

    CFrameReader m_reader;
    Reading m_reading;
};

Reading Read(LinkManner manner, const Bytes& bytes, std::size_t nPiece = SIZE_MAX) {
    CReading reading(manner);
    for (std::size_t n = 0; n < bytes.size(); n += std::min(nPiece, bytes.size()))
        reading.Add(std::span(bytes).subspan(n, std::min(nPiece, bytes.size() - n)));
    return reading.Get();
}

TEST(Checksum, AgreesWithItsCheckValues) {
    const std::string strDigits = "123456789";
    CChecksum digits;
    digits.Add(Bytes(strDigits.begin(), strDigits.end()));
    EXPECT_EQ(digits.Get(), 0xE3069283);
    CChecksum zeros;
    zeros.Add(Bytes(30));
    zeros.Add(Bytes(2));
    EXPECT_EQ(zeros.Get(), 0x8A9136AA);
}

TEST(FrameReader, ReadsAStreamInPiecesOfEverySize) {
    const Bytes bytes = example::HELLO + example::ACK + example::RUNNING + example::SAMPLES +
                        example::KEEPALIVE + example::GOODBYE;
    const Reading whole{{0, 1, 2, 3, 4, 5}, 31 + 5 + 45 + 16 + 6};
    for (std::size_t nPiece = 1; nPiece <= bytes.size(); ++nPiece)
        for (const LinkManner manner : {LinkManner::Stream, LinkManner::Line})
            EXPECT_EQ(Read(manner, bytes, nPiece), whole) << nPiece;
}

TEST(FrameReader, FindsEverySingleBitThatTurned) {
    for (std::size_t nBit = 0; nBit < example::KEEPALIVE.size() * 8; ++nBit) {
        Bytes bytes = example::KEEPALIVE;
        bytes[nBit / 8] ^= static_cast<std::uint8_t>(1u << nBit % 8);
        EXPECT_EQ(Read(LinkManner::Stream, bytes + example::GOODBYE),
                  (Reading{{}, 0, Fault::Damaged, 1, 0}))
            << nBit;
        for (const std::size_t nPiece : {1u, 7u, 999u})
            EXPECT_EQ(Read(LinkManner::Line, bytes + example::GOODBYE, nPiece),
                      (Reading{{5}, 6, Fault::None, 1, 24}))
                << nBit;
    }
}

// Noise, with beginnings of a sync in it, between frames that do and do not hold.
TEST(FrameReader, ReadsALineTheSameInWhateverPieces) {
    std::minstd_rand random(1);
    Bytes bytes;
    std::uint64_t nGood = 0;
    for (std::uint32_t n = 0; n < 60; ++n) {
        Bytes frame = MakeBytes(FrameKind::Packet, n, Bytes(random() % 300, 0xA5));
        if (n % 3 == 1) frame[random() % frame.size()] ^= 0x10;
        if (n % 6 == 4) frame.pop_back();
        nGood += n % 3 == 1 ? 0 : 1;
        bytes = bytes + frame;
        for (auto nNoise = random() % 20; nNoise > 0; --nNoise)
            bytes.push_back(FRAME_SYNC[random() % 4]);
    }
    bytes = bytes + example::GOODBYE;
    const Reading whole = Read(LinkManner::Line, bytes);
    EXPECT_EQ(whole.m_sequences.size(), nGood + 1);
    for (const std::size_t nPiece : {1u, 2u, 3u, 17u, 256u, 1000u})
        EXPECT_EQ(Read(LinkManner::Line, bytes, nPiece), whole) << nPiece;
}

// A head is believed only within the limit, and long before that much has come.
TEST(FrameReader, RefusesAHeadOfAnotherVersionOrAboveTheLimit) {
    const auto makeHead = [](std::uint8_t nVersion, std::uint32_t nPayload) {
        Bytes head = MakeBytes(FrameKind::Packet, 0);
        head.resize(FRAME_HEAD);
        head[4] = nVersion;
        PutNumber(std::span(head).subspan(12), nPayload);
        CChecksum check;
        check.Add(std::span(head).first(16));
        PutNumber(std::span(head).subspan(16), check.Get());
        return head;
    };
    for (const auto& [nVersion, nPayload, nLimit, bTaken] :
         {std::tuple(1, 65600u, MAX_PAYLOAD_TO_PANEL, true),
          std::tuple(1, 65601u, MAX_PAYLOAD_TO_PANEL, false),
          std::tuple(1, 0xFFFFFFFFu, MAX_PAYLOAD_TO_PANEL, false),
          std::tuple(1, 1024u, MAX_PAYLOAD_TO_INSTRUMENT, true),
          std::tuple(1, 1025u, MAX_PAYLOAD_TO_INSTRUMENT, false),
          std::tuple(2, 0u, MAX_PAYLOAD_TO_PANEL, false),
          std::tuple(0, 0u, MAX_PAYLOAD_TO_PANEL, false)}) {
        const Bytes head = makeHead(static_cast<std::uint8_t>(nVersion), nPayload);
        const Fault fault = bTaken ? Fault::None : Fault::Malformed;
        EXPECT_EQ(CReading(LinkManner::Stream, nLimit).Add(head).Get().m_fault, fault) << nPayload;
        const Reading line = CReading(LinkManner::Line, nLimit).Add(head).Get();
        EXPECT_EQ(line.m_nDropped, bTaken ? 0 : head.size()) << nPayload;
        EXPECT_EQ(line.m_fault, Fault::None);
    }
}

// Heads that hold, one within the other and each with a frame check that fails as late as can be.
TEST(FrameReader, ChecksNestedFramesInAFewPasses) {
    Bytes bytes(1'000'000);
    for (std::size_t n = 0; n + 66'000 < bytes.size(); n += FRAME_HEAD) {
        Bytes frame = MakeBytes(FrameKind::Packet, 9);
        PutNumber(std::span(frame).subspan(12), 65'600u);
        CChecksum check;
        check.Add(std::span(frame).first(16));
        PutNumber(std::span(frame).subspan(16), check.Get());
        // A whole frame stands in between now and then.
        std::copy_n(n % 2000 == 0 ? example::KEEPALIVE.begin() : frame.begin(), FRAME_HEAD,
                    bytes.begin() + static_cast<std::ptrdiff_t>(n));
        if (n % 2000 == 0) {
            std::ranges::copy(example::KEEPALIVE, bytes.begin() + static_cast<std::ptrdiff_t>(n));
            n += example::KEEPALIVE.size() - FRAME_HEAD;
        }
    }
    CReading reading(LinkManner::Line);
    std::size_t nHeld = 0;
    for (std::size_t n = 0; n < bytes.size(); n += 5000) {
        reading.Add(std::span(bytes).subspan(n, 5000));
        nHeld = std::max(nHeld, reading.GetReader().CountHeld());
    }
    reading.Add(example::GOODBYE);
    reading.Wait(2s);
    EXPECT_EQ(reading.Get().m_sequences.back(), 5u);
    EXPECT_LE(reading.GetReader().CountChecked(), 10 * bytes.size());
    EXPECT_GT(reading.GetReader().CountChecked(), 7 * bytes.size());
    EXPECT_LE(nHeld, MAX_PAYLOAD_TO_PANEL + 24);
}

TEST(FrameReader, GivesAFrameTwoSeconds) {
    const auto begun = std::span(example::GOODBYE).first(29);
    CReading stream(LinkManner::Stream);
    stream.Add(example::HELLO, 10s).Add({}, 15s).Add(begun, 20s);
    EXPECT_EQ(stream.Wait(22s - 1ns).Get().m_fault, Fault::None);
    EXPECT_EQ(stream.Wait(22s).Get().m_fault, Fault::Stalled);

    // A whole frame is found within the one that does not end.
    Bytes open = example::SAMPLES;
    open.resize(FRAME_HEAD + 3);
    CReading line(LinkManner::Line);
    line.Add(open + Bytes{1, 2, 3} + Bytes(9, 0xA5), 5s);
    line.Add(example::KEEPALIVE, 6s);
    EXPECT_EQ(line.Get().m_sequences, std::vector<std::uint32_t>{4});
    line.Add(std::span(example::SAMPLES).first(30), 8s).Wait(9s);
    EXPECT_EQ(line.Get().m_nDropped, open.size() + 12);
    EXPECT_EQ(line.Wait(10s).Get().m_nDropped, open.size() + 12 + 30);
}

TEST(FrameReader, TakesExactlyOneFrameFromABroker) {
    const auto read = [](const Bytes& bytes) { return ReadWholeFrame(bytes, 64).has_value(); };
    EXPECT_TRUE(read(example::SAMPLES));
    EXPECT_FALSE(read(example::SAMPLES + Bytes{0}));
    for (std::size_t n = 0; n < example::SAMPLES.size(); ++n) {
        Bytes bytes = example::SAMPLES;
        bytes[n] ^= 1;
        EXPECT_FALSE(read(bytes)) << n;
        bytes.resize(n);
        EXPECT_FALSE(read(bytes)) << n;
    }
    EXPECT_TRUE(read(MakeBytes(FrameKind::Packet, 0, Bytes(64))));
    EXPECT_FALSE(read(MakeBytes(FrameKind::Packet, 0, Bytes(65))));
}

TEST(FrameOrder, TellsGapsAndOldFrames) {
    struct Case {
        std::uint32_t m_nExpected, m_nReceived;
        std::optional<std::uint32_t> m_nMissing;
    };
    for (const Case& c : {Case{7, 7, 0}, Case{7, 9, 2}, Case{0xFFFFFFFF, 0, 1},
                          Case{10, 9, std::nullopt}, Case{0, 0xFFFFFFFF, std::nullopt},
                          Case{5, 5 + 0x7FFFFFFFu, 0x7FFFFFFF}, Case{5, 5 + 0x80000000u, {}}}) {
        CFrameOrder order;
        EXPECT_EQ(order.Take(c.m_nExpected - 1), 0u);
        EXPECT_EQ(order.Take(c.m_nReceived), c.m_nMissing) << c.m_nExpected;
        // An old frame changes nothing; behind a taken one its successor is in order.
        EXPECT_EQ(order.Take(c.m_nMissing ? c.m_nReceived + 1 : c.m_nExpected), 0u);
        order.Restart();
        EXPECT_EQ(order.Take(c.m_nReceived - 77), 0u);
    }
}

}  // namespace
