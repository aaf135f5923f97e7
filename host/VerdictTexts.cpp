#include "host/VerdictTexts.h"

#include <cmath>
#include <cstdio>

#include "platform/system/NumberedText.h"
#include "platform/system/Text.h"

namespace {

constexpr NumberedText STROKE{3241, L"Stroke %1"};
constexpr NumberedText STROKE_FAILED{3242, L"Stroke %1: %2 failed"};
constexpr NumberedText CUT_OFF{3243, L"Stopped, not judged"};
constexpr NumberedText MARGIN{3244, L"margin %1"};
constexpr NumberedText LOG_ERROR{3245, L"Verdict log: %1"};

constexpr NumberedText SIDES[] = {
    {3246, L"left"}, {3247, L"right"}, {3248, L"bottom"}, {3249, L"top"}};

/// In English as the verdict has them; %1 stands for a side.
constexpr NumberedText REASONS[] = {
    {3250, L"enters by %1"},      {3251, L"crosses %1"},        {3252, L"leaves by %1"},
    {3253, L"starts inside"},     {3254, L"ends inside"},       {3255, L"never entered"},
    {3256, L"touched"},           {3257, L"not crossed"},       {3258, L"crossed"},
    {3259, L"below lower bound"}, {3260, L"above upper bound"}, {3261, L"not covered"},
    {3262, L"below minimum"},     {3263, L"above maximum"},     {3264, L"not reached"},
    {3265, L"no time base"},      {3266, L"too few points"},    {3267, L"constant position"},
    {3268, L"out of memory"}};

std::wstring TranslateReason(const std::string& strReason) {
    std::wstring strEnglish = FromUtf8(strReason);
    for (const NumberedText& reason : REASONS) {
        const std::wstring_view strPattern = reason.m_pEnglish;
        if (strPattern == strEnglish) return GetText(reason);
        const std::size_t nSide = strPattern.find(L"%1");
        if (nSide == std::wstring_view::npos) continue;
        for (const NumberedText& side : SIDES)
            if (std::wstring(strPattern.substr(0, nSide)) + side.m_pEnglish == strEnglish)
                return GetText(reason, {GetText(side)});
    }
    return strEnglish;
}

/// With four digits at least, and no exponent where a person would not write one.
std::wstring FormatNumber(double dNumber) {
    constexpr double LONGEST = 1e9;
    char szText[64];
    const double dSize = std::abs(dNumber);
    std::snprintf(szText, sizeof szText, dSize >= 1000 && dSize < LONGEST ? "%.0f" : "%.4g",
                  dNumber);
    return FromUtf8(szText);
}

std::wstring DescribeFault(const ObjectResult& result, const LimitObject& object) {
    std::wstring strText = FromUtf8(object.m_strName) + L": " + TranslateReason(result.m_strReason);
    if (!result.m_margin) return strText;
    std::wstring strMargin = FormatNumber(*result.m_margin);
    if (!result.m_strMarginUnit.empty()) strMargin += L' ' + FromUtf8(result.m_strMarginUnit);
    return strText + L", " + GetText(MARGIN, {strMargin});
}

std::size_t CountFailed(const StrokeVerdict& verdict) {
    return static_cast<std::size_t>(
        std::ranges::count(verdict.m_objects, Outcome::Fail, &ObjectResult::m_outcome));
}

}  // namespace

std::wstring GetMark(const std::optional<Outcome>& outcome) {
    constexpr const wchar_t* MARKS[] = {L"OK", L"NOK", L"?"};
    return outcome ? MARKS[static_cast<std::size_t>(*outcome)] : L"\u2013";
}

std::wstring NameStroke(const JudgedStroke& stroke) {
    return GetText(STROKE, {std::to_wstring(stroke.m_nNumber)});
}

std::wstring DescribeStroke(const JudgedStroke& stroke, const std::wstring& strTitle) {
    const std::wstring strBegin = strTitle + L" \u2013 ";
    if (!stroke.m_verdict) return strBegin + GetText(CUT_OFF);
    const std::size_t nFailed = CountFailed(*stroke.m_verdict);
    if (nFailed == 0) return strBegin + NameStroke(stroke);
    return strBegin +
           GetText(STROKE_FAILED, {std::to_wstring(stroke.m_nNumber), std::to_wstring(nFailed)});
}

std::vector<std::wstring> DescribeFaults(const StrokeVerdict& verdict, const Limits& limits) {
    if (!verdict.m_strReason.empty()) return {TranslateReason(verdict.m_strReason)};
    std::vector<std::wstring> arrFaults;
    if (verdict.m_outcome == Outcome::Pass) return arrFaults;
    for (std::size_t n = 0; n < verdict.m_objects.size(); ++n)
        if (verdict.m_objects[n].m_outcome == verdict.m_outcome)
            arrFaults.push_back(DescribeFault(verdict.m_objects[n], limits.m_objects[n]));
    return arrFaults;
}

std::wstring DescribeLogError(const std::wstring& strError) {
    return GetText(LOG_ERROR, {strError});
}
