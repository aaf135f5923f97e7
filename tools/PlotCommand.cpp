#include "evaluation/XyPicture.h"
#include "platform/windows/Application.h"
#include "tools/Captures.h"
#include "tools/Commands.h"
#include "tools/PlotPicture.h"
#include "tools/XyPlot.h"

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

/// @throws CUsageError when one of some options was given
void RefuseOptions(const CCommandLine& line, std::initializer_list<const char*> names,
                   const char* pReason) {
    for (const char* pName : names)
        if (line.Has(pName)) throw CUsageError(std::string(pName) + pReason);
}

CSize FindXySize(const CCommandLine& line, CSize size) {
    if (!line.Has("--size")) return XY_PICTURE_SIZE;
    if (size.cx < LEAST_XY_EXTENT || size.cy < LEAST_XY_EXTENT)
        throw CUsageError("--size: 100x100 is the least with --xy");
    return size;
}

}  // namespace

int RunPlot(Arguments arguments) {
    std::wstring strOutput;
    PlotRequest request;
    std::optional<PictureFormat> format;
    bool bXy = false;
    XyPlotRequest xy;
    CCommandLine line(
        "rt3 plot [OPTION]... -o OUT FILE...",
        "Draws a channel exactly as the screen shows it after loading the file, as a PNG picture, "
        "or as an SVG\ndrawing of lines and texts. Texts, lines and margins grow with the "
        "size.\nWith --xy it draws the strokes of all files over each other, force over position, "
        "into one file\n(800x600); what cannot be drawn is reported and left out, with exit code "
        "3.\n");
    line.AddText("-o,--output", "OUT", strOutput,
                 "the file to write, an existing folder, or \"-\" for standard output");
    line.AddFlag("--xy", bXy, "force over position");
    line.AddText("--limits", "LIMITS", xy.m_strLimits,
                 "with --xy: a limits file to hold the strokes against and to draw with them");
    xy.m_strokes.AddOptions(line);
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

    request.m_nChannel = static_cast<std::uint8_t>(xy.m_strokes.m_nChannel);
    if (bXy)
        RefuseOptions(line, {"--display", "--title", "--units", "--range"},
                      " does not go with --xy");
    else
        RefuseOptions(line, {"--limits", "--curve", "--pairs"}, " goes only with --xy");

    // Texts need a window system; the offscreen one asks for no display.
    static char achName[] = "rt3";
    int nArguments = 1;
    char* apArguments[] = {achName, nullptr};
    const auto pWindowSystem = CWindowSystem::MakeOffscreen(nArguments, apArguments);
    if (bXy) {
        xy.m_strOutput = strOutput;
        xy.m_format = request.m_format;
        xy.m_size = FindXySize(line, request.m_size);
        return PlotStrokes(arrFiles, xy);
    }
    const COutput output(strOutput, GetExtension(request.m_format), arrFiles);
    output.KeepInputs(arrFiles);
    return ForEachFile(arrFiles, [&](const std::wstring& strPath) {
        const auto spCapture = std::make_shared<RTCaptureFile>();
        ReadInput(strPath, *spCapture);
        const std::vector<BYTE> bytes = DrawPlotPicture(spCapture, request);
        WriteWhole(output.GetPath(strPath),
                   {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    });
}
