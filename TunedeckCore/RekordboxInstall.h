#pragma once

#include <QString>

#include <optional>

namespace tunedeck {

/// An installed Rekordbox.
struct RekordboxInstall {
    QString name;                   ///< "Rekordbox 7", or "Rekordbox" if the version is unknown
    std::optional<QString> version; ///< from the bundle's Info.plist

    /// Finds the highest version in a folder of applications and in its "rekordbox…" subfolders; the first of equals.
    /// Runs of digits are compared as numbers: "7.10.0" is higher than "7.9.2".
    static std::optional<RekordboxInstall> detect(const QString& folder);
    bool operator==(const RekordboxInstall&) const = default;
};

} // namespace tunedeck
