#include "host/StrokeCollector.h"

#include <utility>

CStrokeCollector::CStrokeCollector(const ValueLayout& layout, std::size_t nChannel,
                                   std::function<void(Stroke)> onStroke)
    : m_layout(layout), m_nChannel(nChannel), m_onStroke(std::move(onStroke)) {}

void CStrokeCollector::Start(bool bContinuous, const CurveRoom& room) {
    // What was on its way when the screen began anew.
    End(true);
    m_bContinuous = bContinuous;
    m_bStopped = false;
    Begin(room);
}

void CStrokeCollector::Drop() { End(true); }

void CStrokeCollector::Take(const RTPacket& packet, const CurveRoom& room) {
    const PacketPayload payload = GetPayload(packet);
    switch (FindMeaning(packet.m_nType, payload)) {
    case PacketMeaning::Samples:
        if (!IsInStroke()) return;
        DecodeSamples(payload, m_layout, m_aspCurves);
        if (!m_bContinuous && GetCurve()->GetCount() == GetCurve()->GetCapacity()) End(false);
        break;
    case PacketMeaning::NewCurve:
        End(false);
        m_bContinuous = true;
        Begin(room);
        break;
    case PacketMeaning::CaptureStarted:
        End(m_bStopped || !m_bContinuous);
        m_bContinuous = IsStartedContinuous(payload);
        m_bStopped = false;
        Begin(room);
        break;
    case PacketMeaning::Idle:
        // The report of the capture before may come behind a Start.
        if (IsInStroke() && GetCurve()->GetCount() > 0)
            End(m_bStopped || packet.m_nLeading == LEADING_CUT_SHORT);
        break;
    case PacketMeaning::Running:
    case PacketMeaning::Other:
        break;
    }
}

void CStrokeCollector::Begin(const CurveRoom& room) {
    m_nValueRate = room.m_nValueRate;
    auto spCurve = std::make_shared<RTCurveData>(room.m_nCapacity);
    for (std::size_t k = 0; k < m_nChannel; ++k) m_aspCurves[k] = std::make_shared<RTCurveData>(0);
    m_aspCurves[m_nChannel] = std::move(spCurve);
}

void CStrokeCollector::End(bool bCutOff) {
    const auto spCurve = std::exchange(m_aspCurves[m_nChannel], nullptr);
    if (spCurve && spCurve->GetCount() > 0) m_onStroke({spCurve, m_nValueRate, bCutOff});
}
