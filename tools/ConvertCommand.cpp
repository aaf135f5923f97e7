#include "platform/system/File.h"
#include "tools/Arguments.h"
#include "tools/Captures.h"
#include "tools/Commands.h"
#include "tools/ConsoleProgress.h"

namespace {

/// Reports an error of a damaged file and goes on with its complete curves, if it has any.
void ReadWhatIsComplete(const std::wstring& strPath, RTCaptureFile& capture) {
    try {
        ReadInput(strPath, capture);
    } catch (const CArchiveException& error) {
        if (!HasCurves(capture)) throw;
        Report(FlattenMessage(error));
        Report(strPath + L": keeping the curves in front of the damage");
    }
}

void WriteOutput(const std::wstring& strPath, RTCaptureFile& capture) {
    CConsoleProgress progress(L"Writing " + strPath);
    if (strPath != L"-") {
        SaveCapture(strPath, capture, &progress);
        return;
    }
    CFile file;
    file.OpenStandardOutput();
    WriteCapture(file, capture, &progress);
    file.Close();
}

}  // namespace

int RunConvert(const std::vector<std::wstring>& arrArguments) {
    std::wstring strOutput;
    bool bSalvage = false;
    const auto arrFiles = ReadArguments(
        arrArguments,
        {{L"--output", L"-o", true, [&](const std::wstring& strValue) { strOutput = strValue; }},
         {L"--salvage", nullptr, false, [&](const std::wstring&) { bSalvage = true; }}});
    if (arrFiles.empty()) throw CUsageError("a file is missing");
    if (strOutput.empty()) throw CUsageError("-o is missing");

    const COutput output(strOutput, L".rt3", arrFiles);
    return ForEachFile(arrFiles, [&](const std::wstring& strPath) {
        RTCaptureFile capture;
        if (bSalvage)
            ReadWhatIsComplete(strPath, capture);
        else
            ReadInput(strPath, capture);
        WriteOutput(output.GetPath(strPath), capture);
    });
}
