// The plot drawn with QCustomPlot, set up for speed: adaptive sampling, no smoothing of edges, its
// fast drawing of polylines, values in order of their keys.
#include <qcustomplot.h>

#include <QApplication>

#include "PaintTimes.h"

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const PaintTask task = ReadPaintTask(argc, argv);

    QCustomPlot plot;
    plot.setNotAntialiasedElements(QCP::aeAll);
    plot.setPlottingHint(QCP::phFastPolylines);
    plot.xAxis->setRange(0, static_cast<double>(task.m_nValues));
    plot.yAxis->setRange(LOWEST_VALUE, HIGHEST_VALUE);
    for (unsigned nCurve = 0; nCurve < task.m_nCurves; ++nCurve) {
        QVector<QCPGraphData> data;
        data.reserve(static_cast<qsizetype>(task.m_nValues / SHOWN_STEP));
        TakeStrokes(task.m_nValues, nCurve, [&](double dIndex, double dValue) {
            data.append({dIndex, dValue});
        });
        QCPGraph* pGraph = plot.addGraph();
        pGraph->setAdaptiveSampling(true);
        pGraph->setPen(QPen(Qt::blue, 0));
        pGraph->data()->set(data, true);
    }

    plot.resize(PICTURE_WIDTH, PICTURE_HEIGHT);
    if (!task.m_bNewView) {
        plot.show();
        QApplication::processEvents();
    }

    QImage image(PICTURE_WIDTH, PICTURE_HEIGHT, QImage::Format_RGB32);
    PrintPaintTimes(task, [&](double dWidth) {
        QCPPainter painter(&image);
        if (task.m_bNewView) {
            plot.xAxis->setRange(0, dWidth);
            plot.toPainter(&painter, PICTURE_WIDTH, PICTURE_HEIGHT);
        } else {
            plot.render(&painter);  // from its own buffer
        }
    });
    return 0;
}
