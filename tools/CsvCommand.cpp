#include "curves/CsvExport.h"
#include "platform/system/TextFile.h"
#include "tools/Captures.h"
#include "tools/Commands.h"
#include "tools/ConsoleProgress.h"

namespace {

struct CsvRequest {
    std::size_t m_nChannel = 1;  ///< both from 1
    std::size_t m_nCurve = 1;
    bool m_bTimeColumn = false;
};

std::wstring DescribeMissingCurve(const CsvRequest& request, std::size_t nCurves) {
    const std::wstring strChannel = L"Channel " + std::to_wstring(request.m_nChannel);
    if (nCurves == 0) return strChannel + L" has no curves.";
    return strChannel + L" has no curve " + std::to_wstring(request.m_nCurve) +
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
}

void ExportFile(const std::wstring& strPath, const CsvRequest& request, const COutput& output) {
    RTCaptureFile capture;
    ReadInput(strPath, capture);
    const RTCurveList& list = capture.m_curves.m_lstCurves[request.m_nChannel - 1];
    if (request.m_nCurve > list.size())
        throw CArchiveException(CArchiveException::badContents, strPath,
                                DescribeMissingCurve(request, list.size()));
    RTCsvOptions options;
    options.m_bTimeColumn = request.m_bTimeColumn;
    options.m_nValueRate = capture.m_screen.m_nValueRate;
    WriteOutput(output.GetPath(strPath), *list[request.m_nCurve - 1], options);
}

}  // namespace

int RunCsv(Arguments arguments) {
    std::wstring strOutput = L"-";
    CsvRequest request;
    CCommandLine line("rt3 csv [OPTION]... FILE...",
                      "Writes a curve as comma-separated text, as the screen exports it: a header "
                      "and a row for each pair\nof values, in thousandths.\n");
    line.AddText("-o,--output", "OUT", strOutput,
                 "the file to write, or an existing folder; standard output without it");
    line.AddNumber("--channel", "N", request.m_nChannel, 1, CRTCurves::CHANNEL_COUNT,
                   "channel (1)");
    line.AddNumber("--curve", "N", request.m_nCurve, 1, 0x7FFFFFFF,
                   "the channel's curve, counted from the oldest, which is 1 (1)");
    line.AddFlag("--time-column", request.m_bTimeColumn,
                 "begin each row with the time in milliseconds");
    const auto arrFiles = line.ParseFiles(arguments);

    const COutput output(strOutput, L".csv", arrFiles);
    output.KeepInputs(arrFiles);
    return ForEachFile(arrFiles,
                       [&](const std::wstring& strPath) { ExportFile(strPath, request, output); });
}
