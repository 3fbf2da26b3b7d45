#include "TunedeckMenu/Model/MenuModel.h"

#include <algorithm>
#include <chrono>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 3s;
constexpr auto linksInterval = 15s;
constexpr auto linksIntervalWhilePairing = 3s;
constexpr auto updateCheckInterval = 20h;

/// Whether less than the interval has passed. False when the clock was set back.
bool isWithin(std::chrono::milliseconds interval, const std::optional<QDateTime>& since, const QDateTime& now) {
    return since && since->msecsTo(now) >= 0 && since->msecsTo(now) < interval.count();
}

} // namespace

MenuModel::MenuModel(const MenuServices& services, QObject* parent) : QObject(parent), m_services(services) {
    m_state.appVersion = services.facts.appVersion;
    m_state.home = services.facts.home;
}

MenuModel::~MenuModel() = default;

void MenuModel::panelAppeared() {
    if (++m_panels > 1) {
        return;
    }
    m_polling.restart();
    spawn(poll());
}

void MenuModel::panelDisappeared() {
    if (m_panels > 0 && --m_panels == 0) {
        m_polling.stop();
    }
}

QCoro::Task<> MenuModel::poll() {
    const auto stop = m_polling.token();
    while (!stop.stop_requested()) {
        co_await refresh(stop);
        if (stop.stop_requested()) {
            co_return;
        }
        co_await m_services.clock.sleep(pollInterval, stop);
    }
}

QCoro::Task<> MenuModel::refresh(std::stop_token stop) {
    readSettings();
    const auto request = m_statusRequests.begin();
    auto status = co_await m_services.status.fetch(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (m_statusRequests.isCurrent(request)) {
        setService(status ? ServiceState::running(std::move(*status)) : ServiceState::notRunning());
    }

    if (m_state.service.isRunning()) {
        co_await refreshToolbox(stop);
        if (stop.stop_requested()) {
            co_return;
        }
    }
    // Detached: the panel may close before the list arrives.
    spawn(refreshLinks(LinksFetch::IfStale, m_scope.token()));
    Q_EMIT refreshed();
}

QCoro::Task<> MenuModel::refreshToolbox(std::stop_token stop) {
    const auto request = m_toolboxRequests.begin();
    auto report = co_await m_services.toolbox.fetch(stop);
    if (!stop.stop_requested() && m_toolboxRequests.isCurrent(request)) {
        set(m_state.toolbox, std::move(report));
    }
}

QCoro::Task<> MenuModel::refreshLinks(LinksFetch fetch, std::stop_token stop) {
    const auto* status = m_state.service.status();
    if (status == nullptr || !status->cloud.enabled || !status->cloud.connected.value_or(true)) {
        co_return;
    }
    const auto now = m_services.clock.now();
    const auto interval = pairingTelegram() ? linksIntervalWhilePairing : linksInterval;
    if (fetch == LinksFetch::IfStale && (m_linksInFlight.isBusy() || isWithin(interval, m_linksFetchedAt, now))) {
        co_return;
    }
    m_linksFetchedAt = now;

    const auto request = m_linksRequests.begin();
    const auto inFlight = m_linksInFlight.begin();
    auto result = co_await m_services.links.list(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (result && m_linksRequests.isCurrent(request)) {
        setLinks(std::move(*result));
    }
}

void MenuModel::checkForUpdates(CheckTrigger trigger) {
    const auto& update = m_state.update.value;
    const bool isBusy = std::holds_alternative<UpdateState::Checking>(update) ||
                        std::holds_alternative<UpdateState::Installing>(update);
    const bool isTooSoon =
        trigger == CheckTrigger::Timer && isWithin(updateCheckInterval, m_lastUpdateCheck, m_services.clock.now());
    if (m_services.updates.check && !isBusy && !isTooSoon) {
        setUpdate({UpdateState::Checking{}});
        spawn(runUpdateCheck(trigger));
    }
}

QCoro::Task<> MenuModel::runUpdateCheck(CheckTrigger trigger) {
    const auto stop = m_scope.token();
    UpdateCheck check;
    try {
        check = co_await m_services.updates.check(stop);
    } catch (const std::exception& error) {
        check.value = UpdateCheck::Failed{QString::fromUtf8(error.what())};
    }
    if (stop.stop_requested()) {
        co_return;
    }
    const auto now = m_services.clock.now();
    m_lastUpdateCheck = now;
    UpdateState update;
    if (const auto* available = std::get_if<UpdateCheck::Available>(&check.value)) {
        update.value = UpdateState::Available{available->release};
    } else if (const auto* failed = std::get_if<UpdateCheck::Failed>(&check.value); failed == nullptr) {
        update.value = UpdateState::UpToDate{now};
    } else if (trigger == CheckTrigger::User) {
        update.value = UpdateState::Failed{failed->message};
    }
    setUpdate(update);
}

bool MenuModel::pairingTelegram() const {
    const auto now = m_services.clock.now();
    return std::ranges::any_of(m_state.links, [&](const AssistantLink& link) {
        return link.assistant() == Assistant::telegram && !link.isConnected() && !link.pairingExpired(now);
    });
}

const AssistantLink* MenuModel::link(const QString& id) const {
    const auto found = std::ranges::find(m_state.links, id, &AssistantLink::id);
    return found == m_state.links.end() ? nullptr : &*found;
}

void MenuModel::showError(QString error) {
    if (m_state.actionError == error && !m_state.actionNote) {
        return;
    }
    m_state.actionNote.reset();
    m_state.actionError = std::move(error);
    Q_EMIT changed();
}

void MenuModel::showNote(QString note) {
    m_noteLink.reset();
    if (m_state.actionNote == note && !m_state.actionError) {
        return;
    }
    m_state.actionError.reset();
    m_state.actionNote = std::move(note);
    Q_EMIT changed();
}

void MenuModel::keepNoteWith(const AssistantLink& link) {
    m_noteLink = link;
}

void MenuModel::clearError() {
    set(m_state.actionError, {});
}

void MenuModel::withdrawError(const QString& error) {
    if (m_state.actionError == error) {
        clearError();
    }
}

void MenuModel::setService(ServiceState service) {
    const bool differs = m_state.service != service;
    bool losesToolbox = false;
    if (!service.isRunning()) {
        // A report requested before the service stopped may still arrive.
        m_toolboxRequests.invalidate();
        losesToolbox = std::exchange(m_state.toolbox, std::nullopt).has_value();
    }
    if (differs) {
        m_state.service = std::move(service);
        Q_EMIT serviceChanged();
    }
    if (differs || losesToolbox) {
        Q_EMIT changed();
    }
}

void MenuModel::setMenuBarIcon(MenuBarIconVisibility visibility) {
    set(m_state.menuBarIcon, std::move(visibility));
}

void MenuModel::setMissingTray(MissingTray missing) {
    set(m_state.missingTray, missing);
}

void MenuModel::setCopied(std::optional<QString> key) {
    set(m_state.copied, std::move(key));
}

void MenuModel::setRevealSecrets(bool reveal) {
    set(m_state.revealSecrets, reveal);
}

void MenuModel::setUpdate(UpdateState update) {
    set(m_state.update, std::move(update));
}

void MenuModel::storeLink(AssistantLink link) {
    m_linksRequests.invalidate();
    auto links = m_state.links;
    const auto known = std::ranges::find(links, link.id, &AssistantLink::id);
    if (known != links.end()) {
        *known = std::move(link);
    } else {
        links.push_back(std::move(link));
    }
    setLinks(std::move(links));
}

void MenuModel::removeLink(const QString& id) {
    m_linksRequests.invalidate();
    auto links = m_state.links;
    std::erase_if(links, [&](const AssistantLink& link) { return link.id == id; });
    setLinks(std::move(links));
}

void MenuModel::setLinks(std::vector<AssistantLink> links) {
    set(m_state.links, std::move(links));
    if (m_noteLink) {
        const auto* current = link(m_noteLink->id);
        if (current == nullptr || (current->isConnected() && !m_noteLink->isConnected())) {
            m_noteLink.reset();
            set(m_state.actionNote, {});
        }
    }
}

void MenuModel::readSettings() {
    set(m_state.customFolder, m_services.settings.downloadDir());
    set(m_state.opensAtLogin, m_services.loginItem.isEnabled());
}

} // namespace tunedeck
