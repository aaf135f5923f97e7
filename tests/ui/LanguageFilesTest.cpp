#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "platform/system/File.h"
#include "platform/system/Installation.h"
#include "platform/system/Paths.h"
#include "platform/system/Text.h"
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

/// The words of string literals, as `L"of" L" these"`, that a text begins with.
std::wstring ReadLiterals(std::wstring_view strText) {
    std::wstring strWords;
    while (strText.starts_with(L"L\"")) {
        strText.remove_prefix(2);
        const std::size_t nEnd = strText.find(L'"');
        strWords += strText.substr(0, nEnd);
        strText.remove_prefix(std::min(nEnd + 1, strText.size()));
        strText.remove_prefix(std::min(strText.find_first_not_of(L" \n"), strText.size()));
    }
    return strWords;
}

/// The panel's own texts as the sources state them, a number beside its English words.
std::map<int, std::set<std::wstring>> FindTextsInSources() {
    std::map<int, std::set<std::wstring>> texts;
    for (const char* pFolder :
         {"platform", "curves", "plot", "acquisition", "ui", "plugin", "siblings", "link", "host"})
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(RT_SOURCES "/" + std::string(pFolder))) {
            if (!entry.is_regular_file()) continue;
            CFile file(FromUtf8(entry.path().native()), CFile::modeRead);
            std::string strBytes(file.GetLength(), ' ');
            file.Read(strBytes.data(), strBytes.size());
            const std::wstring strSource = FromUtf8(strBytes);
            for (std::size_t n = 4; (n = strSource.find(L',', n)) != std::wstring::npos; ++n) {
                const std::wstring strNumber = strSource.substr(n - 4, 4);
                const std::size_t nWords = strSource.find_first_not_of(L" \n", n + 1);
                if (strNumber < L"3100" || strNumber > L"3349" || nWords == std::wstring::npos ||
                    strNumber.find_first_not_of(L"0123456789") != std::wstring::npos)
                    continue;
                const std::wstring strWords = ReadLiterals(
                    {strSource.begin() + static_cast<std::ptrdiff_t>(nWords), strSource.end()});
                if (!strWords.empty()) texts[std::stoi(strNumber)].insert(strWords);
            }
        }
    return texts;
}

}  // namespace

TEST(LanguageFiles, HaveWhatTheSourcesAskForAndNothingElse) {
    const auto texts = FindTextsInSources();
    EXPECT_GT(texts.size(), 60u);
    const CLanguageTable english = Load(L"English");
    const CLanguageTable german = Load(L"German");
    std::size_t nOwn = 0;
    for (int nString = 3100; nString < 3350; ++nString) {
        SCOPED_TRACE(nString);
        const auto found = texts.find(nString);
        ASSERT_EQ(english.Find(nString) != nullptr, found != texts.end());
        ASSERT_EQ(german.Find(nString) != nullptr, found != texts.end());
        if (found == texts.end()) continue;
        ++nOwn;
        EXPECT_EQ(found->second, std::set{*english.Find(nString)});
        // What is put into one is put into the other.
        for (const wchar_t* pArgument : {L"%1", L"%2", L"%3"})
            EXPECT_EQ(english.Find(nString)->find(pArgument) == std::wstring::npos,
                      german.Find(nString)->find(pArgument) == std::wstring::npos);
    }
    for (const CLanguageTable* pTable : {&english, &german})
        EXPECT_EQ(pTable->GetCount(), std::size(STRINGS) + nOwn) << "no number besides";
}

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
