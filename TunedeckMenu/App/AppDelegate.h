#pragma once

#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/App/StartUp.h"
#include "TunedeckMenu/Background/FollowLoop.h"
#include "TunedeckMenu/Background/IconController.h"
#include "TunedeckMenu/Background/Notifier.h"
#include "TunedeckMenu/Background/PlacementWatcher.h"
#include "TunedeckMenu/Background/UpdateLoop.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Model/MenuServices.h"
#include "TunedeckMenu/Windows/WindowController.h"

#include <QCoroTask>
#include <QObject>
#include <QSettings>

#include <optional>

namespace tunedeck {

/// The application's one long-lived controller: puts its parts together, starts them in order and answers the desktop.
/// Each part has a class of its own; here is only what leads from one to the other.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    /// What of the desktop the delegate itself deals with; all must outlive it.
    struct Desktop {
        StatusItem& statusItem;
        NotificationCenter& notifications;
        AppearanceSource& appearance;
        ViewsSource& views;
        QSettings& defaults; ///< the user's defaults of this application
    };

    /// `services.confirm` is filled in: questions are asked in the application's windows.
    AppDelegate(MenuServices services, Desktop desktop, QObject* parent = nullptr);
    ~AppDelegate() override;

    /// Brings everything up: the icon at once, the rest in tasks of their own.
    void launch();
    /// The user started the application again, or asked for it in another way.
    void reopen();
    void showWindow();
    void showOnboarding();
    void togglePopover();
    /// The screens have changed.
    void screensChanged();

private:
    void installStatusItem();
    void startNotifications();
    ServiceInstaller installer() const;
    /// Opens the window when the desktop has no place for the icon.
    QCoro::Task<> openWithoutIcon();

    MenuServices m_services;
    Desktop m_desktop;
    MenuModel m_model;
    PanelController m_controller;
    WindowController m_windows;
    Notifier m_notifier;
    PlacementWatcher m_placement;
    StartUp m_startUp;
    UpdateLoop m_updates;
    std::optional<IconController> m_icon;
    FollowLoop m_follow;
    TaskScope m_scope;
};

} // namespace tunedeck
