#include "host/VerdictPainter.h"

#include <algorithm>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/FitText.h"

namespace {

// In pixels of the design.
constexpr int MARK_WIDTH = 184;
constexpr int MARK_HEIGHT = 70;  ///< of the characters; of their capitals at least 48
constexpr int COUNTER_HEIGHT = 19;
constexpr int TEXT_HEIGHT = 15;
constexpr int LINES = 1 + static_cast<int>(VerdictContents::MAX_FAULTS);

constexpr COLORREF GROUND = RGB(246, 249, 254);
constexpr COLORREF TEXT = RGB(0, 0, 0);
constexpr COLORREF ALARM = RGB(176, 0, 0);
constexpr COLORREF WHITE = RGB(255, 255, 255);
constexpr COLORREF EDGE = RGB(122, 150, 184);

struct MarkLook {
    COLORREF m_crGround;
    COLORREF m_crText;
};

/// By Outcome.
constexpr MarkLook MARK_LOOKS[] = {
    {RGB(0, 122, 61), WHITE}, {RGB(192, 28, 28), WHITE}, {RGB(255, 193, 7), TEXT}};
constexpr MarkLook NO_MARK{RGB(226, 230, 236), TEXT};

CFont MakeFont(int nHeight, bool bBold) {
    CFont font;
    font.CreatePixelFont(nHeight, L"MS Shell Dlg", bBold);
    return font;
}

class CVerdictPainter {
  public:
    CVerdictPainter(CDC& dc, const CRect& area) : m_dc(dc), m_area(area) {
        m_dc.SetBackgroundMode(BackgroundMode::Transparent);
    }
    ~CVerdictPainter() { m_dc.SelectFont(nullptr); }

    void Paint(const VerdictContents& contents) {
        m_dc.FillSolidRect(m_area, GROUND);
        CRect mark = m_area;
        mark.right = std::min(mark.left + Scaled(MARK_WIDTH), m_area.right);
        CRect counters = m_area;
        counters.right -= Scaled(VERDICT_BUTTON.cx + 2 * VERDICT_MARGIN);
        counters.left = counters.right - MeasureCounters(contents);
        CRect texts = m_area;
        texts.left = mark.right + Scaled(VERDICT_MARGIN);
        texts.right = counters.left - Scaled(VERDICT_MARGIN);

        PaintMark(mark, contents.m_outcome);
        PaintTexts(texts, contents);
        PaintCounters(counters, contents);
        m_dc.FillSolidRect({m_area.left, m_area.top, m_area.right, m_area.top + 1}, EDGE);
    }

  private:
    void PaintMark(const CRect& room, const std::optional<Outcome>& outcome) {
        const MarkLook& look = outcome ? MARK_LOOKS[static_cast<std::size_t>(*outcome)] : NO_MARK;
        m_dc.FillSolidRect(room, look.m_crGround);
        m_dc.SetTextColor(look.m_crText);
        m_dc.SetTextAlign(TextAlign::Center);
        m_dc.SelectFont(&m_markFont);
        const std::wstring strMark = GetMark(outcome);
        m_dc.TextOut((room.left + room.right) / 2,
                     room.top + (room.Height() - m_dc.GetTextExtent(strMark).cy) / 2, strMark);
    }

    void PaintTexts(const CRect& room, const VerdictContents& contents) {
        const int nLine = (room.Height() - Scaled(2)) / LINES;
        int y = room.top + Scaled(1);
        const auto paintLine = [&](const CFont& font, COLORREF color, const std::wstring& strText) {
            m_dc.SelectFont(&font);
            m_dc.SetTextColor(color);
            m_dc.TextOut(room.left, y, FitText(strText, font, room.Width(), 1));
            y += nLine;
        };
        m_dc.SetTextAlign(TextAlign::Left);
        const bool bAlarm = !contents.m_strAlarm.empty();
        paintLine(m_boldFont, bAlarm ? ALARM : TEXT,
                  bAlarm ? contents.m_strAlarm : contents.m_strHead);
        for (const std::wstring& strFault : contents.m_arrFaults)
            paintLine(m_textFont, TEXT, strFault);
    }

    int MeasureCounters(const VerdictContents& contents) {
        m_dc.SelectFont(&m_counterFont);
        const std::uint64_t nLargest = std::ranges::max(contents.m_anCounts);
        return m_dc.GetTextExtent(GetMark(Outcome::Fail) + L"  " + std::to_wstring(nLargest)).cx;
    }

    /// The marks on the left, the numbers on the right.
    void PaintCounters(const CRect& room, const VerdictContents& contents) {
        const int nLine = room.Height() / static_cast<int>(contents.m_anCounts.size());
        m_dc.SelectFont(&m_counterFont);
        m_dc.SetTextColor(TEXT);
        int y = room.top + (nLine - m_dc.GetTextExtent(L"0").cy) / 2;
        for (const Outcome outcome : {Outcome::Pass, Outcome::Fail, Outcome::Cannot}) {
            m_dc.SetTextAlign(TextAlign::Left);
            m_dc.TextOut(room.left, y, GetMark(outcome));
            m_dc.SetTextAlign(TextAlign::Right);
            m_dc.TextOut(room.right, y,
                         std::to_wstring(contents.m_anCounts[static_cast<std::size_t>(outcome)]));
            y += nLine;
        }
    }

    CDC& m_dc;
    const CRect m_area;
    const CFont m_markFont = MakeFont(MARK_HEIGHT, true);
    const CFont m_boldFont = MakeFont(TEXT_HEIGHT, true);
    const CFont m_textFont = MakeFont(TEXT_HEIGHT, false);
    const CFont m_counterFont = MakeFont(COUNTER_HEIGHT, true);
};

}  // namespace

void PaintVerdict(CDC& dc, const CRect& area, const VerdictContents& contents) {
    CVerdictPainter(dc, area).Paint(contents);
}
