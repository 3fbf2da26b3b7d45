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
    QStringList folders; ///< must be there when the service starts: those of its logs

    bool operator==(const SystemdUnit&) const = default;
};

/// The unit that does what a LaunchAgent's property list asks for: its program with arguments, working directory,
/// environment and log files, restarted as KeepAlive and ThrottleInterval have it, started with the user's session.
/// Fails with a sentence for a list without a program or with paths that a unit can't hold (control characters).
std::expected<SystemdUnit, QString> systemdUnit(const PropertyDictionary& plist);

} // namespace tunedeck
