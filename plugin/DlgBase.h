// What the plug-in library gives a host: GetDialog, and the class of what it returns.
#pragma once

#include <cstdint>

#include "ui/DlgLangBase.h"

/// A screen. The host fills the session record, which a checked cross-cast reaches
/// (dynamic_cast<CRealTimeData*>(pDialog)), calls Run once, and then deletes the object. All on the
/// user-interface thread.
class CDlgBase : public CDlgLangBase {
  public:
    using CDlgLangBase::CDlgLangBase;

    /// Shows the screen modally; returns when it has closed and its reader has ended. A screen
    /// whose reader thread cannot be started runs without one: no packet is taken.
    /// @throws std::bad_alloc, CMemoryException when there is no memory for the screen's window;
    /// its
    ///         reader has ended then too
    virtual void Run() {}
    /// Does nothing.
    virtual void HostHook(std::uint32_t) {}
};

extern "C" {
/// Makes a screen, which the caller owns; null when there is no memory for it.
using GetDialogFunction = CDlgBase*();
__attribute__((visibility("default"))) CDlgBase* GetDialog();
}
