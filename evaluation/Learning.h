// Envelopes learned from good strokes.
#pragma once

#include <stdexcept>
#include <vector>

#include "evaluation/Limits.h"

/// How envelopes are learned.
struct LearningRule {
    static constexpr std::size_t LEAST_STROKES = 3;

    std::size_t m_nPoints = 100;  ///< corners of each line, 2 to 1000
    double m_dSigma = 4;          ///< standard deviations between mean and bound
    /// The least between mean and bound, in force units; none: 2 % of the span of the means.
    std::optional<double> m_tolerance;
    double m_dSideways = 0;       ///< by how much flanks may shift, in position units
    unsigned m_nTrimPercent = 2;  ///< of the common range, left out at each end
};

/// Strokes from which nothing can be learned; the text says why, without the strokes' names.
class CLearningError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// What was learned, in values.
struct LearnedEnvelope {
    struct Corner {
        double m_dPosition;
        double m_dLower;
        double m_dUpper;
    };
    Branch m_branch;
    std::vector<Corner> m_corners;  ///< of rising positions
};

/// Learns the envelope of one branch.
/// @param strokes at least LEAST_STROKES that can be evaluated
/// @param branch Forward or Return
/// @throws CLearningError when they have too little of their ranges in common
LearnedEnvelope LearnEnvelope(const std::vector<CStroke>& strokes, Branch branch,
                              const Scales& scales, const LearningRule& rule);
