#include "platform/drawing/SvgDC.h"

#include <QColor>
#include <QFontMetricsF>
#include <QString>
#include <array>
#include <cmath>

#include "platform/drawing/DisplayScale.h"
#include "platform/drawing/qt/Surface.h"
#include "platform/drawing/qt/TextMask.h"

namespace {

/// So many lines are looked at for one that is to go on: more than are drawn side by side.
constexpr std::size_t MAX_OPEN_LINES = 8;

constexpr const char* FONT_FAMILY = "Liberation Sans, Arial, Helvetica, sans-serif";

/// Strokes and gaps by pen style, in pen widths.
constexpr std::array<std::array<int, 6>, 3> DASHES{{{}, {3, 3}, {9, 3, 3, 3, 3, 3}}};

/// A line from point to point. The points lie within what it was clipped to.
struct Line {
    PenStyle m_style;
    COLORREF m_color;
    std::vector<QPointF> m_points;
};

/// The part of a segment that lies in a rectangle, whose edges belong to it; false: none does.
bool ClipSegment(QPointF& from, QPointF& to, const QRectF& area) {
    const QPointF way = to - from;
    double dFirst = 0;
    double dLast = 1;
    // Each edge lets through what lies on its inner side.
    const auto passEdge = [&](double dWay, double dDistance) {
        if (dWay == 0) return dDistance >= 0;
        const double dShare = dDistance / dWay;
        if (dWay > 0)
            dLast = std::min(dLast, dShare);
        else
            dFirst = std::max(dFirst, dShare);
        return true;
    };
    if (!passEdge(-way.x(), from.x() - area.left()) || !passEdge(way.x(), area.right() - from.x()))
        return false;
    if (!passEdge(-way.y(), from.y() - area.top()) || !passEdge(way.y(), area.bottom() - from.y()))
        return false;
    if (dFirst > dLast) return false;
    if (dLast < 1) to = from + dLast * way;
    if (dFirst > 0) from += dFirst * way;
    return true;
}

QByteArray ToText(double d) { return QByteArray::number(std::round(100 * d) / 100, 'g', 10); }

QByteArray NameColor(COLORREF color) { return QColor(ToPixel(color)).name().toLatin1(); }

QByteArray MakeAttribute(const char* pName, const QByteArray& value) {
    return QByteArray(" ") + pName + "=\"" + value + '"';
}

/// Characters that XML cannot hold become U+FFFD.
QByteArray Escape(const std::wstring& strText) {
    QString text = QString::fromStdWString(strText);
    for (QChar& ch : text)
        if (ch < u' ' || ch == QChar(0xFFFE) || ch == QChar(0xFFFF))
            ch = QChar::ReplacementCharacter;
    return text.toHtmlEscaped().toUtf8();
}

double GetPenWidth() { return std::max(1, Scaled(1)); }

}  // namespace

struct CSvgDC::Picture {
    CSize m_extent;
    int m_nUnitsPerPixel;
    QByteArray m_elements;
    std::vector<Line> m_lines;  ///< that no element stands for yet

    void AddSegment(const Line& look, QPointF from, QPointF to);
    void AddRect(const CRect& rect, double dInset, const QByteArray& attributes);
    void AppendLines();
};

void CSvgDC::Picture::AddSegment(const Line& look, QPointF from, QPointF to) {
    if (from == to) return;
    const std::size_t nOpen = std::min(m_lines.size(), MAX_OPEN_LINES);
    for (Line& line : std::span(m_lines).last(nOpen)) {
        if (line.m_style != look.m_style || line.m_color != look.m_color ||
            line.m_points.back() != from)
            continue;
        line.m_points.push_back(to);
        return;
    }
    m_lines.push_back({look.m_style, look.m_color, {from, to}});
}

/// A pixel's line runs through its middle: half a pen beside its coordinates.
void CSvgDC::Picture::AppendLines() {
    const double dWidth = GetPenWidth();
    for (const Line& line : m_lines) {
        m_elements += "<polyline" + MakeAttribute("stroke", NameColor(line.m_color));
        QByteArray dashes;
        for (const int nDash : DASHES[static_cast<std::size_t>(line.m_style)])
            if (nDash > 0) dashes += ToText(nDash * dWidth) + ' ';
        if (!dashes.isEmpty()) m_elements += MakeAttribute("stroke-dasharray", dashes.trimmed());
        QByteArray points;
        for (const QPointF& point : line.m_points)
            points += ToText(point.x() + dWidth / 2) + ',' + ToText(point.y() + dWidth / 2) + ' ';
        m_elements += MakeAttribute("points", points.trimmed()) + "/>\n";
    }
    m_lines.clear();
}

void CSvgDC::Picture::AddRect(const CRect& rect, double dInset, const QByteArray& attributes) {
    AppendLines();
    m_elements += "<rect" + MakeAttribute("x", ToText(rect.left + dInset)) +
                  MakeAttribute("y", ToText(rect.top + dInset)) +
                  MakeAttribute("width", ToText(rect.Width() - 2 * dInset)) +
                  MakeAttribute("height", ToText(rect.Height() - 2 * dInset)) + attributes + "/>\n";
}

CSvgDC::CSvgDC(CSize extent, int nUnitsPerPixel)
    : m_pPicture(std::make_unique<Picture>(Picture{extent, nUnitsPerPixel, {}, {}})) {}

CSvgDC::~CSvgDC() = default;

void CSvgDC::PolylineTo(std::span<const CPoint> points) {
    const GraphicsSurface& surface = *Surface();
    CRect area{0, 0, m_pPicture->m_extent.cx, m_pPicture->m_extent.cy};
    if (surface.m_limits) area = Intersect(area, *surface.m_limits);
    if (surface.m_clip) area = Intersect(area, *surface.m_clip);
    const QRectF inside(area.left, area.top, area.Width() - 1, area.Height() - 1);
    const Line look{surface.m_pPen ? surface.m_pPen->m_style : PenStyle::Solid,
                    surface.m_pPen ? surface.m_pPen->m_color : RGB(0, 0, 0),
                    {}};
    for (const CPoint& point : points) {
        QPointF from(m_position.x, m_position.y);
        QPointF to(point.x, point.y);
        m_position = point;
        if (!area.IsEmpty() && ClipSegment(from, to, inside))
            m_pPicture->AddSegment(look, from, to);
    }
}

void CSvgDC::FillSolidRect(const CRect& rect, COLORREF color) {
    if (!rect.IsEmpty()) m_pPicture->AddRect(rect, 0, MakeAttribute("fill", NameColor(color)));
}

void CSvgDC::Rectangle(const CRect& rect, const CBrush* pBrush) {
    CRect area = rect;
    area.NormalizeRect();
    const GraphicsSurface& surface = *Surface();
    if (area.IsEmpty() || surface.m_rasterOp == RasterOp::Invert) return;
    const COLORREF color = surface.m_pPen ? surface.m_pPen->m_color : RGB(0, 0, 0);
    m_pPicture->AddRect(
        area, GetPenWidth() / 2,
        (pBrush ? MakeAttribute("fill", NameColor(pBrush->m_color)) : QByteArray()) +
            MakeAttribute("stroke", NameColor(color)));
}

void CSvgDC::TextOut(int x, int y, const std::wstring& strText) {
    m_pPicture->AppendLines();
    const GraphicsSurface& surface = *Surface();
    const QFont font =
        ToQFont(surface.m_pFont && *surface.m_pFont ? *surface.m_pFont : GetDefaultFont());
    constexpr std::array<const char*, 3> ANCHORS{"start", "end", "middle"};  // by text alignment
    m_pPicture->m_elements +=
        "<text" + MakeAttribute("x", ToText(x)) +
        MakeAttribute("y", ToText(y + QFontMetricsF(font).ascent())) +
        MakeAttribute("font-size", ToText(font.pixelSize())) +
        (font.bold() ? MakeAttribute("font-weight", "bold") : QByteArray()) +
        MakeAttribute("text-anchor", ANCHORS[static_cast<std::size_t>(surface.m_textAlign)]) +
        MakeAttribute("fill", NameColor(surface.m_textColor)) + ">" + Escape(strText) + "</text>\n";
}

void CSvgDC::DrawPicture(CPoint corner, CSvgDC& picture) {
    picture.m_pPicture->AppendLines();
    m_pPicture->AppendLines();
    m_pPicture->m_elements += "<g transform=\"translate(" + ToText(corner.x) + ' ' +
                              ToText(corner.y) + ")\">\n" + picture.m_pPicture->m_elements +
                              "</g>\n";
}

std::vector<BYTE> CSvgDC::EncodeSvg() {
    m_pPicture->AppendLines();
    const CSize extent = m_pPicture->m_extent;
    const double dUnits = m_pPicture->m_nUnitsPerPixel;
    const QByteArray width = ToText(extent.cx);
    const QByteArray height = ToText(extent.cy);
    const QByteArray file =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
        MakeAttribute("width", ToText(extent.cx / dUnits)) +
        MakeAttribute("height", ToText(extent.cy / dUnits)) +
        MakeAttribute("viewBox", "0 0 " + width + ' ' + height) +
        MakeAttribute("font-family", FONT_FAMILY) + " fill=\"none\"" +
        MakeAttribute("stroke-width", ToText(GetPenWidth())) + " stroke-linejoin=\"round\">\n" +
        m_pPicture->m_elements + "</svg>\n";
    return {file.begin(), file.end()};
}
