// The bare lines and texts of the plot drawn with Qt's own painter, without smoothing.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "PaintTimes.h"
#include "benchmarks/BareDrawing.h"

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const PaintTask task = ReadPaintTask(argc, argv);

    struct Line {
        BareLine::Kind m_kind;
        QPolygon m_points;
    };
    const BareDrawing drawing = MakeBareDrawing(task.m_nCurves, task.m_nValues);
    std::vector<Line> lines;
    for (const BareLine& bare : drawing.m_lines) {
        lines.push_back({bare.m_kind, {}});
        for (const BarePoint& point : bare.m_points)
            lines.back().m_points << QPoint(point.x, point.y);
    }
    struct Text {
        QPoint m_at;
        QString m_text;
    };
    std::vector<Text> texts;
    for (const BareText& bare : drawing.m_texts)
        texts.push_back({{bare.m_at.x, bare.m_at.y}, QString::fromStdString(bare.m_strText)});

    QFont font("Liberation Sans");
    font.setPixelSize(12);
    const int nAscent = QFontMetrics(font).ascent();
    const QPen pens[] = {QPen(Qt::yellow, 0, Qt::DotLine), QPen(Qt::darkGray, 0),
                         QPen(Qt::blue, 0)};
    const QRect area(QPoint(BareDrawing::CURVES_LEFT, BareDrawing::CURVES_TOP),
                     QPoint(PICTURE_WIDTH - 1, BareDrawing::CURVES_BOTTOM - 1));
    QImage image(PICTURE_WIDTH, PICTURE_HEIGHT, QImage::Format_RGB32);
    PrintPaintTimes(task, [&](double) {
        QPainter painter(&image);
        painter.setFont(font);
        painter.fillRect(image.rect(), QColor(192, 192, 192));
        painter.setPen(Qt::black);
        for (const Text& text : texts)
            painter.drawText(text.m_at.x(), text.m_at.y() + nAscent, text.m_text);
        for (const Line& line : lines) {
            painter.setPen(pens[line.m_kind]);
            painter.setClipRect(area,
                                line.m_kind == BareLine::Curve ? Qt::ReplaceClip : Qt::NoClip);
            painter.drawPolyline(line.m_points);
        }
    });
    return 0;
}
