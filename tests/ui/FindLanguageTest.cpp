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

using Folders = std::vector<std::wstring>;

}  // namespace

TEST(FindLanguage, OnTheInstrumentUsesTheLangFolder) {
    Disk disk{.strExecutable = L"C:\\Strovane\\panel.exe",
              .folders = {L"C:\\Strovane\\lang\\"},
              .files = {{L"C:\\Strovane\\lang\\default.txt", u"German"},
                        {L"C:\\Strovane\\lang\\German.txt", u""}}};
    const LanguageInfo info = disk.Find();
    EXPECT_EQ(info.m_strLanguage, L"German");
    EXPECT_EQ(info.m_strLangFolder, L"C:\\Strovane\\lang\\");
    EXPECT_EQ(info.m_strDefaultFolder, L"C:\\Strovane\\lang\\");
    EXPECT_EQ(disk.created, Folders());
}

TEST(FindLanguage, OfAnInstalledProgramTakesTheChoiceFromTheDocuments) {
    Disk disk{.strExecutable = L"C:\\Program Files (x86)\\Viewer\\viewer.exe",
              .documents = L"D:\\Docs",
              .folders = {L"C:\\Program Files (x86)\\Viewer\\"},
              .files = {{L"D:\\Docs\\Strovane Log Viewer\\default.txt", u"French\nGerman"},
                        {L"C:\\Program Files (x86)\\Viewer\\French.txt", u""}}};
    const LanguageInfo info = disk.Find();
    EXPECT_EQ(info.m_strLanguage, L"French");
    EXPECT_EQ(info.m_strLangFolder, L"C:\\Program Files (x86)\\Viewer\\");
    EXPECT_EQ(info.m_strDefaultFolder, L"D:\\Docs\\Strovane Log Viewer\\");
    EXPECT_EQ(disk.created, Folders{L"D:\\Docs\\Strovane Log Viewer\\"});

    disk.bWritable = false;
    EXPECT_EQ(disk.Find().m_strLanguage, L"English");

    disk.documents.reset();
    disk.files[L"C:\\Program Files (x86)\\Viewer\\default.txt"] = u"French";
    EXPECT_EQ(disk.Find().m_strDefaultFolder, L"C:\\Program Files (x86)\\Viewer\\");
    EXPECT_EQ(disk.Find().m_strLanguage, L"French");
}

TEST(FindLanguage, ElsewhereUsesALangFolderThatItCreates) {
    Disk disk{.strExecutable = L"D:\\panel\\panel.exe"};
    EXPECT_EQ(disk.Find().m_strLangFolder, L"D:\\panel\\lang\\");
    EXPECT_EQ(disk.created, Folders{L"D:\\panel\\lang\\"});

    disk.bWritable = false;
    disk.files = {{L"D:\\panel\\lang\\default.txt", u"German"},
                  {L"D:\\panel\\lang\\German.txt", u""}};
    EXPECT_EQ(disk.Find().m_strLanguage, L"English");

    // Only these exact spellings are special.
    for (const wchar_t* pFolder :
         {L"c:\\strovane\\", L"C:\\Strovane\\bin\\", L"C:\\program files\\"}) {
        Disk other{.strExecutable = pFolder + std::wstring(L"panel.exe")};
        EXPECT_EQ(other.Find().m_strLangFolder, pFolder + std::wstring(L"lang\\"));
    }
    Disk relative{.strExecutable = L"Program Files\\panel.exe"};
    EXPECT_EQ(relative.Find().m_strLangFolder, L"Program Files\\lang\\");
}

TEST(FindLanguage, FallsBackToEnglish) {
    const auto find = [](const std::u16string& strDefault) {
        Disk disk{.strExecutable = L"/opt/panel/panel",
                  .chSeparator = L'/',
                  .folders = {L"/opt/panel/lang/"},
                  .files = {{L"/opt/panel/lang/default.txt", strDefault},
                            {L"/opt/panel/lang/German.txt", u""}}};
        return disk.Find().m_strLanguage;
    };
    EXPECT_EQ(find(u"German\n"), L"German");
    EXPECT_EQ(find(u"German\r\n"), L"English");
    EXPECT_EQ(find(u"Klingon"), L"English");
    EXPECT_EQ(find(u""), L"English");
}

TEST(FindLanguage, UsesThePlatformsSeparators) {
    Disk disk{.strExecutable = L"/mnt/Program Files/viewer",
              .chSeparator = L'/',
              .documents = L"/home/op/Documents",
              .folders = {L"/mnt/Program Files/"}};
    const LanguageInfo info = disk.Find();
    EXPECT_EQ(info.m_strLangFolder, L"/mnt/Program Files/");
    EXPECT_EQ(info.m_strDefaultFolder, L"/home/op/Documents/Strovane Log Viewer/");
}

TEST(FindLanguage, LooksAtNoMoreThan260Characters) {
    Disk disk{.strExecutable = L"C:\\" + std::wstring(250, L'a') + L"\\bcdefghi\\panel.exe"};
    EXPECT_EQ(disk.Find().m_strLangFolder, L"C:\\" + std::wstring(250, L'a') + L"\\lang\\");
}
