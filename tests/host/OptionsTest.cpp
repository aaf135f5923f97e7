#include "host/Options.h"

#include <gtest/gtest.h>

#include "platform/commandline/CommandLine.h"

namespace {

Options Read(std::vector<const char*> arguments) { return ReadOptions(arguments); }

std::string ErrorOf(std::vector<const char*> arguments) {
    try {
        ReadOptions(arguments);
    } catch (const CUsageError& error) {
        return error.what();
    }
    return "no error";
}

TEST(Options, AreReadInBothForms) {
    const Options options =
        Read({"--mode", "20", "--value-rate=65535", "--second-input", "analogue", "--trigger",
              "12.54", "--sample-time=60", "--device-24v", "0x3", "--replay", "-.csv",
              "--replay-second-scale", "-2.5"});
    EXPECT_EQ(options.m_nMode, 20);
    EXPECT_EQ(options.m_nValueRate, 65535);
    EXPECT_EQ(options.m_secondInput, SecondInput::Analogue);
    EXPECT_EQ(options.m_strTrigger, L"12.5");
    EXPECT_EQ(options.m_strSampleTime, L"60");
    EXPECT_EQ(options.m_nDevice24V, 3u);
    EXPECT_EQ(options.m_strReplay, "-.csv");
    EXPECT_EQ(options.m_replay.m_dSecondScale, -2.5);
}

TEST(Options, ACaptureFileGoesWithTheDesktop) {
    EXPECT_EQ(Read({"run1.rt3", "--desktop"}).m_strCaptureFile, "run1.rt3");
    EXPECT_EQ(Read({"--desktop", "--", "--run.rt3"}).m_strCaptureFile, "--run.rt3");
}

TEST(Options, RefusalsNameTheOptionAndTheRange) {
    const std::pair<std::vector<const char*>, const char*> cases[] = {
        {{"run1.rt3"}, "a capture file can be opened with --desktop only"},
        {{"--desktop", "a.rt3", "b.rt3"}, "only one capture file can be opened"},
        {{"--nonsense"}, "there is no option '--nonsense'"},
        {{"--mode"}, "--mode needs its N"},
        {{"--mode="}, "--mode: its N is empty"},
        {{"--mode", "256"}, "--mode: '256' is not a whole number from 0 to 255"},
        {{"--mode", "-1"}, "--mode: '-1' is not a whole number from 0 to 255"},
        {{"--mode", "1x"}, "--mode: '1x' is not a whole number from 0 to 255"},
        {{"--value-rate", "99999999999999999999"},
         "--value-rate: '99999999999999999999' is not a whole number from 1 to 65535"},
        {{"--trigger", "nan"}, "--trigger: 'nan' is not a number from 0 to 99.9"},
        {{"--second-input", "2"}, "--second-input: '2' is not one of voltage, position, analogue"},
        {{"--desktop=1"}, "--desktop takes no argument"},
        {{"--desktop", "--replay", "a.csv"},
         "--desktop cannot go with --replay: there is no instrument"},
        {{"--capture-locked", "--sample-time", "5"},
         "--capture-locked cannot go with --sample-time: the screen's capture controls are "
         "disabled"},
        {{"--replay-rate", "100"}, "--replay-rate needs --replay FILE"},
    };
    for (const auto& [arguments, pError] : cases) EXPECT_EQ(ErrorOf(arguments), pError);
}

TEST(Options, HelpNamesOptionsAndRanges) {
    for (const char* pName : {"-h", "--help"}) {
        std::string strHelp;
        try {
            Read({"--mode", "256", pName});
        } catch (const CHelpRequest& help) {
            strHelp = help.what();
        }
        for (const char* pPart : {"usage: rtpanel", "--mode N", "--replay-first-scale X",
                                  "--data-folder DIR", "1 to 65535", "0.001 to 1000000"})
            EXPECT_NE(strHelp.find(pPart), std::string::npos) << pPart;
    }
}

}  // namespace
