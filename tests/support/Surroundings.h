// What a test program finds around it.
#pragma once

#include <cstdlib>

#include "tests/support/TemporaryFolder.h"

/// A run-time folder, a settings folder and a temporary folder of the program's own while this
/// lives: programs that run at the same time do not see each other's named mutexes, and nothing is
/// left with the user. Windows are not shown, unless a platform is chosen. To be made first in
/// main.
struct TestSurroundings : private TemporaryFolder {
    TestSurroundings() {
        for (const char* pName : {"XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "TMPDIR"})
            ::setenv(pName, GetPath().c_str(), 1);
        ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    }
};
