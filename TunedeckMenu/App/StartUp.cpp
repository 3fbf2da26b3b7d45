#include "TunedeckMenu/App/StartUp.h"

#include "TunedeckCore/Onboarding.h"
#include "TunedeckMenu/Platform/Log.h"

#include <chrono>
#include <tuple>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

constexpr int attempts = 20;
constexpr auto spacing = 1s;
/// A machine that has been up for longer wasn't just logged in to: the user started the application by hand.
constexpr auto startedByHand = 300s;

} // namespace

StartUp::StartUp(MenuModel& model, const MenuServices& services, ServiceInstaller installer, Outcome outcome)
    : m_model(model), m_services(services), m_installer(std::move(installer)), m_outcome(std::move(outcome)) {}

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
    m_outcome.waitEnded();
    // Links can only speak against a first run. Where there is none anyway, the window doesn't wait for them.
    const bool linksDecide = Onboarding::shouldShow(m_services.settings.onboarded(), status, {});
    if (!linksDecide) {
        decideOnWindow(status, {});
    }
    const bool registered = status && status->cloud.registered.value_or(false);
    const auto links = co_await registeredLinks(registered, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (linksDecide) {
        decideOnWindow(status, links);
    }
    m_outcome.startUpdateChecks();
}

void StartUp::decideOnWindow(const std::optional<ServiceStatus>& status, const std::vector<AssistantLink>& links) {
    const bool onboarded = m_services.settings.onboarded();
    if (Onboarding::shouldShow(onboarded, status, links)) {
        m_outcome.showOnboarding();
        return;
    }
    if (!onboarded) {
        std::ignore = m_services.settings.setOnboarded(true);
    }
    if (m_services.clock.uptime() > startedByHand) {
        m_outcome.showWindow();
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
    const auto outcome = co_await m_installer.ensureInstalled(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    qCInfo(appLog).noquote() << "service install:" << outcome.description();
    if (outcome.kind == ServiceInstaller::Outcome::Kind::failed) {
        m_model.show(QStringLiteral("Couldn't start Tunedeck's background service: ") + outcome.message);
    }
}

QCoro::Task<std::optional<ServiceStatus>> StartUp::waitForService(std::stop_token stop) {
    for (int attempt = 1;; ++attempt) {
        auto status = co_await m_services.status.fetch(stop);
        if (status || attempt == attempts || stop.stop_requested()) {
            co_return status;
        }
        co_await m_services.clock.sleep(spacing, stop);
    }
}

} // namespace tunedeck
