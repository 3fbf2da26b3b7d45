#pragma once

#include "TunedeckCore/Installation/Removal.h"
#include "TunedeckMenu/Platform/Linux/Service/SystemdUserManager.h"

#include <QCoroTask>
#include <QString>

#include <sys/types.h>

#include <stop_token>
#include <vector>

namespace tunedeck {

/// Removes the service's unit and the links that have it started, and tells the manager so if there is one. The user's
/// own additions to the unit stay. `home`: for the words.
QCoro::Task<Removal> removeUnit(SystemdUserManager manager, QString home, std::stop_token stop);

/// The user's processes that run the program of this path, also when it has been removed or replaced since.
std::vector<pid_t> processesRunning(const QString& program);

} // namespace tunedeck
