#include "host/InstrumentOptions.h"

#include <map>

#include "platform/commandline/CommandLine.h"

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

}  // namespace

void AddInstrument(CCommandLine& line, InstrumentOptions& options) {
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
    line.AddNumber("--device-24v", "MASK", options.m_nDevice24V, 0, 255,
                   "analogue inputs with the range 0-24 V, bit 0 for channel 1; the others have "
                   "0-10 V (0)");
    line.AddFlag("--capture-locked", options.m_bCaptureLocked,
                 "capture is controlled elsewhere: the screen's capture controls stay disabled and "
                 "the instrument begins a continuous capture by itself");
    line.AddNumber("--seed", "N", options.m_nSeed, 0, 4294967295.0,
                   "seed of the simulated press's noise (1)");
}

void AddReplay(CCommandLine& line, InstrumentOptions& options) {
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

void CheckReplay(const CCommandLine& line) {
    for (const char* pName : {"--replay-first", "--replay-first-scale", "--replay-rate",
                              "--replay-second", "--replay-second-scale"})
        if (line.Has(pName) && !line.Has("--replay"))
            throw CUsageError(std::string(pName) + " needs --replay FILE");
}
