// What a command-line program asks about its console.
#pragma once

#include "platform/system/Export.h"

/// Whether standard error goes to a terminal, where somebody may watch.
PLATFORM_API bool IsStandardErrorWatched();
