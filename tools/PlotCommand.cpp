#include "platform/drawing/Graphics.h"
#include "platform/system/ReplaceFile.h"
#include "platform/windows/Application.h"
#include "plot/RTPlot.h"
#include "tools/Arguments.h"
#include "tools/Captures.h"
#include "tools/Commands.h"

namespace {

constexpr unsigned MAX_EXTENT = 10000;

struct PlotRequest {
    std::uint8_t m_nChannel = 0;
    std::uint8_t m_nDisplay = 0;
    CSize m_size{698, 343};  ///< the screen's plot area
};

CSize ReadSize(const std::wstring& strText) {
    const std::size_t nCross = strText.find(L'x');
    if (nCross == std::wstring::npos) throw CUsageError("--size takes WIDTHxHEIGHT, as in 698x343");
    return {static_cast<int>(ReadNumber(L"--size", strText.substr(0, nCross), 1, MAX_EXTENT)),
            static_cast<int>(ReadNumber(L"--size", strText.substr(nCross + 1), 1, MAX_EXTENT))};
}

/// The plot as the screen has it after loading the capture.
CBitmap Draw(const std::shared_ptr<RTCaptureFile>& spCapture, const PlotRequest& request) {
    RTGraphSettings graph;
    graph.m_nGraphRate = spCapture->m_screen.m_nValueRate;

    RTPlot plot;
    plot.m_pGraph = &graph;
    plot.m_spCurves = std::shared_ptr<CRTCurves>(spCapture, &spCapture->m_curves);
    plot.m_nChannel = request.m_nChannel;
    plot.m_nDisplay = request.m_nDisplay;
    plot.m_nMode = spCapture->m_screen.m_nMode.value_or(plot.m_nMode);
    plot.m_nSpanValues = spCapture->m_plots.m_anSpans[request.m_nChannel];
    plot.m_nWidth = request.m_size.cx;
    plot.m_nHeight = plot.m_nBottom = request.m_size.cy;
    plot.ZoomAll();

    CBitmap bitmap;
    bitmap.CreateBitmap(request.m_size.cx, request.m_size.cy);
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    dc.SelectBitmap(&bitmap);
    plot.Paint(dc);
    return bitmap;
}

void WriteOutput(const std::wstring& strPath, const std::vector<BYTE>& bytes) {
    if (strPath == L"-") {
        CFile file;
        file.OpenStandardOutput();
        file.Write(bytes.data(), bytes.size());
        file.Close();
        return;
    }
    CReplaceFile file(strPath);
    file.Write(bytes.data(), bytes.size());
    file.Commit();
}

}  // namespace

int RunPlot(const std::vector<std::wstring>& arrArguments) {
    std::wstring strOutput;
    PlotRequest request;
    const auto arrFiles = ReadArguments(
        arrArguments,
        {{L"--output", L"-o", true, [&](const std::wstring& strValue) { strOutput = strValue; }},
         {L"--channel", nullptr, true,
          [&](const std::wstring& strValue) {
              request.m_nChannel = static_cast<std::uint8_t>(
                  ReadNumber(L"--channel", strValue, 1, CRTCurves::CHANNEL_COUNT) - 1);
          }},
         {L"--display", nullptr, true,
          [&](const std::wstring& strValue) {
              request.m_nDisplay =
                  static_cast<std::uint8_t>(ReadNumber(L"--display", strValue, 0, 2));
          }},
         {L"--size", nullptr, true,
          [&](const std::wstring& strValue) { request.m_size = ReadSize(strValue); }}});
    if (arrFiles.empty()) throw CUsageError("a file is missing");
    if (strOutput.empty()) throw CUsageError("-o is missing");

    const COutput output(strOutput, L".png", arrFiles);
    output.KeepInputs(arrFiles);
    // Texts need a window system; the offscreen one asks for no display.
    static char achName[] = "rt3";
    int nArguments = 1;
    char* apArguments[] = {achName, nullptr};
    const auto pWindowSystem = CWindowSystem::MakeOffscreen(nArguments, apArguments);
    return ForEachFile(arrFiles, [&](const std::wstring& strPath) {
        const auto spCapture = std::make_shared<RTCaptureFile>();
        ReadInput(strPath, *spCapture);
        WriteOutput(output.GetPath(strPath), Draw(spCapture, request).EncodePng());
    });
}
