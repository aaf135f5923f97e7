// The button of the verdict strip.
#pragma once

#include <functional>

#include "platform/windows/Dialog.h"

/// Sets the counters to 0: a child dialog of the strip, at its right end.
class CVerdictReset : public CDialog {
  public:
    enum Control : int { ID_RESET = 2 };

    explicit CVerdictReset(std::function<void()> onReset);

    void Show(CWnd& strip);

  private:
    bool OnInitDialog() override;
    void OnReset() { m_onReset(); }
    DECLARE_MESSAGE_MAP()

    const std::function<void()> m_onReset;
};
