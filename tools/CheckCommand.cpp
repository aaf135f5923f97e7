// rt3 check and rt3 measure: a line for each stroke, then what they have in common.
#include <cstdio>

#include "tools/Commands.h"
#include "tools/StrokeText.h"
#include "tools/Strokes.h"

namespace {

/// Prints what comes of the strokes, and keeps count.
class CStrokeRun {
  public:
    CStrokeRun(Limits limits, bool bJson, bool bJudged)
        : m_limits(std::move(limits)), m_bJson(bJson), m_bJudged(bJudged) {
        const Scales& scales = m_limits.m_scales;
        if (!bJudged)
            for (const FeatureTraits& traits : GetStandardFeatures())
                m_features.emplace_back(std::string(traits.m_strName),
                                        scales.GetUnit(traits.m_quantity));
        for (const LimitObject& object : m_limits.m_objects)
            if (const auto* pLimit = std::get_if<FeatureLimit>(&object.m_limit)) {
                const FeatureTraits& traits = GetTraits(pLimit->m_feature.m_kind);
                m_features.emplace_back(object.m_strName, scales.GetUnit(traits.m_quantity),
                                        bJudged ? pLimit->m_min : std::nullopt,
                                        bJudged ? pLimit->m_max : std::nullopt);
            }
    }

    void Judge(const StrokeSource& source) {
        auto verdict = source.Evaluate<StrokeVerdict>(
            [&](const CStroke& stroke) { return JudgeStroke(stroke, m_limits); });
        if (source.m_pObstacle) verdict.m_outcome = Outcome::Cannot;
        Print(m_bJson ? WriteVerdict(source.m_name, verdict, m_limits) + '\n'
                      : DescribeVerdict(source.m_name, verdict, m_limits));
        std::size_t nFeature = 0;
        for (std::size_t n = 0; n < verdict.m_objects.size(); ++n)
            if (std::holds_alternative<FeatureLimit>(m_limits.m_objects[n].m_limit))
                m_features[nFeature++].Add(verdict.m_objects[n].m_value);
        Count(verdict.m_outcome);
    }

    void Measure(const StrokeSource& source) {
        const auto measurement = source.Evaluate<StrokeMeasurement>(
            [&](const CStroke& stroke) { return MeasureStroke(stroke, m_limits); });
        Print(m_bJson ? WriteMeasurement(source.m_name, measurement) + '\n'
                      : DescribeMeasurement(source.m_name, measurement));
        for (std::size_t n = 0; n < measurement.m_features.size(); ++n)
            m_features[n].Add(measurement.m_features[n].m_value);
        Count(measurement.m_strReason.empty() ? Outcome::Pass : Outcome::Cannot);
    }

    void Fail(const std::wstring& strPath, const std::string& strError) {
        if (m_bJson) Print(WriteFileError(strPath, strError) + '\n');
        ++m_summary.m_nErrors;
    }

    /// @return the exit code
    int Finish() {
        for (const CFeatureValues& feature : m_features)
            m_summary.m_features.push_back(feature.Summarise());
        if (m_bJson)
            Print(WriteSummary(m_summary, m_bJudged) + '\n');
        else if (m_summary.m_nStrokes > 1)
            Print(DescribeSummary(m_summary, m_bJudged));
        if (m_summary.m_nErrors + m_summary.m_nCannot > 0) return STROKE_UNKNOWN;
        return m_summary.m_nFailed > 0 ? STROKE_FAILED : STROKES_FINE;
    }

  private:
    static void Print(const std::string& strText) { std::fputs(strText.c_str(), stdout); }

    void Count(Outcome outcome) {
        ++m_summary.m_nStrokes;
        if (outcome == Outcome::Pass) ++m_summary.m_nPassed;
        if (outcome == Outcome::Fail) ++m_summary.m_nFailed;
        if (outcome == Outcome::Cannot) ++m_summary.m_nCannot;
    }

    Limits m_limits;
    bool m_bJson;
    bool m_bJudged;
    std::vector<CFeatureValues> m_features;
    RunSummary m_summary;
};

/// What both commands take.
struct RunOptions {
    std::wstring m_strLimits;
    StrokeRequest m_request;
    bool m_bJson = false;

    std::vector<std::wstring> Parse(CCommandLine& line, Arguments arguments,
                                    const char* pLimitsHelp) {
        line.AddText("--limits", "LIMITS", m_strLimits, pLimitsHelp);
        m_request.AddOptions(line);
        line.AddFlag("--json", m_bJson, "one JSON object per stroke and line, then a summary");
        return line.ParseFiles(arguments);
    }
};

}  // namespace

int RunCheck(Arguments arguments) {
    RunOptions options;
    CCommandLine line("rt3 check [OPTION]... --limits LIMITS FILE...",
                      "Holds strokes, curves of force over position, against the limits of a file: "
                      "a line for each\nstroke and each of its objects, failed ones first. Exit "
                      "code 1: a stroke failed; 3: a file could not\nbe read, or a stroke not be "
                      "evaluated.\n");
    const auto arrFiles = options.Parse(line, arguments, "the limits file");
    if (options.m_strLimits.empty()) throw CUsageError("--limits is missing");
    const Limits limits = ReadLimitsToCheck(options.m_strLimits);
    CStrokeRun run(limits, options.m_bJson, true);
    ForEachStroke(
        arrFiles, options.m_request, [&](const StrokeSource& source) { run.Judge(source); },
        [&](const auto& strPath, const auto& strError) { run.Fail(strPath, strError); });
    return run.Finish();
}

int RunMeasure(Arguments arguments) {
    RunOptions options;
    CCommandLine line("rt3 measure [OPTION]... FILE...",
                      "Measures strokes, curves of force over position: peak, end, duration and "
                      "work, and the features\nof a limits file. Exit code 3: a file could not be "
                      "read, or a stroke not be evaluated.\n");
    const auto arrFiles =
        options.Parse(line, arguments, "a limits file whose scales and features are used");
    CStrokeRun run(ReadLimits(options.m_strLimits).GetLimits(), options.m_bJson, false);
    ForEachStroke(
        arrFiles, options.m_request, [&](const StrokeSource& source) { run.Measure(source); },
        [&](const auto& strPath, const auto& strError) { run.Fail(strPath, strError); });
    return run.Finish();
}
