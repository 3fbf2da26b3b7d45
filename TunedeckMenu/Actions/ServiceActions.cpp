#include "TunedeckMenu/Actions/ServiceActions.h"

#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Locations/UserPaths.h"

#include <QStringList>
#include <QUrl>

#include <chrono>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

/// How long the service gets to come up (or launchd to forget it) before it is looked at again.
constexpr auto settling = 1500ms;

} // namespace

void ServiceActions::restart() {
    if (m_model.state().isRestarting) {
        return;
    }
    m_model.setRestarting(true);
    m_model.clearError();
    spawn(restartService());
}

QCoro::Task<> ServiceActions::restartService() {
    const auto stop = m_scope.token();
    const auto uid = m_services.facts.uid;
    const QStringList kickstart{QStringLiteral("kickstart"), QStringLiteral("-k"),
                                ServiceInstaller::serviceTarget(uid)};
    auto status = co_await m_services.launchctl(kickstart, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (status != 0) {
        co_await m_services.clock.sleep(settling, stop);
        if (stop.stop_requested()) {
            co_return;
        }
        const QStringList bootstrap{QStringLiteral("bootstrap"), ServiceInstaller::domainTarget(uid),
                                    UserPaths(m_services.facts.home).agentPlist()};
        status = co_await m_services.launchctl(bootstrap, stop);
        if (stop.stop_requested()) {
            co_return;
        }
        if (status != 0) {
            m_model.show(QStringLiteral("Couldn't start tunedeck (launchctl exit %1). See the log.").arg(status));
        }
    }
    co_await m_services.clock.sleep(settling, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    co_await m_model.refresh(stop);
    if (!stop.stop_requested()) {
        m_model.setRestarting(false);
    }
}

void ServiceActions::repairTools() {
    if (!std::exchange(m_repairing, true)) {
        m_model.clearError();
        spawn(installTools());
    }
}

QCoro::Task<> ServiceActions::installTools() {
    const auto stop = m_scope.token();
    const bool accepted = co_await m_services.toolbox.install(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    m_repairing = false;
    if (!accepted) {
        m_model.show(QStringLiteral("Couldn't reach tunedeck to repair its tools."));
        co_return;
    }
    co_await m_model.refreshToolbox(stop);
}

void ServiceActions::openLog() {
    const auto log = UserPaths(m_services.facts.home).serviceLog();
    if (!m_services.workspace.open(QUrl::fromLocalFile(log))) {
        m_model.show(QStringLiteral("Couldn't open %1.").arg(log));
    }
}

} // namespace tunedeck
