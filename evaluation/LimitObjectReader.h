// The objects of a limits file.
#pragma once

#include "evaluation/Limits.h"
#include "evaluation/LimitsReader.h"

/// @throws CLimitsError
LimitObject ReadLimitObject(CLimitsNode node, const Scales& scales);
