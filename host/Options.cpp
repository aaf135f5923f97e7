#include "host/Options.h"

#include <cmath>
#include <sstream>

#include "platform/commandline/CommandLine.h"
#include "platform/windows/WindowScale.h"

namespace {

std::wstring FormatTenths(double d) {
    std::wostringstream out;
    out << std::round(d * 10) / 10;
    return out.str();
}

void AddScreen(CCommandLine& line, Options& options) {
    line.AddNumber(
        "--sample-time", "N", true,
        [&](double d) { options.m_strSampleTime = std::to_wstring(static_cast<unsigned>(d)); }, 1,
        60, "sample time in whole seconds (the screen's own, 3)");
    line.AddNumber(
        "--trigger", "X", false, [&](double d) { options.m_strTrigger = FormatTenths(d); }, 0, 99.9,
        "trigger level in percent of a force of 5000 (the screen's own, 0)");
    line.AddFlag("--desktop", options.m_bDesktop,
                 "a desktop computer without an instrument, to look at capture files; a FILE.rt3 "
                 "alone does the same");
}

void AddVerdict(CCommandLine& line, Options& options) {
    line.AddText("--limits", "FILE", options.m_strLimits,
                 "judge every stroke by this limits file, in a strip below the screen");
    line.AddNumber("--limits-channel", "N", options.m_nLimitsChannel, 1, 3,
                   "channel whose strokes are judged (1)");
    line.AddFlag("--pass-output", options.m_bPassOutput,
                 "have the instrument send its pass output for each stroke that passes");
    line.AddText("--verdict-log", "FILE", options.m_strVerdictLog,
                 "append a line of JSON for each stroke to this file");
}

void AddPlaces(CCommandLine& line, Options& options) {
    line.AddText("--data-folder", "DIR", options.m_strDataFolder,
                 "folder with the language files (in lang) and the captures (in RealTimeFiles) "
                 "(the program's; of an installed one, or where that cannot be written, "
                 "realtime-mode in the user's data folder)");
    line.AddText("--settings", "FILE", options.m_strSettingsFile,
                 "settings file (the current user's)");
    line.AddText("--language", "NAME", options.m_strLanguage,
                 "the language file to use, such as German (the one that lang/default.txt names)");
    line.AddText(
        "--demo", "DIR", options.m_strDemo,
        "operate the screen, unseen, without anybody there: one capture, a picture of it, the "
        "capture saved and exported, all into this folder; of a linked instrument that others "
        "command, the next capture that they begin");
}

void ReadScale(const std::string& strScale, Options& options) {
    options.m_bFitDisplay = strScale == "fit";
    options.m_dScale.reset();
    if (options.m_bFitDisplay) return;
    try {
        options.m_dScale = ReadNumber(strScale, false, MIN_WINDOW_SCALE, MAX_WINDOW_SCALE);
    } catch (const CUsageError& error) {
        throw CUsageError(DescribeError(error) + ", nor fit");
    }
}

void AddDisplay(CCommandLine& line, Options& options) {
    line.AddOption("--scale", "FACTOR",
                   "size of all windows: a factor from 0.5 to 4, or fit, as large as the display "
                   "has room for (fit on a panel; on a desktop as its settings say)",
                   [&](const std::string& str) { ReadScale(str, options); });
}

/// Options that mean nothing together are a mistake that the caller wants to hear about.
void CheckCombinations(const CCommandLine& line, const Options& options) {
    const auto refusePair = [&line](const char* pOption, const char* pOther, const char* pWhy) {
        if (line.Has(pOption) && line.Has(pOther))
            throw CUsageError(std::string(pOption) + " cannot go with " + pOther + ": " + pWhy);
    };
    for (const char* pLock : {"--desktop", "--capture-locked"})
        for (const char* pOther : {"--sample-time", "--trigger", "--demo"})
            refusePair(pLock, pOther, "the screen's capture controls are disabled");
    for (const char* pOther : {"--replay", "--limits"})
        refusePair("--desktop", pOther, "there is no instrument");
    refusePair("--desktop", "--capture-locked", "there is no instrument");
    if (!options.m_strCaptureFile.empty())
        for (const char* pOther : {"--sample-time", "--trigger", "--demo", "--replay", "--link",
                                   "--capture-locked", "--limits"})
            if (line.Has(pOther))
                throw CUsageError(std::string("a capture file cannot go with ") + pOther +
                                  ": there is no instrument");
    CheckReplay(line);
    CheckLink(line, options);
    for (const char* pName : {"--limits-channel", "--pass-output", "--verdict-log"})
        if (line.Has(pName) && !line.Has("--limits"))
            throw CUsageError(std::string(pName) + " needs --limits FILE");
}

}  // namespace

Options ReadOptions(std::span<const char* const> arguments) {
    Options options;
    CCommandLine line("rtpanel [OPTION]... [FILE.rt3]",
                      "Shows the Real Time Mode screen on a simulated press, on a recorded one "
                      "(--replay), or\non an instrument elsewhere (--link).\nWith a capture file "
                      "it is a viewer, without an instrument.\n");
    AddInstrument(line, options);
    AddScreen(line, options);
    AddReplay(line, options);
    AddLink(line, options);
    AddVerdict(line, options);
    AddDisplay(line, options);
    AddPlaces(line, options);
    const auto arrFiles = line.Parse(arguments);
    if (arrFiles.size() > 1) throw CUsageError("only one capture file can be opened");
    if (!arrFiles.empty()) {
        options.m_strCaptureFile = ToUtf8(arrFiles[0]);
        if (options.m_strCaptureFile.empty())
            throw CUsageError("the name of the capture file is empty");
        options.m_bDesktop = true;
    }
    CheckCombinations(line, options);
    return options;
}
