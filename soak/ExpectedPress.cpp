#include "soak/ExpectedPress.h"

#include "acquisition/PacketMeaning.h"
#include "instrument/SimulatedPress.h"

void AppendTokens(PressTokens& tokens, const RTPacket& packet) {
    const PacketPayload payload = GetPayload(packet);
    const PacketMeaning meaning = FindMeaning(packet.m_nType, payload);
    if (meaning == PacketMeaning::NewCurve) tokens.push_back(TOKEN_NEW_CURVE);
    if (meaning != PacketMeaning::Samples) return;
    for (std::size_t n = 1; n + 3 <= payload.size();) {
        const std::uint32_t nLines = payload[n];
        const std::size_t nEnd = n + 3 + 2 * (payload[n + 1] * 256u + payload[n + 2]);
        for (n += 3; n < nEnd && n + 2 <= payload.size(); n += 2)
            tokens.push_back(nLines << 16 | payload[n] |
                             static_cast<unsigned>(payload[n + 1] << 8));
    }
}

CExpectedPress::CExpectedPress(std::uint8_t nMode, SecondInput secondInput, std::uint32_t nSeed)
    : m_engine(CPacketSink([this](std::shared_ptr<RTPacket> spPacket) {
                   AppendTokens(m_tokens, *spPacket);
               }),
               FindValueLayout(nMode, secondInput),
               std::make_unique<CSimulatedPress>(secondInput, nSeed)) {}

void CExpectedPress::Start(const CaptureRequest& request) {
    m_tokens.clear();
    m_nNext = 0;
    m_engine.Execute(request, m_now);
}

std::uint32_t CExpectedPress::Next() {
    constexpr std::chrono::milliseconds STEP(10);
    while (m_nNext == m_tokens.size()) {
        if (!m_engine.IsRunning()) return TOKEN_END;
        m_tokens.clear();
        m_nNext = 0;
        m_now += STEP;
        m_engine.Advance(m_now);
    }
    return m_tokens[m_nNext++];
}
