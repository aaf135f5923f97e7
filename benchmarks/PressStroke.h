// A stroke of a press and the limits that it is judged by, for what measures the evaluation.
#pragma once

#include "curves/RTCurveData.h"
#include "evaluation/LimitsFile.h"

/// Values per second.
constexpr unsigned PRESS_STROKE_RATE = 40'000;

/// Fills a curve with one stroke in pairs: down with a rising force and a snap, and back; noise on
/// both values.
void FillPressStroke(RTCurveData& curve);

/// Two windows, a block, a line, an envelope for each branch and four features.
/// @param curve a stroke, which passes
CLimitsFile MakePressLimits(const RTCurveData& curve);
