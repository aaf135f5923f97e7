#include <cstdio>

#include "tools/CaptureSummary.h"
#include "tools/Captures.h"
#include "tools/Commands.h"

namespace {

void PrintText(const std::wstring& strPath) {
    RTCaptureOutline capture;
    const auto print = [&] { std::fputs(DescribeCapture(strPath, capture).c_str(), stdout); };
    try {
        ReadInput(strPath, capture);
    } catch (const CArchiveException&) {
        if (capture.HasCurves()) print();
        throw;
    }
    print();
}

void PrintJson(const std::wstring& strPath) {
    RTCaptureOutline capture;
    const auto print = [&](const std::wstring& strError) {
        std::puts(DescribeCaptureAsJson(strPath, capture, strError).c_str());
    };
    try {
        ReadInput(strPath, capture);
    } catch (const CException& error) {
        print(FromUtf8(DescribeError(error)));
        throw;
    }
    print(L"");
}

}  // namespace

int RunInfo(Arguments arguments) {
    bool bJson = false;
    CCommandLine line(
        "rt3 info [--json] FILE...",
        "Says what each capture holds: version, mode, rates, and of each curve its values, "
        "duration,\nsmallest and largest values (as the file gives them, if it does), markers and "
        "pulse records. Of a\ndamaged file it shows what could be read, and fails; bytes behind "
        "the end of a capture are counted,\nand are no failure. A control character in a name is "
        "shown as \\n or \\x1b; JSON has the name itself.\n");
    line.AddFlag("--json", bJson, "one JSON object per file and line");
    const auto arrFiles = line.ParseFiles(arguments);
    return ForEachFile(arrFiles, bJson ? PrintJson : PrintText);
}
