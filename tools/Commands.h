// The commands of rt3.
#pragma once

#include "platform/commandline/CommandLine.h"

/// Each returns the process's exit code.
/// @throws CUsageError, CHelpRequest
int RunInfo(Arguments arguments);
int RunCsv(Arguments arguments);
int RunPlot(Arguments arguments);
int RunConvert(Arguments arguments);
int RunMeasure(Arguments arguments);
int RunCheck(Arguments arguments);
int RunLearn(Arguments arguments);
