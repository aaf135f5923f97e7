#include "tools/PlotPicture.h"

#include <algorithm>
#include <limits>

#include "curves/InstrumentMode.h"
#include "platform/drawing/DisplayScale.h"
#include "plot/RTPlot.h"
#include "tools/Captures.h"

namespace {

/// The size that the plot's texts and margins are designed for.
constexpr CSize DESIGN_SIZE = PlotRequest{}.m_size;

constexpr int TITLE_BAND = 24;
constexpr int TITLE_HEIGHT = 15;
constexpr int LABEL_LEFT = 44;  ///< just right of the value labels
constexpr int LABEL_TOP = 2;
constexpr int TIME_LABEL_RISE = 16;  ///< of its top above the bottom; the tick labels end there

std::int32_t ToIndex(double dMilliseconds, std::uint16_t nValueRate) {
    const double dIndex = nValueRate > 0 ? dMilliseconds * nValueRate / 1000 : dMilliseconds;
    return static_cast<std::int32_t>(
        std::min<double>(dIndex, std::numeric_limits<std::int32_t>::max()));
}

std::wstring NameValues(const RTScreenRecord& screen, std::uint8_t nMode, std::uint8_t nDisplay) {
    // The values as the file holds them: thousandths of the instrument's units.
    const std::wstring strForce = L"Force [1/1000]";
    const SecondInput secondInput = GetSecondInput(screen);
    if (nDisplay == 0 || !OffersPairViews(nMode, secondInput)) return strForce;
    const std::wstring strSecond =
        secondInput == SecondInput::Voltage ? L"Voltage [mV]" : L"Position [1/1000]";
    return nDisplay == 1 ? strSecond : strForce + L", " + strSecond;
}

void DrawAxisNames(CPicture& picture, const RTPlot& plot, const RTScreenRecord& screen) {
    CDC& dc = picture.GetDC();
    dc.SetBackgroundMode(BackgroundMode::Transparent);
    dc.SetTextColor(plot.m_pColours->m_crText);
    dc.SetTextAlign(TextAlign::Left);
    dc.TextOut(Scaled(LABEL_LEFT), Scaled(LABEL_TOP),
               NameValues(screen, plot.m_nMode, plot.m_nDisplay));
    dc.SetTextAlign(TextAlign::Center);
    dc.TextOut((Scaled(LABEL_LEFT) + plot.m_nWidth) / 2, plot.m_nHeight - Scaled(TIME_LABEL_RISE),
               screen.m_nValueRate > 0 ? L"Time [ms]" : L"Value index");
}

void DrawTitle(CPicture& picture, const std::wstring& strTitle, int nBandHeight, COLORREF ground,
               COLORREF color) {
    CDC& dc = picture.GetDC();
    dc.FillSolidRect({0, 0, picture.GetExtent().cx, nBandHeight}, ground);
    CFont font;
    font.CreatePixelFont(TITLE_HEIGHT, L"MS Shell Dlg", true);
    dc.SelectFont(&font);
    dc.SetBackgroundMode(BackgroundMode::Transparent);
    dc.SetTextColor(color);
    dc.TextOut(Scaled(LABEL_LEFT), (nBandHeight - Scaled(TITLE_HEIGHT)) / 2 - Scaled(1), strTitle);
    dc.SelectFont(nullptr);
}

}  // namespace

std::vector<BYTE> DrawPlotPicture(const std::shared_ptr<RTCaptureFile>& spCapture,
                                  const PlotRequest& request) {
    const RTScreenRecord& screen = spCapture->m_screen;
    ScaleToPicture(request.m_format, request.m_size, DESIGN_SIZE);
    const int nUnits = GetUnitsPerPixel(request.m_format);
    CPicture sheet(request.m_format, {request.m_size.cx * nUnits, request.m_size.cy * nUnits});
    const int nBand = request.m_strTitle.empty() ? 0 : Scaled(TITLE_BAND);
    const CSize plotSize{sheet.GetExtent().cx, std::max(sheet.GetExtent().cy - nBand, 1)};

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
    if (request.m_bUnits) DrawAxisNames(part, plot, screen);
    if (nBand == 0) return part.Encode();
    DrawTitle(sheet, request.m_strTitle, nBand, plot.m_pColours->m_crBackground,
              plot.m_pColours->m_crText);
    sheet.DrawPart({0, nBand}, part);
    return sheet.Encode();
}
