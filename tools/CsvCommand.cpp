#include "curves/CsvExport.h"
#include "platform/system/TextFile.h"
#include "tools/Arguments.h"
#include "tools/Captures.h"
#include "tools/Commands.h"
#include "tools/ConsoleProgress.h"

namespace {

struct CsvRequest {
    std::size_t m_nChannel = 0;
    std::size_t m_nCurve = 0;
    bool m_bTimeColumn = false;
};

std::wstring DescribeMissingCurve(const CsvRequest& request, std::size_t nCurves) {
    const std::wstring strChannel = L"Channel " + std::to_wstring(request.m_nChannel + 1);
    if (nCurves == 0) return strChannel + L" has no curves.";
    return strChannel + L" has no curve " + std::to_wstring(request.m_nCurve + 1) +
           L"; its last one is " + std::to_wstring(nCurves) + L".";
}

void WriteOutput(const std::wstring& strPath, const RTCurveData& curve,
                 const RTCsvOptions& options) {
    CConsoleProgress progress(L"Writing " + strPath);
    if (strPath != L"-") {
        ExportCurveCsv(strPath, curve, options, &progress);
        return;
    }
    CTextFile file;
    file.OpenStandardOutput();
    WriteCurveCsv(file, curve, options, &progress);
    file.Close();
}

void ExportFile(const std::wstring& strPath, const CsvRequest& request, const COutput& output) {
    RTCaptureFile capture;
    ReadInput(strPath, capture);
    const RTCurveList& list = capture.m_curves.m_lstCurves[request.m_nChannel];
    if (request.m_nCurve >= list.size())
        throw CArchiveException(CArchiveException::badContents, strPath,
                                DescribeMissingCurve(request, list.size()));
    RTCsvOptions options;
    options.m_bTimeColumn = request.m_bTimeColumn;
    options.m_nValueRate = capture.m_screen.m_nValueRate;
    WriteOutput(output.GetPath(strPath), *list[request.m_nCurve], options);
}

}  // namespace

int RunCsv(const std::vector<std::wstring>& arrArguments) {
    std::wstring strOutput = L"-";
    CsvRequest request;
    const auto arrFiles = ReadArguments(
        arrArguments,
        {{L"--output", L"-o", true, [&](const std::wstring& strValue) { strOutput = strValue; }},
         {L"--channel", nullptr, true,
          [&](const std::wstring& strValue) {
              request.m_nChannel =
                  ReadNumber(L"--channel", strValue, 1, CRTCurves::CHANNEL_COUNT) - 1;
          }},
         {L"--curve", nullptr, true,
          [&](const std::wstring& strValue) {
              request.m_nCurve = ReadNumber(L"--curve", strValue, 1, 0x7FFFFFFF) - 1;
          }},
         {L"--time-column", nullptr, false,
          [&](const std::wstring&) { request.m_bTimeColumn = true; }}});
    if (arrFiles.empty()) throw CUsageError("a file is missing");

    const COutput output(strOutput, L".csv", arrFiles);
    output.KeepInputs(arrFiles);
    return ForEachFile(arrFiles,
                       [&](const std::wstring& strPath) { ExportFile(strPath, request, output); });
}
