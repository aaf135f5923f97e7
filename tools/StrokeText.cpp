#include "tools/StrokeText.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "platform/commandline/CommandLine.h"
#include "platform/system/Text.h"
#include "tools/Strokes.h"

namespace {

std::string Format(double dNumber) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", dNumber == 0 ? 0 : dNumber);
    return text;
}

std::string WithUnit(double dNumber, const std::string& strUnit) {
    return strUnit.empty() ? Format(dNumber) : Format(dNumber) + ' ' + MakePrintable(strUnit);
}

/// A table whose columns are as wide as their longest cell; the first ones stand at the left.
class CTextTable {
  public:
    explicit CTextTable(std::size_t nLeftColumns) : m_nLeftColumns(nLeftColumns) {}

    void AddRow(std::vector<std::string> cells) {
        m_widths.resize(std::max(m_widths.size(), cells.size()));
        for (std::size_t n = 0; n < cells.size(); ++n)
            m_widths[n] = std::max(m_widths[n], GetWidth(cells[n]));
        m_rows.push_back(std::move(cells));
    }

    std::string GetText() const {
        std::string strText;
        for (const auto& row : m_rows) {
            std::string strRow;
            for (std::size_t n = 0; n < row.size(); ++n) {
                const std::string strGap(m_widths[n] - GetWidth(row[n]), ' ');
                strRow += n < m_nLeftColumns ? "  " + row[n] + strGap : "  " + strGap + row[n];
            }
            strRow.erase(strRow.find_last_not_of(' ') + 1);
            strText += strRow + '\n';
        }
        return strText;
    }

  private:
    static std::size_t GetWidth(const std::string& strCell) { return FromUtf8(strCell).size(); }

    std::size_t m_nLeftColumns;
    std::vector<std::size_t> m_widths;
    std::vector<std::vector<std::string>> m_rows;
};

std::string DescribePoint(const MeasuredPoint& point, const Scales& scales) {
    std::string strText = "at " + WithUnit(point.m_dPosition, scales.m_position.m_strUnit) + ", " +
                          WithUnit(point.m_dForce, scales.m_force.m_strUnit);
    if (point.m_time) strText += ", " + WithUnit(*point.m_time, "s");
    return strText + " (point " + std::to_string(point.m_nIndex) + ")";
}

std::string DescribeResult(const ObjectResult& result, const Scales& scales) {
    std::vector<std::string> parts;
    if (!result.m_strReason.empty()) parts.push_back(result.m_strReason);
    if (result.m_value) parts.push_back(WithUnit(*result.m_value, result.m_strUnit));
    if (result.m_margin)
        parts.push_back("margin " + WithUnit(*result.m_margin, result.m_strMarginUnit));
    if (result.m_point) parts.push_back(DescribePoint(*result.m_point, scales));
    std::string strText;
    for (const std::string& strPart : parts) strText += strText.empty() ? strPart : ", " + strPart;
    return strText;
}

constexpr const char* OUTCOMES[] = {"PASS", "FAIL", "CANNOT"};

const char* GetWord(Outcome outcome) { return OUTCOMES[static_cast<std::size_t>(outcome)]; }

std::string Head(const StrokeName& name) { return MakePrintable(DescribeStroke(name)) + ": "; }

std::string CountOf(std::size_t nCount, const char* pOne, const char* pMany) {
    return std::to_string(nCount) + ' ' + (nCount == 1 ? pOne : pMany);
}

}  // namespace

std::string DescribeVerdict(const StrokeName& name, const StrokeVerdict& verdict,
                            const Limits& limits) {
    std::string strText = Head(name) + GetWord(verdict.m_outcome);
    if (!verdict.m_strReason.empty()) strText += " (" + verdict.m_strReason + ")";
    CTextTable table(3);
    for (const Outcome outcome : {Outcome::Fail, Outcome::Cannot, Outcome::Pass})
        for (std::size_t n = 0; n < verdict.m_objects.size(); ++n)
            if (const ObjectResult& result = verdict.m_objects[n]; result.m_outcome == outcome)
                table.AddRow({GetWord(outcome), MakePrintable(limits.m_objects[n].m_strName),
                              DescribeResult(result, limits.m_scales)});
    return strText + '\n' + table.GetText();
}

std::string DescribeMeasurement(const StrokeName& name, const StrokeMeasurement& measurement) {
    if (!measurement.m_strReason.empty())
        return Head(name) + "CANNOT (" + measurement.m_strReason + ")\n";
    CTextTable table(3);
    for (const MeasuredFeature& feature : measurement.m_features)
        table.AddRow(
            {MakePrintable(feature.m_strName),
             feature.m_value ? WithUnit(*feature.m_value, feature.m_strUnit) : feature.m_strReason,
             feature.m_point ? "point " + std::to_string(feature.m_point->m_nIndex) : ""});
    return Head(name) + std::to_string(*measurement.m_points) + " points, turn at point " +
           std::to_string(*measurement.m_turn) + '\n' + table.GetText();
}

std::string DescribeSummary(const RunSummary& summary, bool bJudged) {
    std::string strText = CountOf(summary.m_nStrokes, "stroke", "strokes");
    if (bJudged)
        strText += ": " + std::to_string(summary.m_nPassed) + " passed, " +
                   std::to_string(summary.m_nFailed) + " failed";
    if (bJudged || summary.m_nCannot > 0)
        strText += ", " + std::to_string(summary.m_nCannot) + " cannot be evaluated";
    if (summary.m_nErrors > 0)
        strText += ", " + CountOf(summary.m_nErrors, "file", "files") + " unread";
    strText += '\n';
    if (summary.m_features.empty()) return strText;
    CTextTable table(1);
    std::vector<std::string> head{"", "count", "min", "mean", "max", "deviation"};
    if (bJudged) head.insert(head.end(), {"cp", "cpk"});
    table.AddRow(head);
    const auto format = [](const std::optional<double>& number) {
        return number ? Format(*number) : std::string("-");
    };
    for (const FeatureSummary& feature : summary.m_features) {
        const std::string strUnit = feature.m_strUnit.empty() ? "" : " [" + feature.m_strUnit + "]";
        std::vector<std::string> row{MakePrintable(feature.m_strName + strUnit),
                                     std::to_string(feature.m_nCount),
                                     format(feature.m_min),
                                     format(feature.m_mean),
                                     format(feature.m_max),
                                     format(feature.m_deviation)};
        if (bJudged) row.insert(row.end(), {format(feature.m_cp), format(feature.m_cpk)});
        table.AddRow(std::move(row));
    }
    return strText + table.GetText();
}
