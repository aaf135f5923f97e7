// rtpanel: the panel application.
#include <cstdio>

#include "host/Judgement.h"
#include "host/Options.h"
#include "host/Panel.h"
#include "host/ScreenScale.h"
#include "platform/commandline/CommandLine.h"
#include "platform/windows/Application.h"
#include "platform/windows/WindowScale.h"

namespace {

int RunPanel(const Options& options, char* pProgram) {
    auto pJudgement = PrepareJudgement(options);
    // The command line is all this program's; the window system sees only the name.
    int argc = 1;
    char* argv[] = {pProgram, nullptr};
    // Nobody need see the demonstration, and not every display takes its input for a person's.
    const bool bUnseen = !options.m_strDemo.empty() && !CWindowSystem::IsPlatformChosen();
    const auto pWindowSystem =
        bUnseen ? CWindowSystem::MakeOffscreen(argc, argv)
                : std::make_unique<CWindowSystem>(
                      argc, argv, "rtpanel --demo DIR works the screen without a display.");
    ScaleWindows(ChooseScale(options));

    CPanel panel(options, std::move(pJudgement));
    std::printf("instrument   %s\n", MakePrintable(panel.GetInstrumentText()).c_str());
    std::fflush(stdout);
    return panel.Run();
}

}  // namespace

int main(int argc, char** argv) {
    return RunProgram("rtpanel", argc, argv, [argv](Arguments arguments) {
        return RunPanel(ReadOptions(arguments), argv[0]);
    });
}
