#include "host/Options.h"

#include <cmath>
#include <map>
#include <sstream>

#include "platform/commandline/CommandLine.h"
#include "platform/windows/WindowScale.h"

namespace {

void ReadSecondInput(const std::string& strKind, SecondInput& input) {
    static const std::map<std::string, SecondInput> kinds{{"voltage", SecondInput::Voltage},
                                                          {"position", SecondInput::Position},
                                                          {"analogue", SecondInput::Analogue}};
    const auto it = kinds.find(strKind);
    if (it == kinds.end())
        throw CUsageError("'" + strKind + "' is not one of voltage, position, analogue");
    input = it->second;
}

std::wstring FormatTenths(double d) {
    std::wostringstream out;
    out << std::round(d * 10) / 10;
    return out.str();
}

void AddInstrument(CCommandLine& line, Options& options) {
    line.AddNumber("--mode", "N", options.m_nMode, 0, 255,
                   "instrument mode (1): 1 and 10 one channel of pairs; 2 two channels, pairs with "
                   "an analogue second input; 3 three channels; 12 and 22 two channels; 20 two "
                   "channels of pairs; any other one channel of single values");
    line.AddOption("--second-input", "KIND",
                   "second value of a pair (position): voltage, position, or analogue (a position "
                   "on an analogue input)",
                   [&](const std::string& str) { ReadSecondInput(str, options.m_secondInput); });
    line.AddNumber("--value-rate", "N", options.m_nValueRate, 1, 65535,
                   "values per second of each channel, both values of a pair counted (40000)");
    line.AddNumber("--aux-rate", "N", options.m_nAuxRate, 0, 65535,
                   "second rate stored with captures, per second (20000)");
    line.AddNumber(
        "--sample-time", "N", true,
        [&](double d) { options.m_strSampleTime = std::to_wstring(static_cast<unsigned>(d)); }, 1,
        60, "sample time in whole seconds (the screen's own, 3)");
    line.AddNumber(
        "--trigger", "X", false, [&](double d) { options.m_strTrigger = FormatTenths(d); }, 0, 99.9,
        "trigger level in percent of a force of 5000 (the screen's own, 0)");
    line.AddNumber("--device-24v", "MASK", options.m_nDevice24V, 0, 255,
                   "analogue inputs with the range 0-24 V, bit 0 for channel 1; the others have "
                   "0-10 V (0)");
    line.AddFlag("--capture-locked", options.m_bCaptureLocked,
                 "capture is controlled elsewhere: the screen's capture controls stay disabled and "
                 "the instrument begins a continuous capture by itself");
    line.AddFlag("--desktop", options.m_bDesktop,
                 "a desktop computer without an instrument, to look at capture files; a FILE.rt3 "
                 "alone does the same");
    line.AddNumber("--seed", "N", options.m_nSeed, 0, 4294967295.0,
                   "seed of the simulated press's noise (1)");
}

void AddReplay(CCommandLine& line, Options& options) {
    line.AddText(
        "--replay", "FILE", options.m_strReplay,
        "play a recorded stroke instead of the simulated press: a text file with a row for "
        "each step, fields between commas, semicolons or tabs, decimal point or comma");
    line.AddText(
        "--replay-first", "COLUMN", options.m_columns.m_strFirst,
        "column of the first quantity, by name or number from 1 (force, load or kraft, else "
        "the first)");
    line.AddText("--replay-second", "COLUMN", options.m_columns.m_strSecond,
                 "column of the second quantity (displacement, position, distance, voltage, weg or "
                 "spannung, else the next)");
    line.AddNumber(
        "--replay-rate", "X", false, [&](double d) { options.m_rowsPerSecond = d; }, 0.001, 1e6,
        "rows per second of the recording (by its column of times, else 1000)");
    line.AddNumber("--replay-first-scale", "X", options.m_replay.m_dFirstScale, -1e6, 1e6,
                   "values per unit of the first quantity (20)");
    line.AddNumber("--replay-second-scale", "X", options.m_replay.m_dSecondScale, -1e6, 1e6,
                   "values per unit of the second quantity (1000)");
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
        "capture saved and exported, all into this folder");
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
        for (const char* pOther :
             {"--sample-time", "--trigger", "--demo", "--replay", "--capture-locked", "--limits"})
            if (line.Has(pOther))
                throw CUsageError(std::string("a capture file cannot go with ") + pOther +
                                  ": there is no instrument");
    const auto requireWith = [&line](const char* pOption, const char* pNeeded) {
        if (line.Has(pOption) && !line.Has(pNeeded))
            throw CUsageError(std::string(pOption) + " needs " + pNeeded + " FILE");
    };
    for (const char* pName : {"--replay-first", "--replay-first-scale", "--replay-rate",
                              "--replay-second", "--replay-second-scale"})
        requireWith(pName, "--replay");
    for (const char* pName : {"--limits-channel", "--pass-output", "--verdict-log"})
        requireWith(pName, "--limits");
}

}  // namespace

Options ReadOptions(std::span<const char* const> arguments) {
    Options options;
    CCommandLine line("rtpanel [OPTION]... [FILE.rt3]",
                      "Shows the Real Time Mode screen on a simulated press or on a recorded one "
                      "(--replay).\nWith a capture file it is a viewer, without an instrument.\n");
    AddInstrument(line, options);
    AddReplay(line, options);
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
