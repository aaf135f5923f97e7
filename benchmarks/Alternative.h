// Another library's drawing of the same plot, by a program of its own beside this one.
#pragma once

#include <string>

#include "Rounds.h"

class CAlternative {
  public:
    /// @param strProgram its file name
    explicit CAlternative(const std::string& strProgram);

    /// Whether the library was there when the programs were built.
    bool IsBuilt() const;

    /// Runs the program, which draws nPaints times; the median of what it prints counts.
    /// @throws std::runtime_error when it fails
    Measure TimePaints(unsigned nCurves, unsigned nValues, int nPaints) const;

  private:
    std::string m_strPath;
};
