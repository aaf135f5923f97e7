// Finds what closed screens have left behind in the process.
#pragma once

#include "soak/Counts.h"
#include "soak/Process.h"

/// Check is called when no screen is open. The first call takes the measure that the later ones go
/// by: the first screen loads fonts and pictures that stay. User-interface thread.
class CLeftBehind {
  public:
    explicit CLeftBehind(CSoakRecord& record) : m_record(record) {}

    void Check();
    const ProcessUse& GetUse() const { return m_now; }
    const ProcessUse& GetFirst() const { return m_first; }

  private:
    CSoakRecord& m_record;
    ProcessUse m_first;
    ProcessUse m_now;
    bool m_bMeasured = false;
};
