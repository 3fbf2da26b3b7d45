#pragma once

#include <QByteArray>

#include <sys/types.h>

namespace tunedeck {

/// The path of the program that a process of this user runs, even when that file has been removed or replaced. Empty
/// for other users' processes and unknown ids.
QByteArray ownProgramPath(pid_t process);

} // namespace tunedeck
