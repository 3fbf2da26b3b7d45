#pragma once

#include "TunedeckCore/Support/Files/PropertyList.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <expected>

namespace tunedeck {

/// A service of the systemd user manager.
struct SystemdUnit {
    QByteArray text;     ///< of the unit's file
    QStringList folders; ///< of its logs; must exist when it starts

    bool operator==(const SystemdUnit&) const = default;
};

/// Translates a LaunchAgent's property list: program, arguments, working directory, environment, log files, KeepAlive
/// and ThrottleInterval. The unit starts with the user's session. Fails with a sentence when the list has no program,
/// or a value that a unit can't contain (control characters).
std::expected<SystemdUnit, QString> systemdUnit(const PropertyDictionary& plist);

} // namespace tunedeck
