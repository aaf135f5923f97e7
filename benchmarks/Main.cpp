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

// The screen comes first: its start is that of a new process. The files come before what leaves
// long stretches of freed memory behind.
constexpr Group GROUPS[] = {
    {"screen", "The real screen, by the clock on the wall", MeasureScreen},
    {"files", "A capture of 3 channels of 60 s, 2,400,000 values each; export of one",
     MeasureFiles},
    {"paint", "One repaint of a plot of 698 x 343 pixels", MeasurePaint},
    {"decode", "A packet of samples, decoded into the curves", MeasureDecode},
    {"curves", "A curve of 60 s, 2,400,000 values", MeasureCurves},
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
    std::printf("Medians of rounds in which the compared things were measured in turn; processor "
                "time, unless a row says otherwise.\n\n");
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
