#pragma once

#include <cstddef>

namespace tunedeck {

/// Limits on a reply, in bytes.
struct HttpLimits {
    std::size_t header = std::size_t{64} * 1024;
    std::size_t body = std::size_t{1024} * 1024;
};

} // namespace tunedeck
