#pragma once

#include "TunedeckMenu/Panel/PanelHost.h"
#include "TunedeckMenu/Panel/PanelViews.h"
#include "TunedeckMenu/Views/Edge/OnboardingAdapter.h"
#include "TunedeckMenu/Views/Edge/PanelAdapter.h"
#include "TunedeckMenu/Views/Edge/Surroundings.h"

#include <QElapsedTimer>
#include <QObject>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QTimer>

#include <deque>
#include <memory>

namespace tunedeck {

/// The windows: the panel at the icon, the panel in a window of its own, the first-run window and the questions.
class QuickViews final : public QObject, public PanelViews {
    Q_OBJECT
public:
    QuickViews(PanelHost& host, const Appearance& appearance);
    ~QuickViews() override;

    void setContent(const PanelContent& content) override { m_panelAdapter.setContent(content); }
    void showPopover(const QRect& anchor) override;
    void closePopover() override;
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
        Confirmation words;
        std::function<void(bool)> answer;
    };

    std::unique_ptr<QQuickWindow> make(const QString& file, const QVariantMap& properties);
    void followPresence(QQuickWindow& window);
    void placePopover();
    void dismissPopover();
    void sizeWindow();
    void askNext();
    Q_SLOT void wantedSizeChanged();
    Q_SLOT void popoverDismissed();
    Q_SLOT void answered(bool confirmed);

    PanelHost& m_host;
    QQmlEngine m_engine;
    // The engine's own, by which QML sees them.
    Surroundings& m_surroundings;
    PanelAdapter& m_panelAdapter;
    OnboardingAdapter& m_onboardingAdapter;
    QIcon m_icon;
    std::unique_ptr<QQuickWindow> m_popover;
    QRect m_anchor;
    QElapsedTimer m_dismissed; ///< since the popover closed because the user turned elsewhere
    QTimer m_grabIfUnfocused;
    QTimer m_dismissIfUnfocused;
    std::unique_ptr<QQuickWindow> m_window;
    QTimer m_resize;
    int m_followedHeight = 0; ///< what the window got from its content; another height is the user's own
    std::unique_ptr<QQuickWindow> m_onboarding;
    std::unique_ptr<QQuickWindow> m_dialog;
    std::deque<Question> m_questions;
};

} // namespace tunedeck
