// Saves that fail, are cancelled or are killed leave the old file whole and nothing beside it.
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <grp.h>
#include <sys/stat.h>
#include <thread>

#include "platform/system/ReplaceFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/system/Faults.h"
#include "tests/system/Support.h"

namespace {

void Save(const TemporaryFolder& folder, const std::string& strName, const std::string& strText) {
    CReplaceFile file(folder.Path(strName));
    file.Write(strText.data(), strText.size());
    file.Commit();
}

TEST(ReplaceFile, RefusesWhatCannotBeWritten) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.GetPath() / "d");
    for (const auto& [strName, nError] :
         {std::pair{std::string("d"), EISDIR}, std::pair{std::string("no/a"), ENOENT},
          std::pair{std::string(300, 'n'), ENAMETOOLONG}})
        EXPECT_EQ(FindError([&] { Save(folder, strName, "x"); }),
                  std::pair(int{nError}, folder.Path(strName)));
    EXPECT_EQ(folder.CountEntries(), 1u);
    // A device is written directly. Never committed: a fault here would replace the machine's own.
    EXPECT_EQ(FindError([] { CReplaceFile(L"/dev/full").Write("x", 1); }).first, ENOSPC);
}

TEST(ReplaceFile, TellsOfTheWayToTheDiskAndCanBeStoppedOnIt) {
    struct Progress final : IProgress {
        bool Advance(std::uint64_t, std::uint64_t) override {
            ++m_nTold;
            return m_bGoOn;
        }
        std::atomic<int> m_nTold{0};
        bool m_bGoOn = true;
    } progress;
    const TemporaryFolder folder;
    folder.Put("a", "old");
    std::atomic<int> nFlushed{0};
    const auto save = [&](int nTimesTold) {
        // The disk takes until somebody has been told so many times more.
        g_beforeFlush = [&, nWanted = progress.m_nTold + nTimesTold] {
            while (progress.m_nTold < nWanted) std::this_thread::yield();
            ++nFlushed;
        };
        CReplaceFile file(folder.Path("a"));
        file.Write("new", 3);
        file.Commit(&progress);
    };
    progress.m_bGoOn = false;
    EXPECT_THROW(save(1), CUserException);
    EXPECT_EQ(folder.Get("a"), "old");
    EXPECT_EQ(folder.CountEntries(), 1u);
    while (nFlushed == 0) std::this_thread::yield();
    progress.m_bGoOn = true;
    save(3);
    EXPECT_EQ(folder.Get("a"), "new");
    EXPECT_EQ(nFlushed, 3) << "file and folder";
    g_beforeFlush = nullptr;
}

TEST(ReplaceFile, KeepsPermissionsAndLinks) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    ASSERT_EQ(::chmod((folder.GetPath() / "a").c_str(), 0640), 0);
    std::filesystem::create_symlink("a", folder.GetPath() / "link");
    std::filesystem::create_symlink("b", folder.GetPath() / "dangling");

    Save(folder, "link", "new");
    Save(folder, "dangling", "made");
    struct stat status;
    ASSERT_EQ(::stat((folder.GetPath() / "a").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.GetPath() / "link"));
    EXPECT_EQ(folder.Get("a"), "new");
    EXPECT_EQ(folder.Get("b"), "made");
}

TEST(ReplaceFile, TheNextSaveClearsAwayWhatAKilledOneLeft) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    CWaitingProcess other([&](const auto& wait) {
        CReplaceFile file(folder.Path("a"));
        file.Write("half", 4);
        wait();
    });
    EXPECT_EQ(folder.CountEntries(), 2u);

    Save(folder, "b", "other file");
    EXPECT_EQ(folder.CountEntries(), 3u) << "the other save is still running";
    other.Kill();
    EXPECT_EQ(folder.Get("a"), "old");
    Save(folder, "b", "other file again");
    EXPECT_EQ(folder.CountEntries(), 2u);
    EXPECT_EQ(folder.Get("a"), "old");
}

TEST(ReplaceFile, ClearsAwayOnlyWhatASaveCouldHaveMade) {
    const TemporaryFolder folder;
    const std::string strStray = ".realtime-save-0123456789";
    for (const char* pName :
         {".realtime-save-mine.rt3", ".realtime-save-012345678", ".realtime-save-0123456789a",
          ".realtime-save-01234567-9", ".realtime-save-012345678A", "realtime-save-0123456789"})
        folder.Put(pName, "a person's");
    std::filesystem::create_directory(folder.GetPath() / ".realtime-save-aaaaaaaaaa");
    std::filesystem::create_symlink("realtime-save-0123456789",
                                    folder.GetPath() / ".realtime-save-bbbbbbbbbb");
    folder.PutPipe(".realtime-save-cccccccccc");
    folder.Put(strStray, "half");
    Save(folder, "a", "new");
    EXPECT_EQ(folder.CountEntries(), 10u);
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath() / strStray));
}

TEST(ReplaceFile, MakesEveryCallAgainThatASignalInterrupts) {
    std::string strCalls;
    for (int nCall = -1;; ++nCall) {
        const TemporaryFolder folder;
        folder.Put("a", "old");
        const Fault fault(nCall, EINTR);
        Save(folder, "a", "new");
        if (nCall < 0) strCalls = fault.m_strMade;
        EXPECT_EQ(fault.m_strMade, strCalls) << fault.m_strFailed;
        if (nCall >= 0 && fault.m_strFailed.empty()) break;
    }
    EXPECT_EQ(strCalls, " open open flock fchown fchmod close write fsync rename open fsync close"
                        " close");
}

TEST(ReplaceFile, ACallThatFailsLeavesOneFileWholeAndSaysWhich) {
    std::string strReported;  // with a plus where the new file is in place
    for (int nCall = 0;; ++nCall) {
        const TemporaryFolder folder;
        folder.Put("a", "the old one");
        auto pFault = std::make_unique<Fault>(nCall, EIO);
        bool bInPlace = true;
        try {
            Save(folder, "a", "new");
        } catch (const CFileException& error) {
            bInPlace =
                error.GetErrorMessage().find(L"The new file is in place") != std::string::npos;
            strReported += " " + pFault->m_strFailed + (bInPlace ? "+" : "");
            EXPECT_EQ(error.m_lOsError, EIO);
            EXPECT_EQ(error.m_strFileName, folder.Path("a"));
        }
        const std::string strFailed = pFault->m_strFailed;
        pFault.reset();
        EXPECT_EQ(folder.Get("a"), bInPlace ? "new" : "the old one") << strFailed;
        EXPECT_EQ(folder.CountEntries(), 1u) << strFailed;
        if (strFailed.empty()) break;
    }
    EXPECT_EQ(strReported, " open open write fsync rename open+ fsync+ close+");
}

constexpr uid_t NOBODY = 65534;
constexpr gid_t GROUP = 1234;
constexpr uid_t OTHER = 4321;

/// Saves as a user who is a member of the group beside his own.
void SaveAsMember(const TemporaryFolder& folder, const std::string& strName) {
    const pid_t nChild = ::fork();
    if (nChild == 0) {
        if (::setgroups(1, &GROUP) != 0 || ::setgid(NOBODY) != 0 || ::setuid(NOBODY) != 0)
            ::_exit(1);
        ::_exit(FindError([&] { Save(folder, strName, "new"); }).first);
    }
    int nStatus = -1;
    ::waitpid(nChild, &nStatus, 0);
    EXPECT_EQ(nStatus, 0);
}

TEST(ReplaceFile, KeepsOwnerAndGroupAsFarAsItMay) {
    if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can be several users";
    const TemporaryFolder folder;
    const std::string strPath = folder.GetPath() / "a";
    const std::string strStray = ".realtime-save-0123456789";
    ASSERT_EQ(::chmod(folder.GetPath().c_str(), 0777), 0);
    ASSERT_EQ(::chmod(folder.GetPath().parent_path().c_str(), 0711), 0);
    struct Owners {
        gid_t m_nGroup;
        mode_t m_nMode;
        bool operator==(const Owners&) const = default;
    };
    const auto getOwners = [&](uid_t nOwner) {
        struct stat status;
        EXPECT_EQ(::stat(strPath.c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, nOwner);
        return Owners{status.st_gid, status.st_mode & 07777};
    };
    // Of another's group the new group gets what others have too.
    for (const auto& [before, after] : {std::pair{Owners{GROUP, 06664}, Owners{GROUP, 02664}},
                                        std::pair{Owners{OTHER, 06662}, Owners{NOBODY, 0622}},
                                        std::pair{Owners{OTHER, 0626}, Owners{NOBODY, 0626}}}) {
        folder.Put("a", "old");
        ASSERT_EQ(::chown(strPath.c_str(), OTHER, before.m_nGroup), 0);
        ASSERT_EQ(::chmod(strPath.c_str(), before.m_nMode), 0);
        folder.Put(strStray, "a former save's");
        ASSERT_EQ(::chown((folder.GetPath() / strStray).c_str(), OTHER, OTHER), 0);
        Save(folder, "a", "the superuser's");
        EXPECT_EQ(getOwners(OTHER), before);
        EXPECT_EQ(folder.CountEntries(), 1u);
        folder.Put(strStray, "another user's");
        SaveAsMember(folder, "a");
        EXPECT_EQ(getOwners(NOBODY), after);
        EXPECT_EQ(folder.CountEntries(), 2u);
        std::filesystem::remove(strPath);
    }
    ASSERT_EQ(::chmod(folder.GetPath().c_str(), 0733), 0);  // cannot be read, and so not flushed
    SaveAsMember(folder, "a");
    EXPECT_EQ(folder.Get("a"), "new");
}

}  // namespace
