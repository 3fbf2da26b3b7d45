#pragma once

#include "TunedeckMenu/Panel/Appearance.h"
#include "TunedeckMenu/Panel/Confirmation.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingActions.h"
#include "TunedeckMenu/Panel/FirstRun/OnboardingContent.h"
#include "TunedeckMenu/Panel/PanelContent.h"

#include <QRect>

#include <functional>

namespace tunedeck {

/// The windows, as seen by the application. Main thread only.
class PanelViews {
public:
    virtual ~PanelViews() = default;

    /// Sets what the panel shows, in the popover and in the main window; only differences are repainted. Set it before
    /// showing either.
    virtual void setContent(const PanelContent& content) = 0;
    /// Opens the panel at the tray icon; it closes when the user clicks elsewhere. Where windows can't be placed at the
    /// icon, the main window takes its part. `anchor`: the icon's rectangle on the screen, empty when unknown.
    virtual void showPopover(const QRect& anchor) = 0;
    virtual void closePopover() = 0;
    [[nodiscard]] virtual bool isPopoverShown() const = 0;

    /// Shows the main window and brings it to the front. Closing it only hides it.
    virtual void showWindow() = 0;
    [[nodiscard]] virtual bool isWindowShown() const = 0;

    /// Sets what the first-run window shows; set it before showing the window.
    virtual void setOnboardingContent(const OnboardingContent& content) = 0;
    /// Shows the first-run window. `actions` must live until closeOnboarding().
    virtual void showOnboarding(OnboardingActions& actions) = 0;
    virtual void closeOnboarding() = 0;

    /// Asks a question, modal to the application without blocking the event loop; `answer` is called once.
    virtual void confirm(const Confirmation& question, std::function<void(bool confirmed)> answer) = 0;

    virtual void setAppearance(const Appearance& appearance) = 0;
};

} // namespace tunedeck
