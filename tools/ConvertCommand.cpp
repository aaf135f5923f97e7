#include "platform/system/File.h"
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
        Report(DescribeError(error));
        Report(ToUtf8(strPath) + ": keeping the curves in front of the damage");
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

int RunConvert(Arguments arguments) {
    std::wstring strOutput;
    bool bSalvage = false;
    CCommandLine line(
        "rt3 convert [OPTION]... -o OUT FILE...",
        "Rewrites a capture as the current version of the format. OUT may be the file itself, "
        "except with\n--salvage; it is replaced only when the new one is complete. Bytes behind "
        "the "
        "end of the capture are\nleft out, which is reported.\n");
    line.AddText("-o,--output", "OUT", strOutput,
                 "the file to write, an existing folder, or \"-\" for standard output");
    line.AddFlag("--salvage", bSalvage, "of a damaged file, keep the curves that are complete");
    const auto arrFiles = line.ParseFiles(arguments);
    if (strOutput.empty()) throw CUsageError("-o is missing");

    const COutput output(strOutput, L".rt3", arrFiles);
    // A damaged file is all there is of what it held; standard output is not replaced but written.
    output.KeepInputs(arrFiles, bSalvage || strOutput == L"-");
    return ForEachFile(arrFiles, [&](const std::wstring& strPath) {
        RTCaptureFile capture;
        if (bSalvage)
            ReadWhatIsComplete(strPath, capture);
        else
            ReadInput(strPath, capture);
        WriteOutput(output.GetPath(strPath), capture);
        if (capture.m_nBytesBehind > 0)
            Report(ToUtf8(strPath) + ": left out " + std::to_string(capture.m_nBytesBehind) +
                   " bytes behind the end of the capture");
    });
}
