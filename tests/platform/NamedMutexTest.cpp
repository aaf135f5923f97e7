#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/NamedMutex.h"
#include "tests/support/TemporaryFolder.h"

namespace {

/// A process that holds a mutex until it is killed.
pid_t StartHolder(const wchar_t* pName) {
    int anPipe[2];
    if (::pipe(anPipe) != 0) return -1;
    const pid_t nChild = ::fork();
    if (nChild == 0) {
        const CNamedMutex mutex(pName);
        if (mutex && ::write(anPipe[1], "x", 1) == 1)
            for (;;) ::pause();
        ::_exit(1);
    }
    char c;
    EXPECT_EQ(::read(anPipe[0], &c, 1), 1);
    ::close(anPipe[0]);
    ::close(anPipe[1]);
    return nChild;
}

TEST(NamedMutex, ExistsWhileAnyHolderHasItOpen) {
    const std::wstring strName = L"test/holders";
    EXPECT_FALSE(CNamedMutex::Exists(strName));
    auto pFirst = std::make_unique<CNamedMutex>(strName);
    auto pSecond = std::make_unique<CNamedMutex>(strName);
    EXPECT_TRUE(*pFirst && *pSecond);
    EXPECT_TRUE(CNamedMutex::Exists(strName));
    EXPECT_FALSE(CNamedMutex::Exists(L"test/other"));
    pFirst.reset();
    EXPECT_TRUE(CNamedMutex::Exists(strName));
    pSecond.reset();
    EXPECT_FALSE(CNamedMutex::Exists(strName));
}

TEST(NamedMutex, IsSeenFromAnotherProcessAndGoesWithIt) {
    const pid_t nHolder = StartHolder(L"test-process");
    ASSERT_GT(nHolder, 0);
    EXPECT_TRUE(CNamedMutex::Exists(L"test-process"));
    ::kill(nHolder, SIGKILL);
    ::waitpid(nHolder, nullptr, 0);
    EXPECT_FALSE(CNamedMutex::Exists(L"test-process"));
}

TEST(NamedMutex, DoesNotTrustAFolderThatOthersCanEnter) {
    const char* pBefore = std::getenv("XDG_RUNTIME_DIR");
    const std::string strBefore = pBefore ? pBefore : "";
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.GetPath(), std::filesystem::perms::all);
    ::setenv("XDG_RUNTIME_DIR", folder.GetPath().c_str(), 1);
    { const CNamedMutex mutex(L"test-folder"); }
    EXPECT_EQ(folder.CountEntries(), 0u);
    std::filesystem::permissions(folder.GetPath(), std::filesystem::perms::owner_all);
    { const CNamedMutex mutex(L"test-folder"); }
    EXPECT_EQ(folder.CountEntries(), 1u);
    if (pBefore)
        ::setenv("XDG_RUNTIME_DIR", strBefore.c_str(), 1);
    else
        ::unsetenv("XDG_RUNTIME_DIR");
}

}  // namespace
