#pragma once

#include "Tests/Soak/Driver/Subject.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace tunedeck::soak {

/// The figures of the application over the time, and whether they stay as they are.
class Ledger {
public:
    void add(double minute, const Figures& figures);

    /// A row of the table.
    struct Row {
        QString what;
        double early = 0;                 ///< lower quartile of the third after the warm-up
        double late = 0;                  ///< lower quartile of the last third
        std::optional<double> limit = {}; ///< how much it may grow
        [[nodiscard]] bool isWell() const { return !limit || late - early <= *limit; }
    };
    /// Compares the end with the time after the warm-up, which is the first quarter of all. The memory may grow `scale`
    /// times the ordinary limit, without one as it likes.
    [[nodiscard]] std::vector<Row> rows(std::optional<int> scale) const;
    [[nodiscard]] std::size_t samples() const { return m_figures.size(); }

private:
    std::vector<std::pair<double, Figures>> m_figures;
};

/// All files below the folders; a process writes others than were there before when it leaves some behind.
QStringList filesBelow(const QStringList& folders);

} // namespace tunedeck::soak
