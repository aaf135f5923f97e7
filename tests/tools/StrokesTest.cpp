// rt3 measure, check, learn and plot --xy as a person runs them.
#include <nlohmann/json.hpp>

#include "tests/tools/ToolRun.h"

namespace {

/// Values of points: force and position in turn.
using Values = std::vector<int>;

/// The stroke of the worked examples.
const Values EXAMPLE{0,   0,   20,  100, 120, 200, 220, 300, 180, 400,
                     400, 500, 420, 500, 160, 400, 100, 200, 0,   0};

std::string Capture(const std::vector<Values>& curves, int nMode = 1, int nRate = 2000,
                    int nVersion = 4, int nInput = 2) {
    FileBytes bytes;
    bytes.Long(nVersion);
    if (nVersion > 1) bytes.Byte(nMode);
    if (nVersion > 2) bytes.Byte(nInput);
    if (nVersion > 3) bytes.Word(nRate).Word(0);
    bytes.Spans({1, 1, 1}).Byte(14).Byte(3).Long(static_cast<int>(curves.size()));
    for (const Values& values : curves)
        bytes.Values(values).Pulses({}).Longs(std::vector(10, -1)).Words({1, 0, 1, 0});
    return bytes.Longs({0, 0}).Text();
}

class Strokes : public ToolRun {
  protected:
    Strokes() {
        m_folder.Put("w.rt3", Capture({EXAMPLE}));
        m_folder.Put("l.json", R"({"format": "rt3-limits", "version": 1, "title": "Seat",
            "force": {"unit": "N", "factor": 0.5, "offset": -10},
            "position": {"unit": "mm", "factor": 0.001}, "objects": [
            {"name": "gate", "kind": "window", "x": [0.15, 0.35], "y": [-10, 115]},
            {"name": "peak", "kind": "feature", "feature": "peak_force", "max": 190}]})");
    }

    /// @return what rt3 says, errors too, and the exit code behind it
    std::string Run(const std::string& strArguments) const {
        const Result result = ToolRun::Run("$RT3 " + strArguments + " 2>&1");
        return result.m_strOut + std::to_string(result.m_nExitCode);
    }
    static nlohmann::json Line(const std::string& strText, int nLine) {
        std::size_t nFrom = 0;
        while (nLine-- > 0) nFrom = strText.find('\n', nFrom) + 1;
        return nlohmann::json::parse(strText.substr(nFrom, strText.find('\n', nFrom) - nFrom));
    }
};

TEST_F(Strokes, CheckSaysWhatFailedFirst) {
    EXPECT_EQ(
        Run("check --limits l.json w.rt3"),
        "w.rt3 curve 1: FAIL\n"
        "  FAIL  peak  above maximum, 200 N, margin -10 N, at 0.5 mm, 200 N, 0.006 s (point 6)\n"
        "  PASS  gate  margin 15 N\n1");
    EXPECT_EQ(Run("measure w.rt3"), "w.rt3 curve 1: 10 points, turn at point 5\n"
                                    "  peak_force     420      point 6\n"
                                    "  peak_position  500      point 6\n"
                                    "  peak_time      0.006 s  point 6\n"
                                    "  end_position   500      point 5\n"
                                    "  end_force      400      point 5\n"
                                    "  end_time       0.005 s  point 5\n"
                                    "  duration       0.009 s\n"
                                    "  work_forward   74000\n"
                                    "  work_return    65000\n"
                                    "  work_loss      9000\n0");
}

TEST_F(Strokes, JsonHoldsTheWholeOfIt) {
    const std::string strText = Run("check --json --limits l.json w.rt3 missing.rt3 --curve 1");
    const std::string strStroke = Run("check --json --limits l.json w.rt3");
    EXPECT_EQ(
        strStroke.substr(0, strStroke.find('\n')),
        R"({"file": "w.rt3", "channel": 1, "curve": 1, "points": 10, "turn": 5, )"
        R"("verdict": "fail", "reason": null, "objects": [{"name": "gate", "kind": "window", )"
        R"("result": "pass", "reason": null, "value": null, "unit": "", "margin": 15, )"
        R"("margin_unit": "N", "point": null}, {"name": "peak", "kind": "peak_force", )"
        R"("result": "fail", "reason": "above maximum", "value": 200, "unit": "N", )"
        R"("margin": -10, "margin_unit": "N", "point": {"index": 6, "position": 0.5, )"
        R"("force": 200, "time": 0.006}}]})");
    EXPECT_NE(strText.find("{\"file\": \"missing.rt3\", \"error\": \"missing.rt3: No such file"),
              std::string::npos);
    EXPECT_NE(
        strText.find(
            R"({"summary": {"strokes": 1, "pass": 0, "fail": 1, "cannot": 0, "errors": 1, )"
            R"("features": [{"name": "peak", "unit": "N", "count": 1, "min": 200, "mean": 200, )"
            R"("max": 200, "deviation": null, "cp": null, "cpk": null}]}})"
            "\n3"),
        std::string::npos);
    m_folder.Put("old.rt3", Capture({EXAMPLE}, 1, 0));
    const std::string strOld = Run("measure --json --limits l.json old.rt3");
    const auto features = Line(strOld, 0)["features"];
    EXPECT_EQ(features.size(), 11u);
    EXPECT_EQ(features[2]["reason"], "no time base");
    EXPECT_EQ(features[2]["value"], nullptr);
    EXPECT_EQ(features[10]["name"], "peak");
    EXPECT_EQ(features[10]["kind"], "peak_force");
    EXPECT_FALSE(Line(strOld, 1)["summary"].contains("pass"));
}

TEST_F(Strokes, SummarisesWhatStrokesHaveInCommon) {
    std::vector<Values> curves;
    for (const int nPeak : {9, 10, 11}) curves.push_back({0, 0, nPeak, 5, 0, 0});
    m_folder.Put("many.rt3", Capture(curves));
    m_folder.Put("c.json", R"({"format": "rt3-limits", "version": 1, "objects": [{"name": "q",
        "kind": "feature", "feature": "force_at", "position": 6, "max": 14}, {"name": "p",
        "kind": "feature", "feature": "peak_force", "min": 5, "max": 14}]})");
    const std::string strText = Run("check --limits c.json many.rt3 --json");
    const auto summary = Line(strText, 3)["summary"];
    const auto peak = summary["features"][1];
    EXPECT_EQ(peak["mean"], 10);
    EXPECT_EQ(peak["deviation"], 1);
    EXPECT_EQ(peak["cp"], 1.5);
    EXPECT_DOUBLE_EQ(peak["cpk"].get<double>(), 4 / 3.0);
    EXPECT_EQ(summary["features"][0]["count"], 0);
    EXPECT_EQ(summary["features"][0]["mean"], nullptr);
    EXPECT_EQ(Line(strText, 0)["objects"][0]["reason"], "not reached");
    EXPECT_NE(Run("check --limits c.json many.rt3")
                  .find("3 strokes: 0 passed, 3 failed, 0 cannot be evaluated\n"
                        "     count  min  mean  max  deviation   cp      cpk\n"
                        "  q      0    -     -    -          -    -        -\n"
                        "  p      3    9    10   11          1  1.5  1.33333\n1"),
              std::string::npos);
    const auto measured = Line(Run("measure --limits c.json many.rt3 --json"), 3)["summary"];
    EXPECT_EQ(measured["features"][11]["deviation"], 1);
    EXPECT_EQ(measured["features"][11]["cpk"], nullptr) << "limits are not applied";
}

TEST_F(Strokes, SaysWhyACurveCannotBeEvaluated) {
    m_folder.Put("three.rt3", Capture({{1, 2}, {1, 2, 3, 2, 5}, EXAMPLE}));
    m_folder.Put("single.rt3", Capture({EXAMPLE}, 3));
    m_folder.Put("old.rt3", Capture({EXAMPLE}, 0, 0, 1));
    m_folder.Put("input.rt3", Capture({EXAMPLE}, 2, 0, 2));
    m_folder.Put("voltage.rt3", Capture({EXAMPLE}, 2, 0, 4, 0));
    EXPECT_EQ(
        Run("measure three.rt3 --json | sed '4d; s/.*\"points/\"points/; s/, \"features.*//'"),
        "\"points\": 1, \"turn\": null, \"reason\": \"too few points\"\n"
        "\"points\": 2, \"turn\": null, \"reason\": \"constant position\"\n"
        "\"points\": 10, \"turn\": 5, \"reason\": null\n0");
    for (const char* pFile : {"single.rt3", "old.rt3", "input.rt3", "voltage.rt3"})
        EXPECT_EQ(Run(std::string("measure ") + pFile),
                  std::string(pFile) + " curve 1: CANNOT (no pairs)\n3");
    EXPECT_EQ(Run("check --pairs --limits l.json old.rt3").back(), '1');
    const std::string strMissing = Run("measure missing.rt3 w.rt3");
    EXPECT_NE(strMissing.find("rt3: missing.rt3: No such file"), std::string::npos);
    EXPECT_NE(strMissing.find("w.rt3 curve 1: 10 points"), std::string::npos);
    EXPECT_EQ(Run("check --limits l.json three.rt3 --curve 4"),
              "three.rt3 curve 4: CANNOT (no such curve)\n3");
    EXPECT_EQ(Run("measure --channel 2 w.rt3"), "w.rt3: CANNOT (no curves)\n3");
    EXPECT_EQ(Run("measure --json --channel 2 --curve 1 w.rt3 | head -1"),
              R"({"file": "w.rt3", "channel": 2, "curve": 1, "points": null, "turn": null, )"
              R"("reason": "no such curve", "features": []})"
              "\n0");
}

TEST_F(Strokes, LearnsOnlyFromGoodInputs) {
    for (const int nPeak : {90, 100, 110})
        m_folder.Put(std::to_string(nPeak) + ".rt3", Capture({{0, 0, nPeak, 100, 0, 0}}));
    m_folder.Put("wild.rt3", Capture({{0, 0, 900, 100, 0, 0}}));
    m_folder.Put("damaged.rt3", m_folder.Get("w.rt3").substr(0, 60));
    const std::string strGood = " 90.rt3 100.rt3 110.rt3";
    const std::string strLearn = "learn --points 3 --trim 0 --branch both -o ";
    EXPECT_EQ(Run(strLearn + "a.json --from l.json" + strGood), "0");
    EXPECT_EQ(Run(strLearn + "a.json --from a.json" + strGood), "0");
    EXPECT_EQ(Run(strLearn + "- --from l.json" + strGood), m_folder.Get("a.json") + "0");
    EXPECT_NE(m_folder.Get("a.json").find("\"upper\": [[0, 25], [0.05, 60], [0.1, 60]]"),
              std::string::npos);
    EXPECT_NE(m_folder.Get("a.json").find("\"learned return\""), std::string::npos);
    EXPECT_EQ(Run("learn --points 3 --trim 0 --tolerance 500 -o - 90.rt3 100.rt3 110.rt3 | "
                  "grep -o '\"upper.*\\]\\]'"),
              "\"upper\": [[0, 550], [50, 600], [100, 600]]\n0");
    EXPECT_EQ(Run("learn --trim 0 --sigma 1 -o tight.json 90.rt3 100.rt3 110.rt3 wild.rt3"),
              "rt3: wild.rt3 curve 1: fails \"learned forward\": above upper bound\n1");
    EXPECT_FALSE(m_folder.Get("tight.json").empty());
    for (const char* pInputs : {"90.rt3 100.rt3", "90.rt3 100.rt3 110.rt3 damaged.rt3",
                                "90.rt3 100.rt3 110.rt3 missing.rt3", "90.rt3 100.rt3 w.rt3",
                                "90.rt3 100.rt3 110.rt3 --channel 2"})
        EXPECT_EQ(Run(std::string("learn -o none.json ") + pInputs).back(), '3') << pInputs;
    EXPECT_FALSE(FileExists(m_folder.Path("none.json")));
    EXPECT_NE(Run("learn -o 90.rt3" + strGood).find("would be overwritten"), std::string::npos);
}

TEST_F(Strokes, RefusesCommandLines) {
    m_folder.Put("none.json", R"({"format": "rt3-limits", "version": 1, "objects": []})");
    m_folder.Put("bad.json", "{");
    for (const char* pArguments :
         {"check w.rt3", "check --limits none.json w.rt3", "check --limits bad.json w.rt3",
          "check --limits missing.json w.rt3", "measure", "measure --curve 0 w.rt3", "learn w.rt3",
          "learn -o a --branch up w.rt3", "learn -o a --points 1 w.rt3",
          "plot -o a.png --limits l.json w.rt3", "plot -o a.png --pairs w.rt3",
          "plot -o a.png --xy --display 1 w.rt3", "plot -o a.png --xy --size 99x100 w.rt3",
          "plot -o w.rt3 --xy w.rt3"})
        EXPECT_EQ(Run(pArguments).back(), '2') << pArguments;
}

TEST_F(Strokes, DrawsWhatItCan) {
    m_folder.Put("none.rt3", Capture({{1, 2}}));
    EXPECT_EQ(Run("plot --xy --limits l.json -o a.svg w.rt3 none.rt3"),
              "rt3: none.rt3 curve 1: too few points\n3");
    const std::string strPicture = m_folder.Get("a.svg");
    for (const char* pText : {">Seat: FAIL<", ">position [mm]<", ">force [N]<", ">gate<", ">0.2<"})
        EXPECT_NE(strPicture.find(pText), std::string::npos) << pText;
    EXPECT_TRUE(strPicture.find("width=\"800\" height=\"600\" viewBox=\"0 0 3200 2400\"") !=
                std::string::npos);
    m_folder.Put("voltage.rt3", Capture({EXAMPLE}, 1, 0, 4, 0));
    EXPECT_EQ(Run("plot --xy -o c.svg voltage.rt3 w.rt3 missing.rt3").back(), '3');
    for (const char* pText : {">voltage.rt3 and 1 more<", ">voltage<", ">force<"})
        EXPECT_NE(m_folder.Get("c.svg").find(pText), std::string::npos) << pText;
    EXPECT_EQ(Run("plot --xy -o b.png none.rt3").back(), '3');
    EXPECT_FALSE(FileExists(m_folder.Path("b.png")));
    EXPECT_EQ(Run("plot --xy --format png -o - w.rt3 | head -c 24 | od -An -tx1"),
              " 89 50 4e 47 0d 0a 1a 0a 00 00 00 0d 49 48 44 52\n 00 00 03 20 00 00 02 58\n0");
}

}  // namespace
