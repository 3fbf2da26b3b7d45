#include "TunedeckMenu/Platform/HeapTrimmer.h"

#include <malloc/malloc.h>

namespace tunedeck {

void HeapTrimmer::trim() {
    constexpr std::size_t worthwhile = std::size_t{2} * 1024 * 1024;
    malloc_statistics_t statistics{};
    malloc_zone_statistics(nullptr, &statistics); // of all zones
    const std::size_t unused = statistics.size_allocated - statistics.size_in_use;
    if (unused > m_unused + worthwhile) {
        malloc_zone_pressure_relief(nullptr, 0);
    }
    m_unused = unused;
}

} // namespace tunedeck
