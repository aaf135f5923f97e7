// rt3, the command-line tool for capture files.
#include <cstdio>

#include "platform/system/Interrupt.h"
#include "tools/Commands.h"

namespace {

constexpr const char* ABOUT =
    R"(Looks at capture files (.rt3), converts, draws and judges them. A FILE of "-" is standard input.

Commands:
  info      say what a capture holds
  csv       write a curve as comma-separated text
  plot      draw a channel as the screen does, as a PNG or SVG picture
  convert   rewrite a capture as the current version of the format
  measure   measure strokes: peak, end, work and more
  check     hold strokes against limits: pass or fail
  learn     make limits from good strokes

rt3 COMMAND --help tells the options of a command.
)";

struct Command {
    std::string_view m_strName;
    int (*m_pRun)(Arguments arguments);
};

constexpr Command COMMANDS[] = {
    {"info", RunInfo},       {"csv", RunCsv},     {"plot", RunPlot},  {"convert", RunConvert},
    {"measure", RunMeasure}, {"check", RunCheck}, {"learn", RunLearn}};

int Run(Arguments arguments) {
    const std::string_view strName = arguments.empty() ? "" : arguments[0];
    for (const Command& command : COMMANDS) {
        if (strName != command.m_strName) continue;
        try {
            return command.m_pRun(arguments.subspan(1));
        } catch (const CUsageError& error) {
            throw CUsageError(std::string(strName) + ": " + error.what());
        }
    }
    constexpr const char* HELP[] = {"--help"};
    CCommandLine line("rt3 COMMAND [OPTION]... FILE...", ABOUT);
    const auto arrRest = line.Parse(strName == "help" ? HELP : arguments);
    if (arrRest.empty()) throw CUsageError("a command is missing");
    throw CUsageError("there is no command '" + ToUtf8(arrRest[0]) + "'");
}

}  // namespace

int main(int argc, char** argv) {
    CleanUpOnInterrupt();
    return RunProgram("rt3", argc, argv, Run);
}
