#pragma once

#include <unistd.h>

namespace tunedeck::test {

/// The number that the next descriptor to be opened will have: unequal before and after, it tells of one left open.
inline int nextDescriptor() {
    const int next = dup(STDIN_FILENO);
    close(next);
    return next;
}

} // namespace tunedeck::test
