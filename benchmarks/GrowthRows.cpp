// What goes on arriving while a capture runs, and what a repaint of the plot then costs.
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "PaintedPlot.h"
#include "Rounds.h"
#include "Rows.h"
#include "Table.h"

namespace {

constexpr unsigned CURVE_VALUES = 60 * PLOT_RATE;
constexpr unsigned VALUES_PER_REPAINT = PLOT_RATE / 60;
constexpr int WIDE = 3840;

/// A curve that grows by what arrives between two repaints. When it is full, another one takes its
/// place, which is not measured.
class CGrowingPlot {
  public:
    explicit CGrowingPlot(int nWidth)
        : m_plot(nullptr, CURVE_VALUES, nWidth), m_values(CURVE_VALUES) {
        FillStrokes(m_values, 0);
    }

    /// @param bKept with what the last repaint has left; else all is drawn
    Measure TimeRepaints(bool bKept) {
        return [this, bKept] {
            std::vector<double> times;
            Begin();
            m_plot.Paint();
            for (int i = 0; i < REPAINTS; ++i) {
                Grow();
                times.push_back(TimeOnce([&] { bKept ? m_plot.Paint() : m_plot.PaintWhole(); }));
            }
            return times;
        };
    }

  private:
    static constexpr int REPAINTS = 1000;

    void Begin() {
        auto spCurves = std::make_shared<CRTCurves>();
        m_spCurve = spCurves->AddCurve(0, CURVE_VALUES);
        m_plot.m_plot.m_spCurves = std::move(spCurves);
        m_plot.m_plot.ZoomAll();
        Grow();
    }

    void Grow() {
        const std::uint32_t nCount = m_spCurve->GetCount();
        std::copy_n(m_values.begin() + nCount, VALUES_PER_REPAINT,
                    m_spCurve->GetFreeValues().begin());
        m_spCurve->PublishCount(nCount + VALUES_PER_REPAINT);
        m_spCurve->AddPulse(static_cast<std::int32_t>(nCount + VALUES_PER_REPAINT),
                            static_cast<std::uint8_t>(nCount / (CURVE_VALUES / 12)));
    }

    PaintedPlot m_plot;
    std::vector<std::int16_t> m_values;
    std::shared_ptr<RTCurveData> m_spCurve;
};

void MeasureGrowing(CTable& table, int nWidth) {
    CGrowingPlot kept(nWidth);
    CGrowingPlot whole(nWidth);
    const std::vector<Figures> figures =
        MeasureInTurn({kept.TimeRepaints(true), whole.TimeRepaints(false)}, 2, Figures::Median);
    table.AddComparison("growing curve, " + std::to_string(nWidth) + " wide", figures[0],
                        "all of it drawn each time", figures[1], {Goal::Faster});
}

/// A continuous capture whose curve is full goes on getting a record of the digital lines with each
/// block, all at the curve's last position.
class CFullCapture {
  public:
    static constexpr unsigned BLOCKS_PER_SECOND = 100;
    static constexpr unsigned BLOCKS_PER_CHANGE = 50;

    CFullCapture(unsigned nSeconds, bool bLinesChange)
        : m_bLinesChange(bLinesChange), m_spCurves(MakeFullCurves(1, CURVE_VALUES)),
          m_plot(m_spCurves, CURVE_VALUES) {
        for (unsigned n = 0; n < nSeconds * BLOCKS_PER_SECOND; ++n) AddBlock();
    }

    void AddBlockAndPaint() {
        AddBlock();
        m_plot.Paint();
    }
    void PaintWhole() { m_plot.PaintWhole(); }

  private:
    void AddBlock() {
        const unsigned nChanges = m_bLinesChange ? m_nBlocks / BLOCKS_PER_CHANGE : 0;
        m_spCurves->FirstCurve(0)->AddPulse(CURVE_VALUES, static_cast<std::uint8_t>(nChanges % 16));
        ++m_nBlocks;
    }

    const bool m_bLinesChange;
    std::shared_ptr<CRTCurves> m_spCurves;
    PaintedPlot m_plot;
    unsigned m_nBlocks = 0;
};

void MeasureFull(CTable& table, bool bLinesChange) {
    CFullCapture old(8 * 3600, bLinesChange);
    CFullCapture young(60, bLinesChange);
    const std::vector<Figures> figures = MeasureInTurn(
        {TimeCalls([&] { old.AddBlockAndPaint(); }), TimeCalls([&] { young.AddBlockAndPaint(); }),
         TimeCalls([&] { old.PaintWhole(); }), TimeCalls([&] { young.PaintWhole(); })},
        101);
    const std::string strLines = bLinesChange ? "lines changing" : "lines steady";
    const Goal goal{Goal::Within, 1.1};
    table.AddComparison("full for 8 h, " + strLines + ", repaint", figures[0],
                        "the same after its first minute", figures[1], goal);
    table.AddComparison("full for 8 h, " + strLines + ", all of it drawn", figures[2],
                        "the same after its first minute", figures[3], {Goal::Within});
}

}  // namespace

void MeasureGrowth(CTable& table) {
    MeasureGrowing(table, PICTURE_WIDTH);
    MeasureGrowing(table, WIDE);
    MeasureFull(table, false);
    MeasureFull(table, true);
}
