// The traces of the four digital input lines.
#include "plot/PlotPainter.h"

namespace {

constexpr unsigned LINE_COUNT = 4;
constexpr unsigned LINE_BITS = (1u << LINE_COUNT) - 1;

constexpr std::array<COLORREF, LINE_COUNT> LINE_COLOURS{
    RGB(0, 51, 153),
    RGB(0, 102, 51),
    RGB(51, 0, 102),
    RGB(255, 0, 0),
};

/// What the four traces do next: some steps at one x, then straight on. Bits stand for lines.
/// However many changes fall on one pixel, they leave at most the whole height of the step.
struct TraceRun {
    int x;
    unsigned m_nBefore;        ///< levels in front of the steps
    unsigned m_nLevels;        ///< levels behind them
    unsigned m_nMoved = 0;     ///< lines that change here
    unsigned m_nReturned = 0;  ///< lines that change more than once here

    void Change(unsigned nNewLevels) {
        const unsigned nChanged = m_nLevels ^ nNewLevels;
        m_nReturned |= m_nMoved & nChanged;
        m_nMoved |= nChanged;
        m_nLevels = nNewLevels;
    }
};

}  // namespace

void CPlotPainter::DrawInputTraces(const RTPulseList& pulses, IndexRange range) {
    const std::size_t nCount = pulses.GetCount();
    std::size_t nRecord = pulses.FindPosition(nCount, range.m_nFirst);
    if (nRecord == nCount) return;

    const auto yOf = [this](unsigned nLine, bool bSet) {
        const int yBase = m_layout.m_nAxisY - (4 - static_cast<int>(nLine)) * m_layout.m_nRowHeight;
        return yBase - 2 - (bSet ? 0 : m_layout.m_nTraceHeight);
    };
    const auto drawRun = [&](const TraceRun& run, int xEnd) {
        for (unsigned nLine = 0; nLine < LINE_COUNT; ++nLine) {
            const CPenScope pen(m_dc, PenStyle::Solid, LINE_COLOURS[nLine]);
            const auto has = [nLine](unsigned nLines) { return (nLines >> nLine & 1u) != 0; };
            const int yBefore = yOf(nLine, has(run.m_nBefore));
            const int yLevel = yOf(nLine, has(run.m_nLevels));
            m_dc.MoveTo(run.x, yBefore);
            if (has(run.m_nReturned)) {
                m_dc.LineTo(run.x, yOf(nLine, !has(run.m_nBefore)));
                m_dc.LineTo(run.x, yBefore);
            }
            if (yLevel != yBefore) m_dc.LineTo(run.x, yLevel);
            m_dc.LineTo(xEnd, yLevel);
        }
    };

    // Records that change nothing only make a trace longer; those right of the plot are not seen.
    const auto nVisible =
        static_cast<std::int64_t>((m_layout.m_nWidth - LEFT_MARGIN) / m_time.m_dScale);
    const std::int64_t nEnd = std::min(range.m_nLast, range.m_nFirst + nVisible + 1);
    const unsigned nStart = pulses.At(nRecord).m_byState & LINE_BITS;
    TraceRun run{.x = LEFT_MARGIN, .m_nBefore = nStart, .m_nLevels = nStart};
    std::int64_t nPosition = range.m_nFirst;
    for (; nRecord < nCount && nPosition <= nEnd; ++nRecord) {
        const RTPulse& pulse = pulses.At(nRecord);
        const unsigned nLevels = pulse.m_byState & LINE_BITS;
        if (nLevels != run.m_nLevels) {
            const int x = m_time.XAt(nPosition - range.m_nFirst);
            if (x != run.x) {
                drawRun(run, x);
                run = {.x = x, .m_nBefore = run.m_nLevels, .m_nLevels = run.m_nLevels};
            }
            run.Change(nLevels);
        }
        nPosition = pulse.m_nPosition;
    }
    drawRun(run, m_time.XAt(std::min(nPosition, range.m_nLast) - range.m_nFirst));
}
