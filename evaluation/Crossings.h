// Where a path crosses a position or a force.
#pragma once

#include "evaluation/Features.h"

/// The first place where a branch's path crosses a force and then stays beyond it for the points
/// that the feature holds: the position there.
/// @param feature one of kind PositionAt
FeatureValue FindPositionAt(const CStroke& stroke, const Feature& feature);
