#pragma once

#include <QString>
#include <QStringList>

namespace tunedeck {

/// Starts the application again, after an update or an upgrade of its package.
class Relauncher {
public:
    virtual ~Relauncher() = default;
    /// Starts the bundle's application with these arguments in one second; this process must exit. Where two could run,
    /// the new one gets `--after` with this process's id and waits. Returns false when it can't be started.
    virtual bool relaunch(const QString& bundle, const QStringList& arguments) = 0;
    /// True when the bundle's program is another file than the running one. False when it is missing.
    [[nodiscard]] virtual bool isReplaced(const QString& bundle) const = 0;
};

} // namespace tunedeck
