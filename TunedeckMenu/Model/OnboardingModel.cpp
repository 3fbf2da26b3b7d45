#include "TunedeckMenu/Model/OnboardingModel.h"

#include <QUrl>

#include <algorithm>
#include <chrono>
#include <tuple>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds round = 2s;

} // namespace

OnboardingModel::OnboardingModel(PanelController& panel, const MenuServices& services,
                                 std::optional<RekordboxInstall> rekordbox, QObject* parent)
    : OnboardingActions(parent), m_panel(panel), m_services(services) {
    m_state.rekordbox = std::move(rekordbox);
}

OnboardingModel::~OnboardingModel() = default;

void OnboardingModel::windowAppeared() {
    m_watching.restart();
    m_watchingLink = false;
    spawn(watch());
}

void OnboardingModel::windowClosed() {
    m_watching.stop();
}

QCoro::Task<> OnboardingModel::watch() {
    const auto stop = m_watching.token();
    while (!stop.stop_requested()) {
        const auto begin = m_services.clock.elapsed();
        auto status = co_await m_services.status.fetch(stop);
        if (stop.stop_requested()) {
            co_return;
        }
        m_state.status = std::move(status);
        takeBaselineWhenDue();
        Q_EMIT changed();

        auto report = co_await m_services.toolbox.fetch(stop);
        if (stop.stop_requested()) {
            co_return;
        }
        m_state.toolbox = std::move(report);
        Q_EMIT changed();

        // Beside the round: a list may take half a minute, and the service goes on being watched meanwhile.
        spawn(watchLink(stop));
        const auto passed = std::chrono::ceil<std::chrono::milliseconds>(m_services.clock.elapsed() - begin);
        co_await m_services.clock.sleep(std::max(round - passed, 0ms), stop);
    }
}

QCoro::Task<> OnboardingModel::watchLink(std::stop_token stop) {
    if (m_watchingLink || m_state.step != OnboardingStep::assistant || !m_state.link || m_state.link->isConnected()) {
        co_return;
    }
    m_watchingLink = true;
    const auto edition = m_linkEdition;
    const auto links = co_await m_services.links.list(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    m_watchingLink = false;
    if (!links || edition != m_linkEdition || !m_state.link) {
        co_return;
    }
    const auto found = std::ranges::find(*links, m_state.link->id, &AssistantLink::id);
    if (found != links->end()) {
        m_state.link = *found;
        Q_EMIT changed();
    }
}

void OnboardingModel::advance() {
    m_state.error.reset();
    switch (m_state.step) {
    case OnboardingStep::tools:
        show(OnboardingStep::rekordbox);
        return;
    case OnboardingStep::rekordbox:
        show(OnboardingStep::assistant);
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
    show(m_state.step == OnboardingStep::assistant ? OnboardingStep::rekordbox : OnboardingStep::tools);
}

void OnboardingModel::show(OnboardingStep step) {
    m_state.step = step;
    takeBaselineWhenDue();
    Q_EMIT changed();
}

void OnboardingModel::repairTools() {
    spawn(installTools());
}

QCoro::Task<> OnboardingModel::installTools() {
    const auto stop = m_scope.token();
    const bool accepted = co_await m_services.toolbox.install(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    m_state.error =
        accepted ? std::nullopt : std::optional(QStringLiteral("Couldn't reach tunedeck to repair its tools."));
    Q_EMIT changed();
}

void OnboardingModel::takeBaselineWhenDue() {
    const bool isDue = m_state.step == OnboardingStep::rekordbox && m_state.status && m_state.status->rekordboxDb;
    if (isDue && !m_baselineAsked) {
        takeBaseline();
    }
}

void OnboardingModel::takeBaseline() {
    if (std::holds_alternative<Baseline::Working>(m_state.baseline.value)) {
        return;
    }
    m_baselineAsked = true;
    m_state.baseline.value = Baseline::Working{};
    Q_EMIT changed();
    spawn(askForBaseline());
}

QCoro::Task<> OnboardingModel::askForBaseline() {
    const auto stop = m_scope.token();
    const auto reply = co_await m_services.library.takeBaseline(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (reply.ok) {
        m_state.baseline.value = Baseline::Done{reply.version.value_or(QStringLiteral("1.0.0"))};
    } else {
        m_state.baseline.value = Baseline::Later{reply.error.value_or(QStringLiteral("Rekordbox is open."))};
    }
    Q_EMIT changed();
}

void OnboardingModel::choose(const QString& kind) {
    const auto assistant = assistantFromRawValue(kind);
    if (!assistant || m_state.connecting) {
        return;
    }
    m_state.assistant = assistant;
    m_state.connecting = true;
    m_state.error.reset();
    Q_EMIT changed();
    spawn(connectAssistant(*assistant));
}

QCoro::Task<> OnboardingModel::connectAssistant(Assistant assistant) {
    const auto stop = m_scope.token();
    const auto made = co_await m_panel.links().connect(assistant);
    if (stop.stop_requested()) {
        co_return;
    }
    if (made) {
        ++m_linkEdition;
        m_state.link = *made;
        m_state.copied = m_state.keyCopied = false;
    } else {
        m_state.link.reset();
        const auto& reason = made.error().message;
        m_state.error = reason.isEmpty() ? QStringLiteral("Couldn't make a link. Is this Mac online?") : reason;
    }
    m_state.connecting = false;
    Q_EMIT changed();
}

void OnboardingModel::copyLink() {
    if (m_state.link) {
        copy(m_state.assistant == Assistant::iphone ? m_state.link->apiUrl : m_state.link->url,
             &OnboardingState::copied);
    }
}

void OnboardingModel::copyKey() {
    if (m_state.link) {
        copy(m_state.link->token, &OnboardingState::keyCopied);
    }
}

void OnboardingModel::copy(const std::optional<QString>& secret, bool OnboardingState::* mark) {
    if (!secret) {
        return;
    }
    m_services.pasteboard.setText(*secret);
    m_state.copied = m_state.keyCopied = false;
    m_state.*mark = true;
    Q_EMIT changed();
    spawn(unmarkCopied(++m_copies));
}

QCoro::Task<> OnboardingModel::unmarkCopied(std::uint64_t copies) {
    const auto stop = m_scope.token();
    co_await m_services.clock.sleep(1500ms, stop);
    if (!stop.stop_requested() && copies == m_copies) {
        m_state.copied = m_state.keyCopied = false;
        Q_EMIT changed();
    }
}

void OnboardingModel::openTelegram() {
    if (m_state.link && m_state.link->url) {
        open(QUrl(*m_state.link->url));
    }
}

void OnboardingModel::newTelegramCode() {
    if (m_state.link && !m_state.renewing) {
        m_state.renewing = true;
        Q_EMIT changed();
        spawn(renewCode(m_state.link->id));
    }
}

QCoro::Task<> OnboardingModel::renewCode(QString id) {
    const auto stop = m_scope.token();
    const auto renewed = co_await m_services.links.rotate(id, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    m_state.renewing = false;
    if (!renewed) {
        m_state.error = QStringLiteral("Couldn't make a new code: ") + renewed.error().message;
    } else if (m_state.link && m_state.link->id == id) {
        ++m_linkEdition;
        m_state.link = *renewed;
        m_state.error.reset();
    }
    Q_EMIT changed();
}

void OnboardingModel::openSetupGuide() {
    if (m_state.assistant) {
        open(guideURL(*m_state.assistant));
    }
}

void OnboardingModel::open(const QUrl& url) {
    if (!m_services.workspace.open(url)) {
        m_state.error = QStringLiteral("Couldn't open %1.").arg(url.toDisplayString());
        Q_EMIT changed();
    }
}

} // namespace tunedeck
