// rtpanel: the panel application.
#include <cstdio>

#include "host/Options.h"
#include "host/Panel.h"
#include "host/ScreenScale.h"
#include "platform/commandline/CommandLine.h"
#include "platform/windows/Application.h"
#include "platform/windows/WindowScale.h"

namespace {

int RunPanel(const Options& options, char* pProgram) {
    // The command line is all this program's; the window system sees only the name.
    int argc = 1;
    char* argv[] = {pProgram, nullptr};
    CWindowSystem windowSystem(argc, argv);
    ScaleWindows(ChooseScale(options));

    CPanel panel(options);
    std::printf("instrument   %s\n", panel.GetInstrumentText().c_str());
    std::fflush(stdout);
    return panel.Run();
}

}  // namespace

int main(int argc, char** argv) {
    return RunProgram("rtpanel", argc, argv, [argv](Arguments arguments) {
        return RunPanel(ReadOptions(arguments), argv[0]);
    });
}
