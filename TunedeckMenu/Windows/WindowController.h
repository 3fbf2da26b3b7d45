#pragma once

#include "TunedeckMenu/Actions/PanelController.h"
#include "TunedeckMenu/FirstRun/OnboardingModel.h"
#include "TunedeckMenu/Model/MenuModel.h"
#include "TunedeckMenu/Model/ServiceSetup.h"
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

/// Owns the application's windows and their content. Creates them when first needed; every call is a no-op if they
/// can't be created.
class WindowController : public QObject, public PanelHost {
    Q_OBJECT
public:
    /// All must outlive the windows.
    struct Parts {
        MenuModel& model;
        PanelController& panel;
        const MenuServices& services;
        ServiceSetup& setup;
        AppearanceSource& appearance;
        ViewsSource& source;
    };
    explicit WindowController(Parts parts, QObject* parent = nullptr);
    ~WindowController() override;

    /// Shows the main window and brings it to the front.
    void showWindow();
    /// Shows the first-run window and brings it to the front. It is kept until its last step is done.
    void showOnboarding();
    /// Whether any window has been shown since the start.
    [[nodiscard]] bool hasBeenShown() const { return m_hasBeenShown; }
    /// Opens or closes the panel at the icon. `anchor`: the icon's rectangle on the screen.
    void togglePopover(const QRect& anchor);
    void closePopover();
    /// Asks a question of the panel.
    void confirm(const Confirmation& question, std::function<void(bool)> answer);

    PanelActions& actions() override { return m_parts.panel; }
    QIcon fileIcon(const QString& path) override;
    void showRows(RowRange RowRanges::* list, RowRange range) override;

Q_SIGNALS:
    /// The first run is done and its window is closed.
    void onboardingFinished();

private:
    PanelViews* views();
    void finishOnboarding();
    void updateContent();
    void updateContentSoon();
    void updateOnboarding();

    Parts m_parts;
    QHash<QString, QIcon> m_icons;
    RowRanges m_ranges;
    std::unique_ptr<OnboardingModel> m_onboarding; ///< while the first-run window exists
    bool m_hasBeenShown = false;
    bool m_updatePending = false;
    std::unique_ptr<PanelViews> m_views;
};

} // namespace tunedeck
