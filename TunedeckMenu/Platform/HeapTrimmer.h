#pragma once

#include <cstddef>

namespace tunedeck {

/// Gives memory that was freed back to the system; the allocator keeps it otherwise, for example that of a large
/// document.
class HeapTrimmer {
public:
    /// Returns at once unless several megabytes were freed since the last call.
    void trim();

private:
    std::size_t m_unused = 0; ///< bytes of freed blocks at the last call; counts those whose pages were given back
};

} // namespace tunedeck
