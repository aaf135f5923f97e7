#include "platform/drawing/Graphics.h"
#include "platform/system/ReplaceFile.h"
#include "platform/windows/Application.h"
#include "plot/RTPlot.h"
#include "tools/Captures.h"
#include "tools/Commands.h"

namespace {

constexpr int MAX_EXTENT = 10000;

struct PlotRequest {
    std::uint8_t m_nChannel = 1;  ///< from 1
    std::uint8_t m_nDisplay = 0;
    CSize m_size{698, 343};  ///< the screen's plot area
};

CSize ReadSize(const std::string& strText) {
    const std::size_t nCross = strText.find('x');
    if (nCross == std::string::npos)
        throw CUsageError("'" + strText + "' is not WIDTHxHEIGHT, as in 698x343");
    const auto read = [](const std::string& strExtent) {
        return static_cast<int>(ReadNumber(strExtent, true, 1, MAX_EXTENT));
    };
    return {read(strText.substr(0, nCross)), read(strText.substr(nCross + 1))};
}

/// The plot as the screen has it after loading the capture.
CBitmap Draw(const std::shared_ptr<RTCaptureFile>& spCapture, const PlotRequest& request) {
    RTGraphSettings graph;
    graph.m_nGraphRate = spCapture->m_screen.m_nValueRate;

    RTPlot plot;
    plot.m_pGraph = &graph;
    plot.m_spCurves = std::shared_ptr<CRTCurves>(spCapture, &spCapture->m_curves);
    plot.m_nChannel = static_cast<std::uint8_t>(request.m_nChannel - 1);
    plot.m_nDisplay = request.m_nDisplay;
    plot.m_nMode = spCapture->m_screen.m_nMode.value_or(plot.m_nMode);
    plot.m_nSpanValues = spCapture->m_plots.m_anSpans[plot.m_nChannel];
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

int RunPlot(Arguments arguments) {
    std::wstring strOutput;
    PlotRequest request;
    CCommandLine line("rt3 plot [OPTION]... -o OUT FILE...",
                      "Draws a channel exactly as the screen shows it after loading the file, as a "
                      "PNG picture.\n");
    line.AddText("-o,--output", "OUT", strOutput,
                 "the file to write, an existing folder, or \"-\" for standard output");
    line.AddNumber("--channel", "N", request.m_nChannel, 1, CRTCurves::CHANNEL_COUNT,
                   "channel (1)");
    line.AddNumber("--display", "N", request.m_nDisplay, 0, 2,
                   "0 first values of the pairs, 1 second values, 2 both (0)");
    line.AddOption("--size", "WxH", "in pixels (698x343, as on the screen); each from 1 to 10000",
                   [&](const std::string& strText) { request.m_size = ReadSize(strText); });
    const auto arrFiles = line.ParseFiles(arguments);
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
