#include <memory>
#include <string>
#include <vector>

#include "Alternative.h"
#include "Rounds.h"
#include "Rows.h"
#include "Strokes.h"
#include "Table.h"
#include "platform/drawing/Graphics.h"
#include "plot/PlotCache.h"
#include "plot/RTPlot.h"

namespace {

constexpr std::uint16_t RATE = 40000;
constexpr unsigned SHORT_CURVE = 3 * RATE;
constexpr unsigned LONG_CURVE = 60 * RATE;
constexpr unsigned VALUES_PER_BLOCK = 800;  ///< 20 ms, as a link delivers them
constexpr unsigned LEVEL_CHANGES = 12;      ///< of the digital lines in a curve
constexpr int COLUMNS = 500;                ///< that a plot reduces a curve to
constexpr int LEFT = 40;                    ///< of the curve area

std::shared_ptr<CRTCurves> MakeCurves(unsigned nCurves, unsigned nValues) {
    auto spCurves = std::make_shared<CRTCurves>();
    for (unsigned nCurve = 0; nCurve < nCurves; ++nCurve) {
        RTCurveData& curve = *spCurves->AddCurve(0, nValues);
        const auto free = curve.GetFreeValues();
        FillStrokes(free, nCurve);
        for (unsigned i = VALUES_PER_BLOCK; i <= nValues; i += VALUES_PER_BLOCK) {
            curve.PublishCount(i);
            curve.AddPulse(static_cast<std::int32_t>(i),
                           static_cast<std::uint8_t>(i / (nValues / LEVEL_CHANGES + 1)));
        }
        curve.RecomputeExtremes();
    }
    return spCurves;
}

struct Picture {
    Picture() {
        m_bitmap.CreateBitmap(PICTURE_WIDTH, PICTURE_HEIGHT);
        m_dc.CreateCompatibleDC(nullptr);
        m_dc.SelectBitmap(&m_bitmap);
    }
    CBitmap m_bitmap;
    CDC m_dc;
};

struct PaintedPlot {
    PaintedPlot(unsigned nCurves, unsigned nValues) {
        m_graph.m_nGraphRate = RATE;
        m_plot.m_spCurves = MakeCurves(nCurves, nValues);
        m_plot.m_pGraph = &m_graph;
        m_plot.m_nSpanValues = static_cast<std::int32_t>(nValues);
        m_plot.m_nWidth = PICTURE_WIDTH;
        m_plot.m_nHeight = m_plot.m_nBottom = PICTURE_HEIGHT;
        m_plot.ZoomAll();
    }
    void Paint() { m_plot.Paint(m_picture.m_dc, &m_cache); }
    /// In another view than at the last paint: nothing of that one can be used again.
    void PaintNewView() {
        m_plot.m_nSpanValues ^= 0x100;
        Paint();
    }

    RTGraphSettings m_graph;
    RTPlot m_plot;
    PlotCache m_cache;
    Picture m_picture;
};

/// As many lines and texts as a paint draws, at positions that are known beforehand.
class BareDrawing {
  public:
    explicit BareDrawing(const CRTCurves& curves) {
        for (const auto& spCurve : curves.m_lstCurves[0]) m_curves.push_back(FindPoints(*spCurve));
        m_texts = {L"I #1", L"I #2", L"I #3", L"I #4", L"(ms)"};
        for (int k = 0; k < TIME_LABELS; ++k) m_texts.push_back(std::to_wstring(k * 6000));
        for (int k = 0; k < GRID_LINES; ++k) m_texts.push_back(std::to_wstring(-5000 + k * 1000));
        if (m_curves.size() > 1)
            for (int k = 0; k < LEGEND_ENTRIES; ++k)
                m_texts.push_back(L"Curve #" + std::to_wstring(k + 1));
    }

    void Draw() {
        const CBrush background(RGB(192, 192, 192));
        CDC& dc = m_picture.m_dc;
        dc.SelectPen(nullptr);
        dc.SetBackgroundMode(BackgroundMode::Transparent);
        dc.Rectangle({0, 0, PICTURE_WIDTH, PICTURE_HEIGHT}, &background);
        for (std::size_t k = 0; k < m_texts.size(); ++k)
            dc.TextOut(static_cast<int>(k * 17 % 600), static_cast<int>(k * 31 % 320), m_texts[k]);
        DrawStraightLines(dc, m_curves.size() > 1);

        const CPen line(PenStyle::Solid, RGB(0, 0, 255));
        const CRgn area({LEFT, 17, PICTURE_WIDTH, 220});
        dc.SelectPen(&line);
        dc.SelectClipRgn(&area);
        for (const std::vector<CPoint>& points : m_curves) {
            dc.MoveTo(points.front().x, points.front().y);
            dc.PolylineTo(points);
        }
        dc.SelectClipRgn(nullptr);
        dc.SelectPen(nullptr);
    }

  private:
    static constexpr int TIME_LABELS = 9;
    static constexpr int GRID_LINES = 11;
    static constexpr int LEGEND_ENTRIES = 12;  ///< that fit into the picture

    /// From column to column to the farther end, and to both where the line passes between them.
    static std::vector<CPoint> FindPoints(const RTCurveData& curve) {
        std::vector<CPoint> points;
        const auto toY = [](int nValue) { return 118 - nValue * 198 / 10000; };
        const std::uint32_t nWidth = curve.GetCount() / COLUMNS;
        int nLevel = 0;
        for (int nColumn = 0; nColumn < COLUMNS; ++nColumn) {
            RTMinMax column;
            const std::int16_t* pValues = curve.GetValues() + nColumn * nWidth;
            for (std::uint32_t i = 0; i < nWidth; i += 2) column.Include(pValues[i]);
            const int x = LEFT + nColumn * (PICTURE_WIDTH - LEFT - 2) / COLUMNS;
            if (column.m_nMin < nLevel && column.m_nMax > nLevel)
                points.push_back({x, toY(column.m_nMin)});
            nLevel = nLevel >= column.m_nMax ? column.m_nMin : column.m_nMax;
            points.push_back({x, toY(nLevel)});
        }
        return points;
    }

    /// The grid, the ticks, the input band's frame and the steps of its traces.
    static void DrawStraightLines(CDC& dc, bool bLegend) {
        const CPen grid(PenStyle::Dot, RGB(255, 255, 0));
        dc.SelectPen(&grid);
        for (int k = 0; k < GRID_LINES; ++k) DrawLine(dc, LEFT, 20 + 18 * k, PICTURE_WIDTH);
        const CPen solid(PenStyle::Solid, RGB(128, 128, 128));
        dc.SelectPen(&solid);
        for (int k = 0; k < 2; ++k) DrawLine(dc, 0, 235 + 60 * k, PICTURE_WIDTH);
        for (int k = 0; k < TIME_LABELS; ++k) {
            dc.MoveTo(LEFT + k * 65, 313);
            dc.LineTo(LEFT + k * 65, 303);
        }
        constexpr int nStepWidth = (PICTURE_WIDTH - LEFT) / LEVEL_CHANGES;
        for (int nTrace = 0; nTrace < 4; ++nTrace) {
            int y = 250 + nTrace * 13;
            dc.MoveTo(LEFT, y);
            for (int k = 0; k < static_cast<int>(LEVEL_CHANGES); ++k) {
                const int yNext = 250 + nTrace * 13 + (k >> nTrace & 1) * 10;
                if (yNext != y) dc.LineTo(LEFT + k * nStepWidth, yNext);
                y = yNext;
                dc.LineTo(LEFT + (k + 1) * nStepWidth, y);
            }
        }
        for (int k = 0; bLegend && k < LEGEND_ENTRIES; ++k) DrawLine(dc, 500, 30 + 15 * k, 520);
    }

    static void DrawLine(CDC& dc, int x, int y, int xEnd) {
        dc.MoveTo(x, y);
        dc.LineTo(xEnd, y);
    }

    Picture m_picture;
    std::vector<std::wstring> m_texts;
    std::vector<std::vector<CPoint>> m_curves;
};

/// Measures often enough for the rounds with slow programs.
Measure TimeManyCalls(std::function<void()> work) {
    return [measure = TimeCalls(std::move(work))] {
        std::vector<double> times;
        for (int i = 0; i < 25; ++i) times.push_back(measure());
        return FindMedian(std::move(times));
    };
}

struct Comparison {
    const char* m_pName;
    CAlternative m_alternative;
    double m_dTimesAsFast;  ///< the goal for long curves
    int m_nPaints;          ///< in each round
};

void CompareAlternatives(CTable& table, const std::string& strWhat, PaintedPlot& plot,
                         unsigned nCurves, unsigned nValues, int nRounds) {
    const Comparison comparisons[] = {
        {"QCustomPlot, adaptive sampling", CAlternative("paint_qcustomplot"), 10, 3},
        {"Qwt, filtered points", CAlternative("paint_qwt"), 1000, 1},
    };
    std::vector<Measure> measures{TimeManyCalls([&] { plot.PaintNewView(); })};
    for (const Comparison& other : comparisons)
        if (other.m_alternative.IsBuilt())
            measures.push_back(other.m_alternative.TimePaints(nCurves, nValues, other.m_nPaints));
    const std::vector<double> times = MeasureInTurn(measures, nRounds);

    std::size_t nTime = 1;
    for (const Comparison& other : comparisons) {
        if (!other.m_alternative.IsBuilt()) {
            table.AddMissing(strWhat, other.m_pName, "not there");
            continue;
        }
        Goal goal{Goal::Faster};
        if (nValues == LONG_CURVE) goal.m_times = other.m_dTimesAsFast;
        table.AddComparison(strWhat, times[0], other.m_pName, times[nTime++], goal);
    }
}

}  // namespace

void MeasurePaint(CTable& table) {
    struct Case {
        const char* m_pName;
        const char* m_pNewView;
        unsigned m_nCurves;
        unsigned m_nValues;
        int m_nRounds;
    };
    constexpr Case CASES[] = {
        {"1 curve of 120,000 values", "1 curve of 120,000, new view", 1, SHORT_CURVE, 5},
        {"1 curve of 2,400,000 values", "1 curve of 2,400,000, new view", 1, LONG_CURVE, 5},
        {"20 curves of 2,400,000 values", "20 curves of 2,400,000, new view", 20, LONG_CURVE, 3},
    };
    PaintedPlot shortPlot(1, SHORT_CURVE);
    for (const auto& [pName, pNewView, nCurves, nValues, nRounds] : CASES) {
        PaintedPlot plot(nCurves, nValues);
        PaintedPlot other(nCurves, nValues);
        BareDrawing bare(*plot.m_plot.m_spCurves);
        const std::vector<double> times = MeasureInTurn(
            {TimeCalls([&] { plot.Paint(); }), TimeCalls([&] { bare.Draw(); }),
             TimeCalls([&] { shortPlot.Paint(); }), TimeCalls([&] { other.PaintNewView(); })},
            101);
        constexpr const char* BARE = "bare drawing of its lines and texts";
        table.AddComparison(pName, times[0], BARE, times[1], Goal{Goal::Within, 1.5});
        table.AddComparison(pNewView, times[3], BARE, times[1], Goal{Goal::Within, 1.5});
        if (nCurves == 1 && nValues == LONG_CURVE)
            table.AddComparison(pName, times[0], "1 curve of 120,000 values", times[2],
                                Goal{Goal::Within, 2});
        CompareAlternatives(table, pNewView, plot, nCurves, nValues, nRounds);
    }
}
