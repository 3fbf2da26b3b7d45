#include "TunedeckMenu/Views/Edge/RowModel.h"

#include <utility>

namespace tunedeck {

void RowModel::setSurroundings(int before, int after) {
    const bool moved = std::exchange(m_before, before) != before;
    const int total = before + rowCount() + after;
    if (std::exchange(m_total, total) != total) {
        Q_EMIT totalChanged();
    }
    if (moved) {
        Q_EMIT firstChanged();
    }
}

} // namespace tunedeck
