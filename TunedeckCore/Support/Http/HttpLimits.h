#pragma once

#include <cstddef>

namespace tunedeck {

/// Limits on a reply, in bytes.
struct HttpLimits {
    std::size_t header = 64 * 1024;
    std::size_t body = 8 * 1024 * 1024;
};

} // namespace tunedeck
