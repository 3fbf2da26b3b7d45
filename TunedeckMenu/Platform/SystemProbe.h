#pragma once

#include "TunedeckCore/Support/Files/PropertyList.h"
#include "TunedeckMenu/Platform/SystemFacts.h"

#include <QCoroTask>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// The background service as its supervisor sees it.
struct SupervisedService {
    enum class State { Unknown, Stopped, Restarting, Running };
    State state = State::Unknown;         ///< Unknown: the supervisor has no such service
    std::optional<QDateTime> since = {};  ///< start of a running service
    std::optional<QString> lastExit = {}; ///< how a service that doesn't run ended: "exit status 1", "signal 9"
    int restarts = 0;                     ///< unexpected ends of a running service
};

/// The tray of the desktop.
struct TrayFacts {
    bool exists = false;
    std::optional<bool> showsIcon = {}; ///< of the process in question; nothing if the tray doesn't say
};

/// The program that shows notifications.
struct NotificationFacts {
    bool exists = false;
    QStringList capabilities; ///< as it names them
    QString advice = {};      ///< what to do if it doesn't exist
};

/// The running application.
struct RunningInstance {
    qint64 process = 0;
    QString program;      ///< path
    bool isOnDisk = true; ///< false when that file was replaced or removed since
    QDateTime since;
};

enum class LoginItemState { Off, On, Broken };

/// What the check-up asks the system. Needs no display. A function about the desktop returns nothing if there is no
/// desktop session.
struct SystemProbe {
    template<class T>
    using Ask = std::function<QCoro::Task<std::optional<T>>(std::stop_token stop)>;

    /// Nothing if the supervisor can't be reached.
    Ask<SupervisedService> service;
    /// The supervisor's own file that is missing or doesn't match the property list, if any.
    std::function<std::optional<QString>(const PropertyDictionary& plist)> outdatedServiceFile;
    std::function<std::optional<RunningInstance>()> instance;
    std::function<QCoro::Task<std::optional<TrayFacts>>(qint64 process, std::stop_token stop)> tray;
    Ask<NotificationFacts> notifications;
    /// Whether the desktop reports its settings, such as light or dark.
    Ask<bool> settings;
    std::function<LoginItemState()> loginItem;
};

SystemProbe systemProbe(const SystemFacts& facts);

} // namespace tunedeck
