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
    const std::wstring strText =
        CFileException(CFileException::cannotWrite, L"a.rt3", ENOSPC).GetErrorMessage();
    EXPECT_EQ(strText.find(L"a.rt3"), 0u);
    EXPECT_NE(strText.find(L"No space left"), std::wstring::npos);
}

TEST(File, AppendsToWhatOthersHaveWritten) {
    const TemporaryFolder folder;
    CFile file(folder.Path("log"), CFile::modeWrite | CFile::modeAppend);
    file.Write("one", 3);
    folder.Put("log", "another");
    file.Write("two", 3);
    EXPECT_EQ(folder.Get("log"), "anothertwo");
}

TEST(File, SaysWhatCouldNotBeDone) {
    const auto findSummary = [](const auto& action) -> std::wstring {
        try {
            action();
        } catch (const CFileException& error) {
            return error.GetSummary();
        }
        return {};
    };
    EXPECT_EQ(findSummary([] { CFile(L"/none/a", CFile::modeRead); }),
              L"The file cannot be opened.");
    EXPECT_EQ(findSummary([] { CFile(L"/none/a", CFile::modeWrite | CFile::modeCreate); }),
              L"The file cannot be saved.");
    EXPECT_EQ(findSummary([] { CReplaceFile(L"/none/a"); }), L"The file cannot be saved.");
    EXPECT_EQ(findSummary([] { CFile(L"/dev/full", CFile::modeWrite).Write("x", 1); }),
              L"The file cannot be saved.");
    EXPECT_EQ(findSummary([] {
                  char text[4];
                  CFile(L"/proc/self/mem", CFile::modeRead).Read(text, sizeof text);
              }),
              L"The file cannot be read.");
    EXPECT_EQ(findSummary([] { ReadFolder(L"/none", L""); }), L"The folder cannot be opened.");
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

}  // namespace
