// Files, text files and paths.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <thread>

#include "platform/system/File.h"
#include "platform/system/MemFile.h"
#include "platform/system/Paths.h"
#include "platform/system/ReplaceFile.h"
#include "platform/system/Settings.h"
#include "platform/system/TextFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/system/Faults.h"
#include "tests/system/Support.h"

namespace {

/// The text of the error that an action ends with.
std::wstring ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const CFileException& error) {
        return error.GetErrorMessage();
    }
    return {};
}

TEST(File, WritesAndReads) {
    const TemporaryFolder folder;
    CFile file(folder.Path("a"), CFile::modeWrite | CFile::modeCreate);
    file.Write("0123456789", 10);
    file.Write("ab", 2);
    EXPECT_EQ(file.GetPosition(), 12u);
    file.Open(folder.Path("a"), CFile::modeRead);
    EXPECT_EQ(file.GetLength(), 12u);
    char text[10] = {};
    EXPECT_EQ(file.Read(text, 9), 9u);
    EXPECT_STREQ(text, "012345678");
    EXPECT_EQ(file.Read(text, 9), 3u);
    EXPECT_EQ(std::string(text, 3), "9ab");
    EXPECT_EQ(file.GetPosition(), 12u);
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(folder.Get("a"), "0123456789ab");
}

TEST(File, TellsPathAndReason) {
    const TemporaryFolder folder;
    const std::wstring strMissing = folder.Path("missing");
    EXPECT_EQ(FindError([&] { CFile(strMissing, CFile::modeRead); }),
              std::pair(ENOENT, strMissing));
    EXPECT_EQ(FindError([&] { CFile(folder.Path(""), CFile::modeRead); }).first, EISDIR);
    EXPECT_EQ(FindError([&] { CFile(std::wstring(L"a\0b", 3), CFile::modeRead); }).first, EINVAL);

    CFile full(L"/dev/full", CFile::modeWrite);
    EXPECT_EQ(FindError([&] { full.Write("x", 1); }),
              std::pair(ENOSPC, std::wstring(L"/dev/full")));
    CTextFile text(L"/dev/full", CFile::modeWrite);
    text.WriteString("row");
    EXPECT_EQ(FindError([&] { text.Close(); }).first, ENOSPC);
    const std::wstring strText = CFileException(L"a.rt3", ENOSPC).GetErrorMessage();
    EXPECT_EQ(strText.find(L"a.rt3"), 0u);
    EXPECT_NE(strText.find(L"No space left"), std::wstring::npos);
}

TEST(File, OpensANameThatDiffersOnlyInCase) {
    const TemporaryFolder folder;
    folder.Put("run1.rt3", "small");
    folder.Put("RUN1.RT3", "large");
    folder.Put("M\u00FCLLER.rt3", "umlaut");
    const auto read = [&](const std::string& strName) {
        CFile file(folder.Path(strName), CFile::modeRead);
        char text[16] = {};
        file.Read(text, 15);
        return std::string(text);
    };
    EXPECT_EQ(read("run1.rt3"), "small");
    EXPECT_EQ(read("RUN1.RT3"), "large");
    EXPECT_EQ(read("run1.RT3"), "small") << "the name that agrees longest";
    EXPECT_EQ(read("RUN1.rt3"), "large");
    EXPECT_EQ(read("m\u00FCller.RT3"), "umlaut");
    EXPECT_EQ(FindError([&] { read("run2.rt3"); }).first, ENOENT);
    EXPECT_EQ(FindError([&] { CFile(folder.Path("Run1.rt3"), CFile::modeWrite); }).first, ENOENT)
        << "only reading looks for other names";
}

TEST(File, WaitsForNobodyAtTheOtherEndOfAPipe) {
    const TemporaryFolder folder;
    folder.PutPipe("pipe.RT3");
    std::filesystem::create_symlink("pipe.RT3", folder.GetPath() / "link");
    const std::wstring strPipe = folder.Path("pipe.RT3");
    for (const std::wstring& strPath : {strPipe, folder.Path("link"), std::wstring(L"/dev/null")})
        EXPECT_EQ(ErrorOf([&] { CFile(strPath, CFile::modeRead); }),
                  strPath + L"\nThis is not a regular file.");
    EXPECT_EQ(FindError([&] { CFile(folder.Path("PIPE.rt3"), CFile::modeRead); }).first, ENOENT);
    EXPECT_EQ(FindError([&] { CFile(strPipe, CFile::modeWrite | CFile::modeCreate); }).first,
              ENXIO);
    EXPECT_NE(ErrorOf([&] { CReplaceFile{strPipe}; }).find(L"Nothing reads from it. No such"),
              std::wstring::npos);

    const CSettings settings(L"", strPipe);
    EXPECT_EQ(settings.GetInt(L"a", L"b", 7), 7);
    EXPECT_FALSE(CSettings(L"", strPipe).SetInt(L"a", L"b", 1));
    EXPECT_FALSE(FileExists(strPipe));

    // With a reader it is written directly, at the reader's pace.
    std::string strRead;
    std::thread reader([&] { strRead = folder.Get("pipe.RT3"); });
    std::string strText;
    while (strText.size() < 8000000) strText += std::to_string(strText.size());
    int nError;
    do {
        nError = FindError([&] {
                     CReplaceFile file(strPipe);
                     file.Write(strText.data(), strText.size());
                     file.Commit();
                 }).first;
    } while (nError == ENXIO);
    EXPECT_EQ(nError, 0);
    reader.join();
    EXPECT_TRUE(strRead == strText);
    EXPECT_TRUE(std::filesystem::is_fifo(folder.GetPath() / "pipe.RT3"));
}

TEST(MemFile, BehavesLikeAFile) {
    CMemFile file(L"memory", {1, 2, 3});
    std::uint8_t bytes[4] = {};
    EXPECT_EQ(file.Read(bytes, 4), 3u);
    EXPECT_EQ(file.Read(bytes, 1), 0u);
    file.Write("\x09\x08", 2);
    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(file.GetContents(), (std::vector<std::uint8_t>{1, 2, 3, 9, 8}));
    CMemFile over(L"memory", {1, 2, 3});
    over.Write("\x09\x08", 2);
    EXPECT_EQ(over.GetContents(), (std::vector<std::uint8_t>{9, 8, 3}))
        << "begins at its beginning";
}

TEST(TextFile, KeepsTheOrderOfTextsOfAnySize) {
    const TemporaryFolder folder;
    CTextFile file(folder.Path("t"), CFile::modeWrite | CFile::modeCreate);
    file.WriteString("a\n\nb");
    EXPECT_EQ(folder.Get("t"), "") << "small texts wait in the buffer";
    std::string strExpected = "a\r\n\r\nb";
    for (const std::size_t nLength : {1u, 70000u, 3u, 65536u, 65535u, 2u, 40000u, 40000u}) {
        const std::string strText(nLength, static_cast<char>('a' + nLength % 26));
        file.WriteString(strText);
        strExpected += strText;
    }
    file.Close();
    EXPECT_EQ(folder.Get("t"), strExpected);
}

TEST(Paths, FindsFilesByExtensionWithoutRegardToCase) {
    const TemporaryFolder folder;
    for (const char* pName : {"a.rt3", "B.RT3", "c.Rt3", "d.rt3x", "e.txt", "rt3"})
        folder.Put(pName, "");
    std::filesystem::create_directory(folder.GetPath() / "folder.rt3");
    folder.PutPipe("pipe.rt3");
    for (const char* pTo : {"a", "pipe", "folder", "nowhere"})
        std::filesystem::create_symlink(pTo + std::string(".rt3"),
                                        folder.GetPath() / (std::string("to ") + pTo + ".rt3"));

    const std::wstring strFolder = folder.Path("");
    auto arrNames = FindFiles(strFolder, L".rT3");
    std::sort(arrNames.begin(), arrNames.end());
    EXPECT_EQ(arrNames, (std::vector<std::wstring>{L"B.RT3", L"a.rt3", L"c.Rt3", L"to a.rt3"}));
    EXPECT_EQ(FindFiles(strFolder, L".rt3x"), std::vector<std::wstring>{L"d.rt3x"});
    EXPECT_TRUE(FindFiles(folder.Path("missing"), L"").empty());
}

TEST(Paths, TakesPathsApartAndMakesFolders) {
    EXPECT_EQ(GetFolderOfPath(L"/a/b.rt3"), L"/a");
    EXPECT_EQ(GetFolderOfPath(L"/b.rt3"), L"/");
    EXPECT_EQ(GetFolderOfPath(L"b.rt3"), L".");
    EXPECT_EQ(JoinPath(L"/", L"b"), L"/b");

    const TemporaryFolder folder;
    for (const char* pCalls : {" open fsync close", ""}) {  // a new name comes to the disk
        const Fault none(-1, 0);
        EXPECT_TRUE(CreateFolder(folder.Path("new")));
        EXPECT_EQ(none.m_strMade, pCalls);
    }
    EXPECT_TRUE(FolderExists(folder.Path("new")));
    EXPECT_FALSE(FileExists(folder.Path("new")));
    EXPECT_FALSE(CreateFolder(folder.Path("no/way")));
    EXPECT_TRUE(FileExists(GetExecutablePath()));
    EXPECT_EQ(JoinPath(GetExecutableFolder(), GetNameOfPath(GetExecutablePath())),
              GetExecutablePath());
}

}  // namespace
