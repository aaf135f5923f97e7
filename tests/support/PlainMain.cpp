// The main function of the test programs that need no window system: a run-time folder of its own,
// so that programs that run at the same time do not see each other's named mutexes.
#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/TemporaryFolder.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const TemporaryFolder runtime;
    ::setenv("XDG_RUNTIME_DIR", runtime.GetPath().c_str(), 1);
    return RUN_ALL_TESTS();
}
