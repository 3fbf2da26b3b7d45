#pragma once

#include <QString>
#include <QStringList>

#include <sys/types.h>

#include <chrono>

namespace tunedeck {

/// Starts the application anew, for an update or an upgrade under the running process.
class Relauncher {
public:
    virtual ~Relauncher() = default;
    /// Starts the application of that bundle in a second, with "--after" and this process's id before `arguments`, so
    /// that it waits for this one to be gone. False when nothing could be started.
    virtual bool relaunch(const QString& bundle, const QStringList& arguments) = 0;
};

/// Waits until the process is gone; what "--after" asks for. False when it still runs after the time-out.
bool waitForExit(pid_t process, std::chrono::milliseconds timeout);

} // namespace tunedeck
