#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system/Interrupt.h"
#include "platform/system/ReplaceFile.h"
#include "tests/support/TemporaryFolder.h"

namespace {

TEST(Interrupt, RemovesTheUnfinishedFileAndEndsTheProcessAsItWouldHave) {
    const TemporaryFolder folder;
    folder.Put("old", "whole");
    std::filesystem::create_symlink("target", folder.GetPath() / "link");
    ASSERT_EQ(::mkfifo((folder.GetPath() / "pipe").c_str(), 0600), 0);
    const int hPipe = ::open((folder.GetPath() / "pipe").c_str(), O_RDWR);
    CFile file;
    CUnfinishedFile unfinished;
    for (const int nSignal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto interrupt = [&](const std::function<void()>& work) {
            std::signal(nSignal, SIG_DFL);
            CleanUpOnInterrupt();
            work();
        };
        const auto raiseWithHalfFile = [&] {
            if (folder.CountEntries() == 4) std::raise(nSignal);
        };
        const auto create = [&] {
            unfinished.Create(file, folder.Path("link"));
            raiseWithHalfFile();
        };
        const auto createPipe = [&] {
            unfinished.Create(file, folder.Path("pipe"));
            std::raise(nSignal);
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
        EXPECT_EXIT(interrupt(createPipe), testing::KilledBySignal(nSignal), "");
        EXPECT_EXIT(interrupt(replace), testing::KilledBySignal(nSignal), "");
        EXPECT_EXIT(interrupt(pause), testing::KilledBySignal(nSignal), "");
        EXPECT_EQ(folder.CountEntries(), 3u);
        EXPECT_TRUE(std::filesystem::is_symlink(folder.GetPath() / "link"));
        EXPECT_EQ(folder.Get("old"), "whole");
    }
    ::close(hPipe);
}

TEST(Interrupt, LeavesFinishedFilesAndIgnoredSignalsAlone) {
    const TemporaryFolder folder;
    folder.Put("a", "whole");
    const auto finish = [&] {
        std::signal(SIGTERM, SIG_DFL);
        std::signal(SIGHUP, SIG_IGN);
        CleanUpOnInterrupt();
        std::filesystem::current_path(folder.GetPath());
        std::optional<CUnfinishedFile> unfinished(std::in_place);
        unfinished->Set("a");
        std::raise(SIGHUP);
        unfinished.reset();
        std::raise(SIGTERM);
    };
    EXPECT_EXIT(finish(), testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(folder.CountEntries(), 1u);
}

}  // namespace
