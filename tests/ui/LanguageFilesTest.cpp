#include <gtest/gtest.h>

#include "platform/system/Installation.h"
#include "platform/system/Paths.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/Language.h"
#include "ui/LanguageTable.h"

namespace {

CLanguageTable Load(const std::wstring& strLanguage) {
    CLanguageTable table;
    LanguageInfo info = FindLanguage();
    info.m_strLanguage = strLanguage;
    EXPECT_TRUE(LoadLanguage(info, &table));
    return table;
}

/// String numbers whose text stands alone; 1517 is two texts in one, which a language leaves out
/// when they differ.
constexpr int STRINGS[] = {0,    1,    101,  120,  121,  122,  144,  145,  154,  155,  1093,
                           1094, 1507, 1508, 1509, 1510, 1511, 1512, 1514, 1515, 1516, 1518,
                           1519, 1520, 1521, 1522, 1523, 1524, 1532, 1533, 1534, 2004};

}  // namespace

TEST(LanguageFiles, TheShippedOnesAreComplete) {
    for (const wchar_t* pLanguage : {L"English", L"German"}) {
        const CLanguageTable table = Load(pLanguage);
        for (const int nString : STRINGS) EXPECT_TRUE(table.Find(nString)) << nString;
    }
    const CLanguageTable english = Load(L"English");
    EXPECT_EQ(*english.Find(1514), L"Sample Time:");
    EXPECT_EQ(english.Find(1517), nullptr);
    EXPECT_EQ(*Load(L"German").Find(1507), L"L\u00F6schen");
    EXPECT_EQ(FindLanguage().m_strLanguage, L"English");
    EXPECT_EQ(FindLanguage().m_strLangFolder, GetExecutableFolder() + L"/lang/");
}

TEST(LanguageFiles, AChosenOneTakesThePlaceOfThePanels) {
    EXPECT_FALSE(ChooseLanguage(L"Klingon"));
    EXPECT_TRUE(ChooseLanguage(L"gERMAN"));
    EXPECT_EQ(FindLanguage().m_strLanguage, L"German");
    EXPECT_TRUE(ChooseLanguage(L""));
    EXPECT_EQ(FindLanguage().m_strLanguage, L"English");
}

TEST(LanguageFiles, AreFoundInAnotherProgramFolderInAnyCase) {
    TemporaryFolder folder;
    std::filesystem::create_directory(folder.GetPath() / "lang");
    folder.Put("lang/DEFAULT.TXT", std::string("Q\0r\0", 4));
    folder.Put("lang/qR.TXT", std::string("0\0\t\0\t\0"
                                          "5\0\t\0\t\0x\0",
                                          14));
    SetProgramFolder(FromUtf8(folder.GetPath().native()));
    LanguageInfo info = FindLanguage();
    EXPECT_EQ(FindLanguages(), std::vector<std::wstring>{L"qR"});
    EXPECT_FALSE(ChooseLanguage(L"default"));
    SetProgramFolder(L"");
    EXPECT_EQ(info.m_strLanguage, L"Qr");
    CLanguageTable table;
    table.Set(77, L"old");
    EXPECT_TRUE(LoadLanguage(info, &table));
    ASSERT_EQ(table.GetCount(), 1u);
    EXPECT_EQ(*table.Find(5), L"x");

    // A missing one, and one of absurd size, leave no text behind.
    info.m_strLanguage = L"Klingon";
    EXPECT_FALSE(LoadLanguage(info, &table));
    EXPECT_EQ(table.GetCount(), 0u);
    folder.Put("Big.txt", "");
    std::filesystem::resize_file(folder.GetPath() / "Big.txt", std::uintmax_t{1} << 40);
    EXPECT_FALSE(LoadLanguage({L"Big", folder.Path(""), {}}, &table));
    EXPECT_FALSE(LoadLanguage(info, nullptr));
}
