#include "TunedeckCore/Support/Async/EndWithParent.h"

#include <unistd.h>

#include <cstdlib>

namespace tunedeck {

// macOS can't kill a process with its parent, and a thread that watches it wouldn't survive the exec() that follows: if
// the application crashes, the program runs until it exits.
void endWithParent(pid_t parent) {
    if (getppid() != parent) {
        _exit(EXIT_FAILURE);
    }
}

} // namespace tunedeck
