// What the verdict strip says: from verdicts to words in the operator's language.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "evaluation/Verdict.h"
#include "host/StrokeJudge.h"

/// All that the strip shows at one time.
struct VerdictContents {
    static constexpr std::size_t MAX_FAULTS = 3;

    std::optional<Outcome> m_outcome;       ///< none: no stroke is over, or the last was cut off
    std::wstring m_strHead;                 ///< what is judged, and how far it has come
    std::wstring m_strAlarm;                ///< stands in place of the head; empty: nothing to tell
    std::vector<std::wstring> m_arrFaults;  ///< at most MAX_FAULTS
    std::array<std::uint64_t, 3> m_anCounts{};  ///< by Outcome
    friend bool operator==(const VerdictContents&, const VerdictContents&) = default;
};

/// "OK", "NOK", "?", or a dash; the same in every language.
std::wstring GetMark(const std::optional<Outcome>& outcome);

/// "Stroke 12".
std::wstring NameStroke(const JudgedStroke& stroke);

/// What is said of a stroke beside its mark.
/// @param strTitle what it is judged by
std::wstring DescribeStroke(const JudgedStroke& stroke, const std::wstring& strTitle);

/// The objects that decided, each with reason and margin, or why there is no verdict; nothing of a
/// stroke that passed.
std::vector<std::wstring> DescribeFaults(const StrokeVerdict& verdict, const Limits& limits);

std::wstring DescribeLogError(const std::wstring& strError);
