// Downloads one file from the internet and ends. A program of its own, so that name look-ups, TLS and what parses the
// internet's answers stay out of the application: it has no more to lose than the file that it writes.

#include "UpdateHelper/Options.h"
#include "UpdateHelper/Transfer.h"

#include <curl/curl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

/// Ends with the application that started it, and can gain nothing on the way.
void giveUpWhatIsNotNeeded(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0);
    // It may have gone before it could be tied to.
    if (getppid() != parent) {
        std::_Exit(EXIT_FAILURE);
    }
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
}

} // namespace

int main(int argc, char** argv) {
    const pid_t starter = getppid();
    const auto options = tunedeck::fetch::parseOptions(argc, argv);
    if (!options) {
        std::fputs("usage: tunedeck-fetch --file FILE --limit BYTES [--timeout SECONDS] [--stall SECONDS] [--parent "
                   "PID] URL\n",
                   stderr);
        return 2;
    }
    giveUpWhatIsNotNeeded(options->parent > 0 ? options->parent : starter);
    curl_global_init(CURL_GLOBAL_DEFAULT);
    const auto status = tunedeck::fetch::transfer(*options);
    if (!status) {
        std::printf("error %s\n", status.error().c_str());
        return EXIT_FAILURE;
    }
    std::printf("status %ld\n", *status);
    return EXIT_SUCCESS;
}
