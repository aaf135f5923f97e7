// Dialogs worked by a script as an operator would, and what their controls show.
#pragma once

#include <functional>

#include "platform/operator/Operator.h"
#include "platform/windows/Dialog.h"

/// Runs a dialog modally with a script beside it, and ends it with IDCANCEL when the script has not
/// ended it.
/// @return the result of the modal run
int RunModal(CDialog& dialog, const std::function<void()>& script);

/// For scripts: what controls show.
std::wstring TextOf(const CWnd& dialog, int nID);
bool IsVisible(const CWnd& dialog, int nID);
bool IsEnabled(const CWnd& dialog, int nID);

/// For scripts: enters a number on the number pad, which must be open, and confirms it.
/// @return false when it is not open
bool EnterOnPad(const std::wstring& strTitle, const std::wstring& strNumber);

/// For scripts: waits for a modal window with a title.
bool AwaitModal(const std::wstring& strTitle);
