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

}  // namespace

CTable::CTable() { PrintRow("", "takes", "beside", "takes", "ratio", "goal", {}); }

void CTable::AddGroup(const std::string& strTitle) {
    std::printf("\n%s\n", strTitle.c_str());
    std::fflush(stdout);
}

void CTable::AddComparison(const std::string& strWhat, double dOurs, const std::string& strOther,
                           double dOther, const Goal& goal) {
    const bool bFaster = goal.m_kind == Goal::Faster;
    const double dRatio = bFaster ? dOther / dOurs : dOurs / dOther;
    std::string strGoal;
    std::optional<double> used;
    if (goal.m_times) {
        strGoal = Format(bFaster ? "at least %g" : "at most %g", *goal.m_times);
        used = bFaster ? *goal.m_times / dRatio : dRatio / *goal.m_times;
    }
    PrintRow(strWhat, FormatSeconds(dOurs), strOther, FormatSeconds(dOther),
             FormatNumber(dRatio) + (bFaster ? "x as fast" : "x as long"), strGoal, used);
}

void CTable::AddMissing(const std::string& strWhat, const std::string& strOther,
                        const std::string& strReason) {
    PrintRow(strWhat, "", strOther, strReason, "", "", {});
}

void CTable::AddTime(const std::string& strWhat, double dOurs, std::optional<double> limit) {
    std::optional<double> used;
    if (limit) used = dOurs / *limit;
    PrintRow(strWhat, FormatSeconds(dOurs), "", "", "",
             limit ? "at most " + FormatSeconds(*limit) : "", used);
}

void CTable::AddShare(const std::string& strWhat, double dPercent, const std::string& strOf,
                      double dLimit) {
    PrintRow(strWhat, FormatNumber(dPercent) + " %", strOf, "", "", Format("at most %g %%", dLimit),
             dPercent / dLimit);
}

/// @param used the part of the goal's limit that is used up; above 1 the goal is missed
void CTable::PrintRow(const std::string& strWhat, const std::string& strOurs,
                      const std::string& strOther, const std::string& strOthers,
                      const std::string& strRatio, const std::string& strGoal,
                      std::optional<double> used) {
    std::string strOutcome;
    if (used) {
        ++m_nGoals;
        if (*used > 1) ++m_nMissed;
        strOutcome = Format("%3.0f %% of it, %s", 100 * *used, *used > 1 ? "MISSED" : "met");
    }
    std::printf("%-42s %9s  %-34s %9s  %-15s %-15s %s\n", strWhat.c_str(), strOurs.c_str(),
                strOther.c_str(), strOthers.c_str(), strRatio.c_str(), strGoal.c_str(),
                strOutcome.c_str());
    std::fflush(stdout);
}
