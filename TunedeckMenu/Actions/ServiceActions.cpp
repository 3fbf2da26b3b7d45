#include "TunedeckMenu/Actions/ServiceActions.h"

#include "TunedeckCore/Installation/ServiceInstaller.h"
#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckMenu/Actions/Openers.h"

#include <QStringList>

#include <chrono>

namespace tunedeck {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// Time for the service to start, or for launchd to forget it, before the next step.
constexpr auto settleTime = 1500ms;

} // namespace

ServiceActions::ServiceActions(PanelActions& panel, MenuModel& model, const MenuServices& services)
    : m_model(model)
    , m_services(services)
    , m_repair(services, model, [this] { spawn(m_model.refreshToolbox(m_scope.token())); }) {
    connect(&panel, &PanelActions::restartService, this, [this] {
        if (!m_model.state().isRestarting) {
            spawn(restart());
        }
    });
    connect(&panel, &PanelActions::repairTools, this, [this] { m_repair.start(); });
    connect(&panel, &PanelActions::openLog, this, [this] {
        const auto log = UserPaths(m_services.facts.home).serviceLog();
        openFile(log, m_services.workspace, m_model);
    });
}

QCoro::Task<> ServiceActions::restart() {
    const auto stop = m_scope.token();
    const auto busy = m_model.beginRestart();
    m_model.clearError();
    const auto& facts = m_services.facts;
    const QStringList kickstart{u"kickstart"_s, u"-k"_s, ServiceInstaller::serviceTarget(facts.uid)};
    auto status = co_await m_services.launchctl(kickstart, stop);
    if (status != 0 && !stop.stop_requested()) {
        co_await m_services.clock.sleep(settleTime, stop);
        if (stop.stop_requested()) {
            co_return;
        }
        const QStringList bootstrap{u"bootstrap"_s, ServiceInstaller::domainTarget(facts.uid),
                                    UserPaths(facts.home).agentPlist()};
        status = co_await m_services.launchctl(bootstrap, stop);
        if (status != 0 && !stop.stop_requested()) {
            m_model.showError(u"Couldn't start tunedeck (launchctl exit %1). See the log."_s.arg(status));
        }
    }
    if (stop.stop_requested()) {
        co_return;
    }
    co_await m_services.clock.sleep(settleTime, stop);
    if (!stop.stop_requested()) {
        co_await m_model.refresh(stop);
    }
}

} // namespace tunedeck
