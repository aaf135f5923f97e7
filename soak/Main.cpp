// rtsoak: works the real screen for a long time. It prints what it did and ends with 1 when
// something was wrong.
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/system/DynamicLibrary.h"
#include "platform/windows/Application.h"
#include "soak/Soak.h"
#include "soak/Watch.h"

namespace {

constexpr const char* USAGE =
    "usage: rtsoak [--seconds N] [--seed S] [--mode M] [--patience MS]\n"
    "       rtsoak --captures N | --closings N | --screens N [--mode M]\n"
    "       rtsoak --continuous HOURS [--stroke SECONDS] [--mode M]\n"
    "\n"
    "Without a run named in the second or third line: operator and instrument at random.\n"
    "  --seconds N     for so long; 10\n"
    "  --seed S        what the random choices go by; 1\n"
    "  --mode M        instrument mode; all of them\n"
    "  --patience MS   how long the user-interface thread may take to answer\n"
    "  --captures N    captures in a row on one screen, through its buttons\n"
    "  --closings N    screens closed in the middle of a capture\n"
    "  --screens N     screens opened and closed\n"
    "  --continuous H  a continuous capture of so many hours, as fast as the reader takes it\n"
    "  --stroke S      a new curve every so many seconds; 0, the default: one curve only\n";

struct Run {
    SoakOptions m_options;
    unsigned m_nCaptures = 0;
    unsigned m_nClosings = 0;
    unsigned m_nScreens = 0;
    double m_dHours = 0;
    unsigned m_nStrokeSeconds = 0;
};

template <class Number>
bool Read(const char* pText, Number& number) {
    const char* const pEnd = pText + std::strlen(pText);
    const auto [pLast, error] = std::from_chars(pText, pEnd, number);
    return error == std::errc() && pLast == pEnd && pText != pEnd && number >= Number(0);
}

bool ReadArguments(int argc, char** argv, Run& run) {
    for (int n = 1; n < argc; n += 2) {
        const std::string strName = argv[n];
        if (n + 1 == argc) return false;
        const char* const pValue = argv[n + 1];
        std::uint8_t nMode = 0;
        bool bRead = false;
        if (strName == "--seconds") bRead = Read(pValue, run.m_options.m_dSeconds);
        if (strName == "--seed") bRead = Read(pValue, run.m_options.m_nSeed);
        if (strName == "--patience") bRead = Read(pValue, run.m_options.m_nPatience);
        if (strName == "--captures") bRead = Read(pValue, run.m_nCaptures);
        if (strName == "--closings") bRead = Read(pValue, run.m_nClosings);
        if (strName == "--screens") bRead = Read(pValue, run.m_nScreens);
        if (strName == "--continuous") bRead = Read(pValue, run.m_dHours);
        if (strName == "--stroke") bRead = Read(pValue, run.m_nStrokeSeconds);
        if (strName == "--mode" && (bRead = Read(pValue, nMode))) run.m_options.m_nMode = nMode;
        if (!bRead) return false;
    }
    if (!run.m_options.m_nPatience) run.m_options.m_nPatience = GetDefaultPatience();
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    CWindowSystem windowSystem(argc, argv);
    Run run;
    if (!ReadArguments(argc, argv, run)) {
        std::fputs(USAGE, stderr);
        return 2;
    }
    // As long as the program runs, as in a host, so that addresses in it keep their names.
    const CDynamicLibrary library(L"RealTimeMode.dll");
    CSoakRecord record;
    record.SetScreen("screen");
    try {
        if (run.m_nCaptures)
            RunCaptures(run.m_options, run.m_nCaptures, record);
        else if (run.m_nClosings)
            RunClosings(run.m_options, run.m_nClosings, record);
        else if (run.m_nScreens)
            RunScreens(run.m_options, run.m_nScreens, record);
        else if (run.m_dHours > 0)
            RunContinuous(run.m_options, run.m_dHours, run.m_nStrokeSeconds, record);
        else
            RunRandomScreens(run.m_options, record);
    } catch (const std::exception& error) {
        record.Fault(error.what());
    }
    std::printf("seed %u\n", run.m_options.m_nSeed);
    record.Print();
    return record.HasFaults() ? 1 : 0;
}
