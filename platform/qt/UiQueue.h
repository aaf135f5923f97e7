// Calls handed from any thread to the user-interface thread.
#pragma once

#include <functional>

/// Remembers the calling thread as the user-interface thread and begins to accept calls.
void OpenUiQueue();

/// Drops the calls that are still waiting and refuses further ones.
void CloseUiQueue();

/// Whether the caller runs on the user-interface thread.
bool IsUiThread();

/// Queues a call; calls are made one at a time, in order, from whichever event loop runs then, so a
/// call that starts a modal loop does not hold up the ones behind it. Any thread.
void PostToUi(std::function<void()> call);
