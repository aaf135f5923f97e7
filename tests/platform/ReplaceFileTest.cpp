// Saves that fail, are cancelled or are killed leave the old file whole and nothing beside it.
#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/Exceptions.h"
#include "platform/ReplaceFile.h"
#include "tests/support/TemporaryFolder.h"

namespace {

void Save(const TemporaryFolder& folder, const std::string& strName, const std::string& strText) {
    CReplaceFile file(folder.Path(strName));
    file.Write(strText.data(), strText.size());
    file.Commit();
}

int FindError(const std::function<void()>& action, const std::wstring& strName) {
    try {
        action();
    } catch (const CFileException& error) {
        EXPECT_EQ(error.m_strFileName, strName);
        return error.m_lOsError;
    }
    return 0;
}

/// A process that has written half of a new version and goes on for ever.
class HalfWaySave {
  public:
    explicit HalfWaySave(const TemporaryFolder& folder) {
        int anPipe[2];
        if (::pipe(anPipe) != 0) throw std::runtime_error("no pipe");
        m_nChild = ::fork();
        if (m_nChild == 0) {
            CReplaceFile file(folder.Path("a"));
            file.Write("half", 4);
            if (::write(anPipe[1], "x", 1) == 1)
                for (;;) ::pause();
            ::_exit(1);
        }
        char c;
        EXPECT_EQ(::read(anPipe[0], &c, 1), 1);
        ::close(anPipe[0]);
        ::close(anPipe[1]);
    }
    ~HalfWaySave() { Kill(); }
    void Kill() {
        if (m_nChild <= 0) return;
        ::kill(m_nChild, SIGKILL);
        ::waitpid(m_nChild, nullptr, 0);
        m_nChild = 0;
    }

  private:
    pid_t m_nChild;
};

TEST(ReplaceFile, TakesTheOldFilesPlaceOnlyAtCommit) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    {
        CReplaceFile file(folder.Path("a"));
        file.Write("new version", 11);
        EXPECT_EQ(folder.Get("a"), "old");
        file.Commit();
    }
    EXPECT_EQ(folder.Get("a"), "new version");
    EXPECT_EQ(folder.CountEntries(), 1u);
}

TEST(ReplaceFile, LeavesNothingWithoutCommit) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    for (const char* pName : {"a", "b"}) {
        CReplaceFile file(folder.Path(pName));
        file.Write("new", 3);
    }
    EXPECT_EQ(folder.Get("a"), "old");
    EXPECT_EQ(folder.CountEntries(), 1u);
}

TEST(ReplaceFile, ReportsAFullDiskUnderTheTargetsName) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    rlimit before;
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handlerBefore = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 1000;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const int nError =
        FindError([&] { Save(folder, "a", std::string(5000, 'x')); }, folder.Path("a"));
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handlerBefore);

    EXPECT_EQ(nError, EFBIG);
    EXPECT_EQ(folder.Get("a"), "old");
    EXPECT_EQ(folder.CountEntries(), 1u);
    EXPECT_EQ(FindError(
                  [&] {
                      CReplaceFile full(L"/dev/full");
                      full.Write("x", 1);
                  },
                  L"/dev/full"),
              ENOSPC);
}

TEST(ReplaceFile, RefusesWhatCannotBeWritten) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.GetPath() / "d");
    EXPECT_EQ(FindError([&] { Save(folder, "d", "x"); }, folder.Path("d")), EISDIR);
    EXPECT_EQ(FindError([&] { Save(folder, "no/a", "x"); }, folder.Path("no/a")), ENOENT);
    EXPECT_EQ(FindError([&] { Save(folder, std::string(300, 'n'), "x"); },
                        folder.Path(std::string(300, 'n'))),
              ENAMETOOLONG);
    EXPECT_EQ(folder.CountEntries(), 1u);
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

TEST(ReplaceFile, WritesDevicesDirectly) {
    CReplaceFile file(L"/dev/null");
    file.Write("x", 1);
    file.Commit();
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(ReplaceFile, TheNextSaveClearsAwayWhatAKilledOneLeft) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    HalfWaySave other(folder);
    EXPECT_EQ(folder.CountEntries(), 2u);

    Save(folder, "b", "other file");
    EXPECT_EQ(folder.CountEntries(), 3u) << "the other save is still running";
    other.Kill();
    EXPECT_EQ(folder.Get("a"), "old");
    Save(folder, "b", "other file again");
    EXPECT_EQ(folder.CountEntries(), 2u);
    EXPECT_EQ(folder.Get("a"), "old");
}

}  // namespace
