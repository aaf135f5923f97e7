// Calls handed from any thread to the user-interface thread.
#pragma once

#include <functional>

#include "platform/system/Export.h"
#include "platform/windows/Messages.h"

/// Remembers the calling thread as the user-interface thread and begins to accept calls.
PLATFORM_API void OpenUiQueue();

/// Drops the calls that are still waiting and refuses further ones.
PLATFORM_API void CloseUiQueue();

/// Whether the caller runs on the user-interface thread.
PLATFORM_API bool IsUiThread();

/// Queues a call; calls are made one at a time, in order, from whichever event loop runs then, so a
/// call that starts a modal loop does not hold up the ones behind it. Any thread.
/// @param hWnd the window that the call is for; 0: none
PLATFORM_API void PostToUi(std::function<void()> call, WindowHandle hWnd = 0);

/// Drops the calls for windows that are gone: the library that a call comes from may go next.
/// User-interface thread.
void DropCallsOfGoneWindows();
