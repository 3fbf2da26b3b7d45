#pragma once

#include "TunedeckMenu/Panel/PanelHost.h"
#include "TunedeckMenu/Panel/PanelViews.h"
#include "TunedeckMenu/Views/Edge/OnboardingAdapter.h"
#include "TunedeckMenu/Views/Edge/PanelAdapter.h"
#include "TunedeckMenu/Views/Edge/SystemStyle.h"

#include <QElapsedTimer>
#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTimer>

#include <deque>
#include <memory>

namespace tunedeck {

/// The windows: popover, main window, first-run window and confirmation dialogs.
class QuickViews final : public QObject, public PanelViews {
    Q_OBJECT
public:
    QuickViews(PanelHost& host, const Appearance& appearance);
    ~QuickViews() override;

    void setContent(const PanelContent& content) override { m_panelAdapter.setContent(content); }
    void showPopover(const QRect& anchor) override;
    Q_SLOT void closePopover() override;
    [[nodiscard]] bool isPopoverShown() const override;
    void showWindow() override;
    [[nodiscard]] bool isWindowShown() const override;
    void setOnboardingContent(const OnboardingContent& content) override { m_onboardingAdapter.setContent(content); }
    void showOnboarding(OnboardingActions& actions) override;
    void closeOnboarding() override;
    void confirm(const Confirmation& question, std::function<void(bool confirmed)> answer) override;
    void setAppearance(const Appearance& appearance) override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Question {
        Confirmation confirmation;
        std::function<void(bool)> answer;
    };

    std::unique_ptr<QQuickWindow> createWindow(const QString& file, const QVariantMap& properties);
    /// Reports whether the window is on the screen, and follows the size of its content.
    void followPanel(QQuickWindow& window);
    void placePopover();
    void dismissPopover();
    void sizeWindow();
    void askNextQuestion();
    Q_SLOT void wantedSizeChanged();
    Q_SLOT void answered(bool confirmed);

    PanelHost& m_host;
    QQmlEngine m_engine;
    // Owned by the engine, whose QML sees them as singletons.
    SystemStyle& m_style;
    PanelAdapter& m_panelAdapter;
    OnboardingAdapter& m_onboardingAdapter;
    QIcon m_icon;
    std::unique_ptr<QQuickWindow> m_popover;
    QRect m_anchor;
    QElapsedTimer m_dismissed; ///< since the popover lost the focus or a click outside closed it
    QTimer m_grabIfUnfocused;
    QTimer m_dismissIfUnfocused;
    std::unique_ptr<QQuickWindow> m_window;
    QTimer m_resize;
    int m_autoHeight = 0; ///< set from the content; a different height was chosen by the user
    std::unique_ptr<QQuickWindow> m_onboarding;
    std::unique_ptr<QQuickWindow> m_dialog;
    std::deque<Question> m_questions;
};

} // namespace tunedeck
