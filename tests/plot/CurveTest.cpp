// Curves and input traces against a drawing that visits every value and every record.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/plot/PlotSheet.h"

namespace {

/// What a plot shows, drawn from a full scan of the values onto a sheet of its own. Scales and zero
/// line are those that the painter has left in the plot.
class NaivePlot {
  public:
    explicit NaivePlot(const PlotSheet& painted)
        : m_plot(painted.m_plot),
          m_curves(painted.m_spCurves->m_lstCurves[painted.m_plot.m_nChannel]),
          m_nWidth(m_plot.m_nWidth), m_nHeight(m_plot.m_nHeight), m_sheet(m_nWidth, m_nHeight) {}

    /// @param nOffset, nMinY as the value axis has them
    void DrawCurves(int nOffset, int nMinY) {
        const CRgn area({40, m_nHeight / 20, m_nWidth, nMinY + 1});
        int nPrevious = 0;
        for (std::size_t k = 0; k < m_curves.size(); ++k) {
            const RTCurveData& curve = *m_curves[k];
            const long nLast = std::min<long>(m_plot.m_nViewEnd, curve.GetCount());
            const long nFirst = FindFirst(curve);
            if (nFirst >= nLast) continue;
            const std::int16_t* p = curve.GetValues();
            const auto yOf = [&](int v) {
                return m_plot.m_nZeroY - static_cast<int>((v - nOffset) * m_plot.m_dYScale);
            };
            CPoint main{40, yOf(p[nFirst])};
            CPoint second{40, nFirst + 1 < nLast ? yOf(p[nFirst + 1]) : 0};
            const long u = ColumnWidth();
            for (long i = nFirst; i < nLast; i += u) {
                const int x = 40 + static_cast<int>((i - nFirst) * m_plot.m_dXScale);
                int lo = 32767, hi = -32768, hi2 = 0;
                for (long j = i; j < std::min(i + u, nLast); j += 2) {
                    lo = std::min<int>(lo, p[j]);
                    hi = std::max<int>(hi, p[j]);
                    if (j + 1 < nLast) hi2 = std::max<int>(hi2, p[j + 1]);
                }
                m_sheet.m_dc.SelectClipRgn(&area);
                const auto to = [&](int v) { Line(main, {x, yOf(v)}, MainColour(k)); };
                if (lo >= nPrevious) {
                    to(hi), nPrevious = hi;
                } else if (hi <= nPrevious) {
                    to(lo), nPrevious = lo;
                } else {
                    to(lo), to(hi), nPrevious = hi;
                }
                m_sheet.m_dc.SelectClipRgn(nullptr);
                if (m_plot.m_nDisplay == 2 && nFirst + 1 < nLast)
                    Line(second, {x, yOf(hi2)}, Slot(m_plot.m_pColours->m_acrGraphLine2, k));
            }
        }
    }

    void DrawTraces(const COLORREF (&colours)[4]) {
        const RTCurveData& curve = *m_curves.front();
        const RTPulseList& pulses = curve.GetPulses();
        const long nLast = std::min<long>(m_plot.m_nViewEnd, curve.GetCount());
        const long nFirst = FindFirst(curve);
        const int nBand = m_nHeight / 5;
        for (int k = 0; k < 4; ++k) {
            const int yBase = m_nHeight - 40 - (4 - k) * (nBand / 5) - 2;
            const auto yOf = [&](const RTPulse& pulse) {
                return pulse.m_byState >> k & 1 ? yBase : yBase - nBand * 16 / 100;
            };
            bool bStarted = false;
            CPoint at{40, 0};
            for (std::size_t r = 0; r < pulses.GetCount(); ++r) {
                const RTPulse& pulse = pulses.At(r);
                if (pulse.m_nPosition < nFirst) continue;
                if (!bStarted) at.y = yOf(pulse);
                bStarted = true;
                const long nTo = std::min<long>(pulse.m_nPosition, nLast);
                const int x = 40 + static_cast<int>((nTo - nFirst) * m_plot.m_dXScale);
                Line(at, {at.x, yOf(pulse)}, colours[k]);
                Line(at, {x, yOf(pulse)}, colours[k]);
                if (pulse.m_nPosition > nLast) break;
            }
        }
    }

    Pixels Find(COLORREF color) const { return m_sheet.Find(color); }

    COLORREF MainColour(std::size_t k) const {
        return Slot(m_plot.m_nDisplay == 1 ? m_plot.m_pColours->m_acrGraphLine2
                                           : m_plot.m_pColours->m_acrGraphLine,
                    k);
    }

  private:
    static COLORREF Slot(const std::array<COLORREF, 20>& slots, std::size_t k) {
        return k < 20 ? slots[k] : 6439203;
    }
    long ColumnWidth() const {
        const long n =
            m_plot.m_bZoomed ? m_plot.m_nViewEnd - m_plot.m_nViewStart : m_plot.m_nSpanValues;
        long u = std::max(n / 500, 1L);
        if (u % 2) ++u;
        if (m_plot.m_nMode == 3)
            while (u % 3) ++u;
        return u;
    }
    long FindFirst(const RTCurveData& curve) const {
        const long nCount = curve.GetCount();
        long nFirst = m_plot.m_nViewStart <= nCount ? m_plot.m_nViewStart : nCount - 1;
        if (m_plot.m_nDisplay == 0 && nFirst % 2 == 1) ++nFirst;
        if (m_plot.m_nDisplay == 1 && nFirst % 2 == 0) ++nFirst;
        if (m_plot.m_nDisplay == 2) nFirst = std::max(nFirst, 2L);
        if (m_plot.m_nMode == 3)
            while (nFirst >= m_plot.m_nDisplay && (nFirst - m_plot.m_nDisplay) % 3) --nFirst;
        return nFirst;
    }
    void Line(CPoint& from, CPoint to, COLORREF color) {
        const CPen pen(PenStyle::Solid, color);
        m_sheet.m_dc.SelectPen(&pen);
        m_sheet.m_dc.MoveTo(from.x, from.y);
        m_sheet.m_dc.LineTo(to.x, to.y);
        m_sheet.m_dc.SelectPen(nullptr);
        from = to;
    }

    const RTPlot& m_plot;
    const RTCurveList& m_curves;
    int m_nWidth;
    int m_nHeight;
    PlotSheet m_sheet;
};

/// The whole picture of the curves must be the naive one, for a fixed value axis of -5000 to 5000.
void ExpectNaiveCurves(PlotSheet& sheet, const std::string& strCase) {
    sheet.m_graph.m_bAutoZoom = 0;
    sheet.Paint();
    NaivePlot naive(sheet);
    naive.DrawCurves(0, sheet.m_plot.m_nZeroY + static_cast<int>(5000 * sheet.m_plot.m_dYScale));
    // The legend of several curves repeats their colours, right of everything compared here.
    const int nRight =
        sheet.m_spCurves->m_lstCurves[0].size() > 1 ? sheet.m_plot.m_nWidth - 100 : 9999;
    const auto left = [nRight](const Pixels& pixels) {
        Pixels part;
        for (const auto& pixel : pixels)
            if (pixel.first < nRight) part.insert(pixel);
        return part;
    };
    std::set<COLORREF> colours{sheet.m_plot.m_pColours->m_acrGraphLine2[0]};
    for (std::size_t k = 0; k < sheet.m_spCurves->m_lstCurves[0].size(); ++k)
        colours.insert(naive.MainColour(k));
    for (const COLORREF color : colours)
        EXPECT_EQ(left(sheet.Find(color)), left(naive.Find(color)))
            << strCase << " colour " << color;
}

/// A wandering value with spikes, different for each seed.
std::function<int(std::uint32_t)> Wander(unsigned nSeed) {
    return [random = std::mt19937(nSeed), nValue = 0](std::uint32_t) mutable {
        nValue = std::clamp(nValue + static_cast<int>(random() % 101) - 50, -6000, 6000);
        return random() % 500 == 0 ? static_cast<int>(random() % 65536) - 32768 : nValue;
    };
}

TEST(Curves, AreDrawnAsAFullScanDrawsThem) {
    for (const std::uint32_t nCount : {1u, 2u, 3u, 499u, 1501u, 40000u, 119999u})
        for (const int nDisplay : {0, 1, 2})
            for (const int nMode : {1, 3}) {
                PlotSheet sheet;
                sheet.m_plot.m_nDisplay = static_cast<std::uint8_t>(nDisplay);
                sheet.m_plot.m_nMode = static_cast<std::uint8_t>(nMode);
                sheet.Add(nCount, Wander(nCount));
                ExpectNaiveCurves(sheet, std::to_string(nCount) + " values, display " +
                                             std::to_string(nDisplay) + ", mode " +
                                             std::to_string(nMode));
            }
}

TEST(Curves, AreDrawnAsAFullScanDrawsThemInAZoomedView) {
    std::mt19937 random(5);
    for (int n = 0; n < 30; ++n) {
        PlotSheet sheet(500 + n * 7, 300 + n);
        sheet.Add(30000, Wander(n));
        sheet.m_plot.m_nDisplay = n % 3;
        sheet.m_plot.m_nMode = n % 2 ? 1 : 3;
        sheet.m_plot.m_bZoomed = 1;
        sheet.m_plot.m_nViewStart = static_cast<int>(random() % 31000);
        sheet.m_plot.m_nViewEnd = sheet.m_plot.m_nViewStart + 1 + static_cast<int>(random() % 9000);
        ExpectNaiveCurves(sheet, "zoom " + std::to_string(n));
    }
}

TEST(Curves, CarryTheLastValueOverAlsoFromBeyondTheWidth) {
    for (unsigned nSeed = 0; nSeed < 8; ++nSeed) {
        PlotSheet sheet;
        // A square wave keeps the outcome open from one column to the next, noise decides it soon.
        sheet.Add(60000 + 38 * nSeed, [wander = Wander(nSeed), nSeed](std::uint32_t i) mutable {
            const int nNoise = wander(i);
            return nSeed < 4 ? nNoise : (i / 2 % 2 ? 3000 : -3000);
        });
        sheet.Add(10000, [](std::uint32_t i) { return i < 4 ? -2000 : 2500; });
        sheet.Add(21000 + nSeed, Wander(nSeed + 10));
        ExpectNaiveCurves(sheet, "seed " + std::to_string(nSeed));
    }
}

TEST(InputTraces, AreDrawnAsRecordByRecord) {
    constexpr COLORREF COLOURS[4] = {10040064, 3368448, 6684723, 255};
    std::mt19937 random(3);
    for (int n = 0; n < 24; ++n) {
        PlotSheet sheet(698, 343 + 9 * n);
        RTCurveData& curve = sheet.Add(100000, [](std::uint32_t) { return 0; });
        const unsigned nStep = n % 3 == 0 ? 3000 : n % 3 == 1 ? 300 : 40;
        unsigned nState = random();
        for (std::uint32_t nAt = random() % nStep; nAt < 110000; nAt += random() % nStep) {
            if (random() % (n % 4 + 1) == 0) nState ^= 1u << random() % 6;
            curve.AddPulse(static_cast<std::int32_t>(nAt), static_cast<std::uint8_t>(nState));
        }
        if (n % 2) {
            sheet.m_plot.m_bZoomed = 1;
            // At a record, where that is an even index; else just behind it.
            const RTPulseList& pulses = curve.GetPulses();
            sheet.m_plot.m_nViewStart = pulses.At(pulses.GetCount() / 8).m_nPosition;
            sheet.m_plot.m_nViewEnd = sheet.m_plot.m_nViewStart + 900 * n;
        }
        if (n > 18) sheet.m_plot.m_nSpanValues = 5000;  // most of it lies right of the plot
        sheet.Paint();
        NaivePlot naive(sheet);
        naive.DrawTraces(COLOURS);
        for (const COLORREF color : COLOURS)
            EXPECT_EQ(sheet.Find(color), naive.Find(color)) << n << " colour " << color;
    }
}

}  // namespace
