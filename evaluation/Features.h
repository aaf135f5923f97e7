// Features: the numbers that are measured on a stroke.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "evaluation/Scales.h"
#include "evaluation/Stroke.h"

/// In the order of the table of kinds; those from PeakForce to WorkLoss are the standard features.
enum class FeatureKind : std::uint8_t {
    PeakForce,
    PeakPosition,
    PeakTime,
    EndPosition,
    EndForce,
    EndTime,
    Duration,
    WorkForward,
    WorkReturn,
    WorkLoss,
    ForceAt,
    Hysteresis,
    PositionAt,
    Slope,
    MeanForce,
    MinForce,
    MaxForce,
    Drop,
};

enum class Direction : std::uint8_t { Up, Down, Any };

/// A feature to be measured. Which of the fields count, its kind says.
struct Feature {
    FeatureKind m_kind = FeatureKind::PeakForce;
    Branch m_branch = Branch::Forward;
    Grid m_nAt = 0;          ///< the position, or the force, that is looked for
    GridRange m_range = {};  ///< of positions
    Direction m_direction = Direction::Up;
    std::size_t m_nHold = 1;  ///< points for which a force that is reached must last, 1 or more
};

/// What a kind of feature is.
struct FeatureTraits {
    std::string_view m_strName;
    FeatureKind m_kind;
    Quantity m_quantity;
    bool m_bBranch = false;  ///< measured on a branch
    bool m_bBoth = false;    ///< which may be both
    bool m_bPosition = false;
    bool m_bForce = false;  ///< with direction and hold
    bool m_bRange = false;
};

const FeatureTraits& GetTraits(FeatureKind kind);
std::span<const FeatureTraits> GetFeatureKinds();
/// The kinds that need no parameters.
std::span<const FeatureTraits> GetStandardFeatures();

/// What was measured, in values, seconds and products of them.
struct FeatureValue {
    std::optional<double> m_value = {};       ///< none: the feature does not exist on the stroke
    std::optional<std::size_t> m_point = {};  ///< of the value, when it belongs to one
    const char* m_pReason = nullptr;          ///< why there is no value
    double m_dTravel = 0;                     ///< of a work: how far the position comes on its way
};

/// @param stroke one that can be evaluated
FeatureValue MeasureFeature(const CStroke& stroke, const Feature& feature);

/// Where the path of a branch gets to a position first: the force there, and the point at which the
/// position is reached.
/// @param branch Forward or Return
FeatureValue FindForceAt(const CStroke& stroke, Branch branch, Grid nPosition);

constexpr const char* NOT_REACHED = "not reached";
constexpr const char* NO_TIME_BASE = "no time base";
