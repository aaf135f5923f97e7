#include "host/Options.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(ErrorOf({"run1.rt3"}), "a capture file can be opened with --desktop only");
    EXPECT_EQ(ErrorOf({"--desktop", "a.rt3", "b.rt3"}), "only one capture file can be opened");
}

TEST(Options, RefusalsNameTheOptionAndTheRange) {
    EXPECT_EQ(ErrorOf({"--nonsense"}), "there is no option '--nonsense'");
    EXPECT_EQ(ErrorOf({"--mode"}), "--mode needs its N");
    EXPECT_EQ(ErrorOf({"--mode="}), "--mode: its N is empty");
    EXPECT_EQ(ErrorOf({"--mode", "256"}), "--mode: '256' is not a whole number from 0 to 255");
    EXPECT_EQ(ErrorOf({"--mode", "-1"}), "--mode: '-1' is not a whole number from 0 to 255");
    EXPECT_EQ(ErrorOf({"--mode", "1x"}), "--mode: '1x' is not a whole number from 0 to 255");
    EXPECT_EQ(ErrorOf({"--value-rate", "0"}),
              "--value-rate: '0' is not a whole number from 1 to 65535");
    EXPECT_EQ(ErrorOf({"--value-rate", "99999999999999999999"}),
              "--value-rate: '99999999999999999999' is not a whole number from 1 to 65535");
    EXPECT_EQ(ErrorOf({"--trigger", "nan"}), "--trigger: 'nan' is not a number from 0 to 99.9");
    EXPECT_EQ(ErrorOf({"--second-input", "2"}),
              "--second-input: '2' is not one of voltage, position, analogue");
    EXPECT_EQ(ErrorOf({"--desktop=1"}), "--desktop takes no argument");
}

TEST(Options, WhatMeansNothingTogetherIsRefused) {
    EXPECT_NE(ErrorOf({"--desktop", "--demo", "out"}), "no error");
    EXPECT_NE(ErrorOf({"--capture-locked", "--sample-time", "5"}), "no error");
    EXPECT_NE(ErrorOf({"--desktop", "--replay", "a.csv"}), "no error");
    EXPECT_EQ(ErrorOf({"--replay-rate", "100"}), "--replay-rate needs --replay FILE");
}

TEST(Options, HelpNamesEveryOption) {
    EXPECT_TRUE(Read({"--help"}).m_bHelp);
    EXPECT_TRUE(Read({"-h"}).m_bHelp);
    const std::string strHelp = MakeHelpText();
    for (const char* pName : {"--mode", "--replay-first-scale", "--demo", "--data-folder"})
        EXPECT_NE(strHelp.find(pName), std::string::npos) << pName;
    EXPECT_NE(strHelp.find("1 to 65535"), std::string::npos);
}

}  // namespace
