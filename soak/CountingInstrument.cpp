#include "soak/CountingInstrument.h"

#include "link/ScreenPackets.h"
#include "platform/system/Threads.h"

namespace {

class CCountingSignal : public IPressSignal {
  public:
    explicit CCountingSignal(unsigned nFirst) : m_nSet(nFirst) {}

    double GetStrokeSeconds() const override { return 0.7; }
    const StrokePhases& GetPhases() const override { return m_phases; }
    void Read(std::uint64_t nStroke, double dSeconds, std::span<PressSample> channels) override {
        constexpr unsigned CAPTURE_STEP = 4099;  // so that no capture seems to go on from another
        if (nStroke == 0 && dSeconds == 0) m_nSet += CAPTURE_STEP;
        ++m_nSet;
        unsigned nValue = m_nSet;
        for (PressSample& sample : channels) {
            sample.m_dForce = static_cast<std::int16_t>(nValue);
            sample.m_dSecond = static_cast<std::int16_t>(nValue + PLACE_STEP);
            nValue += 2 * PLACE_STEP;
        }
    }

  private:
    const StrokePhases m_phases{0.05, 0.2, 0.3, 0.4, 0.6};
    unsigned m_nSet;
};

Press MakeCountingPress(const InstrumentOptions& options, unsigned nFirst) {
    Press press;
    press.m_pSignal = std::make_unique<CCountingSignal>(nFirst);
    if (options.m_bCaptureLocked)
        press.m_selfStart = CaptureRequest{3000, true, options.m_nValueRate, 0};
    return press;
}

}  // namespace

void CSentCurves::OnSent(const PacketView& packet) {
    const std::lock_guard lock(m_mutex);
    const PacketMeaning meaning = FindMeaning(packet);
    if (meaning == PacketMeaning::Idle) Idle();
    if (meaning == PacketMeaning::Running) m_idleSince.reset();
    if (meaning == PacketMeaning::Running || meaning == PacketMeaning::NewCurve) m_last.reset();
    if (meaning != PacketMeaning::Samples) return;
    const PayloadView payload = packet.m_payload;
    if (!m_last) m_last = {static_cast<std::uint16_t>(payload[4] | payload[5] << 8), 0};
    for (std::size_t n = 1; n + 3 <= payload.size();) {
        const unsigned nValues = payload[n + 1] * 256u + payload[n + 2];
        m_last->m_nSets += nValues / m_layout.GetSetSize();
        n += 3 + 2 * nValues;
    }
    std::uint32_t& nMost = m_sets[m_last->m_nFirst];
    nMost = std::max(nMost, m_last->m_nSets);
}

void CSentCurves::Idle() {
    if (!m_idleSince) m_idleSince = TickMilliseconds();
}

void CSentCurves::OnEnd() {
    const std::lock_guard lock(m_mutex);
    Idle();
}

std::uint32_t CSentCurves::FindSets(std::uint16_t nFirst) const {
    const std::lock_guard lock(m_mutex);
    const auto it = m_sets.find(nFirst);
    return it == m_sets.end() ? 0 : it->second;
}

std::optional<CSentCurves::Curve> CSentCurves::GetLast() const {
    const std::lock_guard lock(m_mutex);
    return m_last;
}

std::optional<std::uint64_t> CSentCurves::GetIdleSince() const {
    const std::lock_guard lock(m_mutex);
    return m_idleSince;
}

CCountingInstrument::CCountingInstrument(const InstrumentOptions& options, unsigned nFirst,
                                         CSentCurves& sent)
    : m_sent(sent), m_press(options, MakeCountingPress(options, nFirst)) {}

SendPacket CCountingInstrument::Note(const SendPacket& send) {
    return [this, &send](const PacketView& packet, std::uint16_t nFlags) {
        m_sent.OnSent(packet);
        send(packet, nFlags);
    };
}
