// The main function of the test programs that have a window system for the whole run, and a
// run-time folder of their own, as in PlainMain.cpp.
#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/windows/Application.h"
#include "tests/support/TemporaryFolder.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const TemporaryFolder runtime;
    ::setenv("XDG_RUNTIME_DIR", runtime.GetPath().c_str(), 1);
    CWindowSystem windowSystem(argc, argv);
    return RUN_ALL_TESTS();
}
