#!/usr/bin/python3
"""The plot drawn with pyqtgraph, set up for speed: peak downsampling, clipped to the view, no
smoothing. Arguments and output as those of the other programs."""

import sys
import time

import numpy
import pyqtgraph
from pyqtgraph.Qt import QtCore, QtGui

WIDTH, HEIGHT = 842, 420
LOWEST, HIGHEST = -5000, 5000
SHOWN_STEP = 2
VIEW_STEP = 256


def make_strokes(values, seed):
    """The shown values of a curve: the other programs' strokes, with noise of its own."""
    indices = numpy.arange(0, values, SHOWN_STEP)
    noise = numpy.random.default_rng(seed).integers(0, 256, len(indices))
    force = 4000 * numpy.sin(3 * numpy.pi * indices / values) ** 2
    return indices.astype(float), numpy.floor(force + noise)


def main():
    curves, values, paints = (int(argument) for argument in sys.argv[1:4])
    new_view = sys.argv[4] == "new"
    pyqtgraph.setConfigOptions(antialias=False, background="w")
    application = pyqtgraph.mkQApp()
    plot = pyqtgraph.PlotWidget()
    plot.resize(WIDTH, HEIGHT)
    plot.setDownsampling(auto=True, mode="peak")
    plot.setClipToView(True)
    plot.setYRange(LOWEST, HIGHEST, padding=0)
    for curve in range(curves):
        plot.plot(*make_strokes(values, curve), pen=pyqtgraph.mkPen("b", width=1))
    plot.show()
    application.processEvents()
    image = QtGui.QImage(WIDTH, HEIGHT, QtGui.QImage.Format.Format_RGB32)
    shown = None
    for paint in range(-1, paints):
        width = values + (VIEW_STEP if new_view and paint % 2 else 0)
        begin = time.process_time()
        if width != shown:
            plot.setXRange(0, width, padding=0)
            shown = width
        painter = QtGui.QPainter(image)
        plot.render(painter, QtCore.QRectF(0, 0, WIDTH, HEIGHT))
        painter.end()
        if paint >= 0:
            print(time.process_time() - begin)


main()
