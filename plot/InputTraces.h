// The traces of the four digital input lines in a plot.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "curves/RTCurveData.h"
#include "plot/ChangedSpan.h"
#include "plot/PlotScale.h"

/// What the four traces do next: some steps at one x, then straight on. Bits stand for lines.
/// However many changes fall on one pixel, they leave at most the whole height of the step.
struct TraceRun {
    int m_nX = 0;
    int m_nEndX = 0;
    unsigned m_nBefore = 0;    ///< levels in front of the steps
    unsigned m_nLevels = 0;    ///< levels behind them
    unsigned m_nMoved = 0;     ///< lines that change here
    unsigned m_nReturned = 0;  ///< lines that change more than once here

    friend bool operator==(const TraceRun&, const TraceRun&) = default;
};

/// The pulse records of a curve, reduced to runs and kept from paint to paint: each record is read
/// once, however often a curve that grows, or one that is full, is given more of them.
class CInputTraces {
  public:
    static constexpr unsigned LINE_COUNT = 4;

    struct Source {
        std::int64_t m_nFirst;  ///< the value index at the curve area's left edge
        int m_nWidth;           ///< of the plot
        TimeAxis m_time;
        friend bool operator==(const Source&, const Source&) = default;
    };

    /// Brings the runs up to date: they are those of the values of a curve from its source's first
    /// one up to nLast.
    /// @return where they are others than before
    ChangedSpan Update(const std::shared_ptr<const RTCurveData>& spData, const Source& source,
                       std::int64_t nLast);

    /// Calls draw with each run, from left to right as the records come.
    template <class Draw>
    void ForEach(Draw draw) const {
        for (const TraceRun& run : m_runs) draw(run);
        for (const TraceRun& run : m_tail) draw(run);
    }

  private:
    /// Runs that follow from the records read so far; the last one is still open.
    struct Reading {
        std::size_t m_nNext = 0;       ///< the run of records to be read next
        std::int64_t m_nPosition = 0;  ///< of the one before
        TraceRun m_open;
    };

    bool Begin(const RTPulseList& pulses, std::size_t nRuns);
    /// Reads one record, which may end the open run and begin another.
    void Read(const RTPulse& pulse, Reading& reading, std::vector<TraceRun>& ended) const;
    int XAt(std::int64_t nPosition) const {
        return m_source->m_time.XAt(nPosition - m_source->m_nFirst);
    }

    std::weak_ptr<const RTCurveData> m_wpData;
    std::optional<Source> m_source;
    bool m_bComplete = false;          ///< the last update came to its end
    std::optional<Reading> m_reading;  ///< none: there is no record to begin with
    std::vector<TraceRun> m_runs;      ///< that no later record can change
    /// The open run, with what the first record that lies beyond the values makes of it.
    std::vector<TraceRun> m_tail;
};
