#include "platform/system/ReplaceFile.h"
#include "platform/windows/Application.h"
#include "tools/Captures.h"
#include "tools/Commands.h"
#include "tools/PlotPicture.h"

namespace {

void ReadRange(const std::string& strText, PlotRequest& request) {
    const std::size_t nColon = strText.find(':');
    if (nColon == std::string::npos)
        throw CUsageError("'" + strText + "' is not FROM:TO, as in 500:1500");
    const auto read = [](const std::string& strTime) { return ReadNumber(strTime, false, 0, 1e9); };
    const PlotRange range{read(strText.substr(0, nColon)), read(strText.substr(nColon + 1))};
    if (range.m_dFrom >= range.m_dTo)
        throw CUsageError("'" + strText + "' does not begin before it ends");
    request.m_range = range;
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
    std::optional<PictureFormat> format;
    CCommandLine line(
        "rt3 plot [OPTION]... -o OUT FILE...",
        "Draws a channel exactly as the screen shows it after loading the file, as a PNG picture, "
        "or as an SVG\ndrawing of lines and texts. Texts, lines and margins grow with the size.\n");
    line.AddText("-o,--output", "OUT", strOutput,
                 "the file to write, an existing folder, or \"-\" for standard output");
    line.AddNumber("--channel", "N", request.m_nChannel, 1, CRTCurves::CHANNEL_COUNT,
                   "channel (1)");
    line.AddNumber("--display", "N", request.m_nDisplay, 0, 2,
                   "0 first values of the pairs, 1 second values, 2 both (0)");
    line.AddOption("--size", "WxH", "in pixels (698x343, as on the screen); each from 1 to 10000",
                   [&](const std::string& strText) { request.m_size = ReadPictureSize(strText); });
    line.AddOption("--format", "FORMAT", "png or svg (by the end of OUT; png when that is neither)",
                   [&](const std::string& strText) { format = ReadPictureFormat(strText); });
    line.AddText("--title", "TEXT", request.m_strTitle, "a title, above the plot");
    line.AddFlag("--units", request.m_bUnits, "name the quantities and units of the axes");
    line.AddOption("--range", "FROM:TO",
                   "the part to draw, in milliseconds (all); without a rate in the file, in values",
                   [&](const std::string& strText) { ReadRange(strText, request); });
    const auto arrFiles = line.ParseFiles(arguments);
    if (strOutput.empty()) throw CUsageError("-o is missing");
    request.m_format = format.value_or(FindPictureFormat(strOutput));

    const COutput output(strOutput, GetExtension(request.m_format), arrFiles);
    output.KeepInputs(arrFiles);
    // Texts need a window system; the offscreen one asks for no display.
    static char achName[] = "rt3";
    int nArguments = 1;
    char* apArguments[] = {achName, nullptr};
    const auto pWindowSystem = CWindowSystem::MakeOffscreen(nArguments, apArguments);
    return ForEachFile(arrFiles, [&](const std::wstring& strPath) {
        const auto spCapture = std::make_shared<RTCaptureFile>();
        ReadInput(strPath, *spCapture);
        WriteOutput(output.GetPath(strPath), DrawPlotPicture(spCapture, request));
    });
}
