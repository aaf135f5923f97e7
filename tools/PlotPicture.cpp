#include "tools/PlotPicture.h"

#include <algorithm>
#include <limits>

#include "curves/InstrumentMode.h"
#include "platform/drawing/DisplayScale.h"
#include "plot/RTPlot.h"
#include "tools/Captures.h"

namespace {

constexpr int TITLE_BAND = 24;
constexpr int TITLE_HEIGHT = 15;
constexpr int NAME_BAND = 18;  ///< for an axis's name, of 12 pixels
constexpr int TEXT_LEFT = 44;  ///< just right of the value labels

std::int32_t ToIndex(double dMilliseconds, std::uint16_t nValueRate) {
    const double dIndex = nValueRate > 0 ? dMilliseconds * nValueRate / 1000 : dMilliseconds;
    return static_cast<std::int32_t>(
        std::min<double>(dIndex, std::numeric_limits<std::int32_t>::max()));
}

std::wstring NameValues(const RTScreenRecord& screen, std::uint8_t nMode, std::uint8_t nDisplay) {
    // The values as the file holds them: thousandths of the instrument's units.
    std::wstring strForce = L"Force [1/1000]";
    const SecondInput secondInput = GetSecondInput(screen);
    if (nDisplay == 0 || !OffersPairViews(nMode, secondInput)) return strForce;
    const std::wstring strSecond =
        secondInput == SecondInput::Voltage ? L"Voltage [mV]" : L"Position [1/1000]";
    return nDisplay == 1 ? strSecond : strForce + L", " + strSecond;
}

/// Draws what stands around the plot, which is not drawn over: markers run through its whole
/// height.
void DrawSurroundings(CPicture& sheet, const RTPlot& plot, const PlotRequest& request,
                      const RTScreenRecord& screen) {
    const CSize extent = sheet.GetExtent();
    CDC& dc = sheet.GetDC();
    dc.FillSolidRect({0, 0, extent.cx, extent.cy}, plot.m_pColours->m_crBackground);
    dc.SetBackgroundMode(BackgroundMode::Transparent);
    dc.SetTextColor(plot.m_pColours->m_crText);
    dc.SetTextAlign(TextAlign::Left);
    int yName = Scaled(2);
    if (!request.m_strTitle.empty()) {
        CFont font;
        font.CreatePixelFont(TITLE_HEIGHT, L"MS Shell Dlg", true);
        dc.SelectFont(&font);
        dc.TextOut(Scaled(TEXT_LEFT), Scaled(3), request.m_strTitle);
        dc.SelectFont(nullptr);
        yName = Scaled(TITLE_BAND);
    }
    if (!request.m_bUnits) return;
    dc.TextOut(Scaled(TEXT_LEFT), yName, NameValues(screen, plot.m_nMode, plot.m_nDisplay));
    dc.SetTextAlign(TextAlign::Center);
    dc.TextOut((Scaled(TEXT_LEFT) + extent.cx) / 2, extent.cy - Scaled(NAME_BAND - 2),
               screen.m_nValueRate > 0 ? L"Time [ms]" : L"Value index");
}

}  // namespace

std::vector<BYTE> DrawPlotPicture(const std::shared_ptr<RTCaptureFile>& spCapture,
                                  const PlotRequest& request) {
    const RTScreenRecord& screen = spCapture->m_screen;
    ScaleToPicture(request.m_format, request.m_size, PLOT_DESIGN_SIZE);
    const int nUnits = GetUnitsPerPixel(request.m_format);
    CPicture sheet(request.m_format, {request.m_size.cx * nUnits, request.m_size.cy * nUnits});
    const int nNameBand = request.m_bUnits ? Scaled(NAME_BAND) : 0;
    const int nTop = nNameBand + (request.m_strTitle.empty() ? 0 : Scaled(TITLE_BAND));
    const CSize plotSize{sheet.GetExtent().cx,
                         std::max(sheet.GetExtent().cy - nTop - nNameBand, 1)};

    RTGraphSettings graph;
    graph.m_nGraphRate = screen.m_nValueRate;
    RTPlot plot;
    plot.m_pGraph = &graph;
    plot.m_spCurves = std::shared_ptr<CRTCurves>(spCapture, &spCapture->m_curves);
    plot.m_nChannel = static_cast<std::uint8_t>(request.m_nChannel - 1);
    plot.m_nDisplay = request.m_nDisplay;
    plot.m_nMode = screen.m_nMode.value_or(plot.m_nMode);
    plot.m_nSpanValues = spCapture->m_plots.m_anSpans[plot.m_nChannel];
    plot.m_nWidth = plotSize.cx;
    plot.m_nHeight = plot.m_nBottom = plotSize.cy;
    plot.ZoomAll();
    if (request.m_range) {
        plot.m_nViewStart = ToIndex(request.m_range->m_dFrom, screen.m_nValueRate);
        plot.m_nViewEnd = ToIndex(request.m_range->m_dTo, screen.m_nValueRate);
        plot.m_bZoomed = 1;
    }

    CPicture part(request.m_format, plotSize);
    plot.Paint(part.GetDC());
    if (nTop == 0) return part.Encode();
    DrawSurroundings(sheet, plot, request, screen);
    sheet.DrawPart({0, nTop}, part);
    return sheet.Encode();
}
