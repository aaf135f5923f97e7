#include "host/Options.h"

#include <gtest/gtest.h>

#include "platform/commandline/CommandLine.h"
#include "tests/support/ErrorOf.h"

namespace {

Options Read(std::vector<const char*> arguments) { return ReadOptions(arguments); }

TEST(Options, RefusalsNameTheOptionAndTheRange) {
    const std::pair<std::vector<const char*>, const char*> cases[] = {
        {{"--desktop", "a.rt3", "b.rt3"}, "only one capture file can be opened"},
        {{"--mode", "256"}, "--mode: '256' is not a whole number from 0 to 255"},
        {{"--value-rate", "0"}, "--value-rate: '0' is not a whole number from 1 to 65535"},
        {{"--trigger", "nan"}, "--trigger: 'nan' is not a number from 0 to 99.9"},
        {{"--second-input", "2"}, "--second-input: '2' is not one of voltage, position, analogue"},
        {{"--replay-rate", "0"}, "--replay-rate: '0' is not a number from 0.001 to 1000000"},
        {{"--sample-time", "61"}, "--sample-time: '61' is not a whole number from 1 to 60"},
        {{"--scale", "4.1"}, "--scale: '4.1' is not a number from 0.5 to 4, nor fit"},
        {{"--scale", "Fit"}, "--scale: 'Fit' is not a number from 0.5 to 4, nor fit"},
        {{"--desktop", ""}, "the name of the capture file is empty"},
    };
    for (const auto& [arguments, pError] : cases)
        EXPECT_EQ(ErrorOf<CUsageError>([&] { Read(arguments); }), pError);
}

TEST(Options, TheLastScaleCounts) {
    EXPECT_EQ(Read({"--scale", "fit", "--scale=1.37"}).m_dScale, 1.37);
    EXPECT_FALSE(Read({"--scale", "fit", "--scale=1.37"}).m_bFitDisplay);
    EXPECT_TRUE(Read({"--scale=2", "--scale", "fit"}).m_bFitDisplay);
    EXPECT_FALSE(Read({"--scale=2", "--scale", "fit"}).m_dScale);
}

TEST(Options, ACaptureFileOpensTheViewer) {
    const Options options = Read({"run1.rt3", "--language", "German"});
    EXPECT_TRUE(options.m_bDesktop);
    EXPECT_EQ(options.m_strCaptureFile, "run1.rt3");
    EXPECT_EQ(options.m_strLanguage, L"German");
}

TEST(Options, ThatMeanNothingTogetherAreRefused) {
    const auto refused = [](std::vector<const char*> arguments) {
        return ErrorOf<CUsageError>([&] { Read(arguments); });
    };
    for (const std::string strLock : {"--desktop", "--capture-locked"})
        for (const char* pOther : {"--sample-time", "--trigger", "--demo"})
            EXPECT_EQ(refused({strLock.c_str(), pOther, "5"}),
                      strLock + " cannot go with " + pOther +
                          ": the screen's capture controls are disabled");
    for (const std::string strOther : {"--replay", "--trigger", "--demo", "--limits"})
        EXPECT_EQ(refused({"run1.rt3", strOther.c_str(), "5"}),
                  "a capture file cannot go with " + strOther + ": there is no instrument");
    for (const std::string strOther : {"--replay=a.csv", "--capture-locked", "--limits=a.json"})
        EXPECT_EQ(refused({"--desktop", strOther.c_str()}),
                  "--desktop cannot go with " + strOther.substr(0, strOther.find('=')) +
                      ": there is no instrument");
    for (const std::string strReplay : {"first", "first-scale", "rate", "second", "second-scale"})
        EXPECT_EQ(refused({("--replay-" + strReplay).c_str(), "1"}),
                  "--replay-" + strReplay + " needs --replay FILE");
    for (const std::string strOther : {"--limits-channel=1", "--pass-output", "--verdict-log=a"})
        EXPECT_EQ(refused({strOther.c_str()}),
                  strOther.substr(0, strOther.find('=')) + " needs --limits FILE");
}

TEST(Options, OfAnInstrumentOnALinkAreThatInstruments) {
    const auto refused = [](std::vector<const char*> arguments) {
        return ErrorOf<CUsageError>([&] { Read(arguments); });
    };
    const char* const pLink = "--link=tls://press-3";
    for (const std::string strOption :
         {"--mode", "--value-rate", "--aux-rate", "--device-24v", "--seed", "--replay"})
        EXPECT_EQ(refused({pLink, strOption.c_str(), "1"}),
                  "--link cannot go with " + strOption + ": the linked instrument says what it is");
    EXPECT_EQ(refused({pLink, "--second-input", "voltage"}),
              "--link cannot go with --second-input: the linked instrument says what it is");
    EXPECT_EQ(refused({pLink, "--capture-locked"}),
              "--link cannot go with --capture-locked: the linked instrument says what it is");
    EXPECT_EQ(refused({pLink, "--desktop"}),
              "--link cannot go with --desktop: a desktop has no instrument");
    EXPECT_EQ(refused({pLink, "run1.rt3"}),
              "a capture file cannot go with --link: there is no instrument");
    for (const std::string strOther : {"--sample-time", "--trigger"})
        EXPECT_EQ(refused({pLink, "--view", strOther.c_str(), "5"}),
                  "--view cannot go with " + strOther +
                      ": the screen's capture controls are disabled");
    for (const std::string strOption : {"--view", "--panel-name=a", "--link-ca=a", "--link-key=a"})
        EXPECT_EQ(refused({strOption.c_str()}),
                  strOption.substr(0, strOption.find('=')) + " needs --link ADDRESS");
    EXPECT_EQ(refused({pLink, "--link-cert=a"}), "--link-cert and --link-key need each other");
    EXPECT_EQ(refused({"--link=tcp://a", "--link-ca=a"}),
              "--link-ca needs a --link to tls:// or mqtts://");
    EXPECT_EQ(refused({pLink, "--link-user=a"}),
              "--link-user needs a --link to mqtt:// or mqtts://");
    EXPECT_EQ(refused({"--link=mqtt://a/t", "--link-password-file=a"}),
              "--link-password-file needs --link-user NAME");
    EXPECT_EQ(refused({"--link", "tcp://a:0"}),
              "--link: 'tcp://a:0': '0' is not a port from 1 to 65535");
    const Options options = Read({pLink, "--view", "--link-cert=c", "--link-key=k"});
    EXPECT_EQ(options.m_link.value_or(LinkAddress()).m_nPort, 5040);
    EXPECT_TRUE(options.m_bView);
    EXPECT_EQ(options.m_tlsFiles.m_strKey, "k");
}

}  // namespace
