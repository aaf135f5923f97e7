// rtpanel: the panel application.
#include <cstdio>
#include <exception>

#include "host/Options.h"
#include "host/Panel.h"
#include "platform/system/Exceptions.h"
#include "platform/system/Text.h"
#include "platform/windows/Application.h"

namespace {

constexpr int EXIT_FAILED = 1;
constexpr int EXIT_USAGE = 2;

int RunPanel(const Options& options, char* pProgram) {
    // The command line is all this program's; the window system sees only the name.
    int argc = 1;
    char* argv[] = {pProgram, nullptr};
    CWindowSystem windowSystem(argc, argv);

    CPanel panel(options);
    std::printf("instrument   %s\n", panel.GetInstrumentText().c_str());
    std::fflush(stdout);
    return panel.Run();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Options options =
            ReadOptions({argv + 1, static_cast<std::size_t>(std::max(argc - 1, 0))});
        if (options.m_bHelp) {
            std::fputs(MakeHelpText().c_str(), stdout);
            return 0;
        }
        return RunPanel(options, argv[0]);
    } catch (const CUsageError& error) {
        std::fprintf(stderr, "rtpanel: %s\nrtpanel --help lists the options.\n", error.what());
        return EXIT_USAGE;
    } catch (const CException& error) {
        std::fprintf(stderr, "rtpanel: %s\n", ToUtf8(error.GetErrorMessage()).c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "rtpanel: %s\n", error.what());
    }
    return EXIT_FAILED;
}
