#include <cstdio>

#include "tools/Arguments.h"
#include "tools/CaptureSummary.h"
#include "tools/Captures.h"
#include "tools/Commands.h"

namespace {

void PrintText(const std::wstring& strPath) {
    RTCaptureFile capture;
    const auto print = [&] { std::fputs(DescribeCapture(strPath, capture).c_str(), stdout); };
    try {
        ReadInput(strPath, capture);
    } catch (const CArchiveException&) {
        if (HasCurves(capture)) print();
        throw;
    }
    print();
}

void PrintJson(const std::wstring& strPath) {
    RTCaptureFile capture;
    const auto print = [&](const std::wstring& strError) {
        std::puts(DescribeCaptureAsJson(strPath, capture, strError).c_str());
    };
    try {
        ReadInput(strPath, capture);
    } catch (const CUserException&) {
        throw;
    } catch (const CException& error) {
        print(FlattenMessage(error));
        throw;
    }
    print(L"");
}

}  // namespace

int RunInfo(const std::vector<std::wstring>& arrArguments) {
    bool bJson = false;
    const auto arrFiles = ReadArguments(
        arrArguments, {{L"--json", nullptr, false, [&](const std::wstring&) { bJson = true; }}});
    if (arrFiles.empty()) throw CUsageError("a file is missing");
    return ForEachFile(arrFiles, bJson ? PrintJson : PrintText);
}
