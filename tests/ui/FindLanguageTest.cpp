#include <gtest/gtest.h>

#include <map>
#include <set>

#include "ui/Language.h"

namespace {

/// A disk of folders and files in memory.
struct Disk {
    std::wstring strExecutable{};
    wchar_t chSeparator = L'\\';
    std::optional<std::wstring> documents{};
    std::set<std::wstring> folders{};
    std::map<std::wstring, std::u16string> files{};
    bool bWritable = true;
    std::vector<std::wstring> created{};

    LanguageInfo Find() {
        return FindLanguage({
            .strExecutable = strExecutable,
            .chSeparator = chSeparator,
            .findDocumentsFolder = [this] { return documents; },
            .folderExists = [this](const std::wstring& str) { return folders.contains(str); },
            .createFolder =
                [this](const std::wstring& str) {
                    created.push_back(str);
                    return bWritable;
                },
            .fileExists = [this](const std::wstring& str) { return files.contains(str); },
            .readFile =
                [this](const std::wstring& str) -> std::optional<std::vector<std::uint8_t>> {
                if (!files.contains(str)) return std::nullopt;
                const std::u16string& text = files[str];
                const auto* pBytes = reinterpret_cast<const std::uint8_t*>(text.data());
                return std::vector(pBytes, pBytes + 2 * text.size());
            },
        });
    }
};

/// A disk with a language in a lang folder, as far as a default.txt names it.
Disk MakeDisk(const std::wstring& strFolder, const std::u16string& strDefault) {
    return {.strExecutable = strFolder + L"panel.exe",
            .folders = {strFolder + L"lang\\"},
            .files = {{strFolder + L"lang\\default.txt", strDefault},
                      {strFolder + L"lang\\German.txt", u""}}};
}

using Folders = std::vector<std::wstring>;

}  // namespace

TEST(FindLanguage, UsesTheLangFolderBesideTheProgram) {
    // Only exact spellings are special, and those of an installed program not at the beginning.
    const std::wstring strLong = L"C:\\" + std::wstring(250, L'a') + L"\\";
    for (const std::wstring& strFolder :
         {std::wstring(L"C:\\Strovane\\"), std::wstring(L"c:\\strovane\\"),
          std::wstring(L"C:\\program files\\"), std::wstring(L"Program Files\\")}) {
        Disk disk = MakeDisk(strFolder, u"German");
        const LanguageInfo info = disk.Find();
        EXPECT_EQ(info.m_strLanguage, L"German");
        EXPECT_EQ(info.m_strLangFolder, strFolder + L"lang\\");
        EXPECT_EQ(info.m_strDefaultFolder, strFolder + L"lang\\");
        EXPECT_EQ(disk.created, Folders());
    }
    // No more than 260 characters are looked at.
    EXPECT_EQ(Disk{.strExecutable = strLong + L"bcdefghi\\panel.exe"}.Find().m_strLangFolder,
              strLong + L"lang\\");
}

TEST(FindLanguage, CreatesAMissingFolder) {
    Disk disk = MakeDisk(L"D:\\panel\\", u"German");
    disk.folders.clear();
    EXPECT_EQ(disk.Find().m_strLanguage, L"German");
    EXPECT_EQ(disk.created, Folders{L"D:\\panel\\lang\\"});
    disk.bWritable = false;
    EXPECT_EQ(disk.Find().m_strLanguage, L"English");
}

TEST(FindLanguage, OfAnInstalledProgramTakesTheChoiceFromTheDocuments) {
    Disk disk{.strExecutable = L"C:\\Program Files (x86)\\Viewer\\viewer.exe",
              .documents = L"D:\\Docs",
              .folders = {L"C:\\Program Files (x86)\\Viewer\\"},
              .files = {{L"D:\\Docs\\Strovane Log Viewer\\default.txt", u"French\nGerman"},
                        {L"C:\\Program Files (x86)\\Viewer\\default.txt", u"French"},
                        {L"C:\\Program Files (x86)\\Viewer\\French.txt", u""}}};
    const LanguageInfo info = disk.Find();
    EXPECT_EQ(info.m_strLanguage, L"French");
    EXPECT_EQ(info.m_strLangFolder, L"C:\\Program Files (x86)\\Viewer\\");
    EXPECT_EQ(info.m_strDefaultFolder, L"D:\\Docs\\Strovane Log Viewer\\");
    EXPECT_EQ(disk.created, Folders{L"D:\\Docs\\Strovane Log Viewer\\"});
    disk.bWritable = false;
    EXPECT_EQ(disk.Find().m_strLanguage, L"English");
    disk.documents.reset();
    EXPECT_EQ(disk.Find().m_strDefaultFolder, L"C:\\Program Files (x86)\\Viewer\\");
    EXPECT_EQ(disk.Find().m_strLanguage, L"French");

    const LanguageInfo other = Disk{.strExecutable = L"/mnt/Program Files/viewer",
                                    .chSeparator = L'/',
                                    .documents = L"/home/op/Documents",
                                    .folders = {L"/mnt/Program Files/"}}
                                   .Find();
    EXPECT_EQ(other.m_strLangFolder, L"/mnt/Program Files/");
    EXPECT_EQ(other.m_strDefaultFolder, L"/home/op/Documents/Strovane Log Viewer/");
}

TEST(FindLanguage, FallsBackToEnglish) {
    for (const auto& [pDefault, pLanguage] :
         {std::pair{u"German\n", L"German"}, std::pair{u"German\r\n", L"English"},
          std::pair{u"Klingon", L"English"}, std::pair{u"", L"English"}})
        EXPECT_EQ(MakeDisk(L"D:\\panel\\", pDefault).Find().m_strLanguage, pLanguage);
}
