// The main function of the benchmarks: a window system for the whole run, since texts need one.
#include <benchmark/benchmark.h>

#include "platform/App.h"

int main(int argc, char** argv) {
    CWindowSystem windowSystem(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
