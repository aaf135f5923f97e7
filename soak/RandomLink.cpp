#include "soak/RandomLink.h"

#include "tests/support/Panel.h"

namespace {

constexpr std::int64_t QUEUE_LIMIT = 16'000'000;
/// What a packet costs beside its payload.
constexpr std::size_t PACKET_COST = 200;

}  // namespace

struct CRandomLink::Phase {
    const char* m_pName;
    unsigned m_nWeight;
    void (CRandomLink::*m_pRun)();
};

constinit const CRandomLink::Phase CRandomLink::PHASES[] = {
    {"link: steady samples", 12, &CRandomLink::Steady},
    {"link: flood", 4, &CRandomLink::Flood},
    {"link: silence", 5, &CRandomLink::Silence},
    {"link: malformed samples", 4, &CRandomLink::Malformed},
    {"link: new curves", 4, &CRandomLink::NewCurves},
    {"link: capture started", 3, &CRandomLink::Started},
    {"link: idle or running reports", 7, &CRandomLink::Reports},
    {"link: unknown types", 2, &CRandomLink::Unknown},
    {"link: empty packets", 2, &CRandomLink::Empty},
    {"link: longest packets", 1, &CRandomLink::Long},
    {"link: queue taken away", 1, &CRandomLink::QueueAway},
    {"link: host rates changed", 2, &CRandomLink::Rates},
};

CRandomLink::CRandomLink(CRealTimeData& session, RTPacketQueue& queue, std::uint32_t nSeed,
                         CSoakRecord& record)
    : m_session(session), m_queue(queue), m_pSessionQueue(session.m_pPacketQueue), m_random(nSeed),
      m_record(record), m_layout(FindValueLayout(session.m_nMode, session.m_nPositionInput,
                                                 CountChannels(session.m_nMode))) {
    m_thread = StartThread([this] { Run(); });
}

void CRandomLink::Stop() {
    m_bStop = true;
    m_thread.Close();
}

bool CRandomLink::Drain() {
    std::shared_ptr<RTPacket> spPacket;
    while (m_queue.try_pop(spPacket)) spPacket.reset();
    return m_nQueuedBytes == 0;
}

void CRandomLink::Run() {
    unsigned nWeights = 0;
    for (const Phase& phase : PHASES) nWeights += phase.m_nWeight;
    while (!m_bStop) {
        const Phase* pPhase = PHASES;
        for (unsigned n = Pick(nWeights); n >= pPhase->m_nWeight; ++pPhase) n -= pPhase->m_nWeight;
        m_record.Count(pPhase->m_pName);
        (this->*pPhase->m_pRun)();
    }
}

void CRandomLink::Steady() {
    for (unsigned nPackets = 5 + Pick(40); nPackets > 0; --nPackets) {
        std::vector<std::uint8_t> payload{PickByte()};
        for (unsigned nBlocks = 1 + Pick(4); nBlocks > 0; --nBlocks)
            AddBlock(payload, m_layout.GetSetSize() * Pick(400));
        Push(RTPACKET_SAMPLES, std::move(payload));
        Pause(1 + Pick(8));
    }
}

void CRandomLink::Flood() {
    std::vector<std::uint8_t> payload{0};
    AddBlock(payload, m_layout.GetSetSize() * (1 + Pick(500)));
    const std::uint64_t nEnd = TickMilliseconds() + 50 + Pick(250);
    while (!m_bStop && TickMilliseconds() < nEnd) Push(RTPACKET_SAMPLES, payload);
}

/// Blocks that run past the end hold random bytes; blocks that may be stored, values of their
/// channel.
void CRandomLink::Malformed() {
    for (unsigned nPackets = 1 + Pick(20); nPackets > 0; --nPackets) {
        std::vector<std::uint8_t> payload{PickByte()};
        switch (Pick(4)) {
        case 0:  // cut anywhere
            AddBlock(payload, Pick(60));
            AddBlock(payload, Pick(60));
            payload.resize(Pick(static_cast<unsigned>(payload.size()) + 1));
            break;
        case 1:  // no whole number of sample sets
            AddBlock(payload, 1 + Pick(50));
            break;
        case 2:  // only blocks without values
            for (unsigned nBlocks = Pick(300); nBlocks > 0; --nBlocks) AddBlock(payload, 0);
            break;
        default:  // a count that the packet cannot hold
            payload.insert(payload.end(), {PickByte(), 0xFF, PickByte()});
            for (unsigned nBytes = Pick(600); nBytes > 0; --nBytes) payload.push_back(PickByte());
        }
        Push(RTPACKET_SAMPLES, std::move(payload));
    }
}

void CRandomLink::NewCurves() {
    for (unsigned nCurves = 1 + Pick(12); nCurves > 0; --nCurves) {
        Push(RTPACKET_NEW_CURVE, {static_cast<std::uint8_t>(Pick(8) ? 'P' : PickByte())});
        std::vector<std::uint8_t> payload{0};
        AddBlock(payload, m_layout.GetSetSize() * Pick(200));
        Push(RTPACKET_SAMPLES, std::move(payload));
    }
}

void CRandomLink::Started() {
    for (unsigned nTimes = 1 + Pick(4); nTimes > 0; --nTimes)
        Push(RTPACKET_CONTROL, {RTCMD_CAPTURE, 0, 0, 0, 0, static_cast<std::uint8_t>(Pick(2)),
                                PickByte(), PickByte(), PickByte(), PickByte()});
}

void CRandomLink::Reports() {
    const bool bRunning = Pick(4) == 0;
    for (unsigned nTimes = 1 + Pick(bRunning ? 20 : 5); nTimes > 0; --nTimes)
        Push(RTPACKET_CONTROL,
             {RTCMD_STATUS, PickByte(), PickByte(),
              static_cast<std::uint8_t>(bRunning ? 1 + Pick(255) : 0), PickByte()});
}

void CRandomLink::Unknown() {
    constexpr std::int32_t TYPES[] = {0, 1, 2, 4, 19, 21, 38, 40, -1, -3, 0x7FFFFFFF, 0x10003};
    std::vector<std::uint8_t> payload;
    for (unsigned nBytes = Pick(200); nBytes > 0; --nBytes) payload.push_back(PickByte());
    Push(RTPacketType{TYPES[Pick(std::size(TYPES))]}, payload);
    if (!payload.empty() && payload[0] <= RTCMD_CAPTURE) payload[0] = 3 + PickByte() % 250;
    Push(RTPACKET_CONTROL, payload);
}

void CRandomLink::Empty() {
    for (const RTPacketType type : {RTPACKET_SAMPLES, RTPACKET_NEW_CURVE, RTPACKET_CONTROL}) {
        Push(type, {});
        Push(type, {RTCMD_STATUS});
        auto spNoData = std::make_shared<RTPacket>();
        spNoData->m_nType = type;
        spNoData->m_nLength = static_cast<std::int32_t>(Pick(2) ? 100 : 0);
        PushShared(spNoData, 0);
        auto spNegative = MakePacket(type, {'P', 2, 2, 0, 0, 0, 0});
        spNegative->m_nLength = -1 - static_cast<std::int32_t>(Pick(1000));
        PushShared(spNegative, 0);
    }
    m_queue.push(nullptr);
}

void CRandomLink::Long() {
    std::vector<std::uint8_t> payload{0};
    AddBlock(payload, m_layout.GetSetSize() * (32764 / m_layout.GetSetSize()));
    Push(RTPACKET_SAMPLES, payload);
    AddBlock(payload, 65535);  // more than the host may send
    Push(RTPACKET_SAMPLES, std::move(payload));
}

void CRandomLink::QueueAway() {
    std::atomic_ref(m_session.m_pPacketQueue).store(nullptr);
    Pause(1 + Pick(40));
    std::atomic_ref(m_session.m_pPacketQueue).store(m_pSessionQueue);
}

void CRandomLink::Rates() {
    constexpr std::uint16_t RATES[] = {0, 1, 50, 1000, 8000, 32000, 40000, 40000, 65535};
    std::atomic_ref(m_session.m_nHostValueRate).store(RATES[Pick(std::size(RATES))]);
    std::atomic_ref(m_session.m_nHostAuxRate).store(RATES[Pick(std::size(RATES))]);
}

void CRandomLink::Push(RTPacketType type, std::vector<std::uint8_t> payload) {
    const std::size_t nBytes = payload.size();
    PushShared(MakePacket(type, std::move(payload)), nBytes);
}

void CRandomLink::PushShared(std::shared_ptr<RTPacket> spPacket, std::size_t nBytes) {
    while (m_nQueuedBytes > QUEUE_LIMIT && !m_bStop) Pause(5);
    if (m_bStop) return;
    const auto nCost = static_cast<std::int64_t>(nBytes + PACKET_COST);
    m_nQueuedBytes += nCost;
    RTPacket* const pPacket = spPacket.get();
    m_queue.push(std::shared_ptr<RTPacket>(
        pPacket, [this, nCost, spOwner = std::move(spPacket)](RTPacket*) mutable {
            spOwner.reset();
            m_nQueuedBytes -= nCost;
        }));
    m_record.Count("packets sent");
    m_record.Count("payload bytes sent", nBytes);
}

void CRandomLink::AddBlock(std::vector<std::uint8_t>& payload, unsigned nValues) {
    payload.insert(payload.end(), {PickByte(), static_cast<std::uint8_t>(nValues >> 8),
                                   static_cast<std::uint8_t>(nValues)});
    const unsigned nStart = Pick(CHANNEL_STEP);
    for (unsigned n = 0; n < nValues; ++n) {
        const unsigned nChannel = n / m_layout.m_nPerChannel % m_layout.m_nChannels;
        const unsigned nValue = nChannel * CHANNEL_STEP + (nStart + 7 * n) % CHANNEL_STEP;
        payload.push_back(static_cast<std::uint8_t>(nValue));
        payload.push_back(static_cast<std::uint8_t>(nValue >> 8));
    }
}
