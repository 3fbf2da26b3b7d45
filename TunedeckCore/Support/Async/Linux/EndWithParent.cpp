#include "TunedeckCore/Support/Async/EndWithParent.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace tunedeck {

void endWithParent(pid_t parent) {
    if (prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0) != 0 || getppid() != parent) {
        _exit(EXIT_FAILURE);
    }
}

} // namespace tunedeck
