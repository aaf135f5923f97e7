#include <gtest/gtest.h>

#include "curves/FileStore.h"
#include "platform/system/Exceptions.h"
#include "platform/system/Paths.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using Names = std::vector<std::wstring>;

class FileStore : public ::testing::Test {
  protected:
    FileStore() {
        SetProgramFolder(m_folder.Path(""));
        CreateStoreFolder();
    }
    ~FileStore() override { SetProgramFolder(L""); }
    std::wstring Path(const std::string& strName) const {
        return m_folder.Path("RealTimeFiles/" + strName);
    }

    const TemporaryFolder m_folder;
};

TEST_F(FileStore, SavesOverTheNameThatDiffersOnlyInCase) {
    EXPECT_EQ(GetSavePath(L"run1"), Path("run1.rt3"));
    m_folder.Put("RealTimeFiles/run1.RT3", "");
    EXPECT_EQ(GetSavePath(L"run1"), Path("run1.RT3"));
    EXPECT_EQ(GetSavePath(L"RUN1"), Path("run1.RT3"));
    m_folder.Put("RealTimeFiles/RUN1.rt3", "");
    EXPECT_EQ(GetSavePath(L"RUN1"), Path("RUN1.rt3"));
    EXPECT_EQ(GetSavePath(L"run1.rt3"), Path("run1.rt3.rt3"));
    EXPECT_EQ(FindStoredFiles(), (Names{L"RUN1.rt3", L"run1.RT3"}));
}

TEST_F(FileStore, RefusesToSaveOverAPipe) {
    m_folder.PutPipe("RealTimeFiles/a.rt3");
    EXPECT_THROW(GetSavePath(L"a"), CFileException);
    EXPECT_EQ(GetSavePath(L"A"), Path("A.rt3"));
    EXPECT_EQ(FindStoredFiles(), Names{});
    // Where no other folder is named, the store stands beside the programs.
    SetProgramFolder(L"");
    EXPECT_TRUE(FileExists(JoinPath(GetFolderOfPath(GetStoreFolder()), L"test_curves")));
}

TEST_F(FileStore, RefusesNamesThatLeaveTheFolder) {
    for (const wchar_t* pName : {L"run1", L"Teil 3.1", L"..a", L"M\u00FCller", L"a:b*?", L" "})
        EXPECT_TRUE(IsPlainFileName(pName)) << pName;
    for (const wchar_t* pName : {L"", L".", L"..", L"....", L"../a", L"a/b", L"..\\a", L"a\\b",
                                 L"a\nb", L"\x7F", L"\x85", L"a\tb"})
        EXPECT_FALSE(IsPlainFileName(pName)) << pName;
    EXPECT_FALSE(IsPlainFileName(std::wstring_view(L"a\0b", 3)));
}

TEST_F(FileStore, ShowsNamesWithoutTheirLastExtensionWhereThatTellsThemApart) {
    for (const auto& [arrFiles, arrRows] :
         {std::pair{Names{L"run1.rt3", L"a.b.RT3", L"plain"}, Names{L"run1", L"a.b", L"plain"}},
          std::pair{Names{L"a.RT3", L"a.rt3", L"A.rt3"}, Names{L"a.RT3", L"a.rt3", L"A"}},
          std::pair{Names{L"a.RT3", L"a.rt3", L"a.rt3.rt3", L"a.rt3.rt3.rt3"},
                    Names{L"a.RT3", L"a.rt3", L"a.rt3.rt3", L"a.rt3.rt3.rt3"}}})
        EXPECT_EQ(NameRows(arrFiles), arrRows);
}

}  // namespace
