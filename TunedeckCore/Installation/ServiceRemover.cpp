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

constexpr auto look = 100ms;
struct Means {
    int signal;
    int looks; ///< how often it is looked whether that was enough
};
constexpr std::array<Means, 2> means{{{SIGTERM, 50}, {SIGKILL, 10}}};

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
    // Also what isn't loaded: it may have been stopped and still be started with the next session.
    const QStringList unload{u"bootout"_s, remover.m_target};
    const auto unloaded = co_await remover.m_supervisor.launchctl(unload, stop);
    if (stop.stop_requested()) {
        co_return removal;
    }
    if (loaded == 0 && unloaded == 0) {
        removal.done << u"Stopped and disabled the service."_s;
    } else if (loaded == 0) {
        removal.failures << u"The service's supervisor didn't let go of it: launchctl bootout exited %1."_s.arg(
            unloaded);
    }

    const bool survived = !remover.m_supervisor.processes(remover.m_program).empty();
    const bool ended = co_await endProcesses(remover, stop);
    if (stop.stop_requested()) {
        co_return removal;
    }
    if (!ended) {
        removal.failures << u"The service still runs and can't be ended."_s;
    } else if (survived) {
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

/// Asks the processes of the program to end, in the end without asking; false when one is still there.
QCoro::Task<bool> ServiceRemover::endProcesses(ServiceRemover remover, std::stop_token stop) {
    const auto runs = [&remover] { return remover.m_supervisor.processes(remover.m_program); };
    for (const auto& mean : means) {
        for (const auto process : runs()) {
            ::kill(process, mean.signal);
        }
        for (int i = 0; i < mean.looks && !runs().empty(); ++i) {
            const bool slept = co_await remover.m_clock->sleep(look, stop);
            if (!slept) {
                co_return false;
            }
        }
    }
    co_return runs().empty();
}

void ServiceRemover::removeFiles(Removal& removal) const {
    removal.note(abbreviatingHome(m_plist, m_home), removeFile(m_plist));
    removal.note(abbreviatingHome(m_program, m_home), removeFile(m_program));
    // What an interrupted installation left.
    const auto unfinished = m_program + u".new"_s;
    removal.note(abbreviatingHome(unfinished, m_home), removeFile(unfinished));
    ::rmdir(QFile::encodeName(QFileInfo(m_program).path()).constData()); // only when nothing else is in it
}

} // namespace tunedeck
