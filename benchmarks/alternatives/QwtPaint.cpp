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
    plot.setAxisScale(QwtPlot::xBottom, 0, static_cast<double>(task.m_nValues));
    plot.setAxisScale(QwtPlot::yLeft, LOWEST_VALUE, HIGHEST_VALUE);
    for (unsigned nCurve = 0; nCurve < task.m_nCurves; ++nCurve) {
        QVector<QPointF> points;
        points.reserve(static_cast<int>(task.m_nValues / SHOWN_STEP));
        TakeStrokes(task.m_nValues, nCurve, [&](double dIndex, double dValue) {
            points.append({dIndex, dValue});
        });
        auto* pCurve = new QwtPlotCurve;  // the plot's from attach on
        pCurve->setPaintAttribute(QwtPlotCurve::FilterPoints, true);
        pCurve->setRenderHint(QwtPlotItem::RenderAntialiased, false);
        pCurve->setPen(QPen(Qt::blue, 0));
        pCurve->setSamples(points);
        pCurve->attach(&plot);
    }

    plot.resize(PICTURE_WIDTH, PICTURE_HEIGHT);
    if (!task.m_bNewView) {
        plot.show();
        QApplication::processEvents();
    }

    QImage image(PICTURE_WIDTH, PICTURE_HEIGHT, QImage::Format_RGB32);
    PrintPaintTimes(task, [&](double dWidth) {
        QPainter painter(&image);
        if (task.m_bNewView) {
            plot.setAxisScale(QwtPlot::xBottom, 0, dWidth);
            plot.updateAxes();
            QwtPlotRenderer().render(&plot, &painter, QRectF(image.rect()));
        } else {
            plot.render(&painter);  // the canvas from its backing store
        }
    });
    return 0;
}
