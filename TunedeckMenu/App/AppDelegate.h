#pragma once

#include "TunedeckCore/UserDefaults.h"
#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/App/StartUp.h"
#include "TunedeckMenu/Background/FollowLoop.h"
#include "TunedeckMenu/Background/IconController.h"
#include "TunedeckMenu/Background/Notifier.h"
#include "TunedeckMenu/Background/PlacementWatcher.h"
#include "TunedeckMenu/Background/UpdateLoop.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Model/MenuServices.h"
#include "TunedeckMenu/Model/ServiceSetup.h"
#include "TunedeckMenu/Platform/HeapTrimmer.h"
#include "TunedeckMenu/Windows/WindowController.h"

#include <QCoroTask>
#include <QObject>

#include <optional>

namespace tunedeck {

/// The application's one long-lived controller: creates the other parts, starts them in order and handles the desktop's
/// events.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    /// The parts of the platform that the delegate uses itself. They must outlive it.
    struct Desktop {
        StatusItem& statusItem;
        NotificationCenter& notifications;
        AppearanceSource& appearance;
        ViewsSource& views;
        UserDefaults defaults; ///< the application's user defaults
    };

    /// Sets `services.confirm`, so that questions are asked in the application's windows.
    AppDelegate(MenuServices services, Desktop desktop, QObject* parent = nullptr);
    ~AppDelegate() override;

    /// Shows the icon at once and starts everything else in the background.
    void launch();
    /// Opens the main window, or the first-run window until the first run is done.
    void reopen();
    void showWindow();
    void showOnboarding();
    void togglePopover();
    /// Does what an entry of the icon's menu says.
    void select(TrayMenuEntry::Kind kind);
    void screensChanged();

private:
    void installStatusItem();
    void startNotifications();
    ServiceInstaller installer() const;
    /// Opens the window if the desktop has no tray.
    QCoro::Task<> openWithoutIcon();

    MenuServices m_services;
    Desktop m_desktop;
    MenuModel m_model;
    PanelController m_controller;
    ServiceSetup m_setup;
    WindowController m_windows;
    Notifier m_notifier;
    PlacementWatcher m_placement;
    StartUp m_startUp;
    UpdateLoop m_updates;
    std::optional<IconController> m_icon;
    HeapTrimmer m_heap;
    FollowLoop m_follow;
    TaskScope m_scope;
};

} // namespace tunedeck
