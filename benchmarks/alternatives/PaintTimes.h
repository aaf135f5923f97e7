// What the programs that draw with another library have in common: `PROGRAM CURVES VALUES PAINTS
// same|new` draws so often, the same view (in whatever way the library has for a window that is
// shown again) or a new one each time, and prints the processor time of
// each paint, in seconds, one a line.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <vector>

#include "benchmarks/Strokes.h"

struct PaintTask {
    unsigned m_nCurves = 0;
    std::size_t m_nValues = 0;
    int m_nPaints = 0;
    bool m_bNewView = false;
};

/// Ends the program when the arguments are not three numbers above 0 and a kind of view.
inline PaintTask ReadPaintTask(int argc, char** argv) {
    PaintTask task;
    if (argc == 5) {
        task.m_nCurves = static_cast<unsigned>(std::atoi(argv[1]));
        task.m_nValues = static_cast<std::size_t>(std::atol(argv[2]));
        task.m_nPaints = std::atoi(argv[3]);
        task.m_bNewView = std::strcmp(argv[4], "new") == 0;
    }
    if (task.m_nCurves < 1 || task.m_nValues < 1 || task.m_nPaints < 1) {
        std::fprintf(stderr, "usage: %s CURVES VALUES PAINTS same|new\n", argv[0]);
        std::exit(2);
    }
    return task;
}

/// Calls takePoint(index, value), two doubles, for each value that the plot shows of a curve.
template <class TakePoint>
void TakeStrokes(std::size_t nValues, unsigned nCurve, TakePoint takePoint) {
    std::vector<std::int16_t> values(nValues);
    FillStrokes(values, nCurve);
    for (std::size_t i = 0; i < nValues; i += SHOWN_STEP)
        takePoint(static_cast<double>(i), static_cast<double>(values[i]));
}

inline double ReadProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// @param paint gets the values that the view is wide; its first call is not counted
template <class Paint>
void PrintPaintTimes(const PaintTask& task, Paint paint) {
    for (int i = -1; i < task.m_nPaints; ++i) {
        const bool bWider = task.m_bNewView && i % 2 == 0;
        const double dBegin = ReadProcessorSeconds();
        paint(static_cast<double>(task.m_nValues + (bWider ? VIEW_STEP : 0)));
        const double dTaken = ReadProcessorSeconds() - dBegin;
        if (i >= 0) std::printf("%.9f\n", dTaken);
    }
}
