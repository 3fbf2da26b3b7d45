#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// An installed Rekordbox.
struct RekordboxInstall {
    QString name;                   ///< "Rekordbox 7", or "Rekordbox" while its version is unknown
    std::optional<QString> version; ///< as its bundle tells it

    /// The one of the highest version in a folder of applications or in a folder of its own there; the first in the
    /// folder's order among equals, nothing when there is none.
    static std::optional<RekordboxInstall> detect(const QString& folder);
    bool operator==(const RekordboxInstall&) const = default;
};

/// Whether one text comes before another when runs of digits are compared as numbers ("7.9.2" before "7.10.0").
bool isNumericallyLess(const QString& one, const QString& other);

} // namespace tunedeck
