#include "acquisition/Capture.h"

#include <algorithm>
#include <mutex>
#include <new>
#include <utility>

#include "acquisition/ValueLayout.h"
#include "platform/system/Exceptions.h"
#include "platform/system/MemoryReserve.h"

namespace {

using Guard = std::lock_guard<CFairLock>;

/// The host may write its rates at any time, without the lock.
std::uint16_t ReadHostRate(std::uint16_t& nRate) {
    return std::atomic_ref(nRate).load(std::memory_order_relaxed);
}

/// The session's channel count as an array bound.
unsigned CountUsed(const CRealTimeData& session) {
    return std::min<unsigned>(session.m_nChannels, RT_MAX_CHANNELS);
}

std::shared_ptr<CRTCurves> MakeEmptySet() {
    try {
        return std::make_shared<CRTCurves>();
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

/// Makes the next push_back unable to fail.
void MakeRoom(RTCurveList& lstCurves) {
    try {
        if (lstCurves.size() == lstCurves.capacity()) lstCurves.reserve(2 * lstCurves.size() + 4);
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

}  // namespace

/// What new curves are made by. Compared again under the lock: the user-interface thread may have
/// changed it while their arrays were allocated.
struct RTCapture::CurvePlan {
    std::int32_t m_nCapacity;
    unsigned m_nChannels;
    friend bool operator==(const CurvePlan&, const CurvePlan&) = default;
};

/// A set with a new curve for each channel in use, on its way in. Installing swaps curves and set
/// for the old ones, which are freed with this record, after the lock is left.
struct RTCapture::NewCurves {
    std::shared_ptr<CRTCurves> m_spSet;
    CurvePlan m_plan{};
    RTCurrentCurves m_aspCurves{};
    std::array<std::shared_ptr<CRTCurves>, RT_MAX_CHANNELS> m_aspPlotSets{};
};

RTCapture::CurvePlan RTCapture::MakePlan(std::uint16_t nValueRate) const {
    return {GetSampleSeconds() * nValueRate, CountUsed(m_session)};
}

/// The lock is not held.
RTCapture::NewCurves RTCapture::MakeCurves(const CurvePlan& plan) {
    const CMemoryReserve forTheScreen(WORKING_MEMORY);
    NewCurves curves{.m_spSet = MakeEmptySet(), .m_plan = plan};
    for (std::size_t k = 0; k < plan.m_nChannels; ++k)
        // A negative capacity is a size that no memory can have.
        curves.m_aspCurves[k] =
            curves.m_spSet->AddCurve(k, static_cast<std::uint32_t>(plan.m_nCapacity));
    return curves;
}

/// Makes curves by the rate in force and calls install with them under the lock.
template <class Install>
void RTCapture::InstallNewCurves(Install install) {
    const auto getPlan = [this] {
        const Guard guard(m_session.m_lock);
        return MakePlan(m_session.m_nValueRate);
    };
    for (;;) {
        NewCurves curves = MakeCurves(getPlan());
        const Guard guard(m_session.m_lock);
        if (curves.m_plan != MakePlan(m_session.m_nValueRate)) continue;
        install(curves);
        return;
    }
}

/// Puts the new set in hand. The lock is held.
void RTCapture::ShareSet(NewCurves& curves) {
    for (std::size_t k = 0; k < CountUsed(m_session); ++k)
        curves.m_aspPlotSets[k] = std::exchange(m_session.m_aPlots[k].m_spCurves, curves.m_spSet);
    m_session.m_spCurves.swap(curves.m_spSet);
}

/// Appends the new curves to the set in hand. The lock is held.
void RTCapture::AppendToSet(const NewCurves& curves) {
    auto& lstChannels = m_session.m_spCurves->m_lstCurves;
    for (std::size_t k = 0; k < curves.m_plan.m_nChannels; ++k) MakeRoom(lstChannels[k]);
    for (std::size_t k = 0; k < curves.m_plan.m_nChannels; ++k)
        lstChannels[k].push_back(curves.m_aspCurves[k]);
}

/// Makes a channel's new curve, which the set in hand holds, the one that is filled. The lock is
/// held.
void RTCapture::BeginCurve(std::size_t nChannel, NewCurves& curves) {
    m_session.m_aPlots[nChannel].m_nSpanValues = curves.m_plan.m_nCapacity;
    m_aspCurrentCurve[nChannel].swap(curves.m_aspCurves[nChannel]);
}

/// Puts the new curves in hand, in their own set or at the end of the one in hand. The lock is
/// held.
void RTCapture::BeginCurves(NewCurves& curves, bool bNewSet) {
    if (bNewSet)
        ShareSet(curves);
    else
        AppendToSet(curves);
    for (std::size_t k = 0; k < curves.m_plan.m_nChannels; ++k) BeginCurve(k, curves);
}

/// Leaves the channels without a curve. The lock is held.
void RTCapture::DropCurrentCurves(NewCurves& curves) {
    for (std::size_t k = 0; k < CountUsed(m_session); ++k)
        m_aspCurrentCurve[k].swap(curves.m_aspCurves[k]);
}

std::shared_ptr<RTCurveData> RTCapture::GetCurrentCurve(std::size_t nChannel) const {
    const Guard guard(m_session.m_lock);
    return m_aspCurrentCurve[nChannel];
}

std::shared_ptr<CRTCurves> RTCapture::CopyCurves() const {
    auto spCopy = MakeEmptySet();
    const Guard guard(m_session.m_lock);
    try {
        spCopy->m_lstCurves = m_session.m_spCurves->m_lstCurves;
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
    spCopy->m_byVersion = m_session.m_spCurves->m_byVersion;
    return spCopy;
}

RTCaptureParameters RTCapture::Start(std::uint16_t nTriggerTenths, std::uint8_t nDisplay) {
    const std::uint16_t nValueRate = ReadHostRate(m_session.m_nHostValueRate);
    const std::uint16_t nAuxRate = ReadHostRate(m_session.m_nHostAuxRate);
    const std::int16_t nSeconds = GetSampleSeconds();

    NewCurves curves = MakeCurves(MakePlan(nValueRate));
    const Guard guard(m_session.m_lock);
    const bool bContinuous = m_bContinuous;
    BeginCurves(curves, bContinuous);
    if (bContinuous) m_bContinuousRunning = true;
    m_bIdle = false;
    m_session.m_nValueRate = nValueRate;
    m_session.m_nAuxRate = nAuxRate;
    m_session.m_graph.m_nGraphRate = nValueRate;

    RTCaptureParameters parameters;
    parameters.m_nSampleMilliseconds =
        static_cast<std::uint16_t>(static_cast<std::uint16_t>(nSeconds) * 1000u);
    parameters.m_bContinuous = bContinuous ? 1 : 0;
    parameters.m_nValueRate = nValueRate;
    parameters.m_nTriggerTenths = nTriggerTenths;
    parameters.m_nDisplay = nDisplay;
    return parameters;
}

void RTCapture::Stop() {
    const Guard guard(m_session.m_lock);
    if (m_bContinuous) m_bContinuousRunning = false;
}

void RTCapture::Clear() {
    NewCurves none{.m_spSet = MakeEmptySet()};
    const Guard guard(m_session.m_lock);
    ShareSet(none);
    DropCurrentCurves(none);
}

void RTCapture::ReplaceCurves(std::shared_ptr<CRTCurves> spCurves, const RTCaptureScale& scale) {
    NewCurves loaded{.m_spSet = std::move(spCurves)};
    const Guard guard(m_session.m_lock);
    ShareSet(loaded);
    DropCurrentCurves(loaded);
    if (scale.m_nValueRate)
        m_session.m_nValueRate = m_session.m_graph.m_nGraphRate = *scale.m_nValueRate;
    m_session.m_nAuxRate = scale.m_nAuxRate.value_or(m_session.m_nAuxRate);
    for (std::size_t k = 0; k < RT_MAX_CHANNELS; ++k) {
        RTPlot& plot = m_session.m_aPlots[k];
        plot.m_nSpanValues = scale.m_anSpanValues[k].value_or(plot.m_nSpanValues);
    }
    for (std::size_t k = 0; k < CountUsed(m_session); ++k)
        if (m_session.m_spCurves->FirstCurve(k)) m_session.m_aPlots[k].ZoomAll();
}

bool RTCapture::ToggleContinuous() {
    const Guard guard(m_session.m_lock);
    m_bContinuous = !m_bContinuous;
    return m_bContinuous;
}

void RTCapture::SelectPlot(std::uint8_t nPlot) {
    const Guard guard(m_session.m_lock);
    if (nPlot < RT_MAX_CHANNELS) m_nCurrentPlot = nPlot;
}

RTCapture::SampleOutcome RTCapture::StoreSamples(std::span<const std::uint8_t> payload) {
    const Guard guard(m_session.m_lock);
    const unsigned nChannels = CountUsed(m_session);
    DecodeSamples(payload,
                  FindValueLayout(m_session.m_nMode, m_session.m_nPositionInput, nChannels),
                  m_aspCurrentCurve);
    for (std::size_t k = 0; k < nChannels; ++k) m_session.m_aPlots[k].ZoomAll();

    const auto& spShown = m_aspCurrentCurve[m_nCurrentPlot];
    const bool bFull = spShown && spShown->GetCount() == spShown->GetCapacity();
    const bool bEnded = bFull && !m_bContinuous;
    if (bEnded) m_bIdle = true;
    return {m_nCurrentPlot, bEnded};
}

void RTCapture::ReportIdle() {
    const Guard guard(m_session.m_lock);
    m_bIdle = true;
}

std::optional<std::size_t> RTCapture::FinishCapture() {
    std::shared_ptr<RTCurveData> spShown;
    {
        const Guard guard(m_session.m_lock);
        if (!m_bIdle) return std::nullopt;
        spShown = m_aspCurrentCurve[m_nCurrentPlot];
    }
    if (spShown) spShown->RecomputeExtremes();

    if (!IsAutoZoom(m_session.m_graph)) return std::nullopt;
    const Guard guard(m_session.m_lock);
    m_session.m_aPlots[m_nCurrentPlot].ZoomAll();
    return m_nCurrentPlot;
}

void RTCapture::BeginAnnouncedCurve() {
    InstallNewCurves([this](NewCurves& curves) { BeginCurves(curves, true); });
}

std::optional<std::size_t> RTCapture::CaptureStarted(bool bContinuous) {
    std::optional<std::size_t> nRepaint;
    InstallNewCurves([&](NewCurves& curves) {
        const bool bFirst = m_aspCurrentCurve[0] == nullptr;
        const bool bNewSet = bFirst && bContinuous;
        BeginCurves(curves, bNewSet);
        if (bFirst) m_bContinuous = bContinuous;
        if (bNewSet) {
            m_bContinuousRunning = true;
            nRepaint = m_nCurrentPlot;
        }
    });
    return nRepaint;
}
