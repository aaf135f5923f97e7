#include "evaluation/XyPicture.h"

#include "evaluation/PathLine.h"
#include "evaluation/XyObjects.h"
#include "platform/drawing/DisplayScale.h"
#include "platform/system/Text.h"

namespace {

constexpr COLORREF TEXT_COLOR = RGB(40, 40, 40);
constexpr COLORREF GRID_COLOR = RGB(225, 225, 225);
constexpr COLORREF ZERO_COLOR = RGB(150, 150, 150);
// Told from each other by their lightness too.
constexpr COLORREF FORWARD_COLOR = RGB(20, 60, 150);
constexpr COLORREF RETURN_COLOR = RGB(240, 150, 50);
constexpr COLORREF PASSED_COLOR = RGB(0, 135, 60);
constexpr COLORREF FAILED_COLOR = RGB(205, 0, 0);
constexpr COLORREF UNJUDGED_COLOR = RGB(130, 130, 130);

// Pixels of the design.
constexpr int LEAST_TEXT = 11;
constexpr int LEAST_TICK_X = 80;
constexpr int LEAST_TICK_Y = 40;

constexpr int TEXTS_PER_HEIGHT = 45;

/// What has come of an object in all strokes: failed when it failed in any.
Outcome FindOutcome(const XyPicture& picture, std::size_t nObject) {
    Outcome outcome = picture.m_strokes.empty() ? Outcome::Cannot : Outcome::Pass;
    for (const XyPicture::Stroke& stroke : picture.m_strokes) {
        const bool bJudged = stroke.m_pVerdict && nObject < stroke.m_pVerdict->m_objects.size();
        const Outcome own =
            bJudged ? stroke.m_pVerdict->m_objects[nObject].m_outcome : Outcome::Cannot;
        if (own == Outcome::Fail) return own;
        if (own == Outcome::Cannot) outcome = own;
    }
    return outcome;
}

COLORREF GetColor(Outcome outcome) {
    constexpr COLORREF COLORS[] = {PASSED_COLOR, FAILED_COLOR, UNJUDGED_COLOR};
    return COLORS[static_cast<std::size_t>(outcome)];
}

/// "PASS", or of several strokes how many did what.
std::wstring DescribeOutcomes(const XyPicture& picture) {
    std::size_t anStrokes[3] = {};
    for (const XyPicture::Stroke& stroke : picture.m_strokes)
        if (stroke.m_pVerdict) ++anStrokes[static_cast<std::size_t>(stroke.m_pVerdict->m_outcome)];
    const bool bSeveral = picture.m_strokes.size() > 1;
    std::wstring strText;
    for (std::size_t n = 0; n < 3; ++n) {
        if (anStrokes[n] == 0) continue;
        if (!strText.empty()) strText += L", ";
        if (bSeveral) strText += std::to_wstring(anStrokes[n]) + L' ';
        strText += picture.m_words.m_arrOutcomes[n];
    }
    return strText;
}

class CXyPainter {
  public:
    CXyPainter(CDC& dc, CSize size, const XyPicture& picture)
        : m_dc(dc), m_size(size), m_picture(picture),
          m_nDesignText(std::max(LEAST_TEXT,
                                 static_cast<int>(size.cy / GetDisplayScale()) / TEXTS_PER_HEIGHT)),
          m_nText(Scaled(m_nDesignText)), m_plot(MakePlot()) {}

    void Draw() {
        CFont font;
        font.CreatePixelFont(m_nDesignText, L"MS Shell Dlg", false);
        const CFont* const pFontBefore = m_dc.SelectFont(&font);
        m_dc.SetBackgroundMode(BackgroundMode::Transparent);
        m_dc.FillSolidRect({0, 0, m_size.cx, m_size.cy}, XY_GROUND_COLOR);
        DrawAxes();
        const CRgn area(m_plot.m_area);
        m_dc.SelectClipRgn(&area);
        for (const XyPicture::Stroke& stroke : m_picture.m_strokes) DrawStroke(*stroke.m_pStroke);
        DrawObjects();
        DrawCrosses();
        m_dc.SelectClipRgn(nullptr);
        DrawTitle();
        m_dc.SelectFont(pFontBefore);
    }

  private:
    using Ticks = std::vector<CXyAxis::Tick>;

    const Scales& GetScales() const {
        static const Scales none;
        return m_picture.m_pLimits ? m_picture.m_pLimits->m_scales : none;
    }

    XyPlot MakePlot() const {
        AxisRange positions, forces;
        for (const XyPicture::Stroke& stroke : m_picture.m_strokes) {
            const PointRange points = stroke.m_pStroke->GetPoints(Branch::Both);
            const auto include = [&](AxisRange& axis, PointValue value) {
                const RTMinMax range = stroke.m_pStroke->FindRange(value, points);
                axis.Include(range.m_nMin);
                axis.Include(range.m_nMax);
            };
            include(positions, PointValue::Position);
            include(forces, PointValue::Force);
        }
        if (m_picture.m_pLimits)
            for (const LimitObject& object : m_picture.m_pLimits->m_objects)
                IncludeObject(object, positions, forces);
        positions = positions.Widen();
        forces = forces.Widen();

        CRect area{0, m_nText * 3, m_size.cx - m_nText, m_size.cy - m_nText * 3};
        area.bottom = std::max(area.bottom, area.top + 1);
        std::size_t nLabel = 1;  // letters of the longest label of the forces
        for (const auto& tick : CXyAxis(forces, area.bottom - 1, area.top)
                                    .FindTicks(GetScales().m_force, Scaled(LEAST_TICK_Y)))
            nLabel = std::max(nLabel, tick.m_strLabel.size());
        area.left = std::min(GetLabelWidth(nLabel + 2), area.right - 1);
        return {area, CXyAxis(positions, area.left, area.right - 1),
                CXyAxis(forces, area.bottom - 1, area.top), m_nText};
    }

    int GetLabelWidth(std::size_t nLetters) const {
        return static_cast<int>(nLetters) * m_nText * 6 / 10;
    }

    void DrawAxes() {
        const CRect& area = m_plot.m_area;
        const Scales& scales = GetScales();
        const auto positions =
            m_plot.m_positions.FindTicks(scales.m_position, Scaled(LEAST_TICK_X));
        const auto forces = m_plot.m_forces.FindTicks(scales.m_force, Scaled(LEAST_TICK_Y));
        // The zero lines last, over the others.
        for (const bool bZero : {false, true}) {
            const CXyPen pen(m_dc, bZero ? ZERO_COLOR : GRID_COLOR, m_plot.GetWidth(false));
            for (const auto& tick : positions)
                if ((tick.m_nMultiple == 0) == bZero)
                    pen.Line({tick.m_nPixel, area.top}, {tick.m_nPixel, area.bottom});
            for (const auto& tick : forces)
                if ((tick.m_nMultiple == 0) == bZero)
                    pen.Line({area.left, tick.m_nPixel}, {area.right, tick.m_nPixel});
        }
        const CXyPen pen(m_dc, TEXT_COLOR, m_plot.GetWidth(false));
        pen.Frame({area.left, area.top, area.right - 1, area.bottom - 1});

        m_dc.SetTextColor(TEXT_COLOR);
        DrawLabels(positions, forces);
        const XyWords& words = m_picture.m_words;
        m_dc.SetTextAlign(TextAlign::Right);
        m_dc.TextOut(area.right, area.bottom + m_nText * 3 / 2,
                     MakeAxisName(m_picture.m_bVoltage ? words.m_strVoltage : words.m_strPosition,
                                  scales.m_position));
        m_dc.SetTextAlign(TextAlign::Left);
        m_dc.TextOut(area.left, area.top - m_nText * 3 / 2,
                     MakeAxisName(words.m_strForce, scales.m_force));
    }

    /// As many as there is room for.
    void DrawLabels(const Ticks& positions, const Ticks& forces) {
        std::size_t nLetters = 0;
        for (const auto& tick : positions) nLetters = std::max(nLetters, tick.m_strLabel.size());
        const auto nPositionStep = CXyAxis::FindLabelStep(positions, GetLabelWidth(nLetters + 1));
        m_dc.SetTextAlign(TextAlign::Center);
        for (const auto& tick : positions)
            if (tick.m_nMultiple % nPositionStep == 0)
                m_dc.TextOut(tick.m_nPixel, m_plot.m_area.bottom + m_nText / 4, tick.m_strLabel);
        const auto nForceStep = CXyAxis::FindLabelStep(forces, m_nText * 5 / 4);
        m_dc.SetTextAlign(TextAlign::Right);
        for (const auto& tick : forces)
            if (tick.m_nMultiple % nForceStep == 0)
                m_dc.TextOut(m_plot.m_area.left - m_nText / 2, tick.m_nPixel - m_nText * 6 / 10,
                             tick.m_strLabel);
    }

    static std::wstring MakeAxisName(const std::wstring& strQuantity, const Scale& scale) {
        if (scale.m_strUnit.empty()) return strQuantity;
        return strQuantity + L" [" + FromUtf8(scale.m_strUnit) + L']';
    }

    void DrawStroke(const CStroke& stroke) {
        for (const Branch branch : {Branch::Forward, Branch::Return}) {
            const CXyPen pen(m_dc, branch == Branch::Forward ? FORWARD_COLOR : RETURN_COLOR,
                             m_plot.GetWidth(false));
            pen.Path(
                TracePath(stroke, stroke.GetPoints(branch), m_plot.m_positions, m_plot.m_forces));
        }
    }

    void DrawObjects() {
        if (!m_picture.m_pLimits) return;
        const auto& objects = m_picture.m_pLimits->m_objects;
        // The failed ones last, over the others.
        for (const bool bFailed : {false, true})
            for (std::size_t n = 0; n < objects.size(); ++n) {
                const Outcome outcome = FindOutcome(m_picture, n);
                if ((outcome == Outcome::Fail) == bFailed)
                    DrawObject(m_dc, m_plot, objects[n], GetColor(outcome), bFailed);
            }
    }

    void DrawCrosses() {
        const CXyPen pen(m_dc, FAILED_COLOR, m_plot.GetWidth(true));
        for (const XyPicture::Stroke& stroke : m_picture.m_strokes) {
            if (!stroke.m_pVerdict) continue;
            for (const ObjectResult& result : stroke.m_pVerdict->m_objects)
                if (result.m_outcome == Outcome::Fail && result.m_point)
                    pen.Cross(m_plot.At(stroke.m_pStroke->GetGridPoint(result.m_point->m_nIndex)),
                              m_nText / 2);
        }
    }

    void DrawTitle() {
        const Limits* const pLimits = m_picture.m_pLimits;
        std::wstring strTitle = m_picture.m_strTitle;
        if (pLimits && !pLimits->m_strTitle.empty()) strTitle = FromUtf8(pLimits->m_strTitle);
        const std::wstring strOutcomes = DescribeOutcomes(m_picture);
        if (!strOutcomes.empty()) strTitle += L": " + strOutcomes;
        m_dc.SetTextColor(TEXT_COLOR);
        m_dc.SetTextAlign(TextAlign::Left);
        m_dc.TextOut(m_plot.m_area.left, m_nText / 4, strTitle);
    }

    CDC& m_dc;
    CSize m_size;
    const XyPicture& m_picture;
    int m_nDesignText;  ///< height of texts in pixels of the design
    int m_nText;        ///< in pixels
    XyPlot m_plot;
};

}  // namespace

void DrawXyPicture(CDC& dc, CSize size, const XyPicture& picture) {
    CXyPainter(dc, size, picture).Draw();
}
