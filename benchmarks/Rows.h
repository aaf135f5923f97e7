// The groups of rows of the table.
#pragma once

class CTable;

/// One repaint of a plot, beside other libraries and the bare drawing.
void MeasurePaint(CTable& table);
/// Splitting sample packets among the channels.
void MeasureDecode(CTable& table);
/// Saving, loading and exporting captures.
void MeasureFiles(CTable& table);
/// Finding extremes; what the summary of a curve takes.
void MeasureCurves(CTable& table);
/// The real screen: from packet to picture, and its start.
void MeasureScreen(CTable& table);
