// What the commands say about strokes to a person: whole lines, with line breaks.
#pragma once

#include <string>

#include "evaluation/StrokeReport.h"

std::string DescribeVerdict(const StrokeName& name, const StrokeVerdict& verdict,
                            const Limits& limits);
std::string DescribeMeasurement(const StrokeName& name, const StrokeMeasurement& measurement);
/// Counts, and a table of the features.
std::string DescribeSummary(const RunSummary& summary, bool bJudged);
