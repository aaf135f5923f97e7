// How large the screen, and all that it opens, is shown.
#pragma once

#include "host/Options.h"

/// The scale that the options ask for, or else the one for what there is: a panel is filled, a
/// desktop has its own scale, pictures without a display are those of the design. Once the window
/// system is there.
double ChooseScale(const Options& options);
