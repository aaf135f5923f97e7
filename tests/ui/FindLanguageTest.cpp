#include <gtest/gtest.h>

#include <map>
#include <set>

#include "ui/Language.h"

namespace {

/// A disk of folders and files in memory.
struct Disk {
    std::wstring m_strExecutable{};
    wchar_t m_chSeparator = L'\\';
    std::optional<std::wstring> m_documents{};
    std::set<std::wstring> m_folders{};
    std::map<std::wstring, std::u16string> m_files{};
    bool m_bWritable = true;
    std::vector<std::wstring> m_created{};

    LanguageInfo Find() {
        return FindLanguage({
            .m_strExecutable = m_strExecutable,
            .m_chSeparator = m_chSeparator,
            .m_findDocumentsFolder = [this] { return m_documents; },
            .m_folderExists = [this](const std::wstring& str) { return m_folders.contains(str); },
            .m_createFolder =
                [this](const std::wstring& str) {
                    m_created.push_back(str);
                    return m_bWritable;
                },
            .m_fileExists = [this](const std::wstring& str) { return m_files.contains(str); },
            .m_readFile =
                [this](const std::wstring& str) -> std::optional<std::vector<std::uint8_t>> {
                if (!m_files.contains(str)) return std::nullopt;
                const std::u16string& text = m_files[str];
                const auto* pBytes = reinterpret_cast<const std::uint8_t*>(text.data());
                return std::vector(pBytes, pBytes + 2 * text.size());
            },
        });
    }
};

/// A disk with a language in a lang folder, as far as a default.txt names it.
Disk MakeDisk(const std::wstring& strFolder, const std::u16string& strDefault) {
    return {.m_strExecutable = strFolder + L"panel.exe",
            .m_folders = {strFolder + L"lang\\"},
            .m_files = {{strFolder + L"lang\\default.txt", strDefault},
                        {strFolder + L"lang\\German.txt", u""}}};
}

using Folders = std::vector<std::wstring>;

}  // namespace

TEST(FindLanguage, UsesTheLangFolderBesideTheProgramAndFallsBackToEnglish) {
    // Only exact spellings are special, and those of an installed program not at the beginning.
    const std::pair<const char16_t*, const wchar_t*> defaults[] = {
        {u"German\n", L"German"}, {u"German\r\n", L"English"}, {u"", L"English"}};
    for (const std::wstring strFolder :
         {L"C:\\Strovane\\", L"c:\\strovane\\", L"C:\\program files\\", L"Program Files\\"})
        for (const auto& [pDefault, pLanguage] : defaults) {
            Disk disk = MakeDisk(strFolder, pDefault);
            const LanguageInfo info = disk.Find();
            EXPECT_EQ(info.m_strLanguage, pLanguage);
            EXPECT_EQ(info.m_strLangFolder, strFolder + L"lang\\");
            EXPECT_EQ(info.m_strDefaultFolder, info.m_strLangFolder);
            EXPECT_EQ(disk.m_created, Folders());
        }
    // No more than 260 characters are looked at.
    const std::wstring strLong = L"C:\\" + std::wstring(250, L'a') + L"\\";
    EXPECT_EQ(Disk{.m_strExecutable = strLong + L"bcdefghi\\panel.exe"}.Find().m_strLangFolder,
              strLong + L"lang\\");

    Disk missing = MakeDisk(L"D:\\panel\\", u"German");
    missing.m_folders.clear();
    EXPECT_EQ(missing.Find().m_strLanguage, L"German");
    EXPECT_EQ(missing.m_created, Folders{L"D:\\panel\\lang\\"});
    missing.m_bWritable = false;
    EXPECT_EQ(missing.Find().m_strLanguage, L"English");
}

TEST(FindLanguage, OfAnInstalledProgramTakesTheChoiceFromTheDocuments) {
    Disk disk{.m_strExecutable = L"C:\\Program Files (x86)\\Viewer\\viewer.exe",
              .m_documents = L"D:\\Docs",
              .m_folders = {L"C:\\Program Files (x86)\\Viewer\\"},
              .m_files = {{L"D:\\Docs\\Strovane Log Viewer\\default.txt", u"French\nGerman"},
                          {L"C:\\Program Files (x86)\\Viewer\\default.txt", u"French"},
                          {L"C:\\Program Files (x86)\\Viewer\\French.txt", u""}}};
    const LanguageInfo info = disk.Find();
    EXPECT_EQ(info.m_strLanguage, L"French");
    EXPECT_EQ(info.m_strLangFolder, L"C:\\Program Files (x86)\\Viewer\\");
    EXPECT_EQ(info.m_strDefaultFolder, L"D:\\Docs\\Strovane Log Viewer\\");
    EXPECT_EQ(disk.m_created, Folders{L"D:\\Docs\\Strovane Log Viewer\\"});
    disk.m_bWritable = false;
    EXPECT_EQ(disk.Find().m_strLanguage, L"English");
    disk.m_documents.reset();
    EXPECT_EQ(disk.Find().m_strDefaultFolder, L"C:\\Program Files (x86)\\Viewer\\");
    EXPECT_EQ(disk.Find().m_strLanguage, L"French");

    disk = {.m_strExecutable = L"/mnt/Program Files/viewer",
            .m_chSeparator = L'/',
            .m_documents = L"/home/op"};
    EXPECT_EQ(disk.Find().m_strLangFolder, L"/mnt/Program Files/");
    EXPECT_EQ(disk.Find().m_strDefaultFolder, L"/home/op/Strovane Log Viewer/");
}
