#pragma once

#include <sys/types.h>

#include <cstdint>
#include <expected>
#include <string>
#include <vector>

namespace tunedeck::helper {

/// What a process needs after confine(). No process may run other programs.
struct Permissions {
    bool network = false;                ///< connect to servers, and read all files, which name resolution and TLS need
    std::vector<std::string> files = {}; ///< may be read
    std::string folder = {};             ///< may be read and written; created if it doesn't exist
    std::int64_t fileSize = 0;           ///< maximum size in bytes of a written file
};

/// Gives up all rights but these, as far as the kernel can enforce it, and new privileges, core dumps and most of the
/// address space. Ties the process to its parent, so that it is killed when the parent dies. Fails if the parent has
/// already died.
std::expected<void, std::string> confine(pid_t parent, const Permissions& permissions);

} // namespace tunedeck::helper
