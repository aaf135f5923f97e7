// The main function of every test program: a window system for the whole run.
#include <gtest/gtest.h>

#include "platform/App.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    CWindowSystem windowSystem(argc, argv);
    return RUN_ALL_TESTS();
}
