// Limits files: what is read, what is refused and in which words, and what learning writes.
#include "evaluation/LimitsFile.h"

#include <gtest/gtest.h>

#include "evaluation/Json.h"
#include "evaluation/Verdict.h"
#include "tests/evaluation/StrokeData.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using namespace std::string_literals;

std::string File(const std::string& strObjects, const std::string& strMore = "") {
    return R"({"format": "rt3-limits", "version": 1, )" + strMore + R"("objects": [)" + strObjects +
           "]}";
}
std::string Object(const std::string& strRest) { return R"({"name": "a", )" + strRest + "}"; }

const Limits ReadText(const std::string& strText) { return CLimitsFile("f", strText).GetLimits(); }

template <class Limit>
const Limit Read(const std::string& strRest, const std::string& strMore = "") {
    return std::get<Limit>(ReadText(File(Object(strRest), strMore)).m_objects.at(0).m_limit);
}

TEST(LimitsFile, ReadsEveryKindWithItsDefaults) {
    const Limits limits = ReadText(File("", R"("title": "Sitz \u00b5", "force": {"unit": "N", )"
                                            R"("factor": 0.5, "offset": -10},)"));
    EXPECT_EQ(limits.m_strTitle, "Sitz \u00B5");
    EXPECT_EQ(limits.m_scales.m_force.m_strUnit, "N");
    EXPECT_EQ(limits.m_scales.m_force.m_dOffset, -10);
    EXPECT_EQ(limits.m_scales.m_position.m_dFactor, 1);

    const auto window = Read<WindowLimit>(R"("kind": "window", "x": [0.25, null], "y": [-10, 0])",
                                          R"("force": {"factor": 0.5, "offset": -10},)");
    EXPECT_EQ(window.m_area.m_x.m_low, 250);
    EXPECT_EQ(window.m_area.m_x.m_high, std::nullopt);
    EXPECT_EQ(window.m_area.m_y.m_low, 0);
    EXPECT_EQ(window.m_area.m_y.m_high, 20'000);
    EXPECT_TRUE(window.m_entry.Has(Side::Left) && window.m_exit.HasNoneBut({Side::Right}));
    const auto line =
        Read<LineLimit>(R"("kind": "line", "force": 2, "from": -1, "to": 3, "branch": "both",)"
                        R"("direction": "any", "crossing": "forbidden")");
    EXPECT_EQ(line.m_branch, Branch::Both);
    EXPECT_EQ(line.m_nForce, 2000);
    EXPECT_EQ(line.m_direction, Direction::Any);
    EXPECT_FALSE(line.m_bRequired);
    const auto envelope = Read<EnvelopeLimit>(
        R"("kind": "envelope", "lower": [[0, 1], [2, 3]], "tolerance": 0.5, "branch": "return")",
        R"("force": {"factor": 0.5, "offset": 7},)");
    EXPECT_EQ(envelope.m_lower, (std::vector<GridPoint>{{0, -12'000}, {2000, -8000}}));
    EXPECT_EQ(envelope.m_nTolerance, 1000);
    EXPECT_EQ(envelope.m_branch, Branch::Return);
    const auto contact = Read<FeatureLimit>(
        R"("kind": "feature", "feature": "position_at", "force": 3, "hold": 5.0, "max": 9)");
    EXPECT_EQ(contact.m_feature.m_nAt, 3000);
    EXPECT_EQ(contact.m_feature.m_nHold, 5u);
    EXPECT_EQ(contact.m_feature.m_direction, Direction::Up);
    EXPECT_EQ(contact.m_max, 9);
    EXPECT_EQ(contact.m_min, std::nullopt);
    const auto slope = Read<FeatureLimit>(
        R"("kind": "feature", "feature": "slope", "from": null, "to": 4, "min": 1, "max": 1)");
    EXPECT_EQ(slope.m_feature.m_range.m_low, std::nullopt);
    EXPECT_EQ(slope.m_feature.m_range.m_high, 4000);
}

TEST(LimitsFile, SaysWhatIsWrongAndWhere) {
    const std::string strWindow = R"("kind": "window", "x": [0, 1], "y": [0, 1], )";
    const std::string strLine = R"("kind": "line", "force": 1, "from": 0, "to": 1, )";
    const auto envelope = [](const std::string& strRest) {
        return File(Object(R"("kind": "envelope", )" + strRest));
    };
    const auto feature = [](const std::string& strRest) {
        return File(Object(R"("kind": "feature", "feature": )" + strRest));
    };
    const std::string strDeep(100, '[');
    const std::pair<std::string, std::string> cases[] = {
        {"", "line 1: syntax error while parsing value - unexpected end of input; expected '[', "
             "'{', or a literal"},
        {"{\n\"format\":\n\"rt3-limits\",,}", "line 3: syntax error while parsing object key - "
                                              "unexpected ','; expected string literal"},
        {"[]", "a list is no object"},
        {strDeep, "[0][0][0][0][0][0][0][0]: is nested too deeply"},
        {R"({"format": 1, "format": 2})", "format: stands there twice"},
        {R"({"version": 1, "objects": []})", "format: missing"},
        {R"({"format": "csv"})", R"(format: "csv" is none of rt3-limits)"},
        {R"({"format": "rt3-limits"})", "version: missing"},
        {R"({"format": "rt3-limits", "version": 2})", "version: 2 is not supported, 1 is"},
        {R"({"format": "rt3-limits", "version": 1})", "objects: missing"},
        {File("", R"("titel": "x", )"), "titel: unknown key"},
        {File("", R"("title": 5, )"), "title: 5 is no text"},
        {File("", R"("title": ")" + std::string(201, 'x') + R"(", )"),
         "title: a text of 201 characters is not one of 0 to 200"},
        {File("", R"("force": null, )"), "force: null is no object"},
        {File("", R"("force": {"factor": 0}, )"), "force.factor: 0 is not between 1e-09 and 1e+09"},
        {File("", R"("position": {"offset": -2e9}, )"),
         "position.offset: -2e+09 is not between -1e+09 and 1e+09"},
        {File("", R"("position": {"unit": "mm", "scale": 2}, )"), "position.scale: unknown key"},
        {File("", R"("force": {"factor": 1e999}, )"), "number overflow parsing '1e999'"},
        {File("5"), "objects[0]: 5 is no object"},
        {File("{}"), "objects[0].kind: missing"},
        {File(R"({"kind": "block", "x": [0, 1], "y": [0, 1]})"), "objects[0].name: missing"},
        {File(R"({"kind": "block", "slop": 1})"), "objects[0].slop: unknown key"},
        {File(R"({"name": ""})"), "objects[0].name: a text of 0 characters is not one of 1 to 64"},
        {File(R"({"name": "a"})"), R"(objects[0].kind ("a"): missing)"},
        {File(Object(R"("kind": "box")")),
         R"(objects[0].kind ("a"): "box" is none of window, block, line, envelope, feature)"},
        {File(Object(strWindow + R"("slop": 1)")), R"(objects[0].slop ("a"): unknown key)"},
        {File(Object(strWindow + R"("entry": [])")),
         R"(objects[0].entry ("a"): a list of 0 is not one of 1 to 5)"},
        {File(Object(strWindow + R"("entry": ["lft"])")),
         R"(objects[0].entry[0] ("a"): "lft" is none of left, right, bottom, top, none)"},
        {File(Object(strWindow + R"("exit": ["top", "top"])")),
         R"(objects[0].exit[1] ("a"): "top" stands there twice)"},
        {File(Object(strWindow + R"("branch": "back")")),
         R"(objects[0].branch ("a"): "back" is none of forward, return, both)"},
        {File(Object(R"("kind": "block", "x": [0, 1])")), R"(objects[0].y ("a"): missing)"},
        {File(Object(R"("kind": "block", "x": [0, 1, 2], "y": [0, 1])")),
         R"(objects[0].x ("a"): a list of 3 is not one of 2)"},
        {File(Object(R"("kind": "block", "x": [1, 1.0001], "y": [0, 1])")),
         R"(objects[0].x[1] ("a"): 1.0001 is not above 1)"},
        {File(Object(R"("kind": "block", "x": [0, 1], "y": [null, 100001])")),
         R"(objects[0].y[1] ("a"): 100001 is beyond 100000 values)"},
        {File(Object(strWindow + R"("x": 1)")), "objects[0].x: stands there twice"},
        {File(Object(strLine + R"("direction": "left")")),
         R"(objects[0].direction ("a"): "left" is none of up, down, any)"},
        {File(Object(R"("kind": "line", "force": null, "from": 0, "to": 1)")),
         R"(objects[0].force ("a"): null is no number)"},
        {File(Object(R"("kind": "line", "force": 1, "from": 1, "to": 0)")),
         R"(objects[0].to ("a"): 0 is not above 1)"},
        {File(Object(R"("kind": "line", "force": 1, "from": 0)")),
         R"(objects[0].to ("a"): missing)"},
        {envelope(R"("tolerance": 1)"), R"(objects[0] ("a"): lower or upper is needed)"},
        {envelope(R"("lower": [[0, 1]])"),
         R"(objects[0].lower ("a"): a list of 1 is not one of 2 to 10000)"},
        {envelope(R"("lower": [[0, 1], [0, 2]])"),
         R"(objects[0].lower[1][0] ("a"): 0 is not above 0)"},
        {envelope(R"("lower": [[0, 1], [1, 2]], "upper": [[0, 1], [2, 2]])"),
         R"(objects[0].upper[1][0] ("a"): 2 is not 1 as in lower)"},
        {envelope(R"("lower": [[0, 1], [1, 9], [2, 1]], "upper": [[0, 5], [2, 5]])"),
         R"(objects[0].lower[1] ("a"): lower lies above upper)"},
        {envelope(R"("lower": [[0, 5], [2, 5]], "upper": [[0, 9], [1, 1], [2, 9]])"),
         R"(objects[0].upper[1] ("a"): lower lies above upper)"},
        {envelope(R"("lower": [[0, 5], [2, 5]], "tolerance": -1)"),
         R"(objects[0].tolerance ("a"): -1 is below 0)"},
        {envelope(R"("lower": [[0, 5], [2, 5]], "branch": "both")"),
         R"(objects[0].branch ("a"): "both" is none of forward, return)"},
        {feature(R"("end_time")"), R"(objects[0] ("a"): min or max is needed)"},
        {feature(R"("end_time", "min": 2, "max": 1)"),
         R"(objects[0].max ("a"): 1 is below min, 2)"},
        {feature(R"("end_time", "min": 2, "branch": "forward")"),
         R"(objects[0].branch ("a"): unknown key)"},
        {feature(R"("force_at", "min": 2)"), R"(objects[0].position ("a"): missing)"},
        {feature(R"("force_at", "position": 1, "branch": "both", "min": 2)"),
         R"(objects[0].branch ("a"): "both" is none of forward, return)"},
        {feature(R"("position_at", "force": 1, "direction": "any", "min": 2)"),
         R"(objects[0].direction ("a"): "any" is none of up, down)"},
        {feature(R"("position_at", "force": 1, "hold": 1.5, "min": 2)"),
         R"(objects[0].hold ("a"): 1.5 is no whole number from 1 to 1000000)"},
        {feature(R"("position_at", "force": 1, "hold": 0, "min": 2)"),
         R"(objects[0].hold ("a"): 0 is no whole number from 1 to 1000000)"},
        {feature(R"("slope", "to": 1, "from": 2, "min": 2)"),
         R"(objects[0].to ("a"): 1 is not above 2)"},
        {File(Object(strLine + R"("branch": "both")") + "," +
              Object(strLine + R"("branch": "both")")),
         R"(objects[1].name: "a" is the name of two objects)"},
        {"{\"format\": \"\xFF\"}", ""},
    };
    for (const auto& [strText, strError] : cases) {
        const std::string strFound =
            ErrorOf<CLimitsError>([&] { CLimitsFile("seat.json", strText); });
        const std::string strExpected = strError.empty() ? strFound : "seat.json: " + strError;
        EXPECT_EQ(strFound, strExpected) << strText.substr(0, 300);
        EXPECT_NE(strFound, "no error") << strText;
    }
    std::string strKeys = "{";
    for (int n = 0; n < 65; ++n) strKeys.append("\"").append(std::to_string(n)).append("\": 0, ");
    EXPECT_EQ(ErrorOf<CLimitsError>([&] { CLimitsFile("f", strKeys); }), "f: 64: unknown key");
    const TemporaryFolder folder;
    folder.Put("long.json", std::string(MAX_LIMITS_LENGTH + 1, ' '));
    const std::wstring strLong = folder.Path("long.json");
    EXPECT_EQ(ErrorOf<CLimitsError>([&] { ReadLimitsFile(strLong); }),
              ToUtf8(strLong) + ": is longer than 16 MB");
}

/// Strokes to 100 and back, with the force of each there.
struct Strokes {
    explicit Strokes(const std::vector<int>& forces, int nWay = 100) {
        for (const int nForce : forces) Add({{0, 0}, {nWay, nForce}, {0, 0}});
    }
    void Add(const Points& points) {
        m_data.push_back(std::make_unique<StrokeData>(points));
        m_strokes.emplace_back(m_data.back()->m_curve, 1000);
    }
    std::vector<std::unique_ptr<StrokeData>> m_data;
    std::vector<CStroke> m_strokes;
};

/// "position:lower:upper" of each corner.
std::string Learn(const Strokes& strokes, const LearningRule& rule, Branch branch = Branch::Forward,
                  const Scales& scales = {}) {
    std::string strCorners;
    for (const auto& corner : LearnEnvelope(strokes.m_strokes, branch, scales, rule).m_corners) {
        char text[99];
        std::snprintf(text, sizeof text, "%g:%g:%g ", corner.m_dPosition, corner.m_dLower,
                      corner.m_dUpper);
        strCorners += text;
    }
    return strCorners;
}

TEST(Json, WritesShortAndFiniteNumbers) {
    const Json numbers = Json::array({0.1, -0.0, 1e300, 0.1 + 0.2, 1e300 * 1e300});
    EXPECT_EQ(WriteJson(numbers), "[0.1, 0, 1e+300, 0.30000000000000004, null]");
}

TEST(Learning, FindsTheBoundsOfTheExample) {
    const Strokes strokes({90, 100, 110});
    EXPECT_EQ(Learn(strokes, {3, 4, {}, 0, 0}), "0:-2:70 50:-2:140 100:30:140 ");
    EXPECT_EQ(Learn(strokes, {3, 4, {}, 49, 0}), "0:-2:70 50:-2:140 100:30:140 ");
    EXPECT_EQ(Learn(strokes, {3, 4, {}, 50, 0}), "0:-2:140 50:-2:140 100:-2:140 ");
    EXPECT_EQ(Learn(strokes, {3, 4, {}, 50, 0}, Branch::Forward, {{}, {"", 2, 0}}),
              "0:-2:70 50:-2:140 100:30:140 ");
    // 30 is more than four deviations of the first cell, in the force's unit 15.
    EXPECT_EQ(Learn(strokes, {3, 4, 15, 0, 0}, Branch::Return, {{"", 0.5, 0}, {}}),
              "0:-30:80 50:-30:140 100:20:140 ");
    EXPECT_EQ(Learn(strokes, {2, 0, 0.0, 0, 10}), "10:10:90 90:10:90 ");
    EXPECT_EQ(Learn(strokes, {3, 4, {}, 1e15, 0}), "0:-2:140 50:-2:140 100:-2:140 ");
    // The way back begins at its smallest position, which need not be its last.
    Strokes bounces({});
    for (int n = 0; n < 3; ++n) bounces.Add({{0, 0}, {100, 50}, {10, 5}, {20, 5}});
    EXPECT_EQ(Learn(bounces, {2, 4, 0.0, 0, 0}, Branch::Return), "10:5:50 100:5:50 ");
    // No farther than a limits file may go.
    EXPECT_EQ(Learn(Strokes({-32768, 32767, 0}), {2, 20, {}, 0, 0}),
              "0:-99999:99999 100:-99999:99999 ");
    // What lies inside a cell counts, on a border on both sides; a jitter too.
    Strokes peaks({});
    for (int n = 0; n < 3; ++n)
        peaks.Add({{0, 0}, {20, 40}, {19, 70}, {50, 300}, {60, 10}, {50, -5}, {100, 50}});
    EXPECT_EQ(Learn(peaks, {3, 4, 0.0, 0, 0}), "0:-5:300 50:-5:300 100:-5:300 ");
}

TEST(Learning, RefusesStrokesWithTooLittleInCommon) {
    const auto learn = [](int nWay, LearningRule rule) {
        Strokes strokes({90, 100, 110});
        strokes.Add({{0, 0}, {nWay, 5}});
        return ErrorOf<CLearningError>([&] { Learn(strokes, rule); });
    };
    EXPECT_EQ(learn(80, {}), "no error");
    EXPECT_EQ(learn(79, {}), "the strokes overlap by 79 % of their range; 80 % is the least");
    Strokes apart({90, 100}, 10);
    apart.Add({{20, 1}, {30, 2}});
    EXPECT_EQ(ErrorOf<CLearningError>([&] { Learn(apart, {}); }),
              "the strokes overlap by 0 % of their range; 80 % is the least");
    Strokes still({});
    for (int n = 0; n < 3; ++n) still.Add({{5, 0}, {4, 1}});
    EXPECT_EQ(ErrorOf<CLearningError>([&] { Learn(still, {}); }),
              "the strokes have no range in common");
}

TEST(Learning, PutsEnvelopesIntoAFileThatStaysAsItWas) {
    const Strokes strokes({90, 100, 110});
    const Scales scales{{"N", 0.1, 0}, {"mm", 0.001, 1}};
    CLimitsFile file("f", File(Object(R"("kind": "block", "x": [null, 2.5e0], "y": [0.1, null])"),
                               R"("title": "\u20ac", "force": {"unit": "N", "factor": 0.1},)"
                               R"("position": {"unit": "mm", "factor": 0.001, "offset": 1},)"));
    for (const Branch branch : {Branch::Forward, Branch::Return, Branch::Forward})
        file.SetEnvelope(LearnEnvelope(strokes.m_strokes, branch, scales, {3, 4, {}, 0, 0}));
    EXPECT_EQ(file.GetText(), R"({
  "format": "rt3-limits",
  "version": 1,
  "title": "€",
  "force": {"unit": "N", "factor": 0.1},
  "position": {"unit": "mm", "factor": 0.001, "offset": 1},
  "objects": [
    {"name": "a", "kind": "block", "x": [null, 2.5], "y": [0.1, null]},
    {"name": "learned forward", "kind": "envelope", "branch": "forward", "lower": [[1, -0.2], [1.05, -0.2], [1.1, 3]], "upper": [[1, 7], [1.05, 14], [1.1, 14]], "tolerance": 0},
    {"name": "learned return", "kind": "envelope", "branch": "return", "lower": [[1, -0.2], [1.05, -0.2], [1.1, 3]], "upper": [[1, 7], [1.05, 14], [1.1, 14]], "tolerance": 0}
  ]
}
)");
    EXPECT_EQ(CLimitsFile("f", file.GetText()).GetText(), file.GetText());
    const StrokeVerdict verdict = JudgeStroke(strokes.m_strokes[0], file.GetLimits());
    EXPECT_EQ(verdict.m_objects.at(1).m_outcome, Outcome::Pass);
    CLimitsFile precise;
    precise.SetEnvelope({Branch::Forward, {{0, 1 / 3.0, 1}, {1, 1 / 3.0, 1}}});
    EXPECT_NE(precise.GetText().find("[0, 0.333333333333]"), std::string::npos);
    // The positions of the corners would all be the same in 12 digits.
    CLimitsFile fine("f", File("", R"("position": {"factor": 1e-9, "offset": 1e9},)"));
    EXPECT_NE(ErrorOf<CLimitsError>([&] {
                  fine.SetEnvelope(LearnEnvelope(strokes.m_strokes, Branch::Forward, scales, {}));
              }),
              "no error");
}

}  // namespace
