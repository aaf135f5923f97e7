// The standard error box: what the operator must hear about.
#pragma once

#include <string>

#include "platform/system/Export.h"

/// Shows the box, modally, with one OK button. User-interface thread.
PLATFORM_API void ShowErrorBox(const std::wstring& strText);

/// Shows the operator what a handler has thrown; for use inside a catch clause.
PLATFORM_API void ReportCurrentException();
