#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tunedeck::helper {

/// The command line, with the process id of the application as PARENT and absolute paths:
///
///     fetch PARENT BYTES SECONDS URL
///     verify PARENT FILE
///     verify PARENT KEY SIGNATURE-BYTES
///     unpack PARENT ARCHIVE FOLDER IDENTIFIER VERSION
struct Options {
    std::string subcommand;
    pid_t parent = 0;
    std::int64_t limit = 0; ///< maximum size of a download in bytes
    long timeout = 0;       ///< for a whole download, in seconds
    std::vector<std::string> operands;

    /// Nothing if the command line is invalid.
    static std::optional<Options> parse(const std::vector<std::string>& words);
};

} // namespace tunedeck::helper
