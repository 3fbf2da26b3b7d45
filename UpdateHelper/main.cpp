// Downloads one file from the internet and exits. A separate program keeps name resolution, TLS and the parsing of
// untrusted responses out of the application.

#include "UpdateHelper/Confinement.h"
#include "UpdateHelper/Options.h"
#include "UpdateHelper/Transfer.h"

#include <curl/curl.h>

#include <cstdio>
#include <cstdlib>

using namespace tunedeck::fetch;

int main(int argc, char** argv) {
    const auto options = Options::parse(argc, argv);
    if (!options) {
        std::fputs("usage: tunedeck-fetch --parent PID --file FILE --limit BYTES [--timeout SECONDS] URL\n", stderr);
        return 2;
    }
    if (!confine(options->parent)) {
        return EXIT_FAILURE;
    }
    curl_global_init(CURL_GLOBAL_DEFAULT);
    const auto status = transfer(*options);
    if (!status) {
        std::printf("error %s\n", status.error().c_str());
        return EXIT_FAILURE;
    }
    std::printf("status %ld\n", *status);
    return EXIT_SUCCESS;
}
