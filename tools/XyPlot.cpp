#include "tools/XyPlot.h"

#include "evaluation/XyPicture.h"
#include "platform/drawing/DisplayScale.h"
#include "platform/system/Paths.h"
#include "tools/Captures.h"

namespace {

/// The strokes of a picture, and what they are judged as.
struct DrawnStrokes {
    std::vector<StrokeSource> m_sources;
    std::vector<CStroke> m_strokes;
    std::vector<StrokeVerdict> m_verdicts;
};

/// @return the exit code
int ReadAll(const std::vector<std::wstring>& arrFiles, const StrokeRequest& request,
            DrawnStrokes& drawn) {
    int nExitCode = STROKES_FINE;
    ForEachStroke(
        arrFiles, request,
        [&](const StrokeSource& source) {
            if (const char* const pObstacle = source.FindObstacle()) {
                Report(DescribeStroke(source.m_name) + ": " + pObstacle);
                nExitCode = STROKE_UNKNOWN;
                return;
            }
            drawn.m_sources.push_back(source);
            drawn.m_strokes.emplace_back(*source.m_spCurve, source.m_nRate);
        },
        [&](const auto&, const auto&) { nExitCode = STROKE_UNKNOWN; });
    return nExitCode;
}

/// The first file's name, and how many more there are.
std::wstring MakeTitle(const std::vector<StrokeSource>& sources) {
    std::vector<std::wstring> files;
    for (const StrokeSource& source : sources)
        if (files.empty() || files.back() != *source.m_name.m_file)
            files.push_back(*source.m_name.m_file);
    std::wstring strTitle = GetNameOfPath(files.front());
    if (files.size() > 1) strTitle += L" and " + std::to_wstring(files.size() - 1) + L" more";
    return strTitle;
}

}  // namespace

int PlotStrokes(const std::vector<std::wstring>& arrFiles, const XyPlotRequest& request) {
    KeepInputs(request.m_strOutput, arrFiles);
    const CLimitsFile limits = ReadLimits(request.m_strLimits);
    DrawnStrokes drawn;
    const int nExitCode = ReadAll(arrFiles, request.m_strokes, drawn);
    if (drawn.m_strokes.empty()) return nExitCode;

    XyPicture content;
    content.m_strTitle = MakeTitle(drawn.m_sources);
    content.m_bVoltage = drawn.m_sources.front().m_bVoltage;
    if (!request.m_strLimits.empty()) {
        content.m_pLimits = &limits.GetLimits();
        for (const CStroke& stroke : drawn.m_strokes)
            drawn.m_verdicts.push_back(JudgeStroke(stroke, *content.m_pLimits));
    }
    for (std::size_t n = 0; n < drawn.m_strokes.size(); ++n)
        content.m_strokes.push_back(
            {&drawn.m_strokes[n], content.m_pLimits ? &drawn.m_verdicts[n] : nullptr});
    const int nUnits = GetUnitsPerPixel(request.m_format);
    SetDisplayScale(nUnits);
    const CSize extent{request.m_size.cx * nUnits, request.m_size.cy * nUnits};
    CPicture picture(request.m_format, extent);
    DrawXyPicture(picture.GetDC(), extent, content);
    const std::vector<BYTE> bytes = picture.Encode();
    WriteWhole(request.m_strOutput, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return nExitCode;
}
