#pragma once

#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Model/OnboardingModel.h"
#include "TunedeckMenu/Panel/PanelHost.h"
#include "TunedeckMenu/Panel/PanelViews.h"
#include "TunedeckMenu/Platform/AppearanceSource.h"
#include "TunedeckMenu/Windows/ViewsSource.h"

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace tunedeck {

/// The application's windows, made at the first need, and what they show. Everything is a no-op when they can't be
/// made.
class WindowController : public QObject, public PanelHost {
    Q_OBJECT
public:
    /// What the windows show and where their controls lead; all must outlive them.
    struct Parts {
        MenuModel& model;
        PanelController& panel;
        const MenuServices& services;
        AppearanceSource& appearance;
        ViewsSource& source;
    };
    explicit WindowController(Parts parts, QObject* parent = nullptr);
    ~WindowController() override;

    /// Shows the main window in front of the others.
    void showWindow();
    /// Shows the first-run window in front of the others; it is kept until its last step is done.
    void showOnboarding();
    /// Whether a window has been shown at all.
    [[nodiscard]] bool hasBeenShown() const { return m_hasBeenShown; }
    /// Opens the panel at the icon, or closes it.
    void togglePopover(const QRect& anchor);
    /// Asks a question; not confirmed when there are no windows to ask it in.
    void confirm(const Confirmation& question, std::function<void(bool)> answer);

    PanelActions& actions() override { return m_parts.panel; }
    QIcon fileIcon(const QString& path) override;

Q_SIGNALS:
    /// The first run is done and its window closed.
    void onboardingFinished();

private:
    PanelViews* views();
    void finishOnboarding();
    void updateContent();
    void updateContentSoon();
    void updateOnboarding();

    Parts m_parts;
    QHash<QString, QIcon> m_icons;
    std::unique_ptr<OnboardingModel> m_onboarding; ///< while there is the first-run window
    bool m_hasBeenShown = false;
    bool m_updatePending = false;
    std::unique_ptr<PanelViews> m_views;
};

} // namespace tunedeck
