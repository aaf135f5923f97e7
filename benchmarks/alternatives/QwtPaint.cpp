// The plot drawn with Qwt, set up for speed: points that fall on the same pixel are filtered out,
// edges are not smoothed.
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_renderer.h>

#include <QApplication>
#include <QPainter>

#include "PaintTimes.h"

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const PaintTask task = ReadPaintTask(argc, argv);

    QwtPlot plot;
    plot.resize(PICTURE_WIDTH, PICTURE_HEIGHT);
    plot.setAxisScale(QwtPlot::xBottom, 0, static_cast<double>(task.m_nValues));
    plot.setAxisScale(QwtPlot::yLeft, LOWEST_VALUE, HIGHEST_VALUE);
    for (unsigned nCurve = 0; nCurve < task.m_nCurves; ++nCurve) {
        QVector<QPointF> points;
        points.reserve(static_cast<int>(task.m_nValues));
        for (const std::int16_t nValue : MakeStrokes(task.m_nValues, nCurve))
            points.append({static_cast<double>(points.size()), static_cast<double>(nValue)});
        auto* pCurve = new QwtPlotCurve;  // the plot's from attach on
        pCurve->setPaintAttribute(QwtPlotCurve::FilterPoints, true);
        pCurve->setRenderHint(QwtPlotItem::RenderAntialiased, false);
        pCurve->setPen(QPen(Qt::blue, 0));
        pCurve->setSamples(points);
        pCurve->attach(&plot);
    }

    QImage image(PICTURE_WIDTH, PICTURE_HEIGHT, QImage::Format_RGB32);
    PrintPaintTimes(task.m_nPaints, [&] {
        QPainter painter(&image);
        QwtPlotRenderer().render(&plot, &painter, QRectF(0, 0, PICTURE_WIDTH, PICTURE_HEIGHT));
    });
    return 0;
}
