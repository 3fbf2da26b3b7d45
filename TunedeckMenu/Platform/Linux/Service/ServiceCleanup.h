#pragma once

#include "TunedeckCore/Installation/Removal.h"
#include "TunedeckMenu/Platform/Linux/Service/SystemdUserManager.h"

#include <QCoroTask>
#include <QString>

#include <sys/types.h>

#include <stop_token>
#include <vector>

namespace tunedeck {

/// Removes the service's unit and the links that enable it, and reloads the manager if it is running. Keeps the user's
/// drop-in files. `home` is used to abbreviate paths in messages.
QCoro::Task<Removal> removeUnit(SystemdUserManager manager, QString home, std::stop_token stop);

/// The user's processes that run the program at this path, even when it has been removed or replaced since.
std::vector<pid_t> processesRunning(const QString& program);

} // namespace tunedeck
