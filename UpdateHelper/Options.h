#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tunedeck::fetch {

/// What one run is to download.
struct Options {
    std::string url;
    int parent = 0;         ///< process with which this one ends; 0 for the one that started it
    std::string file;       ///< where the body goes; replaced when it exists
    std::int64_t limit = 0; ///< bytes of body at the most
    long timeout = 0;       ///< seconds in all; 0 for no limit
    long stall = 30;        ///< seconds without a byte after which it is given up
};

/// Reads the command line `--file FILE --limit BYTES [--timeout SECONDS] [--stall SECONDS] [--parent PID] URL`; nothing
/// when it is wrong.
std::optional<Options> parseOptions(int argc, char** argv);

} // namespace tunedeck::fetch
