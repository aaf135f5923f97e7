// Full curves, painted again in the same view and in a new one. What is only drawn again costs
// nothing here, as the picture is kept; the other libraries, asked for a drawing, make one.
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Alternative.h"
#include "BareDrawing.h"
#include "PaintedPlot.h"
#include "Rounds.h"
#include "Rows.h"
#include "Table.h"
#include "platform/system/Text.h"

namespace {

constexpr unsigned SHORT_CURVE = 3 * PLOT_RATE;
constexpr unsigned LONG_CURVE = 60 * PLOT_RATE;

struct Case {
    const char* m_pName;
    unsigned m_nCurves;
    unsigned m_nValues;
    int m_nRounds;                        ///< with the other libraries
    std::optional<double> m_limit;        ///< of a new view, in seconds
    std::optional<double> m_qcustomplot;  ///< times as fast as that library, with a new view
    std::optional<double> m_qwt;
    std::optional<double> m_pyqtgraph;
};

constexpr Case CASES[] = {
    {"1 curve of 120,000", 1, SHORT_CURVE, 3, {}, {}, {}, {}},
    {"1 curve of 2,400,000", 1, LONG_CURVE, 3, {}, 40, 500, {}},
    {"20 curves of 2,400,000", 20, LONG_CURVE, 2, 0.001, 70, 500, {}},
};

/// The bare lines and texts, drawn with our own painter.
class CBarePainter {
  public:
    explicit CBarePainter(const BareDrawing& drawing) {
        for (const BareLine& bare : drawing.m_lines) {
            m_lines.push_back({bare.m_kind, {}});
            for (const auto& [x, y] : bare.m_points) m_lines.back().m_points.push_back({x, y});
        }
        for (const BareText& bare : drawing.m_texts)
            m_texts.push_back({{bare.m_at.x, bare.m_at.y}, FromUtf8(bare.m_strText)});
    }

    void Draw() {
        const CBrush background(RGB(192, 192, 192));
        const CPen pens[] = {{PenStyle::Dot, RGB(255, 255, 0)},
                             {PenStyle::Solid, RGB(128, 128, 128)},
                             {PenStyle::Solid, RGB(0, 0, 255)}};
        const CRgn area({BareDrawing::CURVES_LEFT, BareDrawing::CURVES_TOP, PICTURE_WIDTH,
                         BareDrawing::CURVES_BOTTOM});
        CDC& dc = m_picture.m_dc;
        dc.SetBackgroundMode(BackgroundMode::Transparent);
        dc.Rectangle({0, 0, PICTURE_WIDTH, PICTURE_HEIGHT}, &background);
        for (const Text& text : m_texts) dc.TextOut(text.m_at.x, text.m_at.y, text.m_strText);
        for (const Line& line : m_lines) {
            dc.SelectPen(&pens[line.m_kind]);
            dc.SelectClipRgn(line.m_kind == BareLine::Curve ? &area : nullptr);
            dc.MoveTo(line.m_points.front().x, line.m_points.front().y);
            dc.PolylineTo(line.m_points);
        }
        dc.SelectClipRgn(nullptr);
        dc.SelectPen(nullptr);
    }

  private:
    struct Line {
        BareLine::Kind m_kind;
        std::vector<CPoint> m_points;
    };
    struct Text {
        CPoint m_at;
        std::wstring m_strText;
    };
    std::vector<Line> m_lines;
    std::vector<Text> m_texts;
    Picture m_picture;
};

/// A process of another library takes so long that its rounds are few: in each, ours is measured
/// many times.
Measure TimeManyCalls(std::function<void()> work) {
    return [measure = TimeCalls(std::move(work))] {
        std::vector<double> times;
        for (int i = 0; i < 25; ++i) times.push_back(measure().front());
        return times;
    };
}

/// One of ours beside the same of the other libraries.
void CompareLibraries(CTable& table, const Case& ofCase, PaintView view, std::function<void()> ours,
                      std::optional<double> limit) {
    const bool bNew = view == PaintView::New;
    struct Library {
        const char* m_pName;
        CAlternative m_program;
        int m_nPaints;  ///< in each round
        Goal m_goal;
    };
    const auto faster = [&](std::optional<double> times) {
        return Goal{Goal::Faster, bNew ? times : std::nullopt};
    };
    const Library libraries[] = {
        {"bare lines and texts, Qt's painter", CAlternative("paint_qt"), 25, {Goal::Within}},
        {"QCustomPlot, adaptive sampling", CAlternative("paint_qcustomplot"), 3,
         faster(ofCase.m_qcustomplot)},
        {"Qwt, filtered points", CAlternative("paint_qwt"), 1, faster(ofCase.m_qwt)},
        {"pyqtgraph, peak downsampling", CAlternative("paint_pyqtgraph"), 2,
         faster(ofCase.m_pyqtgraph)},
    };
    std::vector<Measure> measures{TimeManyCalls(std::move(ours))};
    CBarePainter bare(MakeBareDrawing(ofCase.m_nCurves, ofCase.m_nValues));
    measures.push_back(TimeManyCalls([&] { bare.Draw(); }));
    for (const Library& library : libraries)
        if (library.m_program.IsBuilt())
            measures.push_back(library.m_program.TimePaints(ofCase.m_nCurves, ofCase.m_nValues,
                                                            view, library.m_nPaints));
    const std::vector<Figures> figures = MeasureInTurn(measures, ofCase.m_nRounds);

    const std::string strWhat = std::string(ofCase.m_pName) + (bNew ? ", new view" : ", kept");
    if (limit) table.AddTime(strWhat, figures[0], limit);
    table.AddComparison(strWhat, figures[0], "bare lines and texts, our painter", figures[1],
                        {Goal::Within});
    std::size_t nNext = 2;
    for (const Library& library : libraries) {
        if (library.m_program.IsBuilt())
            table.AddComparison(strWhat, figures[0], library.m_pName, figures[nNext++],
                                library.m_goal);
        else
            table.AddMissing(strWhat, library.m_pName, "not there");
    }
}

}  // namespace

void MeasurePaint(CTable& table) {
    for (const Case& ofCase : CASES) {
        PaintedPlot plot(MakeFullCurves(ofCase.m_nCurves, ofCase.m_nValues), ofCase.m_nValues);
        CompareLibraries(table, ofCase, PaintView::Same, [&] { plot.Paint(); }, {});
        CompareLibraries(
            table, ofCase, PaintView::New, [&] { plot.PaintNewView(); }, ofCase.m_limit);
    }
}
