#pragma once

#include <QDateTime>
#include <QString>

#include <sys/types.h>

#include <optional>
#include <vector>

namespace tunedeck {

/// The path of the program that a process of this user runs. Empty for other users' processes, for unknown ids, and
/// when that file has been removed.
QString ownProgramPath(pid_t process);

/// When a process of this user was started.
std::optional<QDateTime> startOf(pid_t process);

/// The user's processes that run the program at this path.
std::vector<pid_t> processesRunning(const QString& program);

} // namespace tunedeck
