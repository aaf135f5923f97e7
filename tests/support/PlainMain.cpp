// The main function of the test programs that need no window system.
#include <gtest/gtest.h>

#include "tests/support/Surroundings.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const TestSurroundings surroundings;
    return RUN_ALL_TESTS();
}
