// The main function of the test programs that have a window system for the whole run.
#include <gtest/gtest.h>

#include "platform/windows/Application.h"
#include "tests/support/Surroundings.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const TestSurroundings surroundings;
    CWindowSystem windowSystem(argc, argv);
    return RUN_ALL_TESTS();
}
