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

/// Takes away what ServiceInstaller put into the user's home, and ends the service. What the service itself wrote
/// stays.
class ServiceRemover {
public:
    /// What supervises the service here.
    struct Supervisor {
        Launchctl launchctl;
        /// Takes away what the supervisor made of the property list, also when it can't be reached itself.
        std::function<QCoro::Task<Removal>(std::stop_token stop)> forget;
        /// The user's processes that run the program of this path.
        std::function<std::vector<pid_t>(const QString& program)> processes;
    };

    /// `home`: the user's home folder, for the words; `uid`: names the launchd domain; `clock`: of the wait for the
    /// service's end, lives longer than what runs.
    ServiceRemover(QString home, const ServiceInstaller& installer, std::uint32_t uid, Supervisor supervisor,
                   Clock& clock);

    /// Stops and disables the service, then removes its files. A step that fails keeps none of the others from being
    /// taken, and nothing depends on the supervisor being there: a service that it doesn't end is sent away.
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
