#pragma once

#include "TunedeckCore/Installation/Launchctl.h"
#include "TunedeckCore/Support/Files/PropertyList.h"
#include "TunedeckMenu/Platform/SystemProbe.h"

#include <QCoroTask>
#include <QString>

#include <optional>
#include <stop_token>

namespace tunedeck {

using namespace Qt::StringLiterals;

/// Supervises the background service with the systemd user manager.
struct SystemdUserManager {
    QString unitFolder;                 ///< of the user's own units
    QString systemctl = u"systemctl"_s; ///< the manager's command
    QString agentFolder = {};           ///< of the property lists that "print" compares with the units; empty for none

    /// Uses the user's unit folder: "systemd/user" in XDG_CONFIG_HOME or ~/.config.
    static SystemdUserManager ofUser(QString agentFolder = {});

    /// The operations of launchctl:
    /// - "print TARGET": 0 when the service is loaded and not stopped (waiting for its restart counts), 3 when it is
    ///   stopped, 4 when it doesn't exist, 78 when "bootstrap" would change its unit or create a folder of its logs;
    /// - "bootstrap DOMAIN PLIST": makes the unit from the property list with the folders that it needs, enables and
    ///   starts it; 66 when the list can't be read, 73 when the unit can't be written;
    /// - "bootout TARGET": stops and disables it;
    /// - "kickstart [-k] TARGET": starts it, or with "-k" restarts it when it runs.
    /// Other exit statuses are systemctl's; 64 for any other arguments, -1 when systemctl can't be started. Without a
    /// user manager each operation fails at once.
    [[nodiscard]] Launchctl launchctl() const;

    /// The state of the service with this label; nothing if the manager can't be reached.
    [[nodiscard]] QCoro::Task<std::optional<SupervisedService>> state(QString label, std::stop_token stop) const;
    /// Path of the unit's file if it isn't the one that "bootstrap" makes from this property list.
    [[nodiscard]] std::optional<QString> outdatedUnit(const QString& label, const PropertyDictionary& plist) const;
};

} // namespace tunedeck
