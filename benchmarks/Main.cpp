// rtbench [GROUP...]: measures the groups of rows that are named, or all, and prints the table.
// A goal that is missed is said in the table; it is no error.
#include <cstdio>
#include <cstring>

#include "Rows.h"
#include "Table.h"
#include "platform/windows/Application.h"

namespace {

struct Group {
    const char* m_pName;
    const char* m_pTitle;
    void (*m_measure)(CTable&);
};

// The files come before what leaves long stretches of freed memory behind.
constexpr Group GROUPS[] = {
    {"start", "A process of rtpanel on a simulated press, without a display; by the clock",
     MeasureStart},
    {"files", "A capture of 3 channels of 60 s, 2,400,000 values each", MeasureFiles},
    {"csv", "A curve of 60 s exported, 1,200,000 rows", MeasureCsv},
    {"evaluation", "A stroke of 2,400,000 values evaluated, by curve and by process",
     MeasureEvaluation},
    {"memory", "A curve of 60 s, 2,400,000 values", MeasureMemory},
    {"decode", "A packet of samples, decoded into the curves", MeasureDecode},
    {"paint", "A repaint of 842 x 420 pixels of full curves, into memory", MeasurePaint},
    {"growth", "A repaint of 842 x 420 pixels while more arrives, into memory", MeasureGrowth},
    {"live", "A live capture of 3 channels of 40,000 values a second, on the real screen",
     MeasureLive},
    {"window", "A plot alone in a window, whose curve grows 50 times a second", MeasureWindow},
    {"link", "The link over TCP on this machine, 3 channels of 65,535 values a second",
     MeasureLink},
    {"verdict", "Strokes of 3 s of 40,000 values a second, judged on the real panel; by the clock",
     MeasureVerdict},
    {"packets", "Packets of 10 ms of 3 channels, on the real screen", MeasurePackets},
};

const Group* FindGroup(const char* pName) {
    for (const Group& group : GROUPS)
        if (std::strcmp(group.m_pName, pName) == 0) return &group;
    return nullptr;
}

bool IsWanted(const Group& group, int nNames, char** ppNames) {
    for (int i = 0; i < nNames; ++i)
        if (std::strcmp(ppNames[i], group.m_pName) == 0) return true;
    return nNames == 0;
}

}  // namespace

int main(int argc, char** argv) {
    const CWindowSystem windowSystem(argc, argv);
    for (int i = 1; i < argc; ++i) {
        if (FindGroup(argv[i])) continue;
        std::fprintf(stderr, "%s is no group; the groups are:", argv[i]);
        for (const Group& group : GROUPS) std::fprintf(stderr, " %s", group.m_pName);
        std::fprintf(stderr, "\n");
        return 2;
    }
    std::printf(
        "Processor time, unless a row says otherwise. What is compared was measured in turn. "
        "Ratio and verdict are those of the least\nfor pure computing, of the median for "
        "what waits or takes pages of the system.\n\n");
    CTable table;
    for (const Group& group : GROUPS) {
        if (!IsWanted(group, argc - 1, argv + 1)) continue;
        table.AddGroup(group.m_pTitle);
        group.m_measure(table);
    }
    std::printf("\n%d of %d goals met\n", table.CountGoals() - table.CountMissed(),
                table.CountGoals());
    return 0;
}
