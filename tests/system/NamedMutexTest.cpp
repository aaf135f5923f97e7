#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "platform/system/NamedMutex.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/system/Support.h"

namespace {

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
    CWaitingProcess holder([](const auto& wait) {
        const CNamedMutex mutex(L"test-process");
        if (mutex) wait();
    });
    EXPECT_TRUE(CNamedMutex::Exists(L"test-process"));
    holder.Kill();
    EXPECT_FALSE(CNamedMutex::Exists(L"test-process"));
}

TEST(NamedMutex, DoesNotTrustAFolderThatOthersCanEnter) {
    const char* pBefore = std::getenv("XDG_RUNTIME_DIR");
    const std::string strBefore = pBefore ? pBefore : "";
    const TemporaryFolder folder;
    ::setenv("XDG_RUNTIME_DIR", folder.GetPath().c_str(), 1);
    using std::filesystem::perms;
    for (const auto& [mode, nFiles] :
         {std::pair{perms::all, 0u}, std::pair{perms::owner_all, 1u}}) {
        std::filesystem::permissions(folder.GetPath(), mode);
        const CNamedMutex mutex(L"test-folder");
        EXPECT_EQ(folder.CountEntries(), nFiles);
    }
    ::setenv("XDG_RUNTIME_DIR", strBefore.c_str(), 1);  // an empty one counts as none
}

}  // namespace
