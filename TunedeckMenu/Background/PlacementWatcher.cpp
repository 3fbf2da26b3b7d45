#include "TunedeckMenu/Background/PlacementWatcher.h"

#include "TunedeckMenu/Platform/Log.h"

#include <chrono>
#include <utility>

namespace tunedeck {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const auto dismissedKey = u"MissingTrayDismissed"_s;

} // namespace

PlacementWatcher::PlacementWatcher(MenuModel& model, StatusItem& item, Clock& clock, QString recordPath,
                                   UserDefaults defaults)
    : m_model(model)
    , m_item(item)
    , m_clock(clock)
    , m_recordPath(std::move(recordPath))
    , m_defaults(std::move(defaults)) {}

void PlacementWatcher::dismissMissingTray() {
    m_defaults.setValue(dismissedKey, u"true"_s);
    check();
}

void PlacementWatcher::check() {
    const bool hasTray = m_item.isAvailable() || !m_item.needsTray();
    const bool isDismissed = !hasTray && !m_defaults.value(dismissedKey).isEmpty();
    m_model.setMissingTray(hasTray ? MissingTray::No : isDismissed ? MissingTray::Dismissed : MissingTray::Yes);
    const auto placement = m_item.placement();
    if (!placement) {
        // Some desktops show the icon without reporting its position.
        m_model.setMenuBarIcon(m_item.isAvailable()
                                   ? MenuBarIconVisibility()
                                   : MenuBarIconVisibility::hidden(u"macOS didn't create the menu bar icon."_s));
        return;
    }
    const auto visibility = placement->visibility();
    m_model.setMenuBarIcon(visibility);
    if (const auto written = placement->write(m_recordPath, m_clock.now()); !written) {
        qCWarning(appLog).noquote() << written.error();
    }
    qCInfo(appLog).noquote() << "menu bar icon:" << visibility.description();
}

void PlacementWatcher::checkSoon() {
    m_scope.restart();
    spawn(checkLater());
}

QCoro::Task<> PlacementWatcher::checkLater() {
    const auto stop = m_scope.token();
    co_await m_clock.sleep(1s, stop);
    if (!stop.stop_requested()) {
        check();
    }
}

} // namespace tunedeck
