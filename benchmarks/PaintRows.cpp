// Full curves. In the same view again: nothing has changed, and the picture goes to the window once
// more; each library has its own way to keep it. In a new view: all is drawn.
#include <algorithm>
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
    int m_nRounds;
    // Goals of a new view: seconds, and times as fast as a library.
    std::optional<double> m_limit;
    std::optional<double> m_qcustomplot;
    std::optional<double> m_qwt;
};

constexpr Case CASES[] = {
    {"1 curve of 120,000", 1, SHORT_CURVE, 3, {}, {}, {}},
    {"1 curve of 2,400,000", 1, LONG_CURVE, 3, {}, 40, 500},
    {"20 curves of 2,400,000", 20, LONG_CURVE, 2, 0.001, 70, 500},
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
        std::vector<double> times(25);
        std::ranges::generate(times, [&] { return measure().front(); });
        return times;
    };
}

struct Library {
    const char* m_pName;
    CAlternative m_program;
    int m_nPaints;  ///< in each round
    Goal m_goal;
};

/// A row for each of the measures beside the first, which is ours, and for each library; all that
/// is compared is measured in turn.
/// @param beside what the further measures are of
void AddRows(CTable& table, const Case& ofCase, PaintView view, std::vector<Measure> measures,
             const char* pBeside, const std::vector<Library>& libraries) {
    for (const Library& library : libraries)
        if (library.m_program.IsBuilt())
            measures.push_back(library.m_program.TimePaints(ofCase.m_nCurves, ofCase.m_nValues,
                                                            view, library.m_nPaints));
    const std::vector<Figures> figures = MeasureInTurn(measures, ofCase.m_nRounds);

    const bool bNew = view == PaintView::New;
    const std::string strWhat = std::string(ofCase.m_pName) + (bNew ? ", new view" : ", kept");
    if (bNew && ofCase.m_limit) table.AddTime(strWhat, figures[0], ofCase.m_limit);
    table.AddComparison(strWhat, figures[0], pBeside, figures[1], {Goal::Within});
    std::size_t nNext = 2;
    for (const Library& library : libraries) {
        if (library.m_program.IsBuilt())
            table.AddComparison(strWhat, figures[0], library.m_pName, figures[nNext++],
                                library.m_goal);
        else
            table.AddMissing(strWhat, library.m_pName, "not there");
    }
}

/// The picture goes to the window once more.
void MeasureKept(CTable& table, const Case& ofCase, PaintedPlot& plot) {
    Picture window;
    const auto show = [&] {
        window.m_dc.CopyRect(0, 0, PICTURE_WIDTH, PICTURE_HEIGHT, &plot.m_picture.m_dc, 0, 0);
    };
    const auto paintAndShow = [&] {
        plot.Paint();
        show();
    };
    AddRows(
        table, ofCase, PaintView::Same, {TimeManyCalls(paintAndShow), TimeManyCalls(show)},
        "copy of the picture",
        {{"QCustomPlot, from its buffer", CAlternative("paint_qcustomplot"), 25, {Goal::Faster}},
         {"Qwt, from its backing store", CAlternative("paint_qwt"), 25, {Goal::Faster}},
         {"pyqtgraph", CAlternative("paint_pyqtgraph"), 5, {Goal::Faster}}});
}

void MeasureNewView(CTable& table, const Case& ofCase, PaintedPlot& plot) {
    CBarePainter bare(MakeBareDrawing(ofCase.m_nCurves, ofCase.m_nValues));
    AddRows(table, ofCase, PaintView::New,
            {TimeManyCalls([&] { plot.PaintNewView(); }), TimeManyCalls([&] { bare.Draw(); })},
            "bare lines and texts, our painter",
            {{"bare lines and texts, Qt's painter", CAlternative("paint_qt"), 25, {Goal::Within}},
             {"QCustomPlot, adaptive sampling",
              CAlternative("paint_qcustomplot"),
              3,
              {Goal::Faster, ofCase.m_qcustomplot}},
             {"Qwt, filtered points", CAlternative("paint_qwt"), 1, {Goal::Faster, ofCase.m_qwt}},
             {"pyqtgraph, peak downsampling", CAlternative("paint_pyqtgraph"), 2, {Goal::Faster}}});
}

}  // namespace

void MeasurePaint(CTable& table) {
    for (const Case& ofCase : CASES) {
        PaintedPlot plot(MakeFullCurves(ofCase.m_nCurves, ofCase.m_nValues), ofCase.m_nValues);
        MeasureKept(table, ofCase, plot);
        MeasureNewView(table, ofCase, plot);
    }
}
