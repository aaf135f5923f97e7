#include "Table.h"

#include <cstdarg>
#include <cstdio>

namespace {

[[gnu::format(printf, 1, 2)]] std::string Format(const char* pFormat, ...) {
    char text[80];
    va_list arguments;
    va_start(arguments, pFormat);
    std::vsnprintf(text, sizeof text, pFormat, arguments);
    va_end(arguments);
    return text;
}

/// Three digits that count.
std::string FormatNumber(double dNumber) {
    return Format("%.*f", dNumber < 9.995 ? 2 : dNumber < 99.95 ? 1 : 0, dNumber);
}

std::string FormatSeconds(double dSeconds) {
    if (dSeconds < 1e-6) return FormatNumber(dSeconds * 1e9) + " ns";
    if (dSeconds < 1e-3) return FormatNumber(dSeconds * 1e6) + " us";
    if (dSeconds < 1) return FormatNumber(dSeconds * 1e3) + " ms";
    return FormatNumber(dSeconds) + " s";
}

std::optional<double> FindUsed(double dNumber, std::optional<double> limit) {
    if (!limit) return {};
    return dNumber / *limit;
}

}  // namespace

CTable::CTable() { Print({"", "least", "median", "beside", "least", "median", "ratio", "goal"}); }

void CTable::AddGroup(const std::string& strTitle) {
    std::printf("\n%s\n", strTitle.c_str());
    std::fflush(stdout);
}

void CTable::AddComparison(const std::string& strWhat, const Figures& ours,
                           const std::string& strOther, const Figures& other, const Goal& goal) {
    const bool bFaster = goal.m_kind == Goal::Faster;
    const double dRatio = bFaster ? other.Get() / ours.Get() : ours.Get() / other.Get();
    Row row{strWhat,
            FormatSeconds(ours.m_dLeast),
            FormatSeconds(ours.m_dMedian),
            strOther,
            FormatSeconds(other.m_dLeast),
            FormatSeconds(other.m_dMedian),
            FormatNumber(dRatio) + (bFaster ? "x as fast" : "x as long"),
            ""};
    if (goal.m_times) {
        row.m_strGoal = Format(bFaster ? "at least %g" : "at most %g", *goal.m_times);
        row.m_used = bFaster ? *goal.m_times / dRatio : dRatio / *goal.m_times;
    }
    Print(row);
}

void CTable::AddMissing(const std::string& strWhat, const std::string& strOther,
                        const std::string& strReason) {
    Print({strWhat, "", "", strOther, "", strReason, "", ""});
}

void CTable::AddTime(const std::string& strWhat, const Figures& ours, std::optional<double> limit) {
    Print({strWhat, FormatSeconds(ours.m_dLeast), FormatSeconds(ours.m_dMedian), "", "", "", "",
           limit ? "at most " + FormatSeconds(*limit) : "", FindUsed(ours.Get(), limit)});
}

void CTable::AddTime(const std::string& strWhat, double dSeconds, std::optional<double> limit) {
    Print({strWhat, "", FormatSeconds(dSeconds), "", "", "", "",
           limit ? "at most " + FormatSeconds(*limit) : "", FindUsed(dSeconds, limit)});
}

void CTable::AddNumber(const std::string& strWhat, double dNumber, const char* pUnit,
                       std::optional<double> limit) {
    Print({strWhat, "", FormatNumber(dNumber), pUnit, "", "", "",
           limit ? Format("at most %g", *limit) : "", FindUsed(dNumber, limit)});
}

void CTable::Print(const Row& row) {
    std::string strOutcome;
    if (row.m_used) {
        ++m_nGoals;
        if (*row.m_used > 1) ++m_nMissed;
        strOutcome =
            Format("%3.0f %% of it, %s", 100 * *row.m_used, *row.m_used > 1 ? "MISSED" : "met");
    }
    std::printf("%-47s %9s %9s  %-35s %9s %9s  %-15s %-16s %s\n", row.m_strWhat.c_str(),
                row.m_strLeast.c_str(), row.m_strMedian.c_str(), row.m_strOther.c_str(),
                row.m_strOtherLeast.c_str(), row.m_strOtherMedian.c_str(), row.m_strRatio.c_str(),
                row.m_strGoal.c_str(), strOutcome.c_str());
    std::fflush(stdout);
}
