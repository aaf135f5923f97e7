// The groups of rows of the table.
#pragma once

class CTable;

/// The start of the panel application.
void MeasureStart(CTable& table);
/// What a live capture computes, alone and among older captures.
void MeasureLive(CTable& table);
/// A wide plot's repaints through its window.
void MeasureWindow(CTable& table);
/// From packet to picture; a backlog of packets.
void MeasurePackets(CTable& table);
/// Repaints of a plot whose curves are full, beside other libraries and the bare drawing.
void MeasurePaint(CTable& table);
/// Repaints of a plot that goes on getting values, or records of the digital lines.
void MeasureGrowth(CTable& table);
/// Saving and loading captures.
void MeasureFiles(CTable& table);
/// Exporting a curve.
void MeasureCsv(CTable& table);
/// Splitting sample packets among the channels.
void MeasureDecode(CTable& table);
/// The link, over TCP on this machine.
void MeasureLink(CTable& table);
/// What a curve takes.
void MeasureMemory(CTable& table);
/// Measuring and judging strokes.
void MeasureEvaluation(CTable& table);
/// From a stroke's last value to its verdict on the real panel.
void MeasureVerdict(CTable& table);
