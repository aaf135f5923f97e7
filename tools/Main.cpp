// rt3, the command-line tool for capture files.
//
// Exit codes: 0 when all went well, 1 when a file failed, 2 for a command line that makes no sense.
#include <algorithm>
#include <cstdio>
#include <exception>

#include "platform/system/Text.h"
#include "tools/Arguments.h"
#include "tools/Commands.h"

namespace {

constexpr const char* OVERVIEW =
    R"(usage: rt3 COMMAND [OPTION]... FILE...

Looks at capture files (.rt3), converts and draws them. A FILE of "-" is standard input.

Commands:
  info      say what a capture holds
  csv       write a curve as comma-separated text
  plot      draw a channel as the screen does, as a PNG picture
  convert   rewrite a capture as the current version of the format

rt3 COMMAND --help tells the options of a command.
)";

struct Command {
    const wchar_t* m_pName;
    int (*m_pRun)(const std::vector<std::wstring>& arrArguments);
    const char* m_pHelp;
};

constexpr Command COMMANDS[] = {
    {L"info", RunInfo,
     R"(usage: rt3 info [--json] FILE...

Says what each capture holds: version, mode, rates, and of each curve its values, duration,
smallest and largest values, markers and pulse records. Of a damaged file it shows what could be
read, and fails.

  --json    one JSON object per file and line
)"},
    {L"csv", RunCsv,
     R"(usage: rt3 csv [OPTION]... FILE...

Writes a curve as comma-separated text, as the screen exports it: a header and a row for each pair
of values, in thousandths.

  -o, --output OUT    the file to write, or an existing folder; standard output without it
  --channel N         channel 1 to 3 (1)
  --curve N           the channel's curve, counted from the oldest, which is 1 (1)
  --time-column       begin each row with the time in milliseconds
)"},
    {L"plot", RunPlot,
     R"(usage: rt3 plot [OPTION]... -o OUT FILE...

Draws a channel exactly as the screen shows it after loading the file, as a PNG picture.

  -o, --output OUT    the file to write, an existing folder, or "-" for standard output
  --channel N         channel 1 to 3 (1)
  --display N         0 first values of the pairs, 1 second values, 2 both (0)
  --size WxH          in pixels (698x343, as on the screen)
)"},
    {L"convert", RunConvert,
     R"(usage: rt3 convert [OPTION]... -o OUT FILE...

Rewrites a capture as the current version of the format. OUT may be the file itself; it is replaced
only when the new one is complete.

  -o, --output OUT    the file to write, an existing folder, or "-" for standard output
  --salvage           of a damaged file, keep the curves that are complete
)"},
};

bool IsHelp(const std::wstring& strArgument) {
    return strArgument == L"--help" || strArgument == L"-h";
}

/// Before a "--", behind which everything is a file.
bool AsksForHelp(const std::vector<std::wstring>& arrArguments) {
    const auto end = std::find(arrArguments.begin(), arrArguments.end(), L"--");
    return std::find_if(arrArguments.begin(), end, IsHelp) != end;
}

int Run(const std::vector<std::wstring>& arrArguments) {
    if (arrArguments.empty()) throw CUsageError("a command is missing");
    if (IsHelp(arrArguments[0]) || arrArguments[0] == L"help") {
        std::fputs(OVERVIEW, stdout);
        return 0;
    }
    for (const Command& command : COMMANDS) {
        if (arrArguments[0] != command.m_pName) continue;
        const std::vector<std::wstring> arrRest(arrArguments.begin() + 1, arrArguments.end());
        if (AsksForHelp(arrRest)) {
            std::fputs(command.m_pHelp, stdout);
            return 0;
        }
        try {
            return command.m_pRun(arrRest);
        } catch (const CUsageError& error) {
            throw CUsageError(ToUtf8(command.m_pName) + ": " + error.what());
        }
    }
    throw CUsageError("unknown command " + ToUtf8(arrArguments[0]));
}

}  // namespace

int main(int argc, char** argv) {
    try {
        std::vector<std::wstring> arrArguments;
        for (int n = 1; n < argc; ++n) arrArguments.push_back(FromUtf8(argv[n]));
        const int nExitCode = Run(arrArguments);
        if (std::fflush(stdout) != 0) {
            std::perror("rt3: standard output");
            return 1;
        }
        return nExitCode;
    } catch (const CUsageError& error) {
        std::fprintf(stderr, "rt3: %s\nTry 'rt3 --help'.\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "rt3: %s\n", error.what());
        return 1;
    }
}
