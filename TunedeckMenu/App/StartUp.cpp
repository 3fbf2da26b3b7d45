#include "TunedeckMenu/App/StartUp.h"

#include "TunedeckCore/Onboarding.h"

#include <chrono>
#include <tuple>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

constexpr int maxAttempts = 20;
constexpr auto retryDelay = 1s;
/// On a machine that has been up for longer, the user has started the application by hand.
constexpr auto maxUptimeAtLogin = 300s;

} // namespace

StartUp::StartUp(MenuModel& model, const MenuServices& services, ServiceSetup& setup, Callbacks callbacks)
    : m_model(model), m_services(services), m_setup(setup), m_callbacks(std::move(callbacks)) {}

void StartUp::start() {
    spawn(run());
}

QCoro::Task<> StartUp::run() {
    const auto stop = m_scope.token();
    co_await install(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    const auto status = co_await waitForService(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    m_callbacks.waitEnded();
    // Links can only prevent the first run. If there is none anyway, don't wait for them.
    const bool linksDecide = Onboarding::shouldShow(m_services.settings.onboarded(), status, {});
    if (!linksDecide) {
        openWindowIfDue(status, {});
    }
    const bool registered = status && status->cloud.registered.value_or(false);
    const auto links = co_await registeredLinks(registered, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (linksDecide) {
        openWindowIfDue(status, links);
    }
    m_callbacks.startUpdateChecks();
}

void StartUp::openWindowIfDue(const std::optional<ServiceStatus>& status, const std::vector<AssistantLink>& links) {
    const bool onboarded = m_services.settings.onboarded();
    if (Onboarding::shouldShow(onboarded, status, links)) {
        m_callbacks.showOnboarding();
        return;
    }
    if (!onboarded) {
        std::ignore = m_services.settings.setOnboarded(true);
    }
    if (m_services.clock.uptime() > maxUptimeAtLogin) {
        m_callbacks.showWindow();
    }
}

QCoro::Task<std::vector<AssistantLink>> StartUp::registeredLinks(bool registered, std::stop_token stop) {
    if (!registered) {
        co_return {};
    }
    auto links = co_await m_services.links.list(stop);
    co_return std::move(links).value_or(std::vector<AssistantLink>());
}

QCoro::Task<> StartUp::install(std::stop_token stop) {
    co_await m_setup.attempt();
    if (stop.stop_requested()) {
        co_return;
    }
    const auto& outcome = m_setup.outcome();
    if (outcome && outcome->kind == ServiceInstaller::Outcome::Kind::failed) {
        const auto failure = m_setup.failure();
        m_model.showError(failure);
        QObject::connect(&m_setup, &ServiceSetup::changed, &m_model, [&model = m_model, &setup = m_setup, failure] {
            if (setup.failure().isEmpty()) {
                model.withdrawError(failure);
            }
        });
    }
}

QCoro::Task<std::optional<ServiceStatus>> StartUp::waitForService(std::stop_token stop) {
    for (int attempt = 1;; ++attempt) {
        auto status = co_await m_services.status.fetch(stop);
        if (status || attempt == maxAttempts || stop.stop_requested()) {
            co_return status;
        }
        co_await m_services.clock.sleep(retryDelay, stop);
    }
}

} // namespace tunedeck
