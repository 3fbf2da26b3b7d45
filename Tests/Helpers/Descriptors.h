#pragma once

#include <unistd.h>

namespace tunedeck::test {

/// The number of the next file descriptor; compare before and after to detect a leak.
inline int nextDescriptor() {
    const int next = dup(STDIN_FILENO);
    close(next);
    return next;
}

} // namespace tunedeck::test
