#include "evaluation/LimitObjectReader.h"

#include <algorithm>

#include "evaluation/Polyline.h"

namespace {

using Keys = std::vector<std::string_view>;

constexpr std::string_view KINDS[] = {"window", "block", "line", "envelope", "feature"};
constexpr std::string_view BRANCHES[] = {"forward", "return", "both"};
constexpr std::string_view DIRECTIONS[] = {"up", "down", "any"};
constexpr std::string_view CROSSINGS[] = {"required", "forbidden"};
constexpr std::string_view SIDES[] = {"left", "right", "bottom", "top", "none"};
constexpr std::size_t MAX_HOLD = 1'000'000;
constexpr std::size_t MAX_CORNERS = 10'000;

/// Reads the objects of one kind each.
class CObjectReader {
  public:
    CObjectReader(const CLimitsNode& node, const Scales& scales) : m_node(node), m_scales(scales) {}

    WindowLimit ReadWindow() const {
        RequireKeys({"branch", "x", "y", "entry", "exit"});
        WindowLimit window{ReadBranch(), ReadArea()};
        if (m_node.Has("entry")) window.m_entry = ReadSides(m_node.Get("entry"));
        if (m_node.Has("exit")) window.m_exit = ReadSides(m_node.Get("exit"));
        return window;
    }

    BlockLimit ReadBlock() const {
        RequireKeys({"branch", "x", "y"});
        return {ReadBranch(), ReadArea()};
    }

    LineLimit ReadLine() const {
        RequireKeys({"branch", "force", "from", "to", "direction", "crossing"});
        LineLimit line;
        line.m_branch = ReadBranch();
        line.m_nForce = m_node.Get("force").ReadGrid(m_scales.m_force);
        line.m_positions = ReadPositions(true);
        if (m_node.Has("direction")) line.m_direction = ReadDirection(std::size(DIRECTIONS));
        if (m_node.Has("crossing"))
            line.m_bRequired = m_node.Get("crossing").ReadChoice(CROSSINGS) == 0;
        return line;
    }

    EnvelopeLimit ReadEnvelope() const {
        RequireKeys({"branch", "lower", "upper", "tolerance"});
        EnvelopeLimit envelope;
        envelope.m_branch = ReadBranch(false);
        if (!m_node.Has("lower") && !m_node.Has("upper")) m_node.Refuse("lower or upper is needed");
        if (m_node.Has("lower")) envelope.m_lower = ReadCorners(m_node.Get("lower"));
        if (m_node.Has("upper")) envelope.m_upper = ReadCorners(m_node.Get("upper"));
        if (m_node.Has("lower") && m_node.Has("upper")) CompareLines(envelope);
        if (m_node.Has("tolerance"))
            envelope.m_nTolerance = m_node.Get("tolerance").ReadWidth(m_scales.m_force);
        return envelope;
    }

    FeatureLimit ReadFeature() const {
        std::vector<std::string_view> names;
        for (const FeatureTraits& kind : GetFeatureKinds()) names.push_back(kind.m_strName);
        const FeatureTraits& traits = GetFeatureKinds()[m_node.Get("feature").ReadChoice(names)];
        Keys keys{"feature", "min", "max"};
        if (traits.m_bBranch) keys.emplace_back("branch");
        if (traits.m_bPosition) keys.emplace_back("position");
        if (traits.m_bForce) keys.insert(keys.end(), {"force", "direction", "hold"});
        if (traits.m_bRange) keys.insert(keys.end(), {"from", "to"});
        RequireKeys(keys);

        FeatureLimit limit;
        Feature& feature = limit.m_feature;
        feature.m_kind = traits.m_kind;
        feature.m_branch = ReadBranch(traits.m_bBoth);
        if (traits.m_bPosition)
            feature.m_nAt = m_node.Get("position").ReadGrid(m_scales.m_position);
        if (traits.m_bForce) feature.m_nAt = m_node.Get("force").ReadGrid(m_scales.m_force);
        if (traits.m_bRange) feature.m_range = ReadPositions(false);
        if (m_node.Has("direction")) feature.m_direction = ReadDirection(2);
        if (m_node.Has("hold")) feature.m_nHold = m_node.Get("hold").ReadWhole(1, MAX_HOLD);
        ReadMinMax(limit);
        return limit;
    }

  private:
    /// A key that is none comes before a name that is missing: it may be that name, misspelt.
    void RequireKeys(Keys keys) const {
        keys.insert(keys.end(), {"name", "kind"});
        m_node.RequireKeys(keys);
        m_node.Get("name");
    }

    Branch ReadBranch(bool bBoth = true) const {
        if (!m_node.Has("branch")) return Branch::Forward;
        return static_cast<Branch>(
            m_node.Get("branch").ReadChoice(std::span(BRANCHES).first(bBoth ? 3 : 2)));
    }

    Direction ReadDirection(std::size_t nChoices) const {
        return static_cast<Direction>(
            m_node.Get("direction").ReadChoice(std::span(DIRECTIONS).first(nChoices)));
    }

    /// An end that may be open.
    static std::optional<Grid> ReadEnd(const CLimitsNode& node, const Scale& scale) {
        return node.IsNull() ? std::nullopt : std::optional(node.ReadGrid(scale));
    }

    static void RequireRising(const GridRange& range, const CLimitsNode& low,
                              const CLimitsNode& high) {
        if (range.Low() >= range.High()) high.Refuse(high.Quote() + " is not above " + low.Quote());
    }

    GridRange ReadRange(const char* pKey, const Scale& scale) const {
        const CLimitsNode node = m_node.Get(pKey);
        node.CountEntries(2, 2);
        const GridRange range{ReadEnd(node.At(0), scale), ReadEnd(node.At(1), scale)};
        RequireRising(range, node.At(0), node.At(1));
        return range;
    }

    Area ReadArea() const {
        return {ReadRange("x", m_scales.m_position), ReadRange("y", m_scales.m_force)};
    }

    GridRange ReadPositions(bool bNeeded) const {
        const auto read = [&](const char* pKey) -> std::optional<Grid> {
            if (bNeeded) return m_node.Get(pKey).ReadGrid(m_scales.m_position);
            if (!m_node.Has(pKey)) return std::nullopt;
            return ReadEnd(m_node.Get(pKey), m_scales.m_position);
        };
        const GridRange range{read("from"), read("to")};
        if (range.m_low && range.m_high) RequireRising(range, m_node.Get("from"), m_node.Get("to"));
        return range;
    }

    static CSides ReadSides(const CLimitsNode& node) {
        CSides sides;
        const std::size_t nEntries = node.CountEntries(1, std::size(SIDES));
        for (std::size_t n = 0; n < nEntries; ++n) {
            const auto side = static_cast<Side>(node.At(n).ReadChoice(SIDES));
            if (sides.Has(side)) node.At(n).Refuse(node.At(n).Quote() + " stands there twice");
            sides.Add(side);
        }
        return sides;
    }

    std::vector<GridPoint> ReadCorners(const CLimitsNode& node) const {
        std::vector<GridPoint> corners;
        const std::size_t nEntries = node.CountEntries(2, MAX_CORNERS);
        for (std::size_t n = 0; n < nEntries; ++n) {
            const CLimitsNode corner = node.At(n);
            corner.CountEntries(2, 2);
            corners.push_back({corner.At(0).ReadGrid(m_scales.m_position),
                               corner.At(1).ReadGrid(m_scales.m_force)});
            if (n > 0 && corners[n].m_nPosition <= corners[n - 1].m_nPosition)
                corner.At(0).Refuse(corner.At(0).Quote() + " is not above " +
                                    node.At(n - 1).At(0).Quote());
        }
        return corners;
    }

    void CompareLines(const EnvelopeLimit& envelope) const {
        const auto& lower = envelope.m_lower;
        const auto& upper = envelope.m_upper;
        const auto requireEqual = [&](std::size_t nUpper, std::size_t nLower) {
            const CLimitsNode end = m_node.Get("upper").At(nUpper).At(0);
            if (upper[nUpper].m_nPosition != lower[nLower].m_nPosition)
                end.Refuse(end.Quote() + " is not " + m_node.Get("lower").At(nLower).At(0).Quote() +
                           " as in lower");
        };
        requireEqual(0, 0);
        requireEqual(upper.size() - 1, lower.size() - 1);
        RequireBeside(lower, upper, "lower", 1);
        RequireBeside(upper, lower, "upper", -1);
    }

    /// @param nSign 1: corners may not lie above the line; -1: below
    void RequireBeside(const std::vector<GridPoint>& corners, const std::vector<GridPoint>& line,
                       const char* pCorners, int nSign) const {
        CPolyline polyline(line);
        for (std::size_t n = 0; n < corners.size(); ++n)
            if (nSign * polyline.FindHeight(corners[n]).m_nAbove > 0)
                m_node.Get(pCorners).At(n).Refuse("lower lies above upper");
    }

    void ReadMinMax(FeatureLimit& limit) const {
        if (!m_node.Has("min") && !m_node.Has("max")) m_node.Refuse("min or max is needed");
        if (m_node.Has("min")) limit.m_min = m_node.Get("min").ReadNumber();
        if (m_node.Has("max")) limit.m_max = m_node.Get("max").ReadNumber();
        if (limit.m_min && limit.m_max && *limit.m_min > *limit.m_max)
            m_node.Get("max").Refuse(m_node.Get("max").Quote() + " is below min, " +
                                     m_node.Get("min").Quote());
    }

    const CLimitsNode& m_node;
    const Scales& m_scales;
};

}  // namespace

LimitObject ReadLimitObject(CLimitsNode node, const Scales& scales) {
    constexpr std::size_t nMaxName = 64;
    LimitObject object;
    node.RequireObject();
    if (node.Has("name")) object.m_strName = node.Get("name").ReadText(1, nMaxName);
    node.SetName(object.m_strName);
    const CObjectReader reader(node, scales);
    switch (node.Get("kind").ReadChoice(KINDS)) {
    case 0:
        object.m_limit = reader.ReadWindow();
        break;
    case 1:
        object.m_limit = reader.ReadBlock();
        break;
    case 2:
        object.m_limit = reader.ReadLine();
        break;
    case 3:
        object.m_limit = reader.ReadEnvelope();
        break;
    default:
        object.m_limit = reader.ReadFeature();
    }
    return object;
}
