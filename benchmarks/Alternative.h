// Another library's drawing of the same plot, by a program of its own beside this one.
#pragma once

#include <string>

#include "Rounds.h"

/// How one paint follows the other.
enum class PaintView {
    Same,  ///< nothing has changed since the last one
    New,   ///< a little more or a little less of the time is shown
};

class CAlternative {
  public:
    /// @param strProgram its file name
    explicit CAlternative(const std::string& strProgram);

    /// Whether the library was there when the programs were built.
    bool IsBuilt() const;

    /// Runs the program, which draws nPaints times and prints how long each took.
    /// @param nValues of a curve
    /// @throws std::runtime_error when it fails
    Measure TimePaints(unsigned nCurves, unsigned nValues, PaintView view, int nPaints) const;

  private:
    std::string m_strPath;
};
