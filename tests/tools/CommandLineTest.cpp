#include "platform/commandline/CommandLine.h"

#include <gtest/gtest.h>

#include "platform/system/Exceptions.h"
#include "tests/support/ErrorOf.h"

namespace {

struct Given {
    bool m_bFlag = false;
    unsigned m_nWhole = 7;
    double m_dNumber = 0.5;
    std::wstring m_strText;
    std::vector<std::wstring> m_arrFiles;
    bool m_bHasWhole = false;
};

Given Read(Arguments arguments) {
    Given given;
    CCommandLine line("tool [OPTION]... FILE...", "Does something.\n");
    line.AddFlag("--flag", given.m_bFlag, "a flag");
    line.AddNumber("-w,--whole", "N", given.m_nWhole, 1, 4294967295.0, "a whole number (7)");
    line.AddNumber("--number", "X", given.m_dNumber, -2.5, 1e6, "a number (0.5)");
    line.AddText("-t,--text", "TEXT", given.m_strText, "a text");
    given.m_arrFiles = line.Parse(arguments);
    given.m_bHasWhole = line.Has("--whole");
    return given;
}

Given Read(std::vector<const char*> arguments) { return Read(Arguments(arguments)); }

TEST(CommandLine, TakesValuesAndFilesWithAnyBytes) {
    for (const char* pText :
         {"-", "--", "--flag", "-20", "[a,b]", "{}", "%%", "a=b", " ", "\xFF\xE2\x82", "++"}) {
        const std::wstring strText = FromUtf8(pText);
        EXPECT_EQ(Read({"--text", pText}).m_strText, strText) << pText;
        EXPECT_EQ(Read({"-t", pText, "-"}).m_arrFiles, std::vector<std::wstring>{L"-"}) << pText;
        EXPECT_EQ(Read({("--text=" + std::string(pText)).c_str()}).m_strText, strText) << pText;
        EXPECT_EQ(Read({"--", pText}).m_arrFiles, std::vector{strText}) << pText;
    }
    const std::vector<std::wstring> files{L"[a,b]", L"{}", L"-", L"", L"--flag", L"--"};
    const Given given = Read({"[a,b]", "--flag", "{}", "-", "", "--", "--flag", "--"});
    EXPECT_EQ(given.m_arrFiles, files);
    EXPECT_TRUE(given.m_bFlag);
}

TEST(CommandLine, CountsTheLastValue) {
    const Given given = Read({"--flag", "-w", "2", "--whole=0x10", "--flag", "--number", "-2.5"});
    EXPECT_TRUE(given.m_bFlag && given.m_bHasWhole);
    EXPECT_EQ(given.m_nWhole, 16u);
    EXPECT_EQ(given.m_dNumber, -2.5);
    EXPECT_FALSE(Read({"file"}).m_bHasWhole);
    EXPECT_EQ(Read({"--whole", "4294967295"}).m_nWhole, 4294967295u);
}

TEST(CommandLine, RefusalsNameTheOptionTheValueAndTheRange) {
    const std::pair<std::vector<const char*>, const char*> cases[] = {
        {{"--whole", "0"}, "--whole: '0' is not a whole number from 1 to 4294967295"},
        {{"-w", "4294967296"}, "--whole: '4294967296' is not a whole number from 1 to 4294967295"},
        {{"-w", "0x", "-w1"}, "--whole: '0x' is not a whole number from 1 to 4294967295"},
        {{"-w", "3x"}, "--whole: '3x' is not a whole number from 1 to 4294967295"},
        {{"--number", "inf"}, "--number: 'inf' is not a number from -2.5 to 1000000"},
        {{"--number", "nan"}, "--number: 'nan' is not a number from -2.5 to 1000000"},
        {{"--number", "1,5"}, "--number: '1,5' is not a number from -2.5 to 1000000"},
        {{"--number", " 1"}, "--number: ' 1' is not a number from -2.5 to 1000000"},
        {{"--number=-2.6"}, "--number: '-2.6' is not a number from -2.5 to 1000000"},
        {{"--number", ""}, "--number: its X is empty"},
        {{"--text=", "file"}, "--text: its TEXT is empty"},
        {{"file", "-t"}, "--text needs its TEXT"},
        {{"--flag=true"}, "--flag takes no argument"},
        {{"--flags=1"}, "there is no option '--flags'"},
        {{"-5"}, "there is no option '-5'"},
        {{"file", "---flag"}, "there is no option '---flag'"},
    };
    for (const auto& [arguments, pError] : cases)
        EXPECT_EQ(ErrorOf<CUsageError>([&] { Read(arguments); }), pError);
}

}  // namespace
