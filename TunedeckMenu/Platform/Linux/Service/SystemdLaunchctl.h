#pragma once

#include "TunedeckCore/Installation/ServiceInstaller.h"

#include <QString>

namespace tunedeck {

/// Where the user manager finds what the supervisor makes.
struct SystemdUserManager {
    QString unitFolder;                              ///< of the user's own units
    QString systemctl = QStringLiteral("systemctl"); ///< the manager's tool

    /// With the user's unit folder: "systemd/user" below XDG_CONFIG_HOME or ~/.config.
    static SystemdUserManager ofUser();
};

/// Supervises the service with the systemd user manager, by the operations of launchctl:
/// - "print TARGET": 0 when the service is loaded and not stopped (also between its death and its restart), 3 when it
/// is
///   stopped, 4 when there is none;
/// - "bootstrap DOMAIN PLIST": makes the unit from the property list with the folders that it needs, enables and starts
///   it; 66 when the list can't be read, 73 when the unit can't be written;
/// - "bootout TARGET": stops and disables it;
/// - "kickstart [-k] TARGET": starts it; with "-k" one that runs is restarted.
/// Otherwise the exit status is systemctl's, 64 for any other arguments, -1 when systemctl can't be started. Without a
/// user manager each operation fails at once.
Launchctl systemdLaunchctl(SystemdUserManager manager);

} // namespace tunedeck
