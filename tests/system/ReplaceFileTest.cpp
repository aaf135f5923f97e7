// Saves that fail, are cancelled or are killed leave the old file whole and nothing beside it.
#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

#include "platform/system/ReplaceFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/system/Support.h"

namespace {

void Save(const TemporaryFolder& folder, const std::string& strName, const std::string& strText) {
    CReplaceFile file(folder.Path(strName));
    file.Write(strText.data(), strText.size());
    file.Commit();
}

TEST(ReplaceFile, TakesTheOldFilesPlaceOnlyAtCommit) {
    const TemporaryFolder folder;
    folder.Put("a", "old");
    for (const char* pName : {"a", "b"}) {
        CReplaceFile file(folder.Path(pName));
        file.Write("new", 3);
    }
    EXPECT_EQ(folder.Get("a"), "old");
    EXPECT_EQ(folder.CountEntries(), 1u);
    Save(folder, "a", "new version");
    EXPECT_EQ(folder.Get("a"), "new version");
    EXPECT_EQ(folder.CountEntries(), 1u);
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
    // Devices are written directly.
    EXPECT_EQ(FindError([] { CReplaceFile(L"/dev/full").Write("x", 1); }).first, ENOSPC);
    CReplaceFile(L"/dev/null").Commit();
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
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

}  // namespace
