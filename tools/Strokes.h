// The strokes that a command works on, and what comes of them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "evaluation/LimitsFile.h"
#include "evaluation/StrokeReport.h"
#include "platform/commandline/CommandLine.h"

/// What a person says about the strokes wanted.
struct StrokeRequest {
    std::size_t m_nChannel = 1;          ///< from 1
    std::optional<std::size_t> m_curve;  ///< from 1; none: all
    bool m_bPairs = false;               ///< every curve counts as one of pairs

    void AddOptions(CCommandLine& line);
};

/// A stroke of a file, or the place of one that is missing.
struct StrokeSource {
    StrokeName m_name;
    std::shared_ptr<RTCurveData> m_spCurve;  ///< null: missing
    unsigned m_nRate = 0;
    bool m_bVoltage = false;            ///< the second value is a voltage, not a position
    const char* m_pObstacle = nullptr;  ///< why it cannot be evaluated, before its values are seen

    /// Why it cannot be evaluated; null: it can.
    const char* FindObstacle() const;
    /// What comes of a stroke; of one whose values need not be seen only why it has no result.
    template <class Result>
    Result Evaluate(const std::function<Result(const CStroke&)>& evaluate) const {
        if (!m_pObstacle) return evaluate(CStroke(*m_spCurve, m_nRate));
        Result result;
        result.m_strReason = m_pObstacle;
        return result;
    }
};

/// The strokes that are wanted of a file; one at least.
/// @throws CFileException, CArchiveException, CMemoryException
std::vector<StrokeSource> ReadStrokes(const std::wstring& strPath, const StrokeRequest& request);

/// "FILE curve 2" for a person.
std::string DescribeStroke(const StrokeName& name);

/// Reads a limits file that a person has named; none is one without objects.
/// @throws CUsageError that says what is wrong with it
CLimitsFile ReadLimits(const std::wstring& strPath);
/// The same for what needs objects, and so a file.
Limits ReadLimitsToCheck(const std::wstring& strPath);

/// @throws CUsageError when an output is one of the inputs
void KeepInputs(const std::wstring& strOutput, const std::vector<std::wstring>& arrInputs);

/// Exit codes of what evaluates strokes; the larger one counts.
enum StrokeExit : int { STROKES_FINE = 0, STROKE_FAILED = 1, STROKE_UNKNOWN = 3 };

/// Does something for each stroke of each file. A file that cannot be read is reported and does not
/// keep the others from their turn.
/// @param fail is told of such a file
void ForEachStroke(
    const std::vector<std::wstring>& arrFiles, const StrokeRequest& request,
    const std::function<void(const StrokeSource&)>& work,
    const std::function<void(const std::wstring& strPath, const std::string& strError)>& fail);
