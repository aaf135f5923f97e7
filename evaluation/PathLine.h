// The path of a stroke as points of a picture.
#pragma once

#include "evaluation/Stroke.h"
#include "evaluation/XyAxes.h"

/// The pixels that a line through all points of a path passes: of the points in a row that share a
/// column of pixels only the first, the last, the lowest and the highest.
std::vector<CPoint> TracePath(const CStroke& stroke, PointRange points, const CXyAxis& positions,
                              const CXyAxis& forces);
