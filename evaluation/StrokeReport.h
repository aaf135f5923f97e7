// What programs tell other programs about strokes: JSON, an object on each line.
#pragma once

#include <optional>
#include <string>

#include "evaluation/FeatureSummary.h"
#include "evaluation/Verdict.h"

/// Which stroke a line is about.
struct StrokeName {
    std::optional<std::wstring> m_file;  ///< none: it was not read from one
    std::size_t m_nChannel = 1;          ///< from 1
    std::optional<std::size_t> m_curve;  ///< from 1; none: the channel has no curves
    std::string m_strAt = {};            ///< when it was made, in UTC; empty: it is not said
};

// Without a line break.

/// @param verdict of the limits
std::string WriteVerdict(const StrokeName& name, const StrokeVerdict& verdict,
                         const Limits& limits);
std::string WriteMeasurement(const StrokeName& name, const StrokeMeasurement& measurement);
/// Of a file that could not be read.
std::string WriteFileError(const std::wstring& strFile, const std::string& strError);

/// Of all strokes of a run.
struct RunSummary {
    std::size_t m_nStrokes = 0;
    std::size_t m_nPassed = 0;
    std::size_t m_nFailed = 0;
    std::size_t m_nCannot = 0;
    std::size_t m_nErrors = 0;  ///< files that could not be read
    std::vector<FeatureSummary> m_features;
};
/// @param bJudged whether there were verdicts
std::string WriteSummary(const RunSummary& summary, bool bJudged);
