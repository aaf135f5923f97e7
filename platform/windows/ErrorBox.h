// The standard error box: what the operator must hear about.
#pragma once

#include <string>

#include "platform/system/Export.h"

/// Shows the box, modally, with one large button. User-interface thread.
/// @param strSummary what has happened, in plain words
/// @param strDetails the particulars: a file's name, and a reason behind the last line feed
PLATFORM_API void ShowErrorBox(const std::wstring& strSummary, const std::wstring& strDetails = {});

/// Sets memory aside for what the windows need when there is no other: it is given back while an
/// error is reported, and while messages are handled in the middle of work that may have taken all.
PLATFORM_API void KeepMemoryForErrors() noexcept;
PLATFORM_API void ReleaseMemoryForErrors() noexcept;

/// Shows the operator what a handler has thrown; for use inside a catch clause. When not even the
/// box can be made, standard error gets the message. User-interface thread.
PLATFORM_API void ReportCurrentException() noexcept;

/// The same once the event in hand has been handled: for what is thrown while a window is painted,
/// when no other can be shown. While one such report waits or is shown, further ones go to standard
/// error: a window that cannot be painted would otherwise ask again and again.
PLATFORM_API void ReportCurrentExceptionLater() noexcept;
