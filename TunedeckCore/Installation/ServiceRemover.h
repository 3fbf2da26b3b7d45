#pragma once

#include "TunedeckCore/Installation/Launchctl.h"
#include "TunedeckCore/Installation/Removal.h"
#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Support/Async/Clock.h"

#include <QCoroTask>
#include <QString>

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

namespace tunedeck {

/// Stops the service and removes the files that ServiceInstaller installed. Keeps the service's own data.
class ServiceRemover {
public:
    /// Access to the service's supervisor.
    struct Supervisor {
        Launchctl launchctl;
        /// Removes what the supervisor derived from the property list, even if it isn't running.
        std::function<QCoro::Task<Removal>(std::stop_token stop)> forget;
        /// The user's processes that run this program.
        std::function<std::vector<pid_t>(const QString& program)> processes;
    };

    /// `home`: abbreviated in messages; `uid`: for the launchd domain; `clock`: must outlive the coroutines.
    ServiceRemover(QString home, const ServiceInstaller& installer, std::uint32_t uid, Supervisor supervisor,
                   Clock& clock);

    /// Stops and disables the service, then removes its files. Continues after a failed step, and kills a service that
    /// the supervisor doesn't end.
    [[nodiscard]] QCoro::Task<Removal> remove(std::stop_token stop) const;

private:
    static QCoro::Task<Removal> run(ServiceRemover remover, std::stop_token stop);
    static QCoro::Task<bool> endProcesses(ServiceRemover remover, std::stop_token stop);
    void removeFiles(Removal& removal) const;

    QString m_home;
    QString m_program;
    QString m_plist;
    QString m_target;
    Supervisor m_supervisor;
    Clock* m_clock;
};

} // namespace tunedeck
