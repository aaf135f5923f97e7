#include "platform/system/Console.h"

#include <unistd.h>

bool IsStandardErrorWatched() { return ::isatty(STDERR_FILENO) == 1; }
