// The table of results on standard output: a row for each thing measured, printed as soon as it is
// there.
#pragma once

#include <optional>
#include <string>

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

    /// A row that compares two times, in seconds.
    void AddComparison(const std::string& strWhat, double dOurs, const std::string& strOther,
                       double dOther, const Goal& goal);

    /// A row that something is missing for.
    void AddMissing(const std::string& strWhat, const std::string& strOther,
                    const std::string& strReason);

    /// A row of a time that is to keep a limit, both in seconds.
    void AddTime(const std::string& strWhat, double dOurs, std::optional<double> limit = {});

    /// A row of a share in percent that is to keep a limit.
    void AddShare(const std::string& strWhat, double dPercent, const std::string& strOf,
                  double dLimit);

    int CountGoals() const { return m_nGoals; }
    int CountMissed() const { return m_nMissed; }

  private:
    void PrintRow(const std::string& strWhat, const std::string& strOurs,
                  const std::string& strOther, const std::string& strOthers,
                  const std::string& strRatio, const std::string& strGoal,
                  std::optional<double> used);

    int m_nGoals = 0;
    int m_nMissed = 0;
};
