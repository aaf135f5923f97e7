// The main function of the test programs that have a window system for the whole run, at the
// display scale $RT_TEST_SCALE, or 1.
#include <gtest/gtest.h>

#include "platform/windows/Application.h"
#include "platform/windows/WindowScale.h"
#include "tests/support/Surroundings.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const TestSurroundings surroundings;
    CWindowSystem windowSystem(argc, argv);
    if (const char* pScale = std::getenv("RT_TEST_SCALE")) ScaleWindows(std::atof(pScale));
    return RUN_ALL_TESTS();
}
