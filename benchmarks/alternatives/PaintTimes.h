// What the programs that draw with another library have in common: `PROGRAM CURVES VALUES PAINTS`
// draws so often and prints the processor time of each paint, in seconds, one a line.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

#include "benchmarks/Strokes.h"

struct PaintTask {
    unsigned m_nCurves = 0;
    std::size_t m_nValues = 0;
    int m_nPaints = 0;
};

/// Ends the program when the arguments are not three numbers above 0.
inline PaintTask ReadPaintTask(int argc, char** argv) {
    PaintTask task;
    if (argc == 4) {
        task.m_nCurves = static_cast<unsigned>(std::atoi(argv[1]));
        task.m_nValues = static_cast<std::size_t>(std::atol(argv[2]));
        task.m_nPaints = std::atoi(argv[3]);
    }
    if (task.m_nCurves < 1 || task.m_nValues < 1 || task.m_nPaints < 1) {
        std::fprintf(stderr, "usage: %s CURVES VALUES PAINTS\n", argv[0]);
        std::exit(2);
    }
    return task;
}

inline std::vector<std::int16_t> MakeStrokes(std::size_t nValues, unsigned nCurve) {
    std::vector<std::int16_t> values(nValues);
    FillStrokes(values, nCurve);
    return values;
}

template <class Paint>
void PrintPaintTimes(int nPaints, Paint paint) {
    for (int i = 0; i < nPaints; ++i) {
        const std::clock_t nBegin = std::clock();
        paint();
        std::printf("%.9f\n", static_cast<double>(std::clock() - nBegin) / CLOCKS_PER_SEC);
    }
}
