// rtsoak: works the real screen for a long time. It prints what it did and ends with 1 when
// something was wrong.
#include <cstdio>

#include "platform/commandline/CommandLine.h"
#include "platform/system/DynamicLibrary.h"
#include "platform/windows/Application.h"
#include "soak/Soak.h"
#include "soak/Watch.h"
#include "tests/support/Surroundings.h"

namespace {

constexpr double MAX_COUNT = 4294967295.0;

struct Run {
    SoakOptions m_options;
    double m_dHours = 0;
    unsigned m_nStrokeSeconds = 0;
    bool m_bLink = false;
    unsigned m_nRestarts = 0;
    double m_dLinkMinutes = 0;
};

Run ReadRun(Arguments arguments) {
    Run run;
    CCommandLine line("rtsoak [--link] [--seconds N] [--seed S] [--mode M] [--patience MS]\n"
                      "       rtsoak --continuous H [--stroke S] [--mode M]\n"
                      "       rtsoak --restarts N [--seed S]\n"
                      "       rtsoak --link-rate MINUTES [--seed S]",
                      "Without a run's own option: operator and instrument at random.\n");
    line.AddNumber("--seconds", "N", run.m_options.m_dSeconds, 0, 1e9, "for so long (10)");
    line.AddNumber("--seed", "S", run.m_options.m_nSeed, 0, MAX_COUNT,
                   "what the random choices go by (1)");
    line.AddNumber(
        "--mode", "M", true,
        [&](double d) { run.m_options.m_nMode = static_cast<std::uint8_t>(d); }, 0, 255,
        "instrument mode (all of them)");
    line.AddNumber("--patience", "MS", run.m_options.m_nPatience, 0, MAX_COUNT,
                   "how long the user-interface thread may take to answer (0, as the kind of build "
                   "asks for)");
    line.AddNumber("--continuous", "H", run.m_dHours, 0, 1e6,
                   "a continuous capture of so many hours, as fast as the reader takes it");
    line.AddNumber("--stroke", "S", run.m_nStrokeSeconds, 0, MAX_COUNT,
                   "a new curve every so many seconds (0, one curve only)");
    line.AddFlag("--link", run.m_bLink, "the instrument is linked, and the link is bad");
    line.AddNumber("--restarts", "N", run.m_nRestarts, 0, MAX_COUNT,
                   "a linked instrument that is killed in captures and started again, so often");
    line.AddNumber("--link-rate", "MINUTES", run.m_dLinkMinutes, 0, 1e6,
                   "all that a linked instrument can send, so long");
    const auto arrFiles = line.Parse(arguments);
    if (!arrFiles.empty()) throw CUsageError("'" + ToUtf8(arrFiles[0]) + "' is no option");
    if (!run.m_options.m_nPatience) run.m_options.m_nPatience = GetDefaultPatience();
    return run;
}

void Work(const Run& run, CSoakRecord& record) {
    if (run.m_dHours > 0)
        RunContinuous(run.m_options, run.m_dHours, run.m_nStrokeSeconds, record);
    else if (run.m_nRestarts > 0)
        RunRestarts(run.m_options, run.m_nRestarts, record);
    else if (run.m_dLinkMinutes > 0)
        RunLinkRate(run.m_options, run.m_dLinkMinutes, record);
    else if (run.m_bLink)
        RunLinkedScreens(run.m_options, record);
    else
        RunRandomScreens(run.m_options, record);
}

int RunSoak(const Run& run, char* pProgram) {
    const TestSurroundings surroundings;
    int argc = 1;
    char* argv[] = {pProgram, nullptr};
    CWindowSystem windowSystem(argc, argv);
    // As long as the program runs, as in a host, so that addresses in it keep their names.
    const CDynamicLibrary library(L"RealTimeMode.dll");
    CSoakRecord record;
    record.SetScreen("screen");
    try {
        Work(run, record);
    } catch (const std::exception& error) {
        record.Fault(error.what());
    }
    std::printf("seed %u\n", run.m_options.m_nSeed);
    record.Print();
    return record.HasFaults() ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    return RunProgram("rtsoak", argc, argv,
                      [argv](Arguments arguments) { return RunSoak(ReadRun(arguments), argv[0]); });
}
