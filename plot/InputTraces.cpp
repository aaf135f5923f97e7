#include "plot/InputTraces.h"

#include <algorithm>
#include <span>
#include <utility>

namespace {

constexpr unsigned LINE_BITS = (1u << CInputTraces::LINE_COUNT) - 1;

void ChangeLevels(TraceRun& run, unsigned nLevels) {
    const unsigned nChanged = run.m_nLevels ^ nLevels;
    run.m_nReturned |= run.m_nMoved & nChanged;
    run.m_nMoved |= nChanged;
    run.m_nLevels = nLevels;
}

ChangedSpan SpanBetween(int x, int xOther) {
    return {std::min(x, xOther), std::max(x, xOther) + 1};
}

/// Where runs that take the place of others look different.
ChangedSpan FindChange(std::span<const TraceRun> before, std::span<const TraceRun> after) {
    const auto [itBefore, itAfter] = std::ranges::mismatch(before, after);
    before = before.subspan(static_cast<std::size_t>(itBefore - before.begin()));
    after = after.subspan(static_cast<std::size_t>(itAfter - after.begin()));
    ChangedSpan changed;
    if (!before.empty() && !after.empty()) {
        TraceRun longer = before.front();
        longer.m_nEndX = after.front().m_nEndX;
        if (longer == after.front()) {
            changed = SpanBetween(before.front().m_nEndX, after.front().m_nEndX);
            before = before.subspan(1);
            after = after.subspan(1);
        }
    }
    for (const auto runs : {before, after})
        for (const TraceRun& run : runs) changed.Include(SpanBetween(run.m_nX, run.m_nEndX));
    return changed;
}

}  // namespace

ChangedSpan CInputTraces::Update(const std::shared_ptr<const RTCurveData>& spData,
                                 const Source& source, std::int64_t nLast) {
    const RTPulseList& pulses = spData->GetPulses();
    ChangedSpan changed;
    if (!m_bComplete || *m_source != source || spData != m_wpData.lock()) {
        m_source = source;
        m_wpData = spData;
        m_reading.reset();
        m_runs.clear();
        m_tail.clear();
        changed = ChangedSpan::Everything();
    }
    m_bComplete = false;
    const std::size_t nRuns = pulses.CountRuns();
    if (!m_reading && !Begin(pulses, nRuns)) {
        m_bComplete = true;
        return changed;
    }

    // Records right of the plot are not seen.
    const auto nVisible = static_cast<std::int64_t>((source.m_nWidth - source.m_time.m_nLeft) /
                                                    source.m_time.m_dScale);
    const std::int64_t nEnd = std::min(nLast, source.m_nFirst + nVisible + 1);
    const std::size_t nEnded = m_runs.size();
    while (m_reading->m_nNext < nRuns && pulses.GetRun(m_reading->m_nNext).m_nPosition <= nEnd)
        Read(pulses.GetRun(m_reading->m_nNext++), *m_reading, m_runs);

    std::vector<TraceRun> tail;
    Reading beyond = *m_reading;
    if (beyond.m_nNext < nRuns) Read(pulses.GetRun(beyond.m_nNext), beyond, tail);
    tail.push_back(beyond.m_open);
    tail.back().m_nEndX = XAt(std::min(beyond.m_nPosition, nLast));

    std::vector<TraceRun> replacing(m_runs.begin() + static_cast<std::ptrdiff_t>(nEnded),
                                    m_runs.end());
    replacing.insert(replacing.end(), tail.begin(), tail.end());
    changed.Include(FindChange(m_tail, replacing));
    m_tail = std::move(tail);
    m_bComplete = true;
    return changed;
}

/// Begins with the first record at or behind the left edge.
/// @return false when there is none
bool CInputTraces::Begin(const RTPulseList& pulses, std::size_t nRuns) {
    const std::size_t nFirst = pulses.FindRun(nRuns, m_source->m_nFirst);
    if (nFirst == nRuns) return false;
    const unsigned nLevels = pulses.GetRun(nFirst).m_byState & LINE_BITS;
    m_reading = Reading{.m_nNext = nFirst,
                        .m_nPosition = m_source->m_nFirst,
                        .m_open = {.m_nX = m_source->m_time.m_nLeft,
                                   .m_nEndX = m_source->m_time.m_nLeft,
                                   .m_nBefore = nLevels,
                                   .m_nLevels = nLevels}};
    return true;
}

void CInputTraces::Read(const RTPulse& pulse, Reading& reading,
                        std::vector<TraceRun>& ended) const {
    TraceRun& open = reading.m_open;
    const unsigned nLevels = pulse.m_byState & LINE_BITS;
    if (nLevels != open.m_nLevels) {
        const int x = XAt(reading.m_nPosition);
        if (x != open.m_nX) {
            open.m_nEndX = x;
            ended.push_back(open);
            open = {.m_nX = x, .m_nBefore = open.m_nLevels, .m_nLevels = open.m_nLevels};
        }
        ChangeLevels(open, nLevels);
    }
    reading.m_nPosition = pulse.m_nPosition;
}
