#include "curves/CsvExport.h"
#include "curves/CsvFile.h"
#include "curves/CsvTable.h"
#include "platform/system/TextFile.h"
#include "tools/Captures.h"
#include "tools/Commands.h"
#include "tools/ConsoleProgress.h"

namespace {

struct CsvRequest {
    std::size_t m_nChannel = 1;  ///< both from 1
    std::size_t m_nCurve = 1;
    bool m_bTimeColumn = false;
    bool m_bTable = false;
    bool m_bPairs = false;  ///< whatever the mode
};

std::wstring DescribeMissingCurve(const CsvRequest& request, std::size_t nCurves) {
    const std::wstring strChannel = L"Channel " + std::to_wstring(request.m_nChannel);
    if (nCurves == 0) return strChannel + L" has no curves.";
    return strChannel + L" has no curve " + std::to_wstring(request.m_nCurve) +
           L"; its last one is " + std::to_wstring(nCurves) + L".";
}

void WriteOutput(const std::wstring& strPath,
                 const std::function<void(CTextFile& file, IProgress* pProgress)>& write) {
    CConsoleProgress progress(L"Writing " + strPath);
    if (strPath != L"-") {
        ExportCsv(strPath, [&](CTextFile& file) { write(file, &progress); });
        return;
    }
    CTextFile file;
    file.OpenStandardOutput();
    write(file, &progress);
}

void ExportCurve(const std::wstring& strPath, const RTCaptureFile& capture,
                 const CsvRequest& request, const COutput& output) {
    const RTCurveList& list = capture.m_curves.m_lstCurves[request.m_nChannel - 1];
    if (request.m_nCurve > list.size())
        throw CArchiveException(CArchiveException::badContents, strPath,
                                DescribeMissingCurve(request, list.size()));
    const RTCsvOptions options{.m_bPairs = request.m_bPairs || HoldsPairs(capture.m_screen),
                               .m_bTimeColumn = request.m_bTimeColumn,
                               .m_nValueRate = capture.m_screen.m_nValueRate};
    WriteOutput(output.GetPath(strPath), [&](CTextFile& file, IProgress* pProgress) {
        WriteCurveCsv(file, *list[request.m_nCurve - 1], options, pProgress);
    });
}

void ExportTable(const std::wstring& strPath, const RTCaptureFile& capture,
                 const CsvRequest& request, const COutput& output) {
    const RTTableOptions options{.m_bPairs = request.m_bPairs || HoldsPairs(capture.m_screen),
                                 .m_secondInput = GetSecondInput(capture.m_screen),
                                 .m_nValueRate = capture.m_screen.m_nValueRate};
    WriteOutput(output.GetPath(strPath), [&](CTextFile& file, IProgress* pProgress) {
        WriteTableCsv(file, capture.m_curves, options, pProgress);
    });
}

}  // namespace

int RunCsv(Arguments arguments) {
    std::wstring strOutput = L"-";
    CsvRequest request;
    CCommandLine line(
        "rt3 csv [OPTION]... FILE...",
        "Writes a curve as comma-separated text, in thousandths: a header and a row for each pair "
        "of values, as\nthe screen exports it; in the modes of single values a row for each of "
        "them. With --table, one row\nfor each time step of all channels and curves:\n"
        "curve,time_ms,ch1_force,ch1_position,...,line1,line2,line3,line4\n");
    line.AddText("-o,--output", "OUT", strOutput,
                 "the file to write, or an existing folder; standard output without it");
    line.AddNumber("--channel", "N", request.m_nChannel, 1, CRTCurves::CHANNEL_COUNT,
                   "channel (1)");
    line.AddNumber("--curve", "N", request.m_nCurve, 1, 0x7FFFFFFF,
                   "the channel's curve, counted from the oldest, which is 1 (1)");
    line.AddFlag("--time-column", request.m_bTimeColumn,
                 "begin each row with the time in milliseconds");
    line.AddFlag("--table", request.m_bTable,
                 "all channels and curves, with times and digital lines");
    line.AddFlag("--pairs", request.m_bPairs,
                 "take all curves as pairs, whatever the mode; for old files that do not say it");
    const auto arrFiles = line.ParseFiles(arguments);
    for (const char* pOption : {"--channel", "--curve", "--time-column"})
        if (request.m_bTable && line.Has(pOption))
            throw CUsageError(std::string(pOption) +
                              " cannot go with --table, which has all channels, curves and times");

    const COutput output(strOutput, L".csv", arrFiles);
    output.KeepInputs(arrFiles);
    return ForEachFile(arrFiles, [&](const std::wstring& strPath) {
        RTCaptureFile capture;
        ReadInput(strPath, capture);
        (request.m_bTable ? ExportTable : ExportCurve)(strPath, capture, request, output);
    });
}
