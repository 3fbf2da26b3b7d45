#include "TunedeckMenu/Platform/HeapTrimmer.h"

#include <malloc.h>

namespace tunedeck {

void HeapTrimmer::trim() {
    constexpr std::size_t worthwhile = std::size_t{2} * 1024 * 1024;
    const std::size_t unused = mallinfo2().fordblks;
    if (unused > m_unused + worthwhile) {
        malloc_trim(0);
    }
    m_unused = unused;
}

} // namespace tunedeck
