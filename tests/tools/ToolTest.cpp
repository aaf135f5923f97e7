// rt3 as a person runs it: the real binary, its output, messages and exit codes.
#include <csignal>
#include <functional>
#include <poll.h>
#include <unistd.h>

#include "tests/tools/ToolRun.h"

namespace {

/// One curve on channel 1, two on channel 2, and five bytes behind the end.
std::string TwoChannels() {
    FileBytes bytes;
    bytes.Long(4).Byte(3).Byte(2).Word(32000).Word(8000).Spans({8, 6, 1}).Byte(14).Byte(3);
    AddCurve(bytes.Long(1), {100, -200, 300, 5, 7});
    AddCurve(AddCurve(bytes.Long(2), {}), {1500, -32768, 32767, -1}, {0, 0, 0, 0});
    return bytes.Long(0).Text() + "12345";
}

/// An unversioned set of one channel, without spans.
std::string OldCapture() {
    return FileBytes().Long(1).Spans({}).Byte(1).Long(1).Values({3, -4}).Pulses({}).Text();
}

class Tool : public ToolRun {
  protected:
    Tool() { m_folder.Put("a.rt3", m_strExample); }

    /// Starts rt3 in the test's folder, with a file of ours as one of its standard ones, and sends
    /// it a signal as soon as a condition holds, or when it has ended.
    /// @return the signal that ended it, 0 for none
    int Interrupt(std::vector<std::string> arguments, int nSignal,
                  const std::function<bool()>& isReady, int hOurs = 0, int hStandard = 0) const {
        std::string strProgram = ToUtf8(GetExecutableFolder()) + "/rt3";
        std::vector<char*> arrPointers{strProgram.data()};
        for (std::string& strArgument : arguments) arrPointers.push_back(strArgument.data());
        arrPointers.push_back(nullptr);
        const pid_t nProcess = ::fork();
        if (nProcess == 0) {
            ::signal(nSignal, SIG_DFL);
            if (::chdir(m_folder.GetPath().c_str()) == 0 && ::dup2(hOurs, hStandard) == hStandard)
                ::execv(strProgram.c_str(), arrPointers.data());
            ::_exit(127);
        }
        siginfo_t ended{};
        while (!isReady() && ended.si_pid == 0)
            ::waitid(P_PID, static_cast<id_t>(nProcess), &ended, WEXITED | WNOHANG | WNOWAIT);
        ::kill(nProcess, nSignal);
        int nStatus = 0;
        ::waitpid(nProcess, &nStatus, 0);
        return WIFSIGNALED(nStatus) ? WTERMSIG(nStatus) : 0;
    }

    const std::string m_strExample = FileBytes{FileBytes::SmallCapture()}.Text();
};

TEST_F(Tool, SaysWhatEachCaptureHolds) {
    m_folder.Put("two.rt3", TwoChannels());
    m_folder.Put("old.rt3", OldCapture());
    const Result result = Run("$RT3 info two.rt3 missing old.rt3");
    EXPECT_EQ(result.m_nExitCode, 1);
    EXPECT_EQ(result.m_strErr, "rt3: missing: No such file or directory.\n");
    EXPECT_EQ(result.m_strOut, R"(two.rt3
  version: screen 4, curves 14
  mode: 3
  second input: 2
  values per second: 32000
  second rate: 8000
  spans: 8 6 1
  channel 1: 1 curve
    curve 1: 5 of 1000 values, 0.00015625 s
      values at even indices: 13 to 14
      values at odd indices: 11 to 12
      pulse records: 1
      markers: 1 at 3, 9 at 7
  channel 2: 2 curves
    curve 1: 0 of 1000 values, 0 s
      values at even indices: none
      values at odd indices: none
      pulse records: 1
      markers: 1 at 3, 9 at 7
    curve 2: 4 of 1000 values, 0.000125 s
      values at even indices: 1500 to 32767
      values at odd indices: -32768 to -1
      pulse records: 1
      markers: 1 at 3, 9 at 7
  channel 3: no curves
  bytes behind the end: 5
old.rt3
  version: screen 1, curves 0
  mode: not stored
  second input: not stored
  values per second: 40000
  second rate: 20000
  spans: none
  channel 1: 1 curve
    curve 1: 2 of 1000 values, 5e-05 s
      values at even indices: 3 to 3
      values at odd indices: -4 to -4
      pulse records: 0
      markers: none
  channel 2: no curves
  channel 3: no curves
)");
}

TEST_F(Tool, SaysItAsJsonForEveryFileOnALineOfItsOwn) {
    m_folder.Put("two.rt3", TwoChannels());
    std::string strNoRates = OldCapture();
    strNoRates.replace(0, 4, std::string("\4\0\0\0\1\0\0\0\0\0", 10));
    m_folder.Put("q\"\xE2\x82.rt3", strNoRates);
    m_folder.Put("stump", m_strExample.substr(0, 50));
    const Result result = Run("$RT3 info --json two.rt3 q*.rt3 stump");
    EXPECT_EQ(result.m_nExitCode, 1);
    EXPECT_EQ(result.m_strErr, "rt3: stump: The file ends too early.\n");
    const std::string strRest = R"("pulses":1,)"
                                R"("markers":[-1,3,-1,-1,-1,-1,-1,-1,-1,7],"reserved":23130})";
    EXPECT_EQ(
        result.m_strOut,
        R"({"file":"two.rt3","complete":true,"error":null,"screen_version":4,"curves_version":14,)"
        R"("mode":3,"second_input":2,"value_rate":32000,"second_rate":8000,"spans":[8,6,1],)"
        R"("channels":[[{"values":5,"capacity":1000,"seconds":0.00015625,)"
        R"("even":{"min":13,"max":14},"odd":{"min":11,"max":12},)"
        R"("stored_extremes":{"max_even":14,"min_even":13,"max_odd":12,"min_odd":11},)" +
            strRest + R"(],[{"values":0,"capacity":1000,"seconds":0,"even":null,"odd":null,)" +
            R"("stored_extremes":{"max_even":14,"min_even":13,"max_odd":12,"min_odd":11},)" +
            strRest + R"(,{"values":4,"capacity":1000,"seconds":0.000125,)" +
            R"("even":{"min":1500,"max":32767},"odd":{"min":-32768,"max":-1},)" +
            R"("stored_extremes":{"max_even":0,"min_even":0,"max_odd":0,"min_odd":0},)" + strRest +
            R"(],[]],"bytes_behind":5})" + "\n" +
            "{\"file\":\"q\\\"\xEF\xBF\xBD\xEF\xBF\xBD.rt3\",\"complete\":true,\"error\":null," +
            R"("screen_version":4,"curves_version":0,"mode":1,"second_input":0,"value_rate":0,)" +
            R"("second_rate":0,"spans":[],"channels":[[{"values":2,"capacity":1000,)" +
            R"("seconds":null,"even":{"min":3,"max":3},"odd":{"min":-4,"max":-4},)" +
            R"("stored_extremes":{"max_even":3,"min_even":3,"max_odd":-4,"min_odd":-4},"pulses":0,)" +
            R"("markers":[-1,-1,-1,-1,-1,-1,-1,-1,-1,-1],"reserved":23130}],[],[]],)" +
            R"("bytes_behind":0})" + "\n" +
            R"({"file":"stump","complete":false,"error":"stump: The file ends too early."})" +
            "\n");
}

TEST_F(Tool, ShowsWhatANameHoldsWithoutObeyingIt) {
    m_folder.Put("e\x1B\n\xC2\x9B.rt3", m_strExample);
    EXPECT_TRUE(Run("$RT3 info e*").m_strOut.starts_with("e\\x1b\\n\\x9b.rt3\n  version"));
    EXPECT_EQ(Run("$RT3 csv --curve 2 e*").m_strErr,
              "rt3: e\\x1b\\n\\x9b.rt3: Channel 1 has no curve 2; its last one is 1.\n");
    EXPECT_TRUE(Run("$RT3 e*").m_strErr.starts_with("rt3: there is no command 'e\\x1b\\n\\x9b"));
    EXPECT_TRUE(Contains(Run("$RT3 info --json e*").m_strOut, R"({"file":"e\u001b\n)"));
}

TEST_F(Tool, ExportsACurveToAFileOrStandardOutput) {
    const std::string strRows = "Force, Distance\r\n0.100,-0.200\r\n0.300,-0.050";
    EXPECT_EQ(Run("$RT3 csv a.rt3").m_strOut, strRows);
    EXPECT_EQ(Run("$RT3 csv - <a.rt3").m_strOut, strRows);
    EXPECT_EQ(Run("cat a.rt3 | $RT3 csv -").m_strOut, strRows);
    EXPECT_EQ(Run("$RT3 csv --channel=1 --curve 1 a.rt3 --output=b.csv").m_strOut, "");
    EXPECT_EQ(m_folder.Get("b.csv"), strRows);
    EXPECT_EQ(Run("$RT3 csv --time-column a.rt3").m_strOut,
              "Time (ms), Force, Distance\r\n0.000,0.100,-0.200\r\n0.050,0.300,-0.050");

    m_folder.Put("two.rt3", TwoChannels());
    std::filesystem::create_directory(PathOf("out"));
    const Result some = Run("$RT3 csv --channel 2 --curve 2 --time-column -o out a.rt3 two.rt3");
    EXPECT_EQ(some.m_nExitCode, 1);
    EXPECT_EQ(some.m_strOut, "");
    EXPECT_EQ(some.m_strErr, "rt3: a.rt3: Channel 2 has no curves.\n");
    EXPECT_EQ(m_folder.Get("out/two.csv"),
              "Time (ms), Force\r\n0.000,1.500\r\n0.031,-32.768\r\n0.062,32.767\r\n0.093,-0.001");
    EXPECT_FALSE(std::filesystem::exists(PathOf("out/a.csv")));

    m_folder.Put("old.rt3", OldCapture());  // which does not say what its values mean
    EXPECT_EQ(Run("$RT3 csv old.rt3").m_strOut, "Force\r\n0.003\r\n-0.004");
    EXPECT_EQ(Run("$RT3 csv --pairs old.rt3").m_strOut, "Force, Distance\r\n0.003,-0.004");
    const std::string strHead = "curve,time_ms,ch1_force,ch1_voltage,line1,line2,line3,line4\r\n";
    EXPECT_EQ(Run("$RT3 csv --table a.rt3").m_strOut,
              strHead + "1,0.000,0.100,-0.200,1,0,1,0\r\n1,0.050,0.300,-0.050,1,0,1,0\r\n");
    EXPECT_EQ(Run("$RT3 csv --table --pairs -o old.csv old.rt3").m_nExitCode, 0);
    EXPECT_EQ(m_folder.Get("old.csv"), strHead + "1,0.000,0.003,-0.004,,,,\r\n");
}

TEST_F(Tool, SaysWhenTheDiskIsFull) {
    for (const char* pArguments :
         {"csv a.rt3 >/dev/full", "csv a.rt3 -o /dev/full", "info a.rt3 >/dev/full",
          "info --json a.rt3 >/dev/full", "plot a.rt3 -o - >/dev/full", "plot a.rt3 -o /dev/full",
          "convert a.rt3 -o - >/dev/full", "convert a.rt3 -o /dev/full"}) {
        const Result full = Run(std::string("$RT3 ") + pArguments);
        EXPECT_EQ(full.m_nExitCode, 1) << pArguments;
        EXPECT_TRUE(full.m_strErr.ends_with(": No space left on device.\n") ||
                    full.m_strErr.ends_with(": No space left on device\n"))
            << pArguments << full.m_strErr;
    }
}

TEST_F(Tool, ConvertsToTheCurrentVersionEvenInPlace) {
    FileBytes current;
    current.Long(4).Byte(0).Byte(0).Word(40000).Word(20000).Spans({1, 1, 1}).Byte(14).Byte(3);
    current.Long(1).Values({3, -4}).Pulses({}).Longs(std::vector<int>(10, -1));
    const std::string strCurrent = current.Words({-4, -4, 3, 3}).Long(0).Long(0).Text();
    m_folder.Put("old.rt3", OldCapture());
    m_folder.Put("two.rt3", TwoChannels());

    EXPECT_EQ(Run("$RT3 convert - -o old.rt3 <old.rt3").m_nExitCode, 0);
    EXPECT_EQ(m_folder.Get("old.rt3"), strCurrent);
    EXPECT_EQ(Run("cat a.rt3 | $RT3 convert - -o -").m_strOut, m_strExample);

    std::filesystem::create_directory(PathOf("new"));
    m_folder.Put("new/a.rt3", "old");
    const Result some = Run("$RT3 convert a.rt3 missing two.rt3 --output new");
    EXPECT_EQ(some.m_nExitCode, 1);
    EXPECT_EQ(some.m_strErr, "rt3: missing: No such file or directory.\n"
                             "rt3: two.rt3: left out 5 bytes behind the end of the capture\n");
    EXPECT_EQ(m_folder.Get("new/a.rt3"), m_strExample);
    EXPECT_EQ(m_folder.Get("new/two.rt3") + "12345", TwoChannels());
    EXPECT_EQ(Run("$RT3 convert a.rt3 two.rt3 -o .").m_nExitCode, 0);
    EXPECT_EQ(Run("ulimit -f 0; trap '' XFSZ; $RT3 convert a.rt3 -o two.rt3").m_nExitCode, 1);
    EXPECT_EQ(m_folder.Get("two.rt3") + "12345", TwoChannels());
}

TEST_F(Tool, SavesTheCompleteCurvesOfADamagedFileOnlyWhenAsked) {
    m_folder.Put("cut.rt3", m_strExample.substr(0, 108));
    const std::string strError = "rt3: cut.rt3: The file ends too early.\n";
    const Result refused = Run("$RT3 convert cut.rt3 -o b.rt3");
    EXPECT_EQ(refused.m_nExitCode, 1);
    EXPECT_EQ(refused.m_strErr, strError);
    EXPECT_FALSE(std::filesystem::exists(PathOf("b.rt3")));

    const Result salvaged = Run("$RT3 convert --salvage cut.rt3 -o b.rt3");
    EXPECT_EQ(salvaged.m_nExitCode, 0);
    EXPECT_EQ(salvaged.m_strErr,
              strError + "rt3: cut.rt3: keeping the curves in front of the damage\n");
    EXPECT_EQ(m_folder.Get("b.rt3"), m_strExample);
    for (const char* pShown : {"$RT3 info cut.rt3", "$RT3 info --json cut.rt3"}) {
        const Result info = Run(pShown);
        EXPECT_EQ(info.m_nExitCode, 1);
        EXPECT_EQ(info.m_strErr, strError);
        EXPECT_TRUE(Contains(info.m_strOut, "4 of 4 values") ||
                    Contains(info.m_strOut, R"(false,"error":"cut.rt3: The file ends too early.",)"
                                            R"("screen_version":4,)"))
            << "shows what could be read";
    }

    m_folder.Put("stump.rt3", m_strExample.substr(0, 50));
    for (const char* pArguments : {"convert --salvage stump.rt3 -o c.rt3", "info stump.rt3"}) {
        const Result nothing = Run(std::string("$RT3 ") + pArguments);
        EXPECT_EQ(nothing.m_nExitCode, 1);
        EXPECT_EQ(nothing.m_strErr, "rt3: stump.rt3: The file ends too early.\n");
        EXPECT_EQ(nothing.m_strOut, "");
    }
    EXPECT_FALSE(std::filesystem::exists(PathOf("c.rt3")));
    EXPECT_EQ(Run("cat stump.rt3 | $RT3 csv -").m_strErr,
              "rt3: standard input: The file ends too early.\n");
    FileBytes second;  // whose only curve is on channel 2
    AddCurve(second.Head().Byte(14).Byte(3).Longs({0, 1}), {3, -4});
    m_folder.Put("stump.rt3", second.Text());
    EXPECT_EQ(Run("$RT3 convert --salvage stump.rt3 -o c.rt3").m_nExitCode, 0);
}

TEST_F(Tool, EndsByTheSignalAndLeavesNoHalfFile) {
    FileBytes bytes;
    bytes.Head().Byte(14).Byte(3).Long(1).Values(std::vector<int>(4000000));
    bytes.Long(0).Longs(std::vector<int>(10)).Words({1, 1, 1, 1}).Long(0).Long(0);
    m_folder.Put("big.rt3", bytes.Text());
    EXPECT_EQ(Run("cat big.rt3 | $RT3 convert - -o - | cmp - big.rt3").m_nExitCode, 0);
    // Of long work the progress is shown, on a terminal only.
    const Result slow = Run("S=\"'$RT3' csv big.rt3 | (sleep 1; cat >/dev/null)\"; "
                            "script -qec \"$S\" /dev/null </dev/null & eval \"$S\"; wait");
    EXPECT_EQ(slow.m_strErr + slow.m_strOut.substr(0, 13), "\rWriting -   ");
    const auto exists = [&] { return std::filesystem::exists(PathOf("b.csv")); };

    int ahPipe[2];
    ASSERT_EQ(::pipe(ahPipe), 0);
    ASSERT_EQ(::write(ahPipe[1], "ab", 2), 2);
    const auto isPending = [&] {
        pollfd pending{ahPipe[0], POLLIN, 0};
        return ::poll(&pending, 1, 0) == 1;
    };
    const auto reads = [&] { return !isPending(); };
    EXPECT_EQ(Interrupt({"csv", "-", "-o", "b.csv"}, SIGHUP, reads, ahPipe[0], 0), SIGHUP);
    EXPECT_EQ(Interrupt({"csv", "big.rt3"}, SIGTERM, isPending, ahPipe[1], 1), SIGTERM);
    ::close(ahPipe[0]);
    ::close(ahPipe[1]);

    // Until the signal comes in time once.
    int nSignal = 0;
    for (int nAttempt = 0; nSignal == 0 && nAttempt < 100; ++nAttempt) {
        std::filesystem::remove(PathOf("b.csv"));
        nSignal = Interrupt({"csv", "big.rt3", "-o", "b.csv"}, SIGINT, exists);
    }
    EXPECT_EQ(nSignal, SIGINT);
    EXPECT_FALSE(exists());
}

TEST_F(Tool, RefusesCommandLinesThatMakeNoSense) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "a command is missing"},
        {"draw a.rt3", "there is no command 'draw'"},
        {"--xml info", "there is no option '--xml'"},
        {"info", "info: a file is missing"},
        {"csv --channel 0 a.rt3", "csv: --channel: '0' is not a whole number from 1 to 3"},
        {"csv --curve 0 a.rt3", "csv: --curve: '0' is not a whole number from 1 to 2147483647"},
        {"csv --table --curve 2 a.rt3",
         "csv: --curve cannot go with --table, which has all channels, curves and times"},
        {"csv a.rt3 a.rt3", "csv: several files need an existing folder behind -o"},
        {"plot a.rt3", "plot: -o is missing"},
        {"plot a.rt3 -o b.png --size 0x5",
         "plot: --size: '0' is not a whole number from 1 to 10000"},
        {"plot a.rt3 -o b.png --size 5x10001",
         "plot: --size: '10001' is not a whole number from 1 to 10000"},
        {"plot a.rt3 -o b.png --size 5", "plot: --size: '5' is not WIDTHxHEIGHT, as in 698x343"},
        {"plot a.rt3 -o b.png --format gif", "plot: --format: 'gif' is not one of png, svg"},
        {"plot a.rt3 -o b.png --range 5", "plot: --range: '5' is not FROM:TO, as in 500:1500"},
        {"plot a.rt3 -o b.png --range 5:5", "plot: --range: '5:5' does not begin before it ends"},
        {"plot a.rt3 -o b.png --range -1:5",
         "plot: --range: '-1' is not a number from 0 to 1000000000"},
        {"plot a.rt3 -o b.png --display 3",
         "plot: --display: '3' is not a whole number from 0 to 2"},
        {"plot a.rt3 -o a.rt3", "plot: a.rt3 would be overwritten"},
        {"plot a.rt3 ../*/a.rt3 -o .", "plot: two of the files would be written to ./a.png"},
        {"convert a.rt3", "convert: -o is missing"},
        {"convert - -o .", "convert: standard input has no name for a file in a folder"},
        {"csv a.rt3 -o c.rt3", "csv: a.rt3 would be overwritten"},
        {"csv A.RT3 -o a.rt3", "csv: A.RT3 would be overwritten"},
        {"csv - -o a.rt3 <a.rt3", "csv: the file on standard input would be overwritten"},
        {"csv a.rt3 >>a.rt3", "csv: a.rt3 would be overwritten"},
        {"plot - -o a.rt3 <a.rt3", "plot: the file on standard input would be overwritten"},
        {"convert a.rt3 -o - >>a.rt3", "convert: a.rt3 would be overwritten"},
        {"convert --salvage a.rt3 -o a.rt3", "convert: a.rt3 would be overwritten"},
        {"convert --salvage c.rt3 -o d.rt3", "convert: c.rt3 would be overwritten"},
        {"convert --salvage - -o c.rt3 <a.rt3",
         "convert: the file on standard input would be overwritten"},
        {"convert c/d.rt3 a.rt3 -o .", "convert: a.rt3 would be overwritten"},
        {"convert --salvage a.rt3 c.rt3 -o out",
         "convert: several files need an existing folder behind -o"},
    };
    std::filesystem::create_symlink("a.rt3", PathOf("c.rt3"));
    std::filesystem::create_hard_link(PathOf("a.rt3"), PathOf("d.rt3"));
    for (const auto& [pArguments, pError] : cases) {
        const Result result = Run(std::string("$RT3 ") + pArguments);
        EXPECT_EQ(result.m_nExitCode, 2) << pArguments;
        EXPECT_EQ(result.m_strErr,
                  "rt3: " + std::string(pError) + "\nrt3 --help lists the options.\n")
            << pArguments;
        EXPECT_EQ(result.m_strOut, "") << pArguments;
    }
    EXPECT_EQ(m_folder.Get("a.rt3"), m_strExample);
    EXPECT_EQ(m_folder.CountEntries(), 3u);
    EXPECT_TRUE(Run("$RT3 help").m_strOut.starts_with("usage: rt3 COMMAND"));
}

}  // namespace
