// Features and objects with figures worked out by hand.
#include <gtest/gtest.h>

#include "evaluation/FeatureSummary.h"
#include "evaluation/Verdict.h"
#include "tests/evaluation/StrokeData.h"

namespace {

using enum FeatureKind;

constexpr Grid operator""_v(unsigned long long nValue) {
    return static_cast<Grid>(nValue) * GRID_PER_VALUE;
}
GridRange Range(std::optional<int> low, std::optional<int> high) {
    const auto toGrid = [](std::optional<int> n) {
        return n ? std::optional(ToGrid(*n)) : std::nullopt;
    };
    return {toGrid(low), toGrid(high)};
}
Area At(GridRange x, GridRange y) { return {x, y}; }

struct Expected {
    const char* m_pReason;  ///< "" passed
    std::optional<double> m_margin;
    std::optional<std::size_t> m_point = {};
    std::optional<double> m_value = {};
};

ObjectResult Judge(const Points& points, decltype(LimitObject::m_limit) limit,
                   const Scales& scales = {}) {
    const StrokeData data(points);
    const Limits limits{"", scales, {{"", std::move(limit)}}};
    return JudgeStroke(CStroke(data.m_curve, EXAMPLE_RATE), limits).m_objects.at(0);
}

void Expect(const ObjectResult& result, const Expected& expected, int nCase) {
    EXPECT_EQ(result.m_strReason, expected.m_pReason) << nCase;
    EXPECT_EQ(result.m_outcome == Outcome::Pass, !*expected.m_pReason) << nCase;
    EXPECT_EQ(result.m_margin, expected.m_margin) << nCase;
    EXPECT_EQ(result.m_value, expected.m_value) << nCase;
    const auto point = result.m_point ? std::optional(result.m_point->m_nIndex) : std::nullopt;
    EXPECT_EQ(point, expected.m_point) << nCase;
}

FeatureValue Measure(const Feature& feature, const Points& points = EXAMPLE,
                     unsigned nRate = EXAMPLE_RATE) {
    const StrokeData data(points, true);
    return MeasureFeature(CStroke(data.m_curve, nRate), feature);
}

TEST(EvaluationExample, MeasuresTheFeaturesOfTheExample) {
    const Branch forward = Branch::Forward;
    const Branch back = Branch::Return;
    const GridRange range = Range(200, 400);
    const std::optional<std::size_t> none;
    const struct {
        Feature m_feature;
        std::optional<double> m_value;
        std::optional<std::size_t> m_point;
    } cases[] = {
        {{PeakForce}, 420, 6},
        {{PeakPosition}, 500, 6},
        {{PeakTime}, 0.006, 6},
        {{EndPosition}, 500, 5},
        {{EndForce}, 400, 5},
        {{EndTime}, 0.005, 5},
        {{Duration}, 0.009, none},
        {{WorkForward}, 74000, none},
        {{WorkReturn}, 65000, none},
        {{WorkLoss}, 9000, none},
        {{ForceAt, forward, 250_v}, 170, 3},
        {{ForceAt, back, 250_v}, 115, 8},
        {{ForceAt, forward, 0}, 0, 0},
        {{ForceAt, forward, 600_v}, {}, none},
        {{ForceAt, back, 500_v}, 400, 5},
        {{ForceAt, back, 501_v}, {}, none},
        {{ForceAt, forward, -1}, {}, none},
        {{Hysteresis, forward, 250_v}, 55, none},
        {{Hysteresis, forward, 501_v}, {}, none},
        {{PositionAt, forward, 100_v, {}, Direction::Up, 1}, 180, 2},
        {{PositionAt, forward, 100_v, {}, Direction::Up, 4}, 180, 2},
        {{PositionAt, forward, 100_v, {}, Direction::Up, 5}, {}, none},
        {{PositionAt, forward, 200_v, {}, Direction::Up, 1}, 280, 3},
        {{PositionAt, forward, 200_v, {}, Direction::Up, 2}, {}, none},
        {{PositionAt, forward, 0, {}, Direction::Up, 1}, {}, none},
        // 420 at 6, 160 at 7: 290 half way from 500 to 400.
        {{PositionAt, back, 290_v, {}, Direction::Down, 3}, 450, 7},
        {{PositionAt, back, 290_v, {}, Direction::Down, 4}, {}, none},
        {{PositionAt, back, 100_v, {}, Direction::Down, 2}, 200, 8},
        {{Slope, forward, 0, Range(100, 300)}, 1, none},
        {{Slope, forward, 0, Range(200, 500)}, 0.8, none},
        {{Slope, back, 0, Range(500, {})}, {}, none},
        {{MeanForce, forward, 0, range}, 520 / 3.0, none},
        {{MeanForce, Branch::Both, 0, Range({}, 100)}, 20 / 3.0, none},
        {{MinForce, forward, 0, range}, 120, 2},
        {{MaxForce, forward, 0, range}, 220, 3},
        {{Drop, forward, 0, range}, 40, 4},
        {{Drop, forward, 0, Range(500, {})}, 0, 5},
        {{Drop, forward, 0, Range(501, {})}, {}, none},
        {{MinForce, forward, 0, Range(301, 399)}, {}, none},
        {{MeanForce, forward, 0, Range(301, 399)}, {}, none},
    };
    int nCase = 0;
    for (const auto& [feature, value, point] : cases) {
        const FeatureValue measured = Measure(feature);
        EXPECT_EQ(measured.m_value, value) << nCase;
        EXPECT_EQ(measured.m_point, point) << nCase;
        EXPECT_EQ(measured.m_pReason == nullptr, value.has_value()) << nCase++;
    }
}

TEST(EvaluationExample, HasNoTimesWithoutARateAndTakesTheFirstOfEqualExtremes) {
    for (const FeatureKind kind : {PeakTime, EndTime, Duration})
        EXPECT_STREQ(Measure({kind}, EXAMPLE, 0).m_pReason, NO_TIME_BASE);
    const Points plateau{{5, 9}, {7, 9}, {7, 3}, {7, 9}};
    EXPECT_EQ(Measure({PeakForce}, plateau).m_point, 0u);
    EXPECT_EQ(Measure({EndForce}, plateau).m_point, 1u);
    // The turn at the last point, and at the first.
    EXPECT_EQ(Measure({ForceAt, Branch::Return, 7_v}, {{5, 1}, {7, 2}}).m_value, 2);
    EXPECT_EQ(Measure({WorkReturn}, {{5, 1}, {7, 2}}).m_value, 0);
    EXPECT_EQ(Measure({WorkForward}, {{7, 2}, {5, 1}}).m_value, 0);
    EXPECT_EQ(Measure({ForceAt, Branch::Forward, 6_v}, {{7, 2}, {5, 1}}).m_value, std::nullopt);
}

TEST(EvaluationExample, ScalesWhatPeopleRead) {
    const Scales scales{{"N", 0.5, -10}, {"mm", 0.001, 0}};
    const StrokeData data(EXAMPLE);
    const CStroke stroke(data.m_curve, EXAMPLE_RATE);
    const Limits limits{"",
                        scales,
                        {{"k", FeatureLimit{{Slope, Branch::Forward, 0, Range(100, 300)}, 0.0, {}}},
                         {"h", FeatureLimit{{Hysteresis, Branch::Forward, 250_v}, 0.0, {}}}}};
    const auto features = MeasureStroke(stroke, limits).m_features;
    const std::pair<double, const char*> expected[] = {
        {200, "N"},          {0.5, "mm"},        {0.006, "s"},  {0.5, "mm"},
        {190, "N"},          {0.005, "s"},       {0.009, "s"},  {32, "N\u00B7mm"},
        {27.5, "N\u00B7mm"}, {4.5, "N\u00B7mm"}, {500, "N/mm"}, {27.5, "N"}};
    ASSERT_EQ(features.size(), std::size(expected));
    for (std::size_t n = 0; n < features.size(); ++n) {
        EXPECT_NEAR(features[n].m_value.value(), expected[n].first, 1e-9) << n;
        EXPECT_EQ(features[n].m_strUnit, expected[n].second) << n;
    }
    EXPECT_EQ(features[10].m_strName, "k");
    EXPECT_EQ(features[0].m_point.value().m_dForce, 200);
    EXPECT_EQ((Scales{{"N"}, {}}.GetUnit(Quantity::Work)), "N");
    EXPECT_EQ((Scales{{"N"}, {}}.GetUnit(Quantity::Slope)), "");
}

TEST(EvaluationExample, JudgesTheObjectsOfTheExample) {
    const Branch forward = Branch::Forward;
    const CSides left{Side::Left}, right{Side::Right}, none{Side::None};
    const EnvelopeLimit envelope{
        forward, {{0, -50_v}, {500_v, 250_v}}, {{0, 100_v}, {200_v, 200_v}, {500_v, 500_v}}};
    EnvelopeLimit wide = envelope;
    wide.m_nTolerance = 10_v;
    EnvelopeLimit early = wide;
    early.m_nTolerance = 11_v;
    early.m_lower[0].m_nPosition = early.m_upper[0].m_nPosition = -1_v;
    const EnvelopeLimit earlyAndTight{
        forward, {{-1_v, -50_v}, {0, -50_v}, {500_v, 250_v}}, {{-1_v, 500_v}, {500_v, 500_v}}};
    const LineLimit line{forward, 200_v, Range(250, 350)};
    const LineLimit fall{forward, 200_v, Range(350, 450), Direction::Down, false};
    const std::pair<decltype(LimitObject::m_limit), Expected> cases[] = {
        {WindowLimit{forward, At(Range(150, 350), Range(0, 250)), left, right}, {"", 30}},
        {WindowLimit{forward, At(Range(250, 450), Range(100, 200)), left, right},
         {"crosses top", -20, 3}},
        {WindowLimit{forward, At(Range(450, 550), Range(300, 450)), left, none},
         {"enters by bottom", {}, 5}},
        {WindowLimit{forward, At(Range(450, 550), Range(250, 450)), left, none}, {"", 50}},
        {WindowLimit{forward, At(Range(450, 550), Range(250, 450)), left, right},
         {"ends inside", {}, 5}},
        {WindowLimit{forward, At(Range(-10, 50), Range(-5, {})), left, right},
         {"starts inside", {}, 0}},
        {WindowLimit{forward, At(Range(-10, 50), Range(-5, {})), none, right}, {"", 5}},
        {WindowLimit{forward, At(Range(150, 350), Range(0, 250)), {Side::Left, Side::Right}, none},
         {"leaves by right", {}, 4}},
        {WindowLimit{forward, At(Range(150, 250), Range(300, 400)), left, right},
         {"never entered", -180, 5}},
        {WindowLimit{forward, At(Range(150, 250), Range({}, {})), left, right}, {"", {}}},
        // Upwards through a window: at 120 and 220 the positions are 200 and 300.
        {WindowLimit{forward, At(Range(180, 330), Range(110, 230)), {Side::Bottom}, {Side::Top}},
         {"crosses right", -70, 4}},
        {WindowLimit{forward, At(Range(150, 450), Range(100, 250)), {Side::Bottom}, {Side::Top}},
         {"", 50}},
        {WindowLimit{forward,
                     At(Range(150, 450), Range(100, 250)),
                     {Side::Bottom, Side::Left},
                     {Side::Top}},
         {"", {}}},
        {BlockLimit{forward, At(Range(320, 380), Range(150, 180))}, {"", {}}},
        {BlockLimit{Branch::Both, At(Range(320, 380), Range(150, 180))}, {"touched", {}, 8}},
        {BlockLimit{forward, At(Range(150, 350), Range(250, {}))}, {"", 30}},
        {BlockLimit{forward, At(Range(150, 350), Range(220, {}))}, {"touched", 0, 3}},
        {BlockLimit{forward, At(Range({}, 50), Range({}, 0))}, {"touched", 0, 0}},
        {BlockLimit{forward, At(Range(150, 250), Range(100, 150))}, {"touched", -20, 2}},
        {BlockLimit{forward, At(Range(600, {}), Range({}, {}))}, {"", {}}},
        {BlockLimit{forward, At(Range(150, 250), Range({}, {}))}, {"touched", {}, 2}},
        // The path passes the corner alone, half way from 300 to 400.
        {BlockLimit{forward, At(Range(350, 390), Range(200, 250))}, {"touched", {}, 4}},
        {WindowLimit{forward, At(Range(350, 390), Range(200, 250)), left, {Side::Bottom}},
         {"", {}}},
        {line, {"", 20, {}, 280}},
        {fall, {"crossed", -20, 4, 350}},
        {LineLimit{forward, 200_v, Range(281, 350)}, {"not crossed", {}, 5}},
        {LineLimit{forward, 230_v, Range(250, 350)}, {"not crossed", -10, 5}},
        {LineLimit{forward, 220_v, Range(300, 300), Direction::Any}, {"", {}, {}, 300}},
        {LineLimit{forward, 230_v, Range(250, 350), Direction::Up, false}, {"", 10}},
        {LineLimit{forward, 200_v, Range(350, 450), Direction::Down}, {"", 20, {}, 350}},
        {envelope, {"below lower bound", -10, 4}},
        {wide, {"", 0}},
        {early, {"not covered", {}, 5}},
        {earlyAndTight, {"below lower bound", -10, 4}},
        {EnvelopeLimit{forward, {}, {{0, 100_v}, {300_v, 200_v}}}, {"above upper bound", -20, 3}},
        {EnvelopeLimit{Branch::Return, {{0, 0}, {500_v, 400_v}}, {}},
         {"below lower bound", -160, 7}},
        {FeatureLimit{{PeakForce}, {}, 400}, {"above maximum", -20, 6, 420}},
        {FeatureLimit{{PeakForce}, 421, 500}, {"below minimum", -1, 6, 420}},
        {FeatureLimit{{PeakForce}, 400, 500}, {"", 20, {}, 420}},
        {FeatureLimit{{WorkLoss}, {}, 8999}, {"above maximum", -1, {}, 9000}},
        {FeatureLimit{{ForceAt, forward, 600_v}, 0, {}}, {"not reached", {}}},
    };
    int nCase = 0;
    for (const auto& [limit, expected] : cases) Expect(Judge(EXAMPLE, limit), expected, nCase++);
}

TEST(EvaluationExample, ConvertsMarginsAndPoints) {
    const Scales scales{{"N", 0.5, -10}, {"mm", 0.001, 2}};
    const auto result =
        Judge(EXAMPLE, BlockLimit{Branch::Forward, At(Range(150, 350), Range(200, {}))}, scales);
    EXPECT_EQ(result.m_margin, -10);
    EXPECT_EQ(result.m_strMarginUnit, "N");
    EXPECT_EQ(result.m_point.value().m_nIndex, 3u);
    EXPECT_DOUBLE_EQ(result.m_point.value().m_dPosition, 2.3);
    EXPECT_EQ(result.m_point.value().m_dForce, 100);
    EXPECT_EQ(result.m_point.value().m_time, 0.003);
    const auto upwards = Judge(
        EXAMPLE,
        WindowLimit{
            Branch::Forward, At(Range(150, 450), Range(100, 250)), {Side::Bottom}, {Side::Top}},
        scales);
    EXPECT_DOUBLE_EQ(upwards.m_margin.value(), 0.05);
    EXPECT_EQ(upwards.m_strMarginUnit, "mm");
    // 0.1 x 3 is not 0.3 in double precision.
    const Points small{{0, 0}, {1, 3}};
    EXPECT_EQ(Judge(small, FeatureLimit{{PeakForce}, {}, 0.3}, {{"", 0.1, 0}, {}}).m_margin, 0);
    EXPECT_EQ(FindGrid({"", 0.1, 0}, 0.3), 3_v);
    EXPECT_EQ(FindGrid({"", 0.001, 0}, -0.0000005), -1);
    EXPECT_EQ(FindGrid({"", 1, 5}, 100005), 100000_v);
    EXPECT_EQ(FindGrid({"", 1, 5}, 100005.001), std::nullopt);
}

TEST(EvaluationExample, GivesTheVerdictOfTheWhole) {
    const auto judge = [](const Points& points, unsigned nRate, std::vector<LimitObject> objects) {
        const StrokeData data(points);
        return JudgeStroke(CStroke(data.m_curve, nRate), {"", {}, std::move(objects)});
    };
    const LimitObject good{"good", FeatureLimit{{PeakForce}, 0, {}}};
    const LimitObject bad{"bad", FeatureLimit{{PeakForce}, 500, {}}};
    const LimitObject unknown{"unknown", FeatureLimit{{Duration}, 0, {}}};
    EXPECT_EQ(judge(EXAMPLE, 0, {good}).m_outcome, Outcome::Pass);
    EXPECT_EQ(judge(EXAMPLE, 0, {unknown, good}).m_outcome, Outcome::Cannot);
    EXPECT_EQ(judge(EXAMPLE, 0, {unknown, bad, good, unknown}).m_outcome, Outcome::Fail);
    EXPECT_EQ(judge(EXAMPLE, 0, {unknown}).m_objects.at(0).m_strReason, "no time base");
    EXPECT_EQ(judge({}, 1, {good}).m_strReason, "too few points");
    EXPECT_EQ(judge({{1, 1}}, 1, {good}).m_strReason, "too few points");
    EXPECT_EQ(judge({{1, 1}, {1, 2}}, 1, {good}).m_strReason, "constant position");
    EXPECT_TRUE(judge({{1, 1}, {1, 2}}, 1, {good}).m_objects.empty());
    EXPECT_EQ(judge(EXAMPLE, 1, {good}).m_turn, 5u);
}

TEST(FeatureSummary, HasACapabilityOnlyWithADeviationAndLimits) {
    const auto summarise = [](const std::vector<double>& adValues, std::optional<double> min,
                              std::optional<double> max) {
        CFeatureValues values("", "", min, max);
        for (const double dValue : adValues) values.Add(dValue);
        values.Add({});
        return values.Summarise();
    };
    const auto both = summarise({9, 11, 10}, 5, 14);
    EXPECT_EQ(both.m_nCount, 3u);
    EXPECT_EQ(both.m_min, 9);
    EXPECT_EQ(both.m_max, 11);
    EXPECT_EQ(both.m_cp, 1.5);
    EXPECT_EQ(both.m_cpk, 4 / 3.0);
    const auto low = summarise({9, 11, 10}, 5, {});
    EXPECT_EQ(low.m_cp, std::nullopt);
    EXPECT_EQ(low.m_cpk, 5 / 3.0);
    EXPECT_EQ(summarise({9, 11, 10}, 10.75, 14).m_cpk, -0.25);
    EXPECT_EQ(summarise({9, 11, 10}, {}, {}).m_cpk, std::nullopt);
    EXPECT_EQ(summarise({7, 7}, 5, 14).m_deviation, 0);
    EXPECT_EQ(summarise({7, 7}, 5, 14).m_cp, std::nullopt);
    EXPECT_EQ(summarise({7}, 5, 14).m_mean, 7);
    EXPECT_EQ(summarise({7}, 5, 14).m_deviation, std::nullopt);
    EXPECT_EQ(summarise({}, 5, 14).m_mean, std::nullopt);
}

}  // namespace
