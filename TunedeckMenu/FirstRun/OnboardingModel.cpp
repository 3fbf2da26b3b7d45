#include "TunedeckMenu/FirstRun/OnboardingModel.h"

#include "TunedeckCore/Locations/UserPaths.h"
#include "TunedeckMenu/Actions/Openers.h"

#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds pollInterval = 2s;
/// Between attempts to start the service, each of which takes several seconds.
constexpr auto setupInterval = 10s;
// Keys of the values that can be copied.
const auto urlKey = u"url"_s;
const auto tokenKey = u"key"_s;

} // namespace

OnboardingModel::OnboardingModel(LinkActions& links, const MenuServices& services, ServiceSetup& setup,
                                 std::optional<RekordboxInstall> rekordbox)
    : m_links(links), m_services(services), m_setup(setup), m_copier(services, *this), m_repair(services, *this) {
    m_state.rekordbox = std::move(rekordbox);
    connect(&m_setup, &ServiceSetup::changed, this, &OnboardingModel::setupChanged);
    setupChanged();
}

OnboardingModel::~OnboardingModel() = default;

void OnboardingModel::update() {
    if (const auto wait = m_state.wait(); m_wait != wait) {
        m_wait = wait;
        m_state.waitingSince = wait == OnboardingWait::Nothing ? std::nullopt : std::optional(m_services.clock.now());
    }
    Q_EMIT changed();
}

void OnboardingModel::setupChanged() {
    m_state.isStartingService = m_setup.isBusy();
    if (const auto& outcome = m_setup.outcome(); outcome && !m_setup.isBusy()) {
        m_setupEnded = m_services.clock.elapsed();
        m_state.serviceFailure = m_setup.failure();
        const bool refused = outcome->message.startsWith(u"launchctl "); // by the supervisor, not by a file
        m_state.serviceAdvice = refused ? m_services.facts.supervisorAdvice : QString();
    }
    update();
}

void OnboardingModel::startService() {
    spawn(m_setup.attempt());
}

void OnboardingModel::startServiceWhenDue() {
    const bool isDue = m_services.clock.elapsed() - m_setupEnded >= setupInterval;
    if (!m_state.status && !m_state.serviceFailure.isEmpty() && isDue) {
        startService();
    }
}

void OnboardingModel::openLog() {
    openFile(UserPaths(m_services.facts.home).serviceLog(), m_services.workspace, *this);
}

void OnboardingModel::windowAppeared() {
    m_wait = OnboardingWait::Nothing; // the time while the window was closed doesn't count
    update();
    m_polling.restart();
    spawn(poll());
}

void OnboardingModel::windowClosed() {
    m_polling.stop();
}

QCoro::Task<> OnboardingModel::poll() {
    const auto stop = m_polling.token();
    while (!stop.stop_requested()) {
        const auto begin = m_services.clock.elapsed();
        auto status = co_await m_services.status.fetch(stop);
        if (stop.stop_requested()) {
            co_return;
        }
        m_state.status = std::move(status);
        startServiceWhenDue();
        takeBaselineWhenDue();
        update();

        auto report = co_await m_services.toolbox.fetch(stop);
        if (stop.stop_requested()) {
            co_return;
        }
        m_state.toolbox = std::move(report);
        update();

        // Detached: a list may take 30 seconds, and polling goes on.
        spawn(refreshLink(stop));
        const auto passed = std::chrono::ceil<std::chrono::milliseconds>(m_services.clock.elapsed() - begin);
        co_await m_services.clock.sleep(std::max(pollInterval - passed, 0ms), stop);
    }
}

QCoro::Task<> OnboardingModel::refreshLink(std::stop_token stop) {
    const bool isDue = m_state.step == OnboardingStep::assistant && m_state.link && !m_state.link->isConnected();
    if (!isDue || m_linkLists.isBusy()) {
        co_return;
    }
    const auto inFlight = m_linkLists.begin();
    const auto request = m_linkRequests.begin();
    const auto links = co_await m_services.links.list(stop);
    if (stop.stop_requested() || !links || !m_linkRequests.isCurrent(request) || !m_state.link) {
        co_return;
    }
    const auto found = std::ranges::find(*links, m_state.link->id, &AssistantLink::id);
    if (found != links->end()) {
        m_state.link = *found;
        update();
    }
}

void OnboardingModel::advance() {
    m_state.error.reset();
    switch (m_state.step) {
    case OnboardingStep::tools:
        showStep(OnboardingStep::rekordbox);
        return;
    case OnboardingStep::rekordbox:
        showStep(OnboardingStep::assistant);
        return;
    case OnboardingStep::assistant:
        break;
    }
    std::ignore = m_services.settings.setOnboarded(true);
    if (onFinish) {
        onFinish();
    }
}

void OnboardingModel::back() {
    m_state.error.reset();
    showStep(m_state.step == OnboardingStep::assistant ? OnboardingStep::rekordbox : OnboardingStep::tools);
}

void OnboardingModel::showStep(OnboardingStep step) {
    m_state.step = step;
    takeBaselineWhenDue();
    update();
}

void OnboardingModel::repairTools() {
    m_repair.start();
}

void OnboardingModel::takeBaselineWhenDue() {
    const bool hasLibrary = m_state.status && (m_state.status->rekordboxDb || m_state.rekordbox);
    if (m_state.step == OnboardingStep::rekordbox && hasLibrary && !m_baselineRequested) {
        takeBaseline();
    }
}

void OnboardingModel::takeBaseline() {
    if (std::holds_alternative<Baseline::Working>(m_state.baseline.value)) {
        return;
    }
    m_baselineRequested = true;
    m_state.baseline.value = Baseline::Working{};
    update();
    spawn(requestBaseline());
}

QCoro::Task<> OnboardingModel::requestBaseline() {
    const auto stop = m_scope.token();
    const auto reply = co_await m_services.library.takeBaseline(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (reply.ok) {
        m_state.baseline.value = Baseline::Done{reply.version.value_or(u"1.0.0"_s)};
    } else {
        m_state.baseline.value = Baseline::Later{reply.error.value_or(u"Rekordbox is open."_s)};
    }
    update();
}

void OnboardingModel::choose(const QString& kind) {
    const auto assistant = assistantFromRawValue(kind);
    if (!assistant || m_state.connecting) {
        return;
    }
    m_state.assistant = assistant;
    m_state.connecting = true;
    m_state.error.reset();
    update();
    m_links.connectAssistant(*assistant, [this, stop = m_scope.token()](const auto& made) {
        if (!stop.stop_requested()) {
            connected(made);
        }
    });
}

void OnboardingModel::connected(const LinkActions::Result<AssistantLink>& made) {
    m_state.connecting = false;
    if (made) {
        setLink(*made);
        m_state.copied = m_state.keyCopied = false;
    } else {
        m_state.link.reset();
        const auto& reason = made.error().message;
        m_state.error = reason.isEmpty() ? u"Couldn't make a link. Is this Mac online?"_s : reason;
    }
    update();
}

void OnboardingModel::copyLink() {
    const auto& link = m_state.link;
    const auto url = !link ? std::nullopt : m_state.assistant == Assistant::iphone ? link->apiUrl : link->url;
    if (url) {
        m_copier.copy(*url, urlKey);
    }
}

void OnboardingModel::copyKey() {
    if (m_state.link && m_state.link->token) {
        m_copier.copy(*m_state.link->token, tokenKey);
    }
}

void OnboardingModel::openTelegram() {
    if (m_state.link && m_state.link->url) {
        openTelegramUrl(*m_state.link->url, m_services.workspace, *this);
    }
}

void OnboardingModel::newTelegramCode() {
    if (!m_state.link || m_state.renewing) {
        return;
    }
    m_state.renewing = true;
    update();
    m_links.renewCode(m_state.link->id, [this, id = m_state.link->id, stop = m_scope.token()](const auto& renewed) {
        if (!stop.stop_requested()) {
            codeRenewed(id, renewed);
        }
    });
}

void OnboardingModel::codeRenewed(const QString& id, const LinkActions::Result<AssistantLink>& renewed) {
    m_state.renewing = false;
    if (renewed && m_state.link && m_state.link->id == id) {
        setLink(*renewed);
    }
    LinkActions::reportNewCode(renewed, *this);
    update();
}

void OnboardingModel::setLink(const AssistantLink& link) {
    m_linkRequests.invalidate();
    m_state.link = link;
}

void OnboardingModel::openSetupGuide() {
    if (m_state.assistant) {
        openUrl(guideURL(*m_state.assistant), m_services.workspace, *this);
    }
}

void OnboardingModel::showError(QString error) {
    m_state.error = std::move(error);
    update();
}

void OnboardingModel::showNote(QString) {
    clearError();
}

void OnboardingModel::clearError() {
    m_state.error.reset();
    update();
}

void OnboardingModel::setCopied(std::optional<QString> key) {
    m_state.copied = key == urlKey;
    m_state.keyCopied = key == tokenKey;
    update();
}

} // namespace tunedeck
