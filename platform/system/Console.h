// What a command-line program asks about its console.
#pragma once

#include "platform/system/Export.h"

/// Whether standard error goes to a terminal, where somebody may watch.
PLATFORM_API bool IsStandardErrorWatched();

/// Whether standard output takes a line of at most 4,096 bytes without waiting. Of one that is
/// broken, too: writing says so.
PLATFORM_API bool IsStandardOutputReady();
