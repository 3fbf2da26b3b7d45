#pragma once

#include "TunedeckMenu/Panel/Confirmation.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/PanelActions.h"
#include "TunedeckMenu/Panel/PanelContent.h"

#include <QIcon>
#include <QRect>
#include <QtPlugin>

#include <functional>
#include <memory>

namespace tunedeck {

/// Where the views get what they show and where they send what was pressed.
class PanelHost {
public:
    virtual ~PanelHost() = default;
    /// The panel as it is now.
    virtual PanelContent content() = 0;
    virtual PanelActions& actions() = 0;
    /// The first-run window's content and actions; asked for only between showOnboarding and closeOnboarding.
    virtual OnboardingContent onboardingContent() = 0;
    virtual OnboardingActions& onboardingActions() = 0;
    /// The icon of the file or folder at a path.
    virtual QIcon fileIcon(const QString& path) = 0;
};

/// How the desktop wants things to look; handed in and followed live.
struct Appearance {
    bool dark = false;
    bool reduceMotion = false;
    bool operator==(const Appearance&) const = default;
};

/// The windows, as the application sees them. All calls on the main thread.
class PanelViews {
public:
    virtual ~PanelViews() = default;

    /// Shows the panel at the icon (`anchor`: its rectangle on the screen, empty when unknown), kept inside the
    /// available area; it closes when the user clicks elsewhere.
    virtual void showPopover(const QRect& anchor) = 0;
    virtual void closePopover() = 0;
    [[nodiscard]] virtual bool isPopoverShown() const = 0;

    /// Shows the main window, made once and kept, and brings it to the front.
    virtual void showWindow() = 0;
    [[nodiscard]] virtual bool isWindowShown() const = 0;

    virtual void showOnboarding() = 0;
    virtual void closeOnboarding() = 0;

    /// Asks a question, modal to the application without blocking the event loop; `answer` is called once.
    virtual void confirm(const Confirmation& question, std::function<void(bool confirmed)> answer) = 0;

    /// The host has something new to show; views take it and change only what differs.
    virtual void contentChanged() = 0;
    virtual void onboardingChanged() = 0;
    virtual void setAppearance(const Appearance& appearance) = 0;
};

/// The module in the bundle's PlugIns folder that holds everything of Qt Quick; loaded at the first need.
class PanelModule {
public:
    virtual ~PanelModule() = default;
    /// The windows; the host must outlive them.
    virtual std::unique_ptr<PanelViews> createViews(PanelHost& host, const Appearance& appearance) = 0;
};

} // namespace tunedeck

#define TunedeckPanelModule_iid "com.brightfold.tunedeck.PanelModule/1"
Q_DECLARE_INTERFACE(tunedeck::PanelModule, TunedeckPanelModule_iid)
