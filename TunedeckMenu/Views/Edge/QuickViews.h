#pragma once

#include "TunedeckMenu/Panel/PanelHost.h"
#include "TunedeckMenu/Panel/PanelViews.h"
#include "TunedeckMenu/Views/Edge/OnboardingAdapter.h"
#include "TunedeckMenu/Views/Edge/PanelAdapter.h"
#include "TunedeckMenu/Views/Edge/SystemStyle.h"
#include "TunedeckMenu/Views/Windows/FirstRunWindow.h"
#include "TunedeckMenu/Views/Windows/KeyRepeats.h"
#include "TunedeckMenu/Views/Windows/MainWindow.h"
#include "TunedeckMenu/Views/Windows/PopoverWindow.h"
#include "TunedeckMenu/Views/Windows/Questions.h"
#include "TunedeckMenu/Views/Windows/WindowFactory.h"

#include <QQmlEngine>

#include <utility>

namespace tunedeck {

/// The windows, and what their QML sees.
class QuickViews final : public PanelViews {
public:
    QuickViews(PanelHost& host, const Appearance& appearance);

    void setContent(const PanelContent& content) override { m_panelAdapter.setContent(content); }
    void showPopover(const QRect& anchor) override;
    void closePopover() override;
    [[nodiscard]] bool isPopoverShown() const override;
    void showWindow() override;
    [[nodiscard]] bool isWindowShown() const override { return m_window.isShown(); }
    void setOnboardingContent(const OnboardingContent& content) override { m_onboardingAdapter.setContent(content); }
    void showOnboarding(OnboardingActions& actions) override { m_onboarding.show(actions); }
    void closeOnboarding() override { m_onboarding.close(); }
    void confirm(const Confirmation& question, std::function<void(bool confirmed)> answer) override {
        m_questions.ask(question, std::move(answer));
    }
    void setAppearance(const Appearance& appearance) override { m_style.setAppearance(appearance); }

private:
    [[nodiscard]] QQuickWindow* openPanel() const;

    KeyRepeats m_keyRepeats;
    QQmlEngine m_engine;
    // Owned by the engine, whose QML sees them as singletons.
    SystemStyle& m_style;
    PanelAdapter& m_panelAdapter;
    OnboardingAdapter& m_onboardingAdapter;
    WindowFactory m_factory;
    PopoverWindow m_popover;
    MainWindow m_window;
    FirstRunWindow m_onboarding;
    Questions m_questions;
};

} // namespace tunedeck
