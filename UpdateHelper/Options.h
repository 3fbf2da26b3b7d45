#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>

namespace tunedeck::fetch {

/// The command line: `--parent PID --file FILE --limit BYTES [--timeout SECONDS] URL`.
struct Options {
    pid_t parent = 0;       ///< process that started this one
    std::string file;       ///< receives the body; an existing file is replaced
    std::int64_t limit = 0; ///< maximum size of the body in bytes
    long timeout = 0;       ///< for the whole download, in seconds; 0 for none
    std::string url;

    /// Nothing if the command line is invalid.
    static std::optional<Options> parse(int argc, char** argv);
};

} // namespace tunedeck::fetch
