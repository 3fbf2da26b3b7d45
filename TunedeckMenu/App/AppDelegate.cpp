#include "TunedeckMenu/App/AppDelegate.h"

#include "TunedeckCore/Locations/BundlePaths.h"
#include "TunedeckCore/Locations/UserPaths.h"

#include <QRect>
#include <QString>

#include <chrono>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// How long to wait for a tray after the login before the window opens instead.
constexpr auto trayTimeout = 10s;

/// Position of a new icon in points from the right edge.
constexpr int preferredPosition = 220;

} // namespace

AppDelegate::AppDelegate(MenuServices services, Desktop desktop, QObject* parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_desktop(desktop)
    , m_model(m_services)
    , m_controller(m_model, m_services)
    , m_setup(installer())
    , m_windows({.model = m_model,
                 .panel = m_controller,
                 .services = m_services,
                 .setup = m_setup,
                 .appearance = desktop.appearance,
                 .source = desktop.views})
    , m_notifier(desktop.notifications, m_services.clock, UserPaths(m_services.facts.home).notificationLog())
    , m_placement(m_model, desktop.statusItem, m_services.clock, UserPaths(m_services.facts.home).menuBarReport(),
                  desktop.defaults)
    , m_startUp(m_model, m_services, m_setup,
                {.waitEnded = [this] { m_icon->stopWaitingForService(); },
                 .showOnboarding = [this] { showOnboarding(); },
                 .showWindow =
                     [this] {
                         // Not again if the user has opened it during start-up, even if it is closed now.
                         if (!m_windows.hasBeenShown()) {
                             showWindow();
                         }
                     },
                 .startUpdateChecks = [this] { m_updates.start(); }})
    , m_updates(m_model, m_services.clock)
    , m_follow(m_services.clock, m_services.status, m_notifier, [this](std::optional<ServiceStatus> status) {
        m_icon->statusFetched(std::move(status));
        m_heap.trim();
    }) {
    connect(&m_windows, &WindowController::onboardingFinished, this, &AppDelegate::showWindow);
    connect(&m_controller, &PanelActions::dismissMissingTray, this, [this] { m_placement.dismissMissingTray(); });
    m_services.confirm = [this](const Confirmation& question, std::function<void(bool)> answer) {
        m_windows.confirm(question, std::move(answer));
    };
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::launch() {
    installStatusItem();
    startNotifications();
    m_startUp.start();
}

void AppDelegate::installStatusItem() {
    const auto key = u"NSStatusItem Preferred Position TunedeckStatusItem"_s;
    if (m_desktop.defaults.value(key).isEmpty()) {
        m_desktop.defaults.setValue(key, QString::number(preferredPosition));
    }

    auto& item = m_desktop.statusItem;
    connect(&item, &StatusItem::activated, this, &AppDelegate::togglePopover);
    connect(&item, &StatusItem::selected, this, &AppDelegate::select);
    connect(&item, &StatusItem::spaceChanged, &m_windows, &WindowController::closePopover);
    connect(&item, &StatusItem::availabilityChanged, this, &AppDelegate::screensChanged);
    m_icon.emplace(m_model, item);
    item.install();
    m_placement.checkSoon();
    spawn(openWithoutIcon());
}

void AppDelegate::startNotifications() {
    m_notifier.onOpen = [this] { showWindow(); };
    m_notifier.start();
    m_follow.start();
}

ServiceInstaller AppDelegate::installer() const {
    const auto& facts = m_services.facts;
    return {facts.home, BundlePaths(facts.bundle).service(), facts.uid, m_services.launchctl, m_services.clock};
}

QCoro::Task<> AppDelegate::openWithoutIcon() {
    const auto stop = m_scope.token();
    co_await m_services.clock.sleep(trayTimeout, stop);
    if (!stop.stop_requested() && !m_desktop.statusItem.isAvailable() && !m_windows.hasBeenShown()) {
        reopen();
    }
}

void AppDelegate::reopen() {
    if (m_services.settings.onboarded()) {
        showWindow();
    } else {
        showOnboarding();
    }
}

void AppDelegate::showOnboarding() {
    m_windows.showOnboarding();
}

void AppDelegate::showWindow() {
    m_placement.check();
    m_windows.showWindow();
}

void AppDelegate::togglePopover() {
    m_windows.togglePopover(m_desktop.statusItem.geometry().value_or(QRect()));
}

void AppDelegate::select(TrayMenuEntry::Kind kind) {
    switch (kind) {
    case TrayMenuEntry::Kind::Open:
        reopen();
        break;
    case TrayMenuEntry::Kind::StartService:
        Q_EMIT m_controller.restartService();
        break;
    case TrayMenuEntry::Kind::RepairTools:
        Q_EMIT m_controller.repairTools();
        break;
    case TrayMenuEntry::Kind::ApplyChanges:
        Q_EMIT m_controller.applyLibraryNow();
        break;
    case TrayMenuEntry::Kind::OpenLog:
        Q_EMIT m_controller.openLog();
        break;
    case TrayMenuEntry::Kind::Quit:
        Q_EMIT m_controller.quit();
        break;
    case TrayMenuEntry::Kind::Text:
    case TrayMenuEntry::Kind::Separator:
        break;
    }
}

void AppDelegate::screensChanged() {
    m_placement.checkSoon();
}

} // namespace tunedeck
