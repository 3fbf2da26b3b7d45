#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace tunedeck {

/// The path of the program that a process of this user runs, even when that file has been removed or replaced. Empty
/// for other users' processes and unknown ids.
QByteArray ownProgramPath(pid_t process);

/// Whether a process, an id or "self", runs the file that is at this path now. False if the file was replaced since.
bool runsFile(const QByteArray& process, const QString& path);

} // namespace tunedeck
