#include "platform/system/Console.h"

#include <poll.h>
#include <unistd.h>

bool IsStandardErrorWatched() { return ::isatty(STDERR_FILENO) == 1; }

bool IsStandardOutputReady() {
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return ::poll(&output, 1, 0) == 1;
}
