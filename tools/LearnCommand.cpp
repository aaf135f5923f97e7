#include "tools/Captures.h"
#include "tools/Commands.h"
#include "tools/Strokes.h"

namespace {

struct LearnRequest {
    std::wstring m_strOutput;
    std::wstring m_strFrom;
    std::vector<Branch> m_branches{Branch::Forward};
    LearningRule m_rule;
    StrokeRequest m_strokes;
};

std::vector<Branch> ReadBranches(const std::string& strText) {
    if (strText == "forward") return {Branch::Forward};
    if (strText == "return") return {Branch::Return};
    if (strText == "both") return {Branch::Forward, Branch::Return};
    throw CUsageError("'" + strText + "' is none of forward, return, both");
}

std::vector<std::wstring> Parse(Arguments arguments, LearnRequest& request) {
    CCommandLine line(
        "rt3 learn [OPTION]... -o OUT FILE...",
        "Makes an envelope from at least three good strokes and writes it into a limits file, "
        "which it\nreplaces only when the new one is complete. Exit code 1: a stroke fails its own "
        "envelope; 3: a file\ncould not be read, a stroke not be evaluated, or nothing be learned, "
        "and nothing is written.\n");
    LearningRule& rule = request.m_rule;
    line.AddText("-o,--output", "OUT", request.m_strOutput,
                 "the limits file to write, or \"-\" for standard output");
    line.AddText("--from", "LIMITS", request.m_strFrom,
                 "a limits file with the title, scales and other objects; may be OUT");
    line.AddOption("--branch", "BRANCH", "forward, return, or both for two envelopes (forward)",
                   [&](const std::string& str) { request.m_branches = ReadBranches(str); });
    line.AddNumber("--points", "N", rule.m_nPoints, 2, 1000, "corners of each bound (100)");
    line.AddNumber("--sigma", "X", rule.m_dSigma, 0, 20,
                   "standard deviations between mean and bound (4)");
    line.AddNumber(
        "--tolerance", "X", false, [&](double dValue) { rule.m_tolerance = dValue; }, 0, 1e15,
        "least force between mean and bound, in the unit of LIMITS (2 % of the span)");
    line.AddNumber("--sideways", "X", rule.m_dSideways, 0, 1e15,
                   "how far flanks may shift, in the position's unit (0)");
    line.AddNumber("--trim", "N", rule.m_nTrimPercent, 0, 20,
                   "percent of the common range to leave out at each end (2)");
    request.m_strokes.AddOptions(line);
    auto arrFiles = line.ParseFiles(arguments);
    if (request.m_strOutput.empty()) throw CUsageError("-o is missing");
    return arrFiles;
}

/// @return false when one cannot be used, which has been reported
bool ReadAll(const std::vector<std::wstring>& arrFiles, const StrokeRequest& request,
             std::vector<StrokeSource>& sources) {
    bool bAll = true;
    ForEachStroke(
        arrFiles, request,
        [&](const StrokeSource& source) {
            if (const char* const pObstacle = source.FindObstacle()) {
                Report(DescribeStroke(source.m_name) + ": " + pObstacle);
                bAll = false;
            }
            sources.push_back(source);
        },
        [&](const auto&, const auto&) { bAll = false; });
    return bAll;
}

/// Says which of the strokes fail the envelopes that were learned from them.
/// @return the exit code
int CheckOwn(const std::vector<CStroke>& strokes, const std::vector<StrokeSource>& sources,
             const Limits& limits) {
    int nExitCode = STROKES_FINE;
    for (std::size_t n = 0; n < strokes.size(); ++n) {
        const StrokeVerdict verdict = JudgeStroke(strokes[n], limits);
        for (std::size_t k = 0; k < limits.m_objects.size(); ++k) {
            const ObjectResult& result = verdict.m_objects[k];
            if (result.m_outcome == Outcome::Pass) continue;
            Report(DescribeStroke(sources[n].m_name) + ": fails \"" +
                   limits.m_objects[k].m_strName + "\": " + result.m_strReason);
            nExitCode = STROKE_FAILED;
        }
    }
    return nExitCode;
}

}  // namespace

int RunLearn(Arguments arguments) {
    LearnRequest request;
    const auto arrFiles = Parse(arguments, request);
    KeepInputs(request.m_strOutput, arrFiles);
    CLimitsFile file = ReadLimits(request.m_strFrom);
    std::vector<StrokeSource> sources;
    if (!ReadAll(arrFiles, request.m_strokes, sources)) return STROKE_UNKNOWN;
    if (sources.size() < LearningRule::LEAST_STROKES) {
        Report(std::to_string(sources.size()) + " strokes are too few to learn from; " +
               std::to_string(LearningRule::LEAST_STROKES) + " are the least");
        return STROKE_UNKNOWN;
    }
    std::vector<CStroke> strokes;
    strokes.reserve(sources.size());
    for (const StrokeSource& source : sources)
        strokes.emplace_back(*source.m_spCurve, source.m_nRate);
    Limits learned{"", file.GetLimits().m_scales, {}};
    try {
        for (const Branch branch : request.m_branches)
            learned.m_objects.push_back(
                file.SetEnvelope(LearnEnvelope(strokes, branch, learned.m_scales, request.m_rule)));
        WriteWhole(request.m_strOutput, file.GetText());
    } catch (const std::runtime_error& error) {
        Report(error.what());
        return STROKE_UNKNOWN;
    } catch (const CException& error) {
        Report(DescribeError(error));
        return STROKE_UNKNOWN;
    }
    return CheckOwn(strokes, sources, learned);
}
