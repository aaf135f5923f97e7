// rt3 as a person runs it: the real binary, its output, messages and exit codes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/wait.h>

#include "curves/CaptureFile.h"
#include "platform/system/Paths.h"
#include "tests/support/FileBytes.h"
#include "tests/support/TemporaryFolder.h"

namespace {

struct Result {
    int m_nExitCode;
    std::string m_strOut;
    std::string m_strErr;
};

class Tool : public ::testing::Test {
  protected:
    Tool() {
        const auto bytes = FileBytes::SmallCapture();
        m_strExample.assign(bytes.begin(), bytes.end());
        m_folder.Put("a.rt3", m_strExample);
    }

    /// Runs rt3 in the test's folder, through a shell.
    Result Run(const std::string& strArguments) const {
        const TemporaryFolder output;
        const std::string strCommand = "cd '" + m_folder.GetPath().native() + "' && IFS= RT3='" +
                                       ToUtf8(GetExecutableFolder()) + "/rt3' && ( " +
                                       strArguments + " ) >'" +
                                       (output.GetPath() / "out").native() + "' 2>'" +
                                       (output.GetPath() / "err").native() + "'";
        const int nStatus = std::system(strCommand.c_str());
        return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1, output.Get("out"),
                output.Get("err")};
    }

    TemporaryFolder m_folder;
    std::string m_strExample;
};

bool Contains(const std::string& strText, const char* pPart) {
    return strText.find(pPart) != std::string::npos;
}

TEST_F(Tool, SaysWhatACaptureHolds) {
    const Result result = Run("$RT3 info a.rt3");
    EXPECT_EQ(result.m_nExitCode, 0);
    EXPECT_EQ(result.m_strErr, "");
    for (const char* pLine :
         {"version: screen 4, curves 14", "values per second: 40000", "4 of 4 values, 0.0001 s",
          "even indices: 100 to 300", "odd indices: -200 to -50", "pulse records: 1",
          "channel 2: no curves"})
        EXPECT_TRUE(Contains(result.m_strOut, pLine)) << pLine;
}

TEST_F(Tool, SaysItAsJsonForEveryNameOnALineOfItsOwn) {
    std::filesystem::copy(m_folder.GetPath() / "a.rt3", m_folder.GetPath() / "q\"\xE2\x82.rt3");
    const Result result = Run("$RT3 info --json a.rt3 q*.rt3 missing");
    EXPECT_EQ(result.m_nExitCode, 1);
    EXPECT_EQ(std::count(result.m_strOut.begin(), result.m_strOut.end(), '\n'), 3);
    EXPECT_TRUE(Contains(result.m_strOut, R"({"file":"a.rt3","complete":true,"error":null,)"));
    EXPECT_TRUE(
        Contains(result.m_strOut, R"("channels":[[{"values":4,"capacity":4,"seconds":0.0001)"));
    EXPECT_TRUE(Contains(result.m_strOut, "\"file\":\"q\\\"\xEF\xBF\xBD\xEF\xBF\xBD.rt3\""));
    EXPECT_TRUE(
        Contains(result.m_strOut, R"({"file":"missing","complete":false,"error":"missing: )"));
    EXPECT_TRUE(Contains(result.m_strErr, "rt3: missing: No such file"));
}

TEST_F(Tool, ExportsACurveToAFileOrStandardOutput) {
    const std::string strRows = "Force, Distance\r\n0.100,-0.200\r\n0.300,-0.050";
    EXPECT_EQ(Run("$RT3 csv a.rt3").m_strOut, strRows);
    EXPECT_EQ(Run("$RT3 csv - <a.rt3").m_strOut, strRows);
    EXPECT_EQ(Run("cat a.rt3 | $RT3 csv -").m_strOut, strRows);
    EXPECT_EQ(Run("$RT3 csv --channel=1 --curve 1 a.rt3 -o b.csv").m_strOut, "");
    EXPECT_EQ(m_folder.Get("b.csv"), strRows);
    EXPECT_EQ(Run("$RT3 csv --time-column a.rt3").m_strOut,
              "Time, Force, Distance\r\n0.000,0.100,-0.200\r\n0.050,0.300,-0.050");

    const Result missing = Run("$RT3 csv a.rt3 --curve 2 -o c.csv");
    EXPECT_EQ(missing.m_nExitCode, 1);
    EXPECT_TRUE(Contains(missing.m_strErr, "a.rt3: Channel 1 has no curve 2"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "c.csv"));
    for (const char* pCommand : {"csv", "info", "info --json"}) {
        const Result full = Run(std::string("$RT3 ") + pCommand + " a.rt3 >/dev/full");
        EXPECT_EQ(full.m_nExitCode, 1) << pCommand;
        EXPECT_TRUE(Contains(full.m_strErr, "No space left on device")) << pCommand;
    }
}

TEST_F(Tool, DrawsAChannelAsAPicture) {
    const Result result = Run("$RT3 plot a.rt3 -o a.png --size 321x123");
    EXPECT_EQ(result.m_nExitCode, 0) << result.m_strErr;
    EXPECT_EQ(result.m_strErr, "");
    const std::string strPng = m_folder.Get("a.png");
    ASSERT_GT(strPng.size(), 24u);
    EXPECT_EQ(strPng.substr(1, 3), "PNG");
    EXPECT_EQ(strPng.substr(16, 8), std::string("\0\0\1\x41\0\0\0\x7B", 8));
    EXPECT_EQ(Run("$RT3 plot a.rt3 --size 321x123 -o -").m_strOut, strPng);
    EXPECT_NE(Run("$RT3 plot a.rt3 --size 321x123 --display 1 -o -").m_strOut, strPng);
}

TEST_F(Tool, ConvertsToTheCurrentVersionEvenInPlace) {
    FileBytes old;
    old.Long(1).Spans({8}).Byte(1).Long(1).Values({3, -4}).Pulses({});
    m_folder.Put("old.rt3", std::string(old.m_bytes.begin(), old.m_bytes.end()));
    FileBytes current;
    current.Long(4).Byte(0).Byte(0).Word(40000).Word(20000).Spans({8, 1, 1}).Byte(14).Byte(3);
    current.Long(1).Values({3, -4}).Pulses({}).Longs(std::vector<int>(10, -1));
    current.Words({-4, -4, 3, 3}).Long(0).Long(0);

    EXPECT_EQ(Run("$RT3 convert old.rt3 -o old.rt3").m_nExitCode, 0);
    EXPECT_EQ(m_folder.Get("old.rt3"), std::string(current.m_bytes.begin(), current.m_bytes.end()));
    EXPECT_EQ(Run("cat a.rt3 | $RT3 convert - -o -").m_strOut, m_strExample);

    std::filesystem::create_directory(m_folder.GetPath() / "new");
    EXPECT_EQ(Run("$RT3 convert a.rt3 old.rt3 -o new").m_nExitCode, 0);
    EXPECT_EQ(m_folder.Get("new/a.rt3"), m_strExample);
    EXPECT_TRUE(std::filesystem::exists(m_folder.GetPath() / "new/old.rt3"));
}

TEST_F(Tool, SavesTheCompleteCurvesOfADamagedFileOnlyWhenAsked) {
    m_folder.Put("cut.rt3", m_strExample.substr(0, 108));
    const Result refused = Run("$RT3 convert cut.rt3 -o b.rt3");
    EXPECT_EQ(refused.m_nExitCode, 1);
    EXPECT_EQ(refused.m_strErr, "rt3: cut.rt3: The file ends too early.\n");
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "b.rt3"));

    EXPECT_EQ(Run("$RT3 convert --salvage cut.rt3 -o b.rt3").m_nExitCode, 0);
    EXPECT_EQ(m_folder.Get("b.rt3"), m_strExample);
    const Result info = Run("$RT3 info cut.rt3");
    EXPECT_EQ(info.m_nExitCode, 1);
    EXPECT_TRUE(Contains(info.m_strOut, "4 of 4 values")) << "shows what could be read";

    m_folder.Put("stump.rt3", m_strExample.substr(0, 50));
    EXPECT_EQ(Run("$RT3 convert --salvage stump.rt3 -o c.rt3").m_nExitCode, 1);
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "c.rt3"));
}

TEST_F(Tool, RefusesCommandLinesThatMakeNoSense) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "a command is missing"},
        {"draw a.rt3", "there is no command 'draw'"},
        {"--xml info", "there is no option '--xml'"},
        {"info", "info: a file is missing"},
        {"csv --channel 0 a.rt3", "csv: --channel: '0' is not a whole number from 1 to 3"},
        {"csv --curve 0 a.rt3", "csv: --curve: '0' is not a whole number from 1 to 2147483647"},
        {"csv a.rt3 a.rt3", "csv: several files need an existing folder behind -o"},
        {"csv a.rt3 -o ./a.rt3", "csv: a.rt3 would be overwritten"},
        {"plot a.rt3", "plot: -o is missing"},
        {"plot a.rt3 -o b.png --size 0x5",
         "plot: --size: '0' is not a whole number from 1 to 10000"},
        {"plot a.rt3 -o b.png --size 5x10001",
         "plot: --size: '10001' is not a whole number from 1 to 10000"},
        {"plot a.rt3 -o b.png --size 5", "plot: --size: '5' is not WIDTHxHEIGHT, as in 698x343"},
        {"plot a.rt3 -o b.png --display 3",
         "plot: --display: '3' is not a whole number from 0 to 2"},
        {"plot a.rt3 -o a.rt3", "plot: a.rt3 would be overwritten"},
        {"plot a.rt3 ../*/a.rt3 -o .", "plot: two of the files would be written to ./a.png"},
        {"convert a.rt3", "convert: -o is missing"},
        {"convert - -o .", "convert: standard input has no name for a file in a folder"},
    };
    for (const auto& [pArguments, pError] : cases) {
        const Result result = Run(std::string("$RT3 ") + pArguments);
        EXPECT_EQ(result.m_nExitCode, 2) << pArguments;
        EXPECT_EQ(result.m_strErr,
                  "rt3: " + std::string(pError) + "\nrt3 --help lists the options.\n")
            << pArguments;
        EXPECT_EQ(result.m_strOut, "") << pArguments;
    }
    EXPECT_EQ(m_folder.Get("a.rt3"), m_strExample);
    EXPECT_EQ(m_folder.CountEntries(), 1u);
}

TEST_F(Tool, HelpsUnlessAFileHasThatName) {
    for (const char* pHelp : {"--help", "-h", "help", "convert --help"}) {
        const Result help = Run(std::string("$RT3 ") + pHelp);
        EXPECT_EQ(help.m_nExitCode, 0);
        EXPECT_EQ(help.m_strErr, "");
        EXPECT_TRUE(help.m_strOut.starts_with("usage: rt3 ")) << pHelp;
    }
    std::filesystem::copy(m_folder.GetPath() / "a.rt3", m_folder.GetPath() / "--help");
    EXPECT_TRUE(Contains(Run("$RT3 info -- --help").m_strOut, "4 of 4 values"));
}

}  // namespace
