#include "TunedeckCore/Installation/ServiceRemover.h"

#include "TunedeckCore/Installation/Removal.h"
#include "TunedeckCore/Locations/Paths.h"

#include <QFile>
#include <QFileInfo>

#include <signal.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 100ms;
struct Escalation {
    int signal;
    int polls; ///< until the next escalation
};
constexpr std::array<Escalation, 2> escalations{{{SIGTERM, 50}, {SIGKILL, 10}}};

} // namespace

ServiceRemover::ServiceRemover(QString home, const ServiceInstaller& installer, std::uint32_t uid,
                               Supervisor supervisor, Clock& clock)
    : m_home(std::move(home))
    , m_program(installer.installed())
    , m_plist(installer.plistURL())
    , m_target(ServiceInstaller::serviceTarget(uid))
    , m_supervisor(std::move(supervisor))
    , m_clock(&clock) {}

QCoro::Task<Removal> ServiceRemover::remove(std::stop_token stop) const {
    return run(*this, std::move(stop));
}

QCoro::Task<Removal> ServiceRemover::run(ServiceRemover remover, std::stop_token stop) {
    Removal removal;
    const QStringList print{u"print"_s, remover.m_target};
    const auto loaded = co_await remover.m_supervisor.launchctl(print, stop);
    if (stop.stop_requested()) {
        co_return removal;
    }
    // Even if it isn't loaded: a stopped service may still be enabled for the next session.
    const QStringList unload{u"bootout"_s, remover.m_target};
    const auto unloaded = co_await remover.m_supervisor.launchctl(unload, stop);
    if (stop.stop_requested()) {
        co_return removal;
    }
    if (loaded == 0 && unloaded == 0) {
        removal.done << u"Stopped and disabled the service."_s;
    } else if (loaded == 0) {
        removal.failures << u"Couldn't stop the service: launchctl bootout exited %1."_s.arg(unloaded);
    }

    const bool wasRunning = !remover.m_supervisor.processes(remover.m_program).empty();
    const bool ended = co_await endProcesses(remover, stop);
    if (stop.stop_requested()) {
        co_return removal;
    }
    if (!ended) {
        removal.failures << u"The service is still running and couldn't be stopped."_s;
    } else if (wasRunning) {
        removal.done << u"Ended the service."_s;
    }

    const auto forgotten = co_await remover.m_supervisor.forget(stop);
    if (stop.stop_requested()) {
        co_return removal;
    }
    removal.done += forgotten.done;
    removal.failures += forgotten.failures;
    remover.removeFiles(removal);
    co_return removal;
}

/// Terminates the program's processes, then kills them; false if one is left.
QCoro::Task<bool> ServiceRemover::endProcesses(ServiceRemover remover, std::stop_token stop) {
    const auto processes = [&remover] { return remover.m_supervisor.processes(remover.m_program); };
    for (const auto& escalation : escalations) {
        for (const auto process : processes()) {
            ::kill(process, escalation.signal);
        }
        for (int i = 0; i < escalation.polls && !processes().empty(); ++i) {
            const bool slept = co_await remover.m_clock->sleep(pollInterval, stop);
            if (!slept) {
                co_return false;
            }
        }
    }
    co_return processes().empty();
}

void ServiceRemover::removeFiles(Removal& removal) const {
    removal.note(abbreviatingHome(m_plist, m_home), removeFile(m_plist));
    removal.note(abbreviatingHome(m_program, m_home), removeFile(m_program));
    // Left by an interrupted installation.
    const auto unfinished = m_program + u".new"_s;
    removal.note(abbreviatingHome(unfinished, m_home), removeFile(unfinished));
    ::rmdir(QFile::encodeName(QFileInfo(m_program).path()).constData()); // only if it is empty
}

} // namespace tunedeck
