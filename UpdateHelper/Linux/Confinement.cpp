#include "UpdateHelper/Confinement.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

namespace tunedeck::fetch {

bool confine(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    return getppid() == parent; // the parent may have died before the first call
}

} // namespace tunedeck::fetch
