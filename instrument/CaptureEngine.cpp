#include "instrument/CaptureEngine.h"

#include <algorithm>
#include <cmath>

namespace {

/// How long the pass output stays on.
constexpr std::chrono::milliseconds PASS_OUTPUT_TIME(200);

std::int16_t ClampToValue(double d) {
    return static_cast<std::int16_t>(std::lround(std::clamp(d, -32768.0, 32767.0)));
}

}  // namespace

CCaptureEngine::CCaptureEngine(CPacketSink sink, const ValueLayout& layout,
                               std::unique_ptr<IPressSignal> pPress)
    : m_writer(std::move(sink)), m_layout(layout), m_pPress(std::move(pPress)),
      m_samples(layout.m_nChannels) {
    m_values.reserve(layout.GetSetSize());
}

void CCaptureEngine::Execute(const InstrumentCommand& command, Time now) {
    if (const auto* pCapture = std::get_if<CaptureRequest>(&command)) {
        Begin(*pCapture, now);
    } else if (std::holds_alternative<StopRequest>(command)) {
        Advance(now);
        End(m_bRunning ? InstrumentActivity::Stopped : m_idleActivity);
    } else {
        Advance(now);
        m_passOutputEnd = now + PASS_OUTPUT_TIME;
    }
}

void CCaptureEngine::BeginBySelf(const CaptureRequest& request, Time now) {
    m_writer.ReportCaptureStarted(request);
    Begin(request, now);
}

void CCaptureEngine::Begin(const CaptureRequest& request, Time now) {
    m_request = request;
    m_begin = now;
    m_nSetsTaken = 0;
    m_nSetsSent = 0;
    m_nStroke = 0;
    m_nStrokesSent = 0;
    m_bArmed = true;
    m_bSending = false;
    m_bRunning = true;
    m_writer.ReportState(true);

    // Rounded up, so that a curve sized for an odd number of values fills too.
    const std::uint64_t nValues =
        std::uint64_t{request.m_nSampleMilliseconds} * request.m_nValueRate / 1000;
    m_nSetsWanted = (nValues + m_layout.m_nPerChannel - 1) / m_layout.m_nPerChannel;
    if (request.m_nValueRate == 0 || (!request.m_bContinuous && m_nSetsWanted == 0))
        End(InstrumentActivity::Ready);
}

void CCaptureEngine::End(InstrumentActivity activity) {
    m_bRunning = false;
    m_idleActivity = activity;
    m_writer.ReportState(false);
}

InstrumentState CCaptureEngine::GetState() const {
    InstrumentState state;
    const bool bWaiting = !m_bSending && m_request.m_nTriggerTenths > 0;
    state.m_activity = !m_bRunning ? m_idleActivity
                       : bWaiting  ? InstrumentActivity::Waiting
                                   : InstrumentActivity::Capturing;
    state.m_bContinuous = m_request.m_bContinuous;
    state.m_nTriggerTenths = m_request.m_nTriggerTenths;
    state.m_nSampleMilliseconds = m_request.m_bContinuous ? 0 : m_request.m_nSampleMilliseconds;
    if (m_request.m_nValueRate > 0)
        state.m_nMilliseconds =
            m_nSetsSent * m_layout.m_nPerChannel * 1000 / m_request.m_nValueRate;
    state.m_nStrokes = m_nStrokesSent;
    return state;
}

void CCaptureEngine::Advance(Time now) {
    if (!m_bRunning) return;
    // The pass output is looked at once per step, as an instrument does once per block.
    const std::uint8_t byPass = now < m_passOutputEnd ? PRESSLINE_PASS : 0;
    const std::uint64_t nDue = CountSetsDue(now - m_begin);
    while (m_bRunning && m_nSetsTaken < nDue) TakeSet(byPass);
    m_writer.Flush();
}

std::uint64_t CCaptureEngine::CountSetsDue(Time elapsed) const {
    // In whole seconds and the rest, so that no product leaves 64 bits.
    const auto seconds = std::chrono::floor<std::chrono::seconds>(elapsed);
    const std::uint64_t nRate = m_request.m_nValueRate;
    const auto nRest = static_cast<std::uint64_t>((elapsed - seconds).count());
    const std::uint64_t nValues =
        static_cast<std::uint64_t>(seconds.count()) * nRate + nRest * nRate / 1'000'000'000;
    return nValues / m_layout.m_nPerChannel;
}

void CCaptureEngine::TakeSet(std::uint8_t byPass) {
    const double dStroke = m_pPress->GetStrokeSeconds();
    const double dSeconds =
        static_cast<double>(m_nSetsTaken) * m_layout.m_nPerChannel / m_request.m_nValueRate;
    const auto nStroke = static_cast<std::uint64_t>(dSeconds / dStroke);
    const double dInStroke =
        std::clamp(dSeconds - static_cast<double>(nStroke) * dStroke, 0.0, dStroke);
    ++m_nSetsTaken;
    if (nStroke != m_nStroke) {
        m_nStroke = nStroke;
        m_bArmed = m_bArmed || m_request.m_bContinuous;
    }

    m_pPress->Read(nStroke, dInStroke, m_samples);
    const int nLevel = m_request.m_nTriggerTenths * FULL_SCALE / 1000;
    if (m_bArmed && (nLevel == 0 || m_samples[0].m_dForce >= nLevel)) {
        // The curve of the first stroke was begun before the capture was.
        if (m_bSending) m_writer.AnnounceCurve();
        m_bArmed = false;
        m_bSending = true;
        ++m_nStrokesSent;
    }
    if (!m_bSending) return;
    SendSet(m_pPress->GetPhases().GetLines(dInStroke) | byPass);
    ++m_nSetsSent;
    if (!m_request.m_bContinuous && m_nSetsSent == m_nSetsWanted) End(InstrumentActivity::Ready);
}

void CCaptureEngine::SendSet(std::uint8_t byLines) {
    m_values.clear();
    for (const PressSample& sample : m_samples) {
        m_values.push_back(ClampToValue(sample.m_dForce));
        if (m_layout.m_nPerChannel == 2) m_values.push_back(ClampToValue(sample.m_dSecond));
    }
    m_writer.AddSet(byLines, m_values);
}
