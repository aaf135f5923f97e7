// rtpanel as a person starts it: the real binary, what it prints and leaves, and its exit codes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <sys/wait.h>

#include "curves/CaptureFile.h"
#include "platform/system/File.h"
#include "platform/system/Paths.h"
#include "tests/support/TemporaryFolder.h"

namespace {

class Program : public ::testing::Test {
  protected:
    /// Runs rtpanel in the test's folder. @param strBefore arguments of env @return the exit code
    int Run(const std::string& strArguments, const std::string& strBefore = "") {
        const std::string strCommand = "cd '" + m_folder.GetPath().native() + "' && env " +
                                       strBefore + " '" + ToUtf8(GetExecutableFolder()) +
                                       "/rtpanel' " + strArguments + " >output 2>errors";
        const int nStatus = std::system(strCommand.c_str());
        m_strOutput = m_folder.Get("output");
        m_strErrors = m_folder.Get("errors");
        return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
    }
    void PutFolder(const char* pName) {
        std::filesystem::create_directory(m_folder.GetPath() / pName);
    }

    const TemporaryFolder m_folder;
    std::string m_strOutput;
    std::string m_strErrors;
};

TEST_F(Program, DemonstratesARecordingAsItsOptionsSay) {
    // At 500 rows and 5000 pairs a second, ten pairs to a row, pair n of the stroke is n.
    std::string strRecording = "time,Rest,Path\n";
    for (int nRow = 0; nRow < 1000; ++nRow) strRecording += "9,2," + std::to_string(nRow) + "\n";
    m_folder.Put("r.csv", strRecording);
    for (const char* pName : {"RealTimeFiles", "out"}) PutFolder(pName);
    const auto stored = {"RealTimeFiles/demo.rt3", "RealTimeFiles/Demo2.rt3"};
    for (const char* pName : {"out/capture.csv", "out/capture.rt3"})
        m_folder.Put(pName, "what was there before");
    for (const char* pName : stored) m_folder.Put(pName, "the operator's");
    EXPECT_EQ(Run("--mode 20 --second-input voltage --value-rate 10000 --aux-rate 123 "
                  "--sample-time 1 --trigger 10 --replay r.csv --replay-first 3 "
                  "--replay-second rest --replay-rate 500 --replay-first-scale 10 "
                  "--replay-second-scale -3 --data-folder . --settings set.ini --demo out"),
              0);
    EXPECT_EQ(m_strErrors, "");
    EXPECT_TRUE(m_strOutput.starts_with("instrument   recording r.csv: 1000 rows, 'Path' x 10 and "
                                        "'Rest' x -3, 500 rows a second (commas, header)\n"
                                        "capture      1.0 s"))
        << m_strOutput;
    for (const char* pPart :
         {"\nchannel 2    10000 of 10000 values, ", ", force 500 to 5499, second input -6 to -6\n",
          "/screen-2.png (Voltage)\n", "/capture.rt3, 4"})
        EXPECT_NE(m_strOutput.find(pPart), std::string::npos) << m_strOutput;

    // The level of 10 percent is a force of 500.
    std::string strCsv = "Force, Distance";
    for (int n = 500; n < 5500; ++n) {
        const std::string strDigits = std::to_string(10000 + n);
        strCsv += "\r\n" + strDigits.substr(1, 1) + "." + strDigits.substr(2) + ",-0.006";
    }
    EXPECT_EQ(m_folder.Get("out/capture.csv"), strCsv);
    // Version, mode, second input and the two rates.
    EXPECT_EQ(m_folder.Get("out/capture.rt3").substr(0, 10),
              std::string("\x04\0\0\0\x14\0\x10\x27\x7B\0", 10));
    CFile file(m_folder.Path("out/capture.rt3"), CFile::modeRead);
    RTCaptureFile capture;
    ReadCapture(file, capture);
    const auto spCurve = capture.m_curves.FirstCurve(1);
    ASSERT_TRUE(spCurve && spCurve->GetCount() == 10000);
    EXPECT_EQ(spCurve->GetValues()[9998], 5499);
    std::set<std::string> pictures;
    for (const char* pName : {"out/screen.png", "out/screen-2.png", "out/screen-3.png"}) {
        pictures.insert(m_folder.Get(pName));
        EXPECT_EQ(m_folder.Get(pName).substr(16, 8), std::string("\0\0\x03\x1B\0\0\x01\xC7", 8));
    }
    EXPECT_EQ(pictures.size(), 3u);  // of 795 x 455 pixels each
    for (const char* pName : stored) EXPECT_EQ(m_folder.Get(pName), "the operator's");
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "RealTimeFiles/demo3.rt3"));
    EXPECT_TRUE(std::filesystem::exists(m_folder.GetPath() / "set.ini"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.GetPath() / "lang")) << "the program has its own";
}

TEST_F(Program, DemonstratesSingleValuesInAFolderOfItsOwn) {
    m_folder.Put("r.csv", "Load\n1\n1\n");
    PutFolder("lang");  // with nothing in it, as if there were none
    Run("--mode 3 --sample-time 1 --replay r.csv --replay-rate 10 --data-folder . "
        "--settings set.ini --language German --demo new/out");
    for (const char* pPart : {": 2 rows, 'Load' x 20, 10 rows", " line records, force 20 to 20\n",
                              "/screen.png (Kraft)\n"})
        EXPECT_NE(m_strOutput.find(pPart), std::string::npos) << m_strErrors << m_strOutput;
    EXPECT_EQ(m_folder.Get("new/out/capture.rt3").substr(0, 10),
              std::string("\x04\0\0\0\x03\x01\x40\x9C\x20\x4E", 10));
}

TEST_F(Program, DemonstratesTheVerdictAsTheToolGivesIt) {
    // Position from 0 to 999 and back to 0, force a fifth of it up to 199.
    std::string strRecording = "Load,Path\n";
    for (int n = 0; n < 2000; ++n) {
        const int nPath = std::min(n, 1999 - n);
        strRecording += std::to_string(nPath / 5) + "," + std::to_string(nPath) + "\n";
    }
    m_folder.Put("r.csv", strRecording);
    m_folder.Put("display", R"({"screens": [{"width": 800, "height": 480}]})");
    m_folder.Put("l.json", R"({"format": "rt3-limits", "version": 1, "objects": [
        {"name": "peak", "kind": "feature", "feature": "peak_force", "max": 100.5},
        {"name": "free", "kind": "block", "x": [0, 100], "y": [30, null]}]})");
    EXPECT_EQ(
        Run("--value-rate 4000 --sample-time 1 --replay r.csv --replay-rate 2000 "
            "--replay-first-scale 1 --replay-second-scale 1 --limits l.json --verdict-log log "
            "--data-folder . --settings set.ini --demo out --scale fit",
            "QT_QPA_PLATFORM=offscreen:configfile=display"),
        0);
    // The display has room for 615 by 352 pixels of a screen that has both strips below it.
    EXPECT_EQ(m_folder.Get("out/screen.png").substr(16, 8),
              std::string("\0\0\x02\x67\0\0\x01\x60", 8));
    EXPECT_NE(
        m_strOutput.find("\nverdict      NOK\n             peak: above maximum, margin -98.5\n"
                         "picture      "),
        std::string::npos)
        << m_strOutput;
    EXPECT_EQ(m_folder.Get("out/xy.png").substr(16, 8), std::string("\0\0\x03\x20\0\0\x02\x58", 8));
    const std::string strLine = m_folder.Get("out/verdict.json");
    EXPECT_EQ(m_folder.Get("log"), strLine);
    const std::string strTool = "cd '" + m_folder.GetPath().native() + "' && '" +
                                ToUtf8(GetExecutableFolder()) +
                                "/rt3' check --json --limits l.json out/capture.rt3 >checked";
    EXPECT_EQ(WEXITSTATUS(std::system(strTool.c_str())), 1);
    const auto skipName = [](const std::string& str) {
        return str.substr(str.find("\"channel\""), str.find('\n') - str.find("\"channel\""));
    };
    EXPECT_EQ(skipName(strLine), skipName(m_folder.Get("checked")));
}

TEST_F(Program, SaysOnStandardErrorWhyItCannotGoOn) {
    const std::string strInstrument = "instrument   simulated press\n";
    const std::tuple<const char*, int, std::string, std::string> cases[] = {
        {"--mode 256", 2, "", "rtpanel: --mode: '256' is not"},
        {"--limits nowhere.json", 2, "", "rtpanel: nowhere.json: No such file or directory."},
        {"--data-folder nowhere", 1, strInstrument, "rtpanel: nowhere: there is no such folder\n"},
        {"--replay nowhere.csv", 1, "", "rtpanel: nowhere.csv: "},
        {"--language Qr", 1, strInstrument, "rtpanel: there is no language 'Qr' in "},
        {"--demo errors/out", 1, strInstrument, "rtpanel: "},  // a file is no folder
    };
    for (const auto& [pArguments, nExitCode, strOutput, strErrors] : cases) {
        EXPECT_EQ(Run(pArguments), nExitCode) << pArguments;
        EXPECT_EQ(m_strOutput, strOutput) << pArguments;
        EXPECT_TRUE(m_strErrors.starts_with(strErrors)) << m_strErrors;
    }
    EXPECT_EQ(Run("--language Qr"), 1);
    EXPECT_TRUE(m_strErrors.ends_with("/lang: it has English, German\n")) << m_strErrors;
}

TEST_F(Program, SaysHowToGetADisplay) {
    const std::string strUnset = "-u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM ";
    const std::pair<const char*, const char*> cases[] = {
        {"", "rtpanel: there is no display\n"},
        {"QT_QPA_PLATFORM=", "rtpanel: there is no display\n"},
        {"DISPLAY=:9999", "rtpanel: the display cannot be opened (DISPLAY=:9999)\n"},
        {"WAYLAND_DISPLAY=none", "rtpanel: the display cannot be opened (WAYLAND_DISPLAY=none)"},
        {"WAYLAND_DISPLAY=none DISPLAY=:9999", "cannot be opened (DISPLAY=:9999)\n"},
        {"QT_QPA_PLATFORM=linuxfb:fb=errors", "cannot be opened (QT_QPA_PLATFORM=linuxfb:fb="},
        {"QT_QPA_PLATFORM=none DISPLAY=:9999", "cannot be opened (QT_QPA_PLATFORM=none)\n"},
    };
    for (const auto& [pNamed, pError] : cases) {
        EXPECT_EQ(Run("--desktop", strUnset + pNamed), 1) << pNamed;
        for (const char* pPart : {pError, "QT_QPA_PLATFORM=vnc", "rtpanel --demo DIR works"})
            EXPECT_NE(m_strErrors.find(pPart), std::string::npos) << m_strErrors;
        EXPECT_EQ(m_strOutput, "");
    }
    Run("--desktop", strUnset + "WAYLAND_DISPLAY=none");
    EXPECT_EQ(m_strErrors.find("xcb"), std::string::npos) << m_strErrors;
}

}  // namespace
