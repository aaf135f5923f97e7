// Features of those points of a branch whose position lies in a range. They do not exist without
// such a point.
#pragma once

#include "evaluation/Features.h"

/// Of the line of least squares; needs two positions.
FeatureValue MeasureSlope(const CStroke& stroke, PointRange points, const GridRange& range);
FeatureValue MeasureMean(const CStroke& stroke, PointRange points, const GridRange& range);
FeatureValue MeasureSmallest(const CStroke& stroke, PointRange points, const GridRange& range);
FeatureValue MeasureLargest(const CStroke& stroke, PointRange points, const GridRange& range);
/// The largest fall of the force from a point to a later one, and that one.
FeatureValue MeasureDrop(const CStroke& stroke, PointRange points, const GridRange& range);
