#include "TunedeckMenu/Platform/HeapTrimmer.h"

#include <malloc/malloc.h>

namespace tunedeck {

void HeapTrimmer::trim() {
    constexpr std::size_t worthwhile = std::size_t{2} * 1024 * 1024;
    const std::size_t unused = mstats().bytes_free;
    if (unused > m_unused + worthwhile) {
        malloc_zone_pressure_relief(nullptr, 0); // in all zones
    }
    m_unused = unused;
}

} // namespace tunedeck
