#include "TunedeckMenu/Model/MenuModel.h"

#include <algorithm>
#include <chrono>

namespace tunedeck {

using namespace std::chrono_literals;

namespace {

constexpr auto pollPause = 3s;
constexpr qint64 linksFreshMs = 15'000;
constexpr qint64 linksFreshWhilePairingMs = 3'000;
constexpr qint64 updateCheckFreshSeconds = 72'000;

/// Whether less than the interval has passed; a clock that was set back makes nothing fresh.
bool isFresh(const std::optional<QDateTime>& since, const QDateTime& now, qint64 milliseconds) {
    if (!since) {
        return false;
    }
    const auto passed = since->msecsTo(now);
    return passed >= 0 && passed < milliseconds;
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
        co_await m_services.clock.sleep(pollPause, stop);
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
    // By itself: its asker may be gone, and the panel closed, before the list comes.
    spawn(refreshLinks(false, m_scope.token()));
    Q_EMIT refreshed();
}

QCoro::Task<> MenuModel::refreshToolbox(std::stop_token stop) {
    const auto request = m_toolboxRequests.begin();
    auto report = co_await m_services.toolbox.fetch(stop);
    if (!stop.stop_requested() && m_toolboxRequests.isCurrent(request)) {
        set(m_state.toolbox, std::move(report));
    }
}

QCoro::Task<> MenuModel::refreshLinks(bool force, std::stop_token stop) {
    const auto* status = m_state.service.status();
    if (status == nullptr || !status->cloud.enabled || !status->cloud.connected.value_or(true)) {
        co_return;
    }
    const auto now = m_services.clock.now();
    const auto interval = pairingTelegram() ? linksFreshWhilePairingMs : linksFreshMs;
    if (!force && (!m_linksRequest.expired() || isFresh(m_linksFetchedAt, now, interval))) {
        co_return;
    }
    m_linksFetchedAt = now;

    const auto request = m_linksRequests.begin();
    const auto underWay = std::make_shared<char>();
    m_linksRequest = underWay;
    auto result = co_await m_services.links.list(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (result && m_linksRequests.isCurrent(request)) {
        set(m_state.links, std::move(*result));
    }
}

void MenuModel::checkForUpdates(bool manual) {
    const auto& update = m_state.update.value;
    if (std::holds_alternative<UpdateState::Checking>(update) ||
        std::holds_alternative<UpdateState::Installing>(update)) {
        return;
    }
    if (!m_services.updates.check) {
        return;
    }
    if (!manual && isFresh(m_lastUpdateCheck, m_services.clock.now(), updateCheckFreshSeconds * 1000)) {
        return;
    }
    setUpdate({UpdateState::Checking{}});
    spawn(askForUpdate(manual));
}

QCoro::Task<> MenuModel::askForUpdate(bool manual) {
    const auto stop = m_scope.token();
    const auto check = co_await m_services.updates.check(stop);
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
    } else if (manual) {
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

void MenuModel::show(QString error) {
    if (m_state.actionError == error && !m_state.actionNote) {
        return;
    }
    m_state.actionNote.reset();
    m_state.actionError = std::move(error);
    Q_EMIT changed();
}

void MenuModel::showNote(QString note) {
    if (m_state.actionNote == note && !m_state.actionError) {
        return;
    }
    m_state.actionError.reset();
    m_state.actionNote = std::move(note);
    Q_EMIT changed();
}

void MenuModel::clearError() {
    set(m_state.actionError, {});
}

void MenuModel::setService(ServiceState service) {
    // A report that was asked for before the service stopped must not come back.
    const bool clearsToolbox = !service.isRunning();
    const bool differs = m_state.service != service;
    const bool hadToolbox = m_state.toolbox.has_value();
    if (differs) {
        m_state.service = std::move(service);
    }
    if (clearsToolbox) {
        m_toolboxRequests.invalidate();
        m_state.toolbox.reset();
    }
    if (differs) {
        Q_EMIT serviceChanged();
    }
    if (differs || (clearsToolbox && hadToolbox)) {
        Q_EMIT changed();
    }
}

void MenuModel::setRestarting(bool restarting) {
    set(m_state.isRestarting, restarting);
}

void MenuModel::setMenuBarIcon(MenuBarIconVisibility visibility) {
    set(m_state.menuBarIcon, std::move(visibility));
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

void MenuModel::libraryWork(int change) {
    m_libraryWork += change;
    set(m_state.libraryBusy, m_libraryWork > 0);
}

void MenuModel::linksWork(int change) {
    m_linksWork += change;
    set(m_state.linksBusy, m_linksWork > 0);
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
    set(m_state.links, std::move(links));
}

void MenuModel::removeLink(const QString& id) {
    m_linksRequests.invalidate();
    auto links = m_state.links;
    std::erase_if(links, [&](const AssistantLink& link) { return link.id == id; });
    set(m_state.links, std::move(links));
}

void MenuModel::readSettings() {
    set(m_state.customFolder, m_services.settings.downloadDir());
    set(m_state.opensAtLogin, m_services.loginItem.isEnabled());
}

} // namespace tunedeck
