#include "host/StripPainter.h"

#include <algorithm>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/FitText.h"

namespace {

// In pixels of the design.
constexpr int INSTRUMENT_WIDTH = 256;
constexpr int MARGIN = 8;
constexpr int COLUMN_GAP = 12;
constexpr int TEXT_TOP = 2;  ///< below the area's upper edge, which is a line
constexpr int FONT_POINTS = 14;

constexpr COLORREF EDGE = RGB(122, 150, 184);
constexpr COLORREF TEXT = RGB(0, 0, 0);

struct FieldLook {
    COLORREF m_crGround;
    COLORREF m_crText;
};

/// By StripMood.
constexpr FieldLook INSTRUMENT_LOOKS[] = {{RGB(226, 230, 236), TEXT},
                                          {RGB(0, 122, 61), RGB(255, 255, 255)},
                                          {RGB(255, 193, 7), TEXT},
                                          {RGB(192, 28, 28), RGB(255, 255, 255)}};
constexpr COLORREF GROUND = RGB(246, 249, 254);
constexpr FieldLook FILE_ALARM{RGB(255, 221, 221), RGB(140, 0, 0)};

class CStripPainter {
  public:
    CStripPainter(CDC& dc, const CRect& area)
        : m_dc(dc), m_area(area), m_nLine((area.Height() - 2 * Scaled(TEXT_TOP)) / 2) {
        m_font.CreatePointFont(10 * FONT_POINTS, L"MS Shell Dlg");
        m_fontBold = m_font;
        m_fontBold.m_bBold = true;
        m_dc.SetBackgroundMode(BackgroundMode::Transparent);
        m_dc.SelectFont(&m_font);
    }
    ~CStripPainter() { m_dc.SelectFont(nullptr); }

    void Paint(const StripContents& contents) {
        CRect right = m_area;
        right.left = right.right - MeasureRows(contents.m_markers);
        CRect left = m_area;
        left.right = left.left + Scaled(INSTRUMENT_WIDTH);
        // What has failed is read to its end, if need be in the room of the file.
        if (contents.m_instrument.m_mood == StripMood::Alarm)
            left.right = std::max(left.right, left.left + MeasureField(contents.m_instrument));
        left.right = std::min(left.right, right.left);
        CRect middle = m_area;
        middle.left = left.right;
        middle.right = right.left;

        PaintField(left, contents.m_instrument,
                   INSTRUMENT_LOOKS[static_cast<std::size_t>(contents.m_instrument.m_mood)]);
        const bool bAlarm = contents.m_file.m_mood == StripMood::Alarm;
        PaintField(middle, contents.m_file, bAlarm ? FILE_ALARM : FieldLook{GROUND, TEXT});
        PaintRows(right, contents.m_markers);
        m_dc.FillSolidRect({m_area.left, m_area.top, m_area.right, m_area.top + 1}, EDGE);
    }

  private:
    int LineTop(std::size_t nLine) const {
        return m_area.top + Scaled(TEXT_TOP) + static_cast<int>(nLine) * m_nLine;
    }

    void PaintField(const CRect& room, const StripField& field, const FieldLook& look) {
        m_dc.FillSolidRect(room, look.m_crGround);
        m_dc.SetTextColor(look.m_crText);
        m_dc.SetTextAlign(TextAlign::Left);
        const int x = room.left + Scaled(MARGIN);
        const int nWidth = room.Width() - 2 * Scaled(MARGIN);
        m_dc.SelectFont(&m_fontBold);
        const std::wstring strKept = field.m_strHead.substr(0, field.m_nHeadKept);
        m_dc.TextOut(x, LineTop(0),
                     strKept + FitText(field.m_strHead.substr(field.m_nHeadKept), m_fontBold,
                                       nWidth - m_dc.GetTextExtent(strKept).cx, 1));
        m_dc.SelectFont(&m_font);
        m_dc.TextOut(x, LineTop(1), FitText(field.m_strDetail, m_font, nWidth, 1));
    }

    int MeasureField(const StripField& field) {
        m_dc.SelectFont(&m_fontBold);
        const int nHead = m_dc.GetTextExtent(field.m_strHead).cx;
        m_dc.SelectFont(&m_font);
        return std::max(nHead, m_dc.GetTextExtent(field.m_strDetail).cx) + 2 * Scaled(MARGIN);
    }

    int MeasureColumn(const std::vector<StripRow>& rows, std::size_t nColumn) const {
        int nWidth = 0;
        for (const StripRow& row : rows)
            nWidth = std::max(nWidth, m_dc.GetTextExtent(row[nColumn]).cx);
        return nWidth;
    }

    int MeasureRows(const std::vector<StripRow>& rows) const {
        if (rows.empty()) return 0;
        int nWidth = 2 * Scaled(MARGIN) - Scaled(COLUMN_GAP);
        for (std::size_t n = 0; n < StripRow().size(); ++n)
            nWidth += MeasureColumn(rows, n) + Scaled(COLUMN_GAP);
        return nWidth;
    }

    /// The names stand on the left of their column, the numbers on the right.
    void PaintRows(const CRect& room, const std::vector<StripRow>& rows) {
        m_dc.FillSolidRect(room, GROUND);
        m_dc.SetTextColor(TEXT);
        int x = room.left + Scaled(MARGIN);
        for (std::size_t n = 0; n < StripRow().size(); ++n) {
            const int nWidth = MeasureColumn(rows, n);
            m_dc.SetTextAlign(n == 0 ? TextAlign::Left : TextAlign::Right);
            for (std::size_t nRow = 0; nRow < rows.size(); ++nRow)
                m_dc.TextOut(n == 0 ? x : x + nWidth, LineTop(nRow), rows[nRow][n]);
            x += nWidth + Scaled(COLUMN_GAP);
        }
    }

    CDC& m_dc;
    const CRect m_area;
    const int m_nLine;
    CFont m_font;
    CFont m_fontBold;
};

}  // namespace

void PaintStrip(CDC& dc, const CRect& area, const StripContents& contents) {
    CStripPainter(dc, area).Paint(contents);
}
