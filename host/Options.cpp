#include "host/Options.h"

#include <charconv>
#include <cmath>
#include <iomanip>
#include <map>
#include <set>
#include <sstream>
#include <string_view>

namespace {

/// One line of the option table.
struct OptionRow {
    const char* m_pName;
    const char* m_pArgument;  ///< what --help calls its argument; null: it takes none
    double m_dMin, m_dMax;    ///< range of a numeric argument; both 0: the argument is a text
    const char* m_pHelp;
    void (*m_apply)(Options&, const class CArgument&);
};

std::string FormatNumber(double d) {
    std::ostringstream out;
    out << std::setprecision(10) << d;
    return out.str();
}

/// The text given to an option, read as what the option takes.
class CArgument {
  public:
    CArgument(const OptionRow& row, std::string strText)
        : m_row(row), m_strText(std::move(strText)) {}

    const std::string& Text() const { return m_strText; }

    template <class Integer>
    void Read(Integer& nValue) const {
        std::string_view str = m_strText;
        const bool bHex = str.starts_with("0x") || str.starts_with("0X");
        if (bHex) str.remove_prefix(2);
        std::uint64_t n = 0;
        const auto [pEnd, error] =
            std::from_chars(str.data(), str.data() + str.size(), n, bHex ? 16 : 10);
        if (error != std::errc() || pEnd != str.data() + str.size()) Refuse("a whole number");
        if (static_cast<double>(n) < m_row.m_dMin || static_cast<double>(n) > m_row.m_dMax)
            Refuse("a whole number");
        nValue = static_cast<Integer>(n);
    }

    void Read(double& dValue) const {
        const char* const pLast = m_strText.data() + m_strText.size();
        double d = 0;
        const auto [pEnd, error] = std::from_chars(m_strText.data(), pLast, d);
        if (error != std::errc() || pEnd != pLast || !(d >= m_row.m_dMin && d <= m_row.m_dMax))
            Refuse("a number");
        dValue = d;
    }

    [[noreturn]] void Refuse(const std::string& strExpected) const {
        std::string strRange;
        if (m_row.m_dMin < m_row.m_dMax)
            strRange = " from " + FormatNumber(m_row.m_dMin) + " to " + FormatNumber(m_row.m_dMax);
        throw CUsageError(std::string(m_row.m_pName) + ": '" + m_strText + "' is not " +
                          strExpected + strRange);
    }

  private:
    const OptionRow& m_row;
    std::string m_strText;
};

void ReadSecondInput(Options& options, const CArgument& argument) {
    static const std::map<std::string, SecondInput> kinds{{"voltage", SecondInput::Voltage},
                                                          {"position", SecondInput::Position},
                                                          {"analogue", SecondInput::Analogue}};
    const auto it = kinds.find(argument.Text());
    if (it == kinds.end()) argument.Refuse("one of voltage, position, analogue");
    options.m_secondInput = it->second;
}

constexpr OptionRow OPTIONS[] = {
    {"--mode", "N", 0, 255,
     "instrument mode (1): 1 and 10 one channel of pairs; 2 two channels, pairs with an analogue "
     "second input; 3 three channels; 12 and 22 two channels; 20 two channels of pairs; any other "
     "one channel of single values",
     [](Options& o, const CArgument& a) { a.Read(o.m_nMode); }},
    {"--second-input", "KIND", 0, 0,
     "second value of a pair (position): voltage, position, or analogue (a position on an analogue "
     "input)",
     ReadSecondInput},
    {"--value-rate", "N", 1, 65535,
     "values per second of each channel, both values of a pair counted (40000)",
     [](Options& o, const CArgument& a) { a.Read(o.m_nValueRate); }},
    {"--aux-rate", "N", 0, 65535, "second rate stored with captures, per second (20000)",
     [](Options& o, const CArgument& a) { a.Read(o.m_nAuxRate); }},
    {"--sample-time", "N", 1, 60, "sample time in whole seconds (the screen's own, 3)",
     [](Options& o, const CArgument& a) {
         unsigned nSeconds = 0;
         a.Read(nSeconds);
         o.m_strSampleTime = std::to_wstring(nSeconds);
     }},
    {"--trigger", "X", 0, 99.9, "trigger level in percent of a force of 5000 (the screen's own, 0)",
     [](Options& o, const CArgument& a) {
         double dPercent = 0;
         a.Read(dPercent);
         const std::string strPercent = FormatNumber(std::round(dPercent * 10) / 10);
         o.m_strTrigger.assign(strPercent.begin(), strPercent.end());
     }},
    {"--device-24v", "MASK", 0, 255,
     "analogue inputs with the range 0-24 V, bit 0 for channel 1; the others have 0-10 V (0)",
     [](Options& o, const CArgument& a) { a.Read(o.m_nDevice24V); }},
    {"--capture-locked", nullptr, 0, 0,
     "capture is controlled elsewhere: the screen's capture controls stay disabled and the "
     "instrument begins a continuous capture by itself",
     [](Options& o, const CArgument&) { o.m_bCaptureLocked = true; }},
    {"--desktop", nullptr, 0, 0, "a desktop computer without an instrument: look at capture files",
     [](Options& o, const CArgument&) { o.m_bDesktop = true; }},
    {"--seed", "N", 0, 4294967295.0, "seed of the simulated press's noise (1)",
     [](Options& o, const CArgument& a) { a.Read(o.m_nSeed); }},
    {"--replay", "FILE", 0, 0,
     "play a recorded stroke instead of the simulated press: a CSV file with a header row",
     [](Options& o, const CArgument& a) { o.m_strReplay = a.Text(); }},
    {"--replay-first", "COLUMN", 0, 0,
     "column of the first quantity, by name or number from 1 (force, else the first)",
     [](Options& o, const CArgument& a) { o.m_columns.m_strFirst = a.Text(); }},
    {"--replay-second", "COLUMN", 0, 0,
     "column of the second quantity (displacement, position, distance or voltage, else the next)",
     [](Options& o, const CArgument& a) { o.m_columns.m_strSecond = a.Text(); }},
    {"--replay-rate", "X", 0.001, 1e6, "rows per second of the recording (1000)",
     [](Options& o, const CArgument& a) { a.Read(o.m_replay.m_dRowsPerSecond); }},
    {"--replay-first-scale", "X", -1e6, 1e6, "values per unit of the first quantity (20)",
     [](Options& o, const CArgument& a) { a.Read(o.m_replay.m_dFirstScale); }},
    {"--replay-second-scale", "X", -1e6, 1e6, "values per unit of the second quantity (1000)",
     [](Options& o, const CArgument& a) { a.Read(o.m_replay.m_dSecondScale); }},
    {"--data-folder", "DIR", 0, 0,
     "folder with the language files (in lang) and the captures (in RealTimeFiles) (the program's)",
     [](Options& o, const CArgument& a) { o.m_strDataFolder = a.Text(); }},
    {"--settings", "FILE", 0, 0, "settings file (the current user's)",
     [](Options& o, const CArgument& a) { o.m_strSettingsFile = a.Text(); }},
    {"--demo", "DIR", 0, 0,
     "operate the screen without anybody there: one capture, a picture of it, the capture saved "
     "and "
     "exported, all into this folder",
     [](Options& o, const CArgument& a) { o.m_strDemo = a.Text(); }},
    {"--help", nullptr, 0, 0, "this text", [](Options& o, const CArgument&) { o.m_bHelp = true; }},
};

const OptionRow& FindOption(std::string_view strName) {
    if (strName == "-h") strName = "--help";
    for (const OptionRow& row : OPTIONS)
        if (strName == row.m_pName) return row;
    throw CUsageError("there is no option '" + std::string(strName) + "'");
}

/// Options that mean nothing together are a mistake that the caller wants to hear about.
void CheckCombinations(const Options& options, const std::set<std::string>& given) {
    const auto refusePair = [&given](const char* pOption, const char* pOther, const char* pWhy) {
        if (given.contains(pOption) && given.contains(pOther))
            throw CUsageError(std::string(pOption) + " cannot go with " + pOther + ": " + pWhy);
    };
    for (const char* pLock : {"--desktop", "--capture-locked"}) {
        refusePair(pLock, "--sample-time", "the screen's capture controls are disabled");
        refusePair(pLock, "--trigger", "the screen's capture controls are disabled");
        refusePair(pLock, "--demo", "the screen's capture controls are disabled");
    }
    refusePair("--desktop", "--replay", "there is no instrument");
    refusePair("--desktop", "--capture-locked", "there is no instrument");
    if (!options.m_strCaptureFile.empty() && !options.m_bDesktop)
        throw CUsageError("a capture file can be opened with --desktop only");
    for (const std::string& strName : given)
        if (strName.starts_with("--replay-") && options.m_strReplay.empty())
            throw CUsageError(strName + " needs --replay FILE");
}

void AppendWrapped(std::string& strOut, const std::string& strText, std::size_t nIndent) {
    constexpr std::size_t LINE = 96;
    std::istringstream words(strText);
    std::string strWord;
    std::size_t nColumn = nIndent;
    while (words >> strWord) {
        if (nColumn + 1 + strWord.size() > LINE) {
            strOut += "\n" + std::string(nIndent, ' ');
            nColumn = nIndent;
        } else if (nColumn > nIndent) {
            strOut += ' ';
            ++nColumn;
        }
        strOut += strWord;
        nColumn += strWord.size();
    }
    strOut += '\n';
}

}  // namespace

Options ReadOptions(std::span<const char* const> arguments) {
    Options options;
    std::set<std::string> given;
    bool bOptions = true;
    for (std::size_t n = 0; n < arguments.size(); ++n) {
        const std::string_view str = arguments[n];
        if (!bOptions || !str.starts_with('-') || str == "-") {
            if (str.empty()) throw CUsageError("the name of the capture file is empty");
            if (!options.m_strCaptureFile.empty())
                throw CUsageError("only one capture file can be opened");
            options.m_strCaptureFile = str;
            continue;
        }
        if (str == "--") {
            bOptions = false;
            continue;
        }

        const std::size_t nEquals = str.find('=');
        const OptionRow& row = FindOption(str.substr(0, nEquals));
        given.insert(row.m_pName);
        std::string strArgument;
        if (row.m_pArgument == nullptr) {
            if (nEquals != std::string_view::npos)
                throw CUsageError(std::string(row.m_pName) + " takes no argument");
        } else if (nEquals != std::string_view::npos) {
            strArgument = str.substr(nEquals + 1);
        } else if (n + 1 < arguments.size()) {
            strArgument = arguments[++n];
        } else {
            throw CUsageError(std::string(row.m_pName) + " needs its " + row.m_pArgument);
        }
        if (row.m_pArgument != nullptr && strArgument.empty())
            throw CUsageError(std::string(row.m_pName) + ": its " + row.m_pArgument + " is empty");
        row.m_apply(options, CArgument(row, strArgument));
    }
    if (!options.m_bHelp) CheckCombinations(options, given);
    return options;
}

std::string MakeHelpText() {
    constexpr std::size_t INDENT = 30;
    std::string strText = "usage: rtpanel [OPTION]... [FILE.rt3]\n\n"
                          "Shows the Real Time Mode screen on a simulated press, on a recorded "
                          "one (--replay),\nor without an instrument (--desktop, with a capture "
                          "file to open).\n\n";
    for (const OptionRow& row : OPTIONS) {
        std::string strLine = std::string("  ") + row.m_pName;
        if (row.m_pArgument != nullptr) strLine += std::string(" ") + row.m_pArgument;
        strLine.resize(std::max(strLine.size() + 1, INDENT), ' ');
        strText += strLine;
        std::string strHelp = row.m_pHelp;
        if (row.m_dMin < row.m_dMax)
            strHelp += "; " + FormatNumber(row.m_dMin) + " to " + FormatNumber(row.m_dMax);
        AppendWrapped(strText, strHelp, INDENT);
    }
    strText += "\nDefaults stand in brackets. Exit code: 0, 1 when something failed, 2 when the "
               "command\nline cannot be carried out.\n";
    return strText;
}
