// The table of results on standard output: a row for each thing measured, printed as soon as it is
// there. Of both sides the least and the median are shown; the ratio and the verdict are those of
// the figure that is stable.
#pragma once

#include <optional>
#include <string>

#include "Rounds.h"

/// How a ratio is told, and what it is to keep.
struct Goal {
    enum Kind {
        Faster,  ///< the other thing is to take at least so many times as long
        Within,  ///< we are to take at most so many times as long as the other thing
    };
    Kind m_kind;
    std::optional<double> m_times = {};  ///< none: it is only told
};

class CTable {
  public:
    /// Prints the heading.
    CTable();

    /// Heads a group of rows.
    void AddGroup(const std::string& strTitle);

    /// A row that compares two times.
    void AddComparison(const std::string& strWhat, const Figures& ours, const std::string& strOther,
                       const Figures& other, const Goal& goal);

    /// A row that something is missing for.
    void AddMissing(const std::string& strWhat, const std::string& strOther,
                    const std::string& strReason);

    /// A row of a time that may be to keep a limit, in seconds.
    void AddTime(const std::string& strWhat, const Figures& ours, std::optional<double> limit = {});
    /// The same for a time of which there is one figure.
    void AddTime(const std::string& strWhat, double dSeconds, std::optional<double> limit = {});

    /// A row of a number that may be to keep a limit.
    /// @param pUnit what is counted
    void AddNumber(const std::string& strWhat, double dNumber, const char* pUnit,
                   std::optional<double> limit = {});

    int CountGoals() const { return m_nGoals; }
    int CountMissed() const { return m_nMissed; }

  private:
    struct Row {
        std::string m_strWhat;
        std::string m_strLeast, m_strMedian;
        std::string m_strOther;
        std::string m_strOtherLeast, m_strOtherMedian;
        std::string m_strRatio;
        std::string m_strGoal;
        std::optional<double> m_used = {};  ///< the part of the goal's limit that is used up
    };
    void Print(const Row& row);

    int m_nGoals = 0;
    int m_nMissed = 0;
};
