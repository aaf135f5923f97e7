#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include "platform/system/Interrupt.h"
#include "platform/system/ReplaceFile.h"
#include "tests/support/TemporaryFolder.h"

namespace {

TEST(Interrupt, RemovesTheUnfinishedFileAndEndsTheProcessAsItWouldHave) {
    const TemporaryFolder folder;
    folder.Put("old", "whole");
    std::filesystem::create_symlink("target", folder.GetPath() / "link");
    CFile file;
    CUnfinishedFile unfinished;
    for (const int nSignal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto interrupt = [&](const std::function<void()>& work) {
            std::signal(nSignal, SIG_DFL);
            CleanUpOnInterrupt();
            work();
        };
        const auto raiseWithHalfFile = [&] {
            if (folder.CountEntries() == 3) std::raise(nSignal);
        };
        const auto create = [&] {
            unfinished.Create(file, folder.Path("link"));
            raiseWithHalfFile();
        };
        const auto replace = [&] {
            CReplaceFile newFile(folder.Path("old"));
            raiseWithHalfFile();
        };
        const auto pause = [&] {
            const CInterruptPause interruptPause;
            std::raise(nSignal);
            unfinished.Create(file, folder.Path("new"));
        };
        EXPECT_EXIT(interrupt(create), testing::KilledBySignal(nSignal), "");
        EXPECT_EXIT(interrupt(replace), testing::KilledBySignal(nSignal), "");
        EXPECT_EXIT(interrupt(pause), testing::KilledBySignal(nSignal), "");
        EXPECT_EQ(folder.CountEntries(), 2u);
        EXPECT_EQ(folder.Get("old"), "whole");
    }
}

TEST(Interrupt, LeavesFinishedFilesAndIgnoredSignalsAlone) {
    const TemporaryFolder folder;
    const auto finish = [&] {
        std::signal(SIGTERM, SIG_DFL);
        std::signal(SIGHUP, SIG_IGN);
        CleanUpOnInterrupt();
        {
            CFile file;
            CUnfinishedFile unfinished;
            unfinished.Create(file, folder.Path("a"));
            std::raise(SIGHUP);
        }
        std::raise(SIGTERM);
    };
    EXPECT_EXIT(finish(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(folder.CountEntries(), 1u);
}

}  // namespace
