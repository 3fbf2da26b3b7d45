#pragma once

#include <QList>

#include <algorithm>

namespace tunedeck {

/// The part of a list that a view shows, given by index. A list of up to `size` rows is shown as a whole.
struct RowRange {
    int first = 0;
    int size = 40;
    bool operator==(const RowRange&) const = default;
};

/// The parts of the lists that can be long. The views choose them by what is in sight.
struct RowRanges {
    RowRange links;
    RowRange failedChanges;
    RowRange backups;
    RowRange tools; ///< in the first-run window
};

/// Consecutive rows of a list, and how many rows the list has before and after them.
template<typename Row>
struct RowSlice {
    QList<Row> rows;
    int before = 0;
    int after = 0;
    bool operator==(const RowSlice&) const = default;

    /// The rows of a range; one that reaches beyond the end of the list is moved. `rowAt`: makes a row from an element.
    static RowSlice of(const auto& list, RowRange range, const auto& rowAt) {
        const int total = static_cast<int>(list.size());
        RowSlice slice{.before = std::clamp(range.first, 0, std::max(0, total - range.size))};
        const int end = std::min(total, slice.before + range.size);
        slice.after = total - end;
        for (int i = slice.before; i < end; ++i) {
            slice.rows.append(rowAt(list[static_cast<decltype(list.size())>(i)]));
        }
        return slice;
    }
};

} // namespace tunedeck
